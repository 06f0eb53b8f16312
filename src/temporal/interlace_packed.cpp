#include "simd/map.h"
#include "temporal/interlace_workers.h"

namespace zkit::ZKIT_SET {
namespace {

void copy(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    if (stores == Stores::cached) {
        __builtin_memcpy(dst, src, static_cast<std::size_t>(count));
        return;
    }
    // Whole cache lines are streamed: those that are written in both ways are slow.
    constexpr std::ptrdiff_t line = 64;
    const auto toNextLine = static_cast<std::ptrdiff_t>(-reinterpret_cast<std::uintptr_t>(dst) % line);
    const std::ptrdiff_t begin = toNextLine < count ? toNextLine : count;
    const std::ptrdiff_t end = begin + (count - begin) / line * line;
    __builtin_memcpy(dst, src, static_cast<std::size_t>(begin));
    mapRow(dst + begin, end - begin, stores, [from = src + begin](auto at) { return at.bytes(from); });
    __builtin_memcpy(dst + end, src + end, static_cast<std::size_t>(count - end));
}

void mean(const std::uint8_t* above, const std::uint8_t* below, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    mapRow(dst, count, stores, [=](auto at) {
        const Bytes a = at.bytes(above), b = at.bytes(below);
        return averageUp(a, b) - ((a ^ b) & broadcast(1));
    });
}

// Sums of products with a row of bytes. All sums are modulo 2^32.
class Products {
public:
    Products(const std::uint8_t* a, std::ptrdiff_t count) : a_(a), count_(count) {}

    // sums[k] = the sum of a[i] * b[i - k step].
    template <int candidates>
    [[gnu::flatten]] void with(const std::uint8_t* b, std::ptrdiff_t step, std::uint32_t (&sums)[candidates]) const
    {
        Ints all[candidates];  // in registers, for which every loop over them is unrolled
#pragma GCC unroll 4
        for (int k = 0; k < candidates; ++k)
            all[k] = broadcastInt(0);
        std::ptrdiff_t i = 0;
        for (; i + Bytes::lanes <= count_; i += Bytes::lanes) {
            const Bytes a = load(a_ + i);
            const Words even = evenBytes(a), odd = oddBytes(a);
            const std::uint8_t* from = b + i;
#pragma GCC unroll 4
            for (int k = 0; k < candidates; ++k) {
                const Bytes other = load(from);
                from -= step;
                all[k] = all[k] + multiplyAddPairs(even, evenBytes(other)) + multiplyAddPairs(odd, oddBytes(other));
            }
        }
#pragma GCC unroll 4
        for (int k = 0; k < candidates; ++k) {
            sums[k] = total(all[k]);
            for (std::ptrdiff_t last = i; last < count_; ++last)
                sums[k] += static_cast<std::uint32_t>(a_[last] * b[last - k * step]);
        }
    }

    std::uint32_t with(const std::uint8_t* b) const
    {
        std::uint32_t sum[1];
        with(b, 0, sum);
        return sum[0];
    }

private:
    const std::uint8_t* a_;
    std::ptrdiff_t count_;
};

// The sum of the squares of a row that moves to the left.
class Squares {
public:
    Squares(const std::uint8_t* row, std::ptrdiff_t count)
        : row_(row), count_(count), sum_(Products(row, count).with(row))
    {
    }

    std::uint32_t sum() const { return sum_; }

    void move(std::ptrdiff_t step)
    {
        for (std::ptrdiff_t i = 1; i <= step; ++i) {
            const std::uint32_t in = row_[-i], out = row_[count_ - i];
            sum_ += in * in - out * out;
        }
        row_ -= step;
    }

private:
    const std::uint8_t* row_;
    std::ptrdiff_t count_;
    std::uint32_t sum_;
};

// The squared differences are the squares less twice the products, which several candidates share the loads for.
std::ptrdiff_t match(const std::uint8_t* a, const std::uint8_t* b, std::ptrdiff_t count, std::ptrdiff_t step,
                     std::ptrdiff_t candidates)
{
    constexpr int together = 4;
    const Products products(a, count);
    const std::uint32_t ofA = products.with(a);
    Squares ofB(b, count);
    std::ptrdiff_t best = -1;
    std::uint32_t least = 0xFFFFFFFF, sums[together] = {};
    for (std::ptrdiff_t k = 0; k < candidates; ++k) {
        if (candidates - k >= together && k % together == 0)
            products.with(b - k * step, step, sums);
        else if (candidates - k + k % together < together)
            sums[k % together] = products.with(b - k * step);
        const std::uint32_t sum = ofA + ofB.sum() - 2 * sums[k % together];
        if (sum < least) {
            least = sum;
            best = k;
        }
        if (k + 1 < candidates)
            ofB.move(step);
    }
    return best;
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::InterlaceWorkers zkit::InterlaceWorkers::ZKIT_SET = {ZKIT_SET::copy, ZKIT_SET::mean, ZKIT_SET::match};
