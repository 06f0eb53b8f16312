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

std::uint8_t maximum(Source src)
{
    return foldLanes(foldRows(src, broadcast(0), 0, Greater(), Greater()), Greater());
}

std::uint32_t sum(Source src)
{
    return total(foldRows(src, zeroLongs(), 0, AddBytes(), AddSums()));
}

// One pass: a row is read once and its sum is needed by itself.
PixelStat stat(Source src, std::uint8_t first)
{
    Bytes min0 = broadcast(first), min1 = min0, max0 = min0, max1 = min0;
    double rowMeans = 0.0;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* row = src.data + y * src.pitch;
        Longs sum0 = zeroLongs(), sum1 = sum0;
        std::ptrdiff_t x = 0;
        for (; x + 2 * Bytes::lanes <= src.width; x += 2 * Bytes::lanes) {
            const Bytes p = load(row + x), q = load(row + x + Bytes::lanes);
            min0 = min(min0, p);
            min1 = min(min1, q);
            max0 = max(max0, p);
            max1 = max(max1, q);
            sum0 = sum0 + sumsOfEight(p);
            sum1 = sum1 + sumsOfEight(q);
        }
        for (; x < src.width; x += Bytes::lanes) {
            const bool whole = x + Bytes::lanes <= src.width;
            const Bytes p = whole ? load(row + x) : loadTail(row, src.width, first);
            min0 = min(min0, p);
            max0 = max(max0, p);
            sum0 = sum0 + sumsOfEight(whole ? p : loadTail(row, src.width));
        }
        rowMeans += static_cast<double>(total(sum0 + sum1)) / static_cast<double>(src.width);
    }
    return {foldLanes(min(min0, min1), Smaller()), foldLanes(max(max0, max1), Greater()), rowMeans};
}

}  // namespace

const PixelStatWorkers pixelStat = {minimum, maximum, sum, stat};

}  // namespace zkit::ZKIT_SET
