#include "filter/fixed_convolution_workers.h"
#include "frame/numbers.h"

namespace zkit::plain {
namespace {

void pair(const std::uint8_t* above, const std::uint8_t* below, std::uint32_t* out, std::ptrdiff_t count)
{
    for (std::ptrdiff_t x = 0; x < count; ++x)
        out[x] = static_cast<std::uint32_t>(above[x] | below[x] << 16);
}

std::uint8_t pixel(std::uint32_t sum, const FixedKernel& kernel)
{
    std::int32_t value = static_cast<std::int32_t>(sum) >> kernel.fraction;
    if (kernel.absolute && value < 0)
        value = -value;
    return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

std::uint8_t exactPixel(std::int64_t sum, const FixedKernel& kernel)
{
    const auto quotient = static_cast<std::uint32_t>(sum / (std::int64_t{1} << kernel.fraction));
    return clipped(static_cast<std::int32_t>(quotient + static_cast<std::uint32_t>(kernel.offset)));
}

// The result whose neighbourhood begins with row `first`, 0 or 1, of the pairs.
template <class Sum, std::uint8_t pixelOf(Sum, const FixedKernel&)>
void row(const std::uint32_t* const* pairs, int first, std::uint8_t* out, std::ptrdiff_t count, int step,
         const FixedKernel& kernel, Sum begin)
{
    for (std::ptrdiff_t x = 0; x < count; ++x) {
        Sum sum = begin;
        for (int r = 0; r < kernel.size; ++r)
            for (int k = 0; k < kernel.size; ++k) {
                const std::uint32_t entry = pairs[(first + r) / 2][x + (k - kernel.size / 2) * step];
                const std::uint32_t neighbour = (first + r) % 2 == 0 ? entry & 0xFFFF : entry >> 16;
                sum += static_cast<Sum>(kernel.coefficients[r * kernel.size + k]) * static_cast<Sum>(neighbour);
            }
        out[x] = pixelOf(sum, kernel);
    }
}

void rows(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count, int step,
          const FixedKernel& kernel)
{
    const auto offset = static_cast<std::uint32_t>(kernel.offset);
    row<std::uint32_t, pixel>(pairs, 0, upper, count, step, kernel, offset);
    row<std::uint32_t, pixel>(pairs, 1, lower, count, step, kernel, offset);
}

void exactRows(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count,
               int step, const FixedKernel& kernel)
{
    row<std::int64_t, exactPixel>(pairs, 0, upper, count, step, kernel, 0);
    row<std::int64_t, exactPixel>(pairs, 1, lower, count, step, kernel, 0);
}

void band(const std::uint8_t* const* rows, const Target& out, int step, const FixedKernel& kernel)
{
    for (std::ptrdiff_t y = 0; y < out.height; ++y)
        for (std::ptrdiff_t x = 0; x < out.width; ++x) {
            auto sum = static_cast<std::uint32_t>(kernel.offset);
            for (int r = 0; r < 3; ++r) {
                const std::uint8_t left = rows[y + r][x < step ? x : x - step];
                const std::uint8_t right = rows[y + r][x + step < out.width ? x + step : x];
                sum += static_cast<std::uint32_t>(kernel.coefficients[3 * r]) * left +
                       static_cast<std::uint32_t>(kernel.coefficients[3 * r + 1]) * rows[y + r][x] +
                       static_cast<std::uint32_t>(kernel.coefficients[3 * r + 2]) * right;
            }
            out.data[y * out.pitch + x] = pixel(sum, kernel);
        }
}

}  // namespace
}  // namespace zkit::plain

const zkit::FixedConvolutionWorkers zkit::FixedConvolutionWorkers::plain = {plain::pair, plain::rows, plain::band,
                                                                            plain::exactRows};
