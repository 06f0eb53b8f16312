#include "analysis/pixel_count_workers.h"

namespace zkit::plain {
namespace {

PixelCounts count(Source src, std::uint8_t low, std::uint8_t high)
{
    PixelCounts counts{0, 0};
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x) {
            const std::uint8_t pixel = src.data[y * src.pitch + x];
            counts.below += pixel < low;
            counts.above += pixel >= low && pixel > high;
        }
    return counts;
}

}  // namespace
}  // namespace zkit::plain

const zkit::PixelCountWorkers zkit::PixelCountWorkers::plain = {plain::count};
