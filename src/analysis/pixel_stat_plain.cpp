#include "analysis/pixel_stat_workers.h"

namespace zkit::plain {
namespace {

std::uint8_t minimum(Source src)
{
    std::uint8_t min = 255;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x) {
            const std::uint8_t pixel = src.data[y * src.pitch + x];
            min = pixel < min ? pixel : min;
        }
    return min;
}

std::uint8_t maximum(Source src)
{
    std::uint8_t max = 0;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x) {
            const std::uint8_t pixel = src.data[y * src.pitch + x];
            max = pixel > max ? pixel : max;
        }
    return max;
}

std::uint32_t rowSum(const std::uint8_t* row, std::ptrdiff_t width)
{
    std::uint32_t sum = 0;
    for (std::ptrdiff_t x = 0; x < width; ++x)
        sum += row[x];
    return sum;
}

std::uint32_t sum(Source src)
{
    std::uint32_t sum = 0;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        sum += rowSum(src.data + y * src.pitch, src.width);
    return sum;
}

PixelStat stat(Source src, std::uint8_t first)
{
    PixelStat stat{first, first, 0.0};
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* row = src.data + y * src.pitch;
        for (std::ptrdiff_t x = 0; x < src.width; ++x) {
            stat.min = row[x] < stat.min ? row[x] : stat.min;
            stat.max = row[x] > stat.max ? row[x] : stat.max;
        }
        stat.rowMeans += static_cast<double>(rowSum(row, src.width)) / static_cast<double>(src.width);
    }
    return stat;
}

}  // namespace
}  // namespace zkit::plain

const zkit::PixelStatWorkers zkit::PixelStatWorkers::plain = {plain::minimum, plain::maximum, plain::sum, plain::stat};
