#include "simd/map.h"
#include "temporal/interlace_workers.h"

namespace zkit::ZKIT_SET {
namespace {

// The vectors of a few rows at one place.
template <int rows>
struct Column {
    Bytes row[rows];
};

// What is read and written after the rows that are being made, as many rows: it is fetched in the meantime.
struct Following {
    const std::uint8_t* read;
    std::ptrdiff_t pitch;
    const std::uint8_t* written;
};

// The rows of dst, each vector `at` of all of them from step(at), which reads what is apart from them or makes the same
// again of what it has made. Vectors go in groups, so that loads do not part what is streamed to a cache line.
template <int rows, class Step>
[[gnu::always_inline]] inline void mapLines(const Target& dst, const Following& following, Stores stores, Step step)
{
    constexpr int vectors = 4 / rows;
    constexpr std::ptrdiff_t lanes = Bytes::lanes, group = vectors * lanes, line = 64;
    const bool streamed = stores == Stores::streamed;
    const std::ptrdiff_t count = dst.width, pitch = dst.pitch;
    std::uint8_t* const to = dst.data;
    if (count < lanes) {
        for (int k = 0; k < rows; ++k)
            mapRow(to + k * pitch, count, Stores::cached, [&](auto at) { return step(at).row[k]; });
        return;
    }
    const auto put = [&](std::ptrdiff_t x) {
        const Column<rows> made = step(WholeVector{x});
        unrolled<rows>([&](int k) { store(to + k * pitch + x, made.row[k]); });
    };
    const auto singles = [&](std::ptrdiff_t from, std::ptrdiff_t until) {
        const std::ptrdiff_t last = until > lanes ? until - lanes : 0;
        for (std::ptrdiff_t x = from; x < last; x += lanes)
            put(x);
        if (from < until)
            put(last);
    };
    const auto groups = [&](std::ptrdiff_t begin, std::ptrdiff_t end, const std::uint8_t* written, auto write) {
        for (std::ptrdiff_t x = begin; x < end; x += group) {
            for (std::ptrdiff_t i = 0; i < group; i += line)
                unrolled<rows>([&](int k) {
                    __builtin_prefetch(following.read + k * following.pitch + x + i);
                    __builtin_prefetch(written + k * pitch + x + i);
                });
            Column<rows> made[vectors];
            unrolled<vectors>([&](int i) { made[i] = step(WholeVector{x + i * lanes}); });
            unrolled<rows>([&](int k) {
                unrolled<vectors>([&](int i) { write(to + k * pitch + x + i * lanes, made[i].row[k]); });
            });
        }
    };
    // Whole lines are streamed, and nothing else is stored to them.
    auto begin = static_cast<std::ptrdiff_t>(-reinterpret_cast<std::uintptr_t>(to) % (streamed ? line : lanes));
    if (streamed) {
        begin += begin > 0 && begin < lanes ? line : 0;
        begin = begin < count ? begin : count;
    }
    const std::ptrdiff_t end = begin + (count - begin) / group * group;
    singles(0, begin);
    if (streamed)
        groups(begin, end, following.read, [](std::uint8_t* p, Bytes made) { stream(p, made); });
    else
        groups(begin, end, following.written, [](std::uint8_t* p, Bytes made) { store(p, made); });
    singles(end, count);
}

[[gnu::flatten]] void copy(const std::uint8_t* src, const std::uint8_t* next, std::uint8_t* dst, std::ptrdiff_t count,
                           Stores stores)
{
    mapLines<1>({dst, 0, count, 1}, {next, 0, dst}, stores, [=](auto at) { return Column<1>{at.bytes(src)}; });
}

// A pixel of one byte or of three.
class Pixel {
public:
    Pixel(const std::uint8_t* p, int size) : c0_(p[0]), c1_(p[size / 2]), c2_(p[size - 1]), grey_(size == 1) {}

