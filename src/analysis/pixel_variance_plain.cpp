#include "analysis/pixel_variance_workers.h"

namespace zkit::plain {
namespace {

GreySums grey(Source src)
{
    GreySums sums{0, 0.0};
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        std::uint32_t squares = 0;
        for (std::ptrdiff_t x = 0; x < src.width; ++x) {
            const std::uint32_t pixel = src.data[y * src.pitch + x];
            sums.values += pixel;
            squares += pixel * pixel;
        }
        sums.squares += squares;
    }
    return sums;
}

ColourSums colour(Source src)
{
    ColourSums sums{};
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x)
            for (int i = 0; i < 3; ++i)
                sums.values[i] += src.data[y * src.pitch + 3 * x + i];
    return sums;
}

ColourRowSums colourRow(const std::uint8_t* row, std::ptrdiff_t width)
{
    ColourRowSums sums{};
    for (std::ptrdiff_t x = 0; x < width; ++x)
        for (int i = 0; i < 3; ++i) {
            const int value = row[3 * x + i], difference = row[3 * x + (i + 1) % 3] - value;
            sums.values[i] += static_cast<std::uint32_t>(value);
            sums.squares[i] += static_cast<std::uint32_t>(value * value);
            sums.squaredDifferences[i] += static_cast<std::uint32_t>(difference * difference);
        }
    return sums;
}

}  // namespace
}  // namespace zkit::plain

const zkit::PixelVarianceWorkers zkit::PixelVarianceWorkers::plain = {plain::grey, plain::colour, plain::colourRow};
