// Convolution in double precision: the walk over rows, and the border of 3 x 3 kernels.
#include "filter/convolution.h"
#include "filter/floating_convolution_workers.h"
#include "filter/work_rows.h"
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
    const std::ptrdiff_t right = (weighed.columns - 1) * step - left, slots = std::min(weighed.rows, src.height);
    const double outsideValue = kernel.GetOutsideValue();
    SeparateSource separate;
    WorkRows<double> coefficients, entries, outside;  // beside the entries of a row lie outside values
    WorkRows<const double*> around;
    if (!(inPlace(src, dst) || separate.forNeighbours(src, dst)) ||
        !coefficients.make(1, 0, weighed.rows * weighed.columns, 0, 0) ||
        !entries.make(slots, left, src.width, right, outsideValue) ||
        !outside.make(1, left, src.width, right, outsideValue) || !around.make(1, 0, weighed.rows, 0, nullptr))
        return false;
    weigh(kernel, coefficients.row(0), weighed.rows * weighed.columns);
    weighed.coefficients = coefficients.row(0);
    weighed.fits = fitting(weighed.coefficients, weighed.rows * weighed.columns, std::max(outsideValue, 255.0));
    const bool bordered = weighed.columns == 3 && weighed.rows == 3;
    double borderCoefficients[9];
    const FloatingKernel border = bordered ? borderOf(weighed, borderCoefficients) : weighed;

    const auto& worker = workers<FloatingConvolutionWorkers>();
    std::ptrdiff_t made = 0;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        for (; made < std::min(y - above + weighed.rows, src.height); ++made)
            worker.widen(src.data + made * src.pitch, entries.row(made % slots), src.width);
        const double** const rows = around.row(0);
        for (std::ptrdiff_t r = 0; r < weighed.rows; ++r) {
            const std::ptrdiff_t at = y - above + r;
            rows[r] = (at >= 0 && at < src.height ? entries.row(at % slots) : outside.row(0)) - left;
        }
        std::uint8_t* const out = dst.data + y * dst.pitch;
        const std::ptrdiff_t inside = src.width - 2 * step;
        if (!bordered) {
            worker.row(rows, out, src.width, step, weighed);
        } else if (y == 0 || y == src.height - 1 || inside <= 0) {
            worker.row(rows, out, src.width, step, border);
        } else {
            const auto part = [&](std::ptrdiff_t x, std::ptrdiff_t count, const FloatingKernel& of) {
                const double* const from3[] = {rows[0] + x, rows[1] + x, rows[2] + x};
                worker.row(from3, out + x, count, step, of);
            };
            part(0, step, border);
            part(step, inside, weighed);
            part(src.width - step, step, border);
        }
    }
    return true;
}

}  // namespace zkit
