#include "filter/fixed_convolution_workers.h"

namespace zkit::plain {
namespace {

void pair(const std::uint8_t* above, const std::uint8_t* below, std::uint32_t* out, std::ptrdiff_t count)
{
    for (std::ptrdiff_t x = 0; x < count; ++x)
        out[x] = static_cast<std::uint32_t>(above[x] | below[x] << 16);
}

std::uint8_t pixel(std::uint32_t sum, bool absolute)
{
    std::int32_t value = static_cast<std::int32_t>(sum) >> 15;
    if (absolute && value < 0)
        value = -value;
    return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

// The result whose neighbourhood begins with row `first`, 0 or 1, of the pairs.
void row(const std::uint32_t* const* pairs, int first, std::uint8_t* out, std::ptrdiff_t count, int step,
         const FixedKernel& kernel)
{
    for (std::ptrdiff_t x = 0; x < count; ++x) {
        auto sum = static_cast<std::uint32_t>(kernel.offset);
        for (int r = 0; r < kernel.size; ++r)
            for (int k = 0; k < kernel.size; ++k) {
                const std::uint32_t entry = pairs[(first + r) / 2][x + (k - kernel.size / 2) * step];
                const std::uint32_t neighbour = (first + r) % 2 == 0 ? entry & 0xFFFF : entry >> 16;
                sum += static_cast<std::uint32_t>(kernel.coefficients[r * kernel.size + k]) * neighbour;
            }
        out[x] = pixel(sum, kernel.absolute);
    }
}

void rows(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count, int step,
          const FixedKernel& kernel)
{
    row(pairs, 0, upper, count, step, kernel);
    row(pairs, 1, lower, count, step, kernel);
}

}  // namespace
}  // namespace zkit::plain

const zkit::FixedConvolutionWorkers zkit::FixedConvolutionWorkers::plain = {plain::pair, plain::rows};
