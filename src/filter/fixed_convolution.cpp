// Convolution in fixed point: kernels to integers, and the walk over pairs of rows.
#include "filter/convolution.h"
#include "filter/pairs_of_rows.h"
#include "filter/two_rows.h"
#include "frame/numbers.h"
#include "frame/overlap.h"
#include "frame/walk.h"
#include "simd/choice.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <limits>

namespace zkit {

namespace {

// Coefficients of two rows for the two pixels of an entry.
std::uint32_t entry(std::int32_t above, std::int32_t below)
{
    return (static_cast<std::uint32_t>(above) & 0xFFFF) | static_cast<std::uint32_t>(below) << 16;
}

}  // namespace

void makePairs(FixedKernel& kernel)
{
    const auto at = [&](int row, int column) -> std::int64_t {
        return row >= 0 && row < kernel.size ? kernel.coefficients[row * kernel.size + column] : 0;
    };
    const auto low = [](std::int64_t coefficient) { return static_cast<std::int16_t>(coefficient); };
    const auto high = [&](std::int64_t coefficient) {
        return static_cast<std::int16_t>((coefficient - low(coefficient)) >> 16);
    };
    kernel.wide = false;
    kernel.sidesAlike = true;
    kernel.negative = false;
    for (int parity = 0; parity < 2; ++parity)
        for (int p = 0; p <= kernel.size / 2; ++p)
            for (int k = 0; k < kernel.size; ++k) {
                const std::int64_t above = at(2 * p - parity, k), below = at(2 * p + 1 - parity, k);
                kernel.low[parity][p][k] = entry(low(above), low(below));
                kernel.high[parity][p][k] = entry(high(above), high(below));
                kernel.wide |= kernel.high[parity][p][k] != 0;
                kernel.negative |= above < 0;
                kernel.sidesAlike &= above == at(2 * p - parity, kernel.size - 1 - k);
            }
}

namespace {

// Takes as many bits of fraction away as are 0 everywhere, so that whole coefficients fit 16 bits, unless a sum can
// wrap.
void shorten(FixedKernel& kernel)
{
    std::int64_t largest = std::abs(std::int64_t{kernel.offset});
    auto bits = static_cast<std::uint32_t>(kernel.offset);
    for (const std::int32_t coefficient : kernel.coefficients) {
        largest += std::abs(std::int64_t{coefficient}) * 255;
        bits |= static_cast<std::uint32_t>(coefficient);
    }
    if (largest > std::numeric_limits<std::int32_t>::max())
        return;
    const int spare = std::min(std::countr_zero(bits), kernel.fraction);
    for (std::int32_t& coefficient : kernel.coefficients)
        coefficient >>= spare;
    kernel.offset >>= spare;
    kernel.fraction -= spare;
}

// The kernel whose coefficients add up to `sum`; coefficientAt(i) is the one at index i.
template <class CoefficientAt>
FixedKernel makeKernel(const ZKernel& from, double sum, CoefficientAt coefficientAt)
{
    const bool negative = from.GetRectifier() == 1;
    const double gain = sum != 0 ? static_cast<double>(from.GetGain()) / sum : static_cast<double>(from.GetGain());
    const double signedGain = negative ? -gain : gain;
    const std::uint32_t offset = from.GetOffset() * 32768U;

    FixedKernel kernel{};
    kernel.size = from.GetSizeX();
    for (int i = 0; i < kernel.size * kernel.size; ++i)
        kernel.coefficients[i] = truncated(static_cast<double>(coefficientAt(i)) * signedGain * 32768.0);
    kernel.offset = static_cast<std::int32_t>(negative ? 0U - offset : offset);
    kernel.fraction = 15;
    kernel.absolute = from.GetRectifier() == 3;
    shorten(kernel);
    makePairs(kernel);
    return kernel;
}

// The index that stands in the upper left octant for the one at row and column.
int octantIndex(int size, int row, int column)
{
    const int fromTop = std::min(row, size - 1 - row), fromLeft = std::min(column, size - 1 - column);
    return std::min(fromTop, fromLeft) * size + std::max(fromTop, fromLeft);
}

}  // namespace

FixedKernel fixedKernel(const ZKernel& kernel)
{
    const float* const data = kernel.GetDataPtr();
    double sum = 0;
    for (int i = 0; i < kernel.GetSizeX() * kernel.GetSizeY(); ++i)
        sum += static_cast<double>(data[i]);
    return makeKernel(kernel, sum, [=](int i) { return data[i]; });
}

FixedKernel symmetricFixedKernel(const ZKernel& kernel)
{
    const float* const data = kernel.GetDataPtr();
    const int size = kernel.GetSizeX(), half = size / 2;
    double sum = 0;
    for (int row = 0; row <= half; ++row)
        for (int column = row; column <= half; ++column) {
            const int alike = column == half ? (row == half ? 1 : 4) : row == column ? 4 : 8;
            sum += alike * static_cast<double>(data[row * size + column]);
        }
    return makeKernel(kernel, sum, [=](int i) { return data[octantIndex(size, i / size, i % size)]; });
}

bool convolveFixed(Source src, const Target& dst, int step, const FixedKernel& kernel)
{
    if (src.width <= 0 || src.height <= 0)
        return true;
    const auto& worker = workers<FixedConvolutionWorkers>();
    if (kernel.size == 3 && !kernel.wide)
        return filterRows(src, dst, {step, true, {}},
                          [&](const std::uint8_t* const* rows, const Target& out, const Border& border) {
                              worker.band(rows, out, border.step, kernel);
                          });
    SeparateSource separate;
    PairsOfRows pairs(kernel.size, step, src.width, std::nullopt);
    if (!(inPlace(src, dst) || separate.forNeighbours(src, dst)) || !pairs.make())
        return false;

    const auto sourceRow = [&](std::ptrdiff_t y) {
        return src.data + std::clamp<std::ptrdiff_t>(y, 0, src.height - 1) * src.pitch;
    };
    const auto prepare = [&](std::ptrdiff_t y) { pairs.prepare(y, sourceRow); };
    const auto filter = [&](std::ptrdiff_t x, std::ptrdiff_t count, std::uint8_t* upper, std::uint8_t* lower, bool) {
        worker.rows(pairs.from(x), upper + x, lower + x, count, step, kernel);
    };
    return walkTwoRows(src, dst, step, kernel.size / 2, false, prepare, filter);
}

}  // namespace zkit
