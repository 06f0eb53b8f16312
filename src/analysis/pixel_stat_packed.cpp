#include "analysis/pixel_stat_workers.h"
#include "simd/fold.h"

namespace zkit::ZKIT_SET {
namespace {

Bytes smaller(Bytes a, Bytes b) { return min(a, b); }
Bytes greater(Bytes a, Bytes b) { return max(a, b); }

std::uint8_t minimum(Source src)
{
    const auto step = [](Bytes least, auto lanes) { return min(least, lanes.orElse(255)); };
    return foldLanes(foldRows(src, broadcast(255), step, smaller), smaller);
}

std::uint8_t maximum(Source src)
{
    const auto step = [](Bytes most, auto lanes) { return max(most, lanes.orElse(0)); };
    return foldLanes(foldRows(src, broadcast(0), step, greater), greater);
}

std::uint32_t sum(Source src)
{
    const auto step = [](Longs sums, auto lanes) { return sums + sumsOfEight(lanes.orElse(0)); };
    return total(foldRows(src, zeroLongs(), step, [](Longs a, Longs b) { return a + b; }));
}

struct Stat {
    Bytes min, max;
    Longs sums;
};

// One pass: a row is read once, and its sum is needed by itself.
PixelStat stat(Source src, std::uint8_t first)
{
    const auto step = [](Stat s, auto lanes) {
        return Stat{min(s.min, lanes.orElse(255)), max(s.max, lanes.orElse(0)), s.sums + sumsOfEight(lanes.orElse(0))};
    };
    const auto join = [](Stat a, Stat b) { return Stat{min(a.min, b.min), max(a.max, b.max), a.sums + b.sums}; };
    Stat all{broadcast(first), broadcast(first), zeroLongs()};
    double rowMeans = 0.0;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        all.sums = zeroLongs();
        all = foldRow(src.data + y * src.pitch, src.width, all, step, join);
        rowMeans += static_cast<double>(total(all.sums)) / static_cast<double>(src.width);
    }
    return {foldLanes(all.min, smaller), foldLanes(all.max, greater), rowMeans};
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::PixelStatWorkers zkit::PixelStatWorkers::ZKIT_SET = {ZKIT_SET::minimum, ZKIT_SET::maximum, ZKIT_SET::sum,
                                                                 ZKIT_SET::stat};
