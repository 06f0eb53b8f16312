#include "analysis/histogram_workers.h"

namespace zkit::plain {
namespace {

void grey(Source src, std::uint32_t* counts)
{
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x)
            ++counts[src.data[y * src.pitch + x]];
}

void wide(Source src, WideBins bins, std::uint32_t* counts)
{
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x) {
            const std::uint8_t* pixel = src.data + y * src.pitch + 2 * x;
            const std::uint32_t bin = static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8) >> bins.shift;
            if (bin <= bins.last)
                ++counts[bin];
            else if (bins.saturates)
                ++counts[bins.last];
        }
}

}  // namespace
}  // namespace zkit::plain

const zkit::HistogramWorkers zkit::HistogramWorkers::plain = {plain::grey, plain::wide};
