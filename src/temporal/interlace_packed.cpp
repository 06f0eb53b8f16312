#include "simd/map.h"
#include "temporal/interlace_workers.h"

namespace zkit::ZKIT_SET {
namespace {

// dst[i] = stepFrom(x)(at) for every vector `at` of a row that begins at column x. Between the first whole cache line
// and the last one vectors go in groups: loads do not part what is streamed to a line, and the next row is fetched.
template <class StepFrom>
[[gnu::flatten]] void mapLines(std::uint8_t* dst, const std::uint8_t* next, std::ptrdiff_t count, Stores stores,
                               StepFrom stepFrom)
{
    constexpr int vectors = 4;
    constexpr std::ptrdiff_t group = vectors * Bytes::lanes, line = 64;
    const auto toNextLine = static_cast<std::ptrdiff_t>(-reinterpret_cast<std::uintptr_t>(dst) % line);
    const std::ptrdiff_t begin = toNextLine < count ? toNextLine : count;
    const std::ptrdiff_t end = begin + (count - begin) / group * group;
    if (begin > 0)
        mapRow(dst, begin, Stores::cached, stepFrom(0));
    const auto step = stepFrom(0);
    const auto groups = [&](auto put) {
        for (std::ptrdiff_t x = begin; x < end; x += group) {
            for (std::ptrdiff_t i = 0; i < group; i += line)
                __builtin_prefetch(next + x + i);
            Bytes results[vectors];
            unrolled<vectors>([&](int i) { results[i] = step(WholeVector{x + i * Bytes::lanes}); });
            unrolled<vectors>([&](int i) { put(dst + x + i * Bytes::lanes, results[i]); });
        }
    };
    if (stores == Stores::streamed)
        groups([](std::uint8_t* to, Bytes result) { stream(to, result); });
    else
        groups([](std::uint8_t* to, Bytes result) { store(to, result); });
    if (end < count)
        mapRow(dst + end, count - end, Stores::cached, stepFrom(end));
}

void copy(const std::uint8_t* src, const std::uint8_t* next, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    mapLines(dst, next, count, stores, [=](std::ptrdiff_t x) { return [=](auto at) { return at.bytes(src + x); }; });
}

void mean(const std::uint8_t* above, const std::uint8_t* below, const std::uint8_t* next, std::uint8_t* dst,
          std::ptrdiff_t count, Stores stores)
{
    mapLines(dst, next, count, stores, [=](std::ptrdiff_t x) {
        return [=](auto at) {
            const Bytes a = at.bytes(above + x), b = at.bytes(below + x);
            return averageUp(a, b) - ((a ^ b) & broadcast(1));
        };
    });
}

// sums[k] += the sum of (a[i] - b[i - k step])^2, modulo 2^32.
template <int rows>
[[gnu::flatten]] void addSquares(const std::uint8_t* a, const std::uint8_t* b, std::ptrdiff_t count,
                                 std::ptrdiff_t step, std::uint32_t (&sums)[rows])
{
    Ints all[rows];  // in registers, for which every access to them is written out
    unrolled<rows>([&](int k) { all[k] = broadcastInt(0); });
    const auto square = [](Words difference) { return multiplyAddPairs(difference, difference); };
    const auto add = [&](auto at, Bytes counting) {
        const Bytes here = at.bytes(a) & counting;
        const Words even = evenBytes(here), odd = oddBytes(here);
        unrolled<rows>([&](int k) {
            const Bytes there = at.bytes(b - k * step) & counting;
            all[k] = all[k] + square(even - evenBytes(there)) + square(odd - oddBytes(there));
        });
    };
    for (std::ptrdiff_t x = 0; x + Bytes::lanes <= count; x += Bytes::lanes)
        add(WholeVector{x}, broadcast(255));
    // The last vector is a whole one in all but the shortest rows, which is not asked for every row again.
    if (const LastVector last(count); count > Bytes::lanes && count % Bytes::lanes != 0)
        add(WholeVector{last.start()}, last.counting());
    else if (count % Bytes::lanes != 0)
        add(last, last.counting());
    unrolled<rows>([&](int k) { sums[k] += total(all[k]); });
}

// The search for the smallest sum, in any order.
class Search {
public:
    Search(const std::uint8_t* a, const std::uint8_t* b, std::ptrdiff_t count, std::ptrdiff_t step)
        : a_(a), b_(b), count_(count), step_(step), part_(wraps(count) ? count : count / 4 & -Bytes::lanes)
    {
    }

    // Looks at neighbouring candidates. They are done with after a part of the row if all their sums are too large.
    template <int candidates>
    void look(std::ptrdiff_t first)
    {
        std::uint32_t sums[candidates] = {};
        const std::uint8_t* const b = b_ - first * step_;
        addSquares(a_, b, part_, step_, sums);
        bool promising = false;
        for (const std::uint32_t sum : sums)
            promising |= sum <= least_;
        if (!promising)
            return;
        addSquares(a_ + part_, b + part_, count_ - part_, step_, sums);
        for (int k = 0; k < candidates; ++k)
            if (sums[k] < least_ || (sums[k] == least_ && first + k < best_)) {
                least_ = sums[k];
                best_ = first + k;
            }
    }

    std::ptrdiff_t best() const { return best_; }

private:
    static bool wraps(std::ptrdiff_t count)
    {
        constexpr std::ptrdiff_t longest = 0xFFFFFFFF / (255 * 255);
        return count > longest;
    }

    const std::uint8_t *a_, *b_;
    std::ptrdiff_t count_, step_, part_, best_ = -1;
    std::uint32_t least_ = 0xFFFFFFFF;
};

std::ptrdiff_t match(const std::uint8_t* a, const std::uint8_t* b, std::ptrdiff_t count, std::ptrdiff_t step,
                     std::ptrdiff_t candidates)
{
    constexpr int together = 8;
    Search search(a, b, count, step);
    const auto look = [&](std::ptrdiff_t first, std::ptrdiff_t end) {
        for (; first + together <= end; first += together)
            search.look<together>(first);
        for (; first < end; ++first)
            search.look<1>(first);
    };
    // The best one is expected in the middle, and found first makes short work of the others.
    const std::ptrdiff_t middle = candidates / 2 / together * together;
    look(middle, candidates);
    look(0, middle);
    return search.best();
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::InterlaceWorkers zkit::InterlaceWorkers::ZKIT_SET = {ZKIT_SET::copy, ZKIT_SET::mean, ZKIT_SET::match};
