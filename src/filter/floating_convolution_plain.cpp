#include "filter/floating_convolution_workers.h"
#include "frame/numbers.h"

namespace zkit::plain {
namespace {

void widen(const std::uint8_t* pixels, double* out, std::ptrdiff_t count)
{
    for (std::ptrdiff_t x = 0; x < count; ++x)
        out[x] = pixels[x];
}

// Wraps at 32 bits.
std::int32_t negated(std::int32_t value) { return static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(value)); }

std::int32_t rectified(std::int32_t value, std::int32_t rectifier)
{
    switch (rectifier) {
    case 1: return value <= 0 ? negated(value) : 0;
    case 2: return value >= 0 ? value : 0;
    case 3: return value >= 0 ? value : negated(value);
    default: return value;
    }
}

void row(const double* const* rows, std::uint8_t* out, std::ptrdiff_t count, int step, const FloatingKernel& kernel)
{
    for (std::ptrdiff_t x = 0; x < count; ++x) {
        double sum = 0;
        for (std::ptrdiff_t r = 0; r < kernel.rows; ++r)
            for (std::ptrdiff_t k = 0; k < kernel.columns; ++k)
                sum += rows[r][x + k * step] * kernel.coefficients[r * kernel.columns + k];
        const auto value = static_cast<std::uint32_t>(rectified(truncated(sum), kernel.rectifier));
        out[x] = clipped(static_cast<std::int32_t>(value + static_cast<std::uint32_t>(kernel.offset)));
    }
}

void rows(const double* const* rows, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count, int step,
          const FloatingKernel& kernel)
{
    row(rows, upper, count, step, kernel);
    row(rows + 1, lower, count, step, kernel);
}

}  // namespace
}  // namespace zkit::plain

const zkit::FloatingConvolutionWorkers zkit::FloatingConvolutionWorkers::plain = {plain::widen, plain::rows};
