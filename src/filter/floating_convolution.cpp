// Convolution in double precision: the walk over rows, and the border of 3 x 3 kernels.
#include "filter/convolution.h"
#include "filter/floating_convolution_workers.h"
#include "filter/pairs_of_rows.h"
#include "filter/two_rows.h"
#include "frame/overlap.h"
#include "simd/choice.h"

#include <algorithm>
#include <cmath>

namespace zkit {

namespace {

// The kernel's coefficients times its gain, divided by their sum unless that is 0: every step rounded to a float.
void weigh(const ZKernel& kernel, double* coefficients, std::ptrdiff_t count)
{
    const float* const data = kernel.GetDataPtr();
    double sum = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i)
        sum += static_cast<double>(data[i]);
    float gain = kernel.GetGain();
    if (sum != 0)
        gain = static_cast<float>(static_cast<double>(gain) / sum);
    for (std::ptrdiff_t i = 0; i < count; ++i)
        coefficients[i] = static_cast<double>(data[i] * gain);
}

// Whether no sum can leave the range of 32 bits, with room for rounding and for a coefficient that the border takes
// twice; not for NaN.
bool fitting(const double* coefficients, std::ptrdiff_t count, double largestPixel)
{
    double largest = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i)
        largest += std::abs(coefficients[i]) * largestPixel;
    return largest < 1 << 29;
}

// What the border of a 3 x 3 kernel differs in: the pixel below has the coefficient of the one on the right, and offset
// and rectifier change their parts. All of this is intended.
FloatingKernel borderOf(FloatingKernel kernel, double (&coefficients)[9])
{
    std::copy_n(kernel.coefficients, 9, coefficients);
    coefficients[7] = coefficients[5];
    std::swap(kernel.rectifier, kernel.offset);
    kernel.coefficients = coefficients;
    return kernel;
}

// Whether the results are those of integers with so many bits of fraction: the coefficients are such, and so few bits
// apart that no sum of doubles is rounded.
bool makeExact(const FloatingKernel& from, FixedKernel& kernel)
{
    if (from.columns != from.rows || from.columns % 2 == 0 || from.columns == 1 ||
        from.columns > FixedKernel::largest || (from.rectifier >= 1 && from.rectifier <= 3))
        return false;
    const std::ptrdiff_t count = from.columns * from.rows;
    double largest = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i)
        largest = std::max(largest, std::abs(from.coefficients[i]));
    if (!std::isfinite(largest))
        return false;
    int exponent = 0;
    std::frexp(largest, &exponent);
    kernel.size = static_cast<int>(from.columns);
    kernel.fraction = std::min(30 - exponent, 46);
    kernel.offset = from.offset;
    if (kernel.fraction < 16)
        return false;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const double whole = std::ldexp(from.coefficients[i], kernel.fraction);
        if (!(std::trunc(whole) == whole))
            return false;
        kernel.coefficients[i] = static_cast<std::int32_t>(whole);
    }
    makePairs(kernel);
    return true;
}

// The walk for exact kernels.
bool convolveExact(const Source& src, const Target& dst, int step, const FixedKernel& kernel, const FixedKernel& border,
                   std::uint8_t outsideValue)
{
    PairsOfRows pairs(kernel.size, step, src.width, outsideValue);
    WorkRows<std::uint8_t> outside;
    if (!pairs.make() || !outside.make(1, 0, src.width, 0, outsideValue))
        return false;

    const auto& worker = workers<FixedConvolutionWorkers>();
    const auto sourceRow = [&](std::ptrdiff_t y) {
        return y >= 0 && y < src.height ? src.data + y * src.pitch : outside.row(0);
    };
    const auto prepare = [&](std::ptrdiff_t y) { pairs.prepare(y, sourceRow); };
    const auto filter = [&](std::ptrdiff_t x, std::ptrdiff_t count, std::uint8_t* upper, std::uint8_t* lower,
                            bool withBorder) {
        worker.exactRows(pairs.from(x), upper + x, lower + x, count, step, withBorder ? border : kernel);
    };
    return walkTwoRows(src, dst, step, kernel.size / 2, kernel.size == 3, prepare, filter);
}

}  // namespace

bool convolveFloating(Source src, const Target& dst, int step, const ZKernel& kernel)
{
    if (src.width <= 0 || src.height <= 0)
        return true;
    FloatingKernel weighed{nullptr,
                           kernel.GetSizeX(),
                           kernel.GetSizeY(),
                           kernel.GetRectifier(),
                           static_cast<std::int32_t>(kernel.GetOffset()),
                           false};
    const std::ptrdiff_t above = weighed.rows / 2, left = weighed.columns / 2 * step;
    const std::ptrdiff_t right = (weighed.columns - 1) * step - left, slots = std::min(weighed.rows + 1, src.height);
    const double outsideValue = kernel.GetOutsideValue();
    SeparateSource separate;
    WorkRows<double> coefficients, entries, outside;  // beside the entries of a row lie outside values
    WorkRows<const double*> around;
    if (!(inPlace(src, dst) || separate.forNeighbours(src, dst)) ||
        !coefficients.make(1, 0, weighed.rows * weighed.columns, 0, 0))
        return false;
    weigh(kernel, coefficients.row(0), weighed.rows * weighed.columns);
    weighed.coefficients = coefficients.row(0);
    weighed.fits = fitting(weighed.coefficients, weighed.rows * weighed.columns, std::max(outsideValue, 255.0));
    const bool bordered = weighed.columns == 3 && weighed.rows == 3;
    double borderCoefficients[9];
    const FloatingKernel border = bordered ? borderOf(weighed, borderCoefficients) : weighed;
    FixedKernel exact{}, exactBorder{};
    if (outsideValue <= 255 && makeExact(weighed, exact) && makeExact(border, exactBorder))
        return convolveExact(src, dst, step, exact, exactBorder, static_cast<std::uint8_t>(outsideValue));

    if (!entries.make(slots, left, src.width, right, outsideValue) ||
        !outside.make(1, left, src.width, right, outsideValue) || !around.make(2, 0, weighed.rows + 1, 0, nullptr))
        return false;
    const auto& worker = workers<FloatingConvolutionWorkers>();
    std::ptrdiff_t made = 0;
    const auto prepare = [&](std::ptrdiff_t y) {
        for (; made < std::min(y - above + weighed.rows + 1, src.height); ++made)
            worker.widen(src.data + made * src.pitch, entries.row(made % slots), src.width);
        for (std::ptrdiff_t r = 0; r <= weighed.rows; ++r) {
            const std::ptrdiff_t at = y - above + r;
            around.row(0)[r] = (at >= 0 && at < src.height ? entries.row(at % slots) : outside.row(0)) - left;
        }
    };
    const auto filter = [&](std::ptrdiff_t x, std::ptrdiff_t count, std::uint8_t* upper, std::uint8_t* lower,
                            bool withBorder) {
        const double** const from = around.row(1);
        for (std::ptrdiff_t r = 0; r <= weighed.rows; ++r)
            from[r] = around.row(0)[r] + x;
        worker.rows(from, upper + x, lower + x, count, step, withBorder ? border : weighed);
    };
    return walkTwoRows(src, dst, step, weighed.rows - 1 - above, bordered, prepare, filter);
}

}  // namespace zkit
