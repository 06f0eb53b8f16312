#include "analysis/pixel_stat_workers.h"
#include "simd/fold.h"

namespace zkit::ZKIT_SET {
namespace {

struct Smaller {
    Bytes operator()(Bytes a, Bytes b) const { return min(a, b); }
};

struct Greater {
    Bytes operator()(Bytes a, Bytes b) const { return max(a, b); }
};

struct AddBytes {
    Longs operator()(Longs sums, Bytes pixels) const { return sums + sumsOfEight(pixels); }
};

struct AddSums {
    Longs operator()(Longs a, Longs b) const { return a + b; }
};

std::uint8_t minimum(Source src)
{
    return foldLanes(foldRows(src, broadcast(255), 255, Smaller(), Smaller()), Smaller());
}

std::uint8_t maximum(Source src) { return foldLanes(foldRows(src, broadcast(0), 0, Greater(), Greater()), Greater()); }

std::uint32_t sum(Source src) { return total(foldRows(src, zeroLongs(), 0, AddBytes(), AddSums())); }

// One pass: a row is read once, and its sum is needed by itself.
PixelStat stat(Source src, std::uint8_t first)
{
    const auto divisor = static_cast<double>(src.width);
    Bytes min0 = broadcast(first), min1 = min0, max0 = min0, max1 = min0;
    double rowMeans = 0.0;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* row = src.data + y * src.pitch;
        Longs sum0 = zeroLongs(), sum1 = sum0;
        std::ptrdiff_t x = 0;
        for (; x + 4 * Bytes::lanes <= src.width; x += 4 * Bytes::lanes) {
            const Bytes a = load(row + x), b = load(row + x + Bytes::lanes);
            const Bytes c = load(row + x + 2 * Bytes::lanes), d = load(row + x + 3 * Bytes::lanes);
            min0 = min(min(min0, a), c);
            min1 = min(min(min1, b), d);
            max0 = max(max(max0, a), c);
            max1 = max(max(max1, b), d);
            sum0 = sum0 + sumsOfEight(a) + sumsOfEight(c);
            sum1 = sum1 + sumsOfEight(b) + sumsOfEight(d);
        }
        for (; x + Bytes::lanes <= src.width; x += Bytes::lanes) {
            min0 = min(min0, load(row + x));
            max0 = max(max0, load(row + x));
            sum0 = sum0 + sumsOfEight(load(row + x));
        }
        if (x < src.width) {
            const LastVector last(src.width);
            const Bytes pixels = last.bytes(row);
            min0 = min(min0, select(last.counting(), min0, pixels));
            max0 = max(max0, select(last.counting(), max0, pixels));
            sum0 = sum0 + sumsOfEight(pixels & last.counting());
        }
        rowMeans += static_cast<double>(total(sum0 + sum1)) / divisor;
    }
    return {foldLanes(min(min0, min1), Smaller()), foldLanes(max(max0, max1), Greater()), rowMeans};
}

}  // namespace

const PixelStatWorkers pixelStat = {minimum, maximum, sum, stat};

}  // namespace zkit::ZKIT_SET
