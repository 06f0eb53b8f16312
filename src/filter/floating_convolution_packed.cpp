#include "filter/floating_convolution_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

void widen(const std::uint8_t* pixels, double* out, std::ptrdiff_t count)
{
    std::ptrdiff_t x = 0;
    for (; x + Ints::lanes <= count; x += Ints::lanes) {
        const TwoDoubles widened = toDoubles(widenToInts(pixels + x));
        store(out + x, widened.low);
        store(out + x + Doubles::lanes, widened.high);
    }
    for (; x < count; ++x)
        out[x] = pixels[x];
}

inline Ints rectified(Ints value, std::int32_t rectifier)
{
    const Ints sign = shiftRightSigned(value, 31);
    switch (rectifier) {
    case 1: return (broadcastInt(0) - value) & sign;
    case 2: return value & (sign ^ broadcastInt(0xFFFFFFFF));
    case 3: return (value ^ sign) - sign;
    default: return value;
    }
}

// Sums for half as many pixels as a vector has bytes, in two rows: what is loaded serves both.
constexpr int vectors = Bytes::lanes / Doubles::lanes / 2;
using Sums = Doubles[vectors];

// What a row of entries is part of.
enum Part { ofUpper = 1, ofLower = 2, ofBoth = ofUpper | ofLower };

// Adds the products of one column. The coefficient for the lower sums is that of the row before.
template <int part>
[[gnu::always_inline]] inline void addColumn(Sums& upper, Sums& lower, const double* at, const double* coefficient,
                                             std::ptrdiff_t columns)
{
    const Doubles forUpper = broadcastDouble((part & ofUpper) != 0 ? *coefficient : 0);
    const Doubles forLower = broadcastDouble((part & ofLower) != 0 ? *(coefficient - columns) : 0);
    unrolled<vectors>([&](int i) {
        const Doubles pixels = loadOnce(at + i * Doubles::lanes);
        if constexpr ((part & ofUpper) != 0)
            addTo(upper[i], pixels * forUpper);
        if constexpr ((part & ofLower) != 0)
            addTo(lower[i], pixels * forLower);
    });
}

// The same of a row. `columns` is 0 for as many as the kernel has.
template <int part, int columns>
[[gnu::always_inline]] inline void addRow(Sums& upper, Sums& lower, const double* at, int step,
                                          const double* coefficients, std::ptrdiff_t count)
{
    if constexpr (columns > 0) {
        addColumn<part>(upper, lower, at, coefficients, count);
        if constexpr (columns > 1)
            addRow<part, columns - 1>(upper, lower, at + step, step, coefficients + 1, count);
    } else {
        for (std::ptrdiff_t k = 0; k < count; ++k)
            addColumn<part>(upper, lower, at + k * step, coefficients + k, count);
    }
}

// The values of half a vector of results.
[[gnu::always_inline]] inline TwoInts toValues(const Sums& sums, const FloatingKernel& kernel)
{
    const auto value = [&](int i) {
        const TwoDoubles two = {sums[2 * i], sums[2 * i + 1]};
        return rectified(kernel.fits ? toInts(two) : truncated(two), kernel.rectifier) +
               broadcastInt(static_cast<std::uint32_t>(kernel.offset));
    };
    return {value(0), value(1)};
}

template <int columns>
[[gnu::flatten]] void filterVector(const double* const* rows, std::ptrdiff_t x, int step, const FloatingKernel& kernel,
                                   std::uint8_t* upperOut, std::uint8_t* lowerOut)
{
    TwoInts upperValues[2], lowerValues[2];
    for (int half = 0; half < 2; ++half, x += Bytes::lanes / 2) {
        Sums upper, lower;
        unrolled<vectors>([&](int i) { upper[i] = lower[i] = broadcastDouble(0); });
        const double* coefficients = kernel.coefficients;
        addRow<ofUpper, columns>(upper, lower, rows[0] + x, step, coefficients, kernel.columns);
        for (std::ptrdiff_t r = 1; r < kernel.rows; ++r) {
            coefficients += kernel.columns;
            addRow<ofBoth, columns>(upper, lower, rows[r] + x, step, coefficients, kernel.columns);
        }
        coefficients += kernel.columns;
        addRow<ofLower, columns>(upper, lower, rows[kernel.rows] + x, step, coefficients, kernel.columns);
        upperValues[half] = toValues(upper, kernel);
        lowerValues[half] = toValues(lower, kernel);
    }
    store(upperOut, narrowInOrder(upperValues[0], upperValues[1]));
    store(lowerOut, narrowInOrder(lowerValues[0], lowerValues[1]));
}

template <int columns>
void filterRows(const double* const* rows, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count, int step,
                const FloatingKernel& kernel)
{
    if (count < Bytes::lanes) {
        std::uint8_t pixels[2][Bytes::lanes];
        filterVector<columns>(rows, 0, step, kernel, pixels[0], pixels[1]);
        __builtin_memcpy(upper, pixels[0], static_cast<std::size_t>(count));
        __builtin_memcpy(lower, pixels[1], static_cast<std::size_t>(count));
        return;
    }
    for (std::ptrdiff_t x = 0; x + Bytes::lanes <= count; x += Bytes::lanes)
        filterVector<columns>(rows, x, step, kernel, upper + x, lower + x);
    const std::ptrdiff_t last = count - Bytes::lanes;  // ends with the row and repeats a few pixels
    if (count % Bytes::lanes != 0)
        filterVector<columns>(rows, last, step, kernel, upper + last, lower + last);
}

void rows(const double* const* rows, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count, int step,
          const FloatingKernel& kernel)
{
    const auto filter = kernel.columns == 3   ? filterRows<3>
                        : kernel.columns == 5 ? filterRows<5>
                        : kernel.columns == 7 ? filterRows<7>
                        : kernel.columns == 9 ? filterRows<9>
                                              : filterRows<0>;
    filter(rows, upper, lower, count, step, kernel);
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::FloatingConvolutionWorkers zkit::FloatingConvolutionWorkers::ZKIT_SET = {ZKIT_SET::widen, ZKIT_SET::rows};