    // dst = the pixel, again and again.
    void fill(std::uint8_t* dst, std::ptrdiff_t count) const
    {
        if (grey_) {
            __builtin_memset(dst, c0_, static_cast<std::size_t>(count));
            return;
        }
        for (std::uint8_t* const end = dst + count; dst < end; dst += 3) {
            dst[0] = c0_;
            dst[1] = c1_;
            dst[2] = c2_;
        }
    }

private:
    std::uint8_t c0_, c1_, c2_;
    bool grey_;
};

void shiftInPlace(const Target& frame, const Shift& by)
{
    for (std::ptrdiff_t y = 0; y < frame.height; ++y) {
        std::uint8_t* const row = frame.data + y * frame.pitch;
        const Pixel pixel(row + by.filling, by.pixelSize);
        __builtin_memmove(row + by.to, row + by.from, static_cast<std::size_t>(by.count));
        pixel.fill(by.to > 0 ? row : row + by.count, frame.width - by.count);
    }
}

// Moves rows that are apart, each after fill(row of dst, row of src).
template <class Fill>
[[gnu::noinline, gnu::flatten]] void shiftApart(const Source& src, const Target& dst, const Shift& by, Stores stores,
                                                Fill fill)
{
    const std::ptrdiff_t readPitch = src.pitch, pitch = dst.pitch, from = by.from, to = by.to, count = by.count;
    const std::uint8_t* in = src.data;
    std::uint8_t* out = dst.data;
    for (std::ptrdiff_t left = dst.height; left > 0; --left, in += readPitch, out += pitch) {
        fill(out, in);
        const std::uint8_t* const moved = in + from;
        const std::ptrdiff_t next = left > 1 ? 1 : 0;
        mapLines<1>({out + to, 0, count, 1}, {moved + next * readPitch, 0, out + next * pitch}, stores,
                    [=](auto at) { return Column<1>{at.bytes(moved)}; });
    }
}

void shift(const Source& src, const Target& dst, const Shift& by, Stores stores)
{
    const std::ptrdiff_t filling = by.filling, free = dst.width - by.count;
    if (src.data == dst.data) {
        shiftInPlace(dst, by);
    } else if (by.pixelSize == 1 && free <= Bytes::lanes && Bytes::lanes <= dst.width) {
        // One vector reaches over all that is free; what it overwrites beyond that is moved there afterwards.
        const std::ptrdiff_t at = by.to > 0 ? 0 : dst.width - Bytes::lanes;
        shiftApart(src, dst, by, stores,
                   [=](std::uint8_t* out, const std::uint8_t* in) { store(out + at, broadcast(in[filling])); });
    } else {
        const std::ptrdiff_t at = by.to > 0 ? 0 : by.count;
        const int pixelSize = by.pixelSize;
        shiftApart(src, dst, by, stores, [=](std::uint8_t* out, const std::uint8_t* in) {
            Pixel(in + filling, pixelSize).fill(out + at, free);
        });
    }
}

[[gnu::flatten]] void mean(const Source& src, const Target& dst, Stores stores)
{
    const std::ptrdiff_t readPitch = src.pitch, pitch = dst.pitch, count = dst.width;
    const std::uint8_t* in = src.data;
    std::uint8_t* out = dst.data;
    std::ptrdiff_t left = dst.height;
    if (stores == Stores::cached)  // two rows share one that is read; streaming to two at once is slow
        for (; left >= 2; left -= 2, in += 2 * readPitch, out += 2 * pitch) {
            const std::uint8_t *const above = in, *const here = in + readPitch, *const below = here + readPitch;
            const std::ptrdiff_t next = left >= 4 ? 2 : 0;
            mapLines<2>({out, pitch, count, 2}, {here + next * readPitch, readPitch, out + next * pitch}, stores,
                        [=](auto at) {
                            const Bytes shared = at.bytes(here);
                            return Column<2>{average(at.bytes(above), shared), average(shared, at.bytes(below))};
                        });
        }
    for (; left > 0; --left, in += readPitch, out += pitch) {
        const std::uint8_t *const above = in, *const below = in + readPitch;
        const std::ptrdiff_t next = left >= 2 ? 1 : 0;
        mapLines<1>({out, pitch, count, 1}, {below + next * readPitch, readPitch, out + next * pitch}, stores,
                    [=](auto at) { return Column<1>{average(at.bytes(above), at.bytes(below))}; });
    }
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

const zkit::InterlaceWorkers zkit::InterlaceWorkers::ZKIT_SET = {ZKIT_SET::copy, ZKIT_SET::shift, ZKIT_SET::mean,
                                                                 ZKIT_SET::match};
