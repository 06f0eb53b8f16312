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

constexpr int vectors = Bytes::lanes / Doubles::lanes;
using Sums = Doubles[vectors];

[[gnu::always_inline]] inline void addProduct(Sums& sums, const double* at, double coefficient)
{
    const Doubles all = broadcastDouble(coefficient);
    unrolled<vectors>([&](int i) { sums[i] = sums[i] + loadDoubles(at + i * Doubles::lanes) * all; });
}

template <int columns>
[[gnu::always_inline]] inline void addProducts(Sums& sums, const double* at, int step, const double* coefficients)
{
    if constexpr (columns > 0) {
        addProduct(sums, at, *coefficients);
        addProducts<columns - 1>(sums, at + step, step, coefficients + 1);
    }
}

// A vector of results. `columns` is 0 for as many as the kernel has.
template <int columns>
[[gnu::flatten]] Bytes filteredVector(const double* const* rows, std::ptrdiff_t x, int step,
                                      const FloatingKernel& kernel)
{
    Sums sums;
    unrolled<vectors>([&](int i) { sums[i] = broadcastDouble(0); });
    const double* coefficients = kernel.coefficients;
    for (std::ptrdiff_t r = 0; r < kernel.rows; ++r, coefficients += kernel.columns) {
        const double* const first = rows[r] + x;
        if constexpr (columns != 0)
            addProducts<columns>(sums, first, step, coefficients);
        else
            for (std::ptrdiff_t k = 0; k < kernel.columns; ++k)
                addProduct(sums, first + k * step, coefficients[k]);
    }
    Ints values[4];
    unrolled<4>([&](int i) {
        const TwoDoubles two = {sums[2 * i], sums[2 * i + 1]};
        values[i] = rectified(kernel.fits ? toInts(two) : truncated(two), kernel.rectifier) +
                    broadcastInt(static_cast<std::uint32_t>(kernel.offset));
    });
    return narrowInOrder({values[0], values[1]}, {values[2], values[3]});
}

template <int columns>
void filterRow(const double* const* rows, std::uint8_t* out, std::ptrdiff_t count, int step,
               const FloatingKernel& kernel)
{
    if (count < Bytes::lanes) {
        std::uint8_t pixels[Bytes::lanes];
        store(pixels, filteredVector<columns>(rows, 0, step, kernel));
        __builtin_memcpy(out, pixels, static_cast<std::size_t>(count));
        return;
    }
    for (std::ptrdiff_t x = 0; x + Bytes::lanes <= count; x += Bytes::lanes)
        store(out + x, filteredVector<columns>(rows, x, step, kernel));
    const std::ptrdiff_t last = count - Bytes::lanes;  // ends with the row and repeats a few pixels
    if (count % Bytes::lanes != 0)
        store(out + last, filteredVector<columns>(rows, last, step, kernel));
}

void row(const double* const* rows, std::uint8_t* out, std::ptrdiff_t count, int step, const FloatingKernel& kernel)
{
    switch (kernel.columns) {
    case 3: return filterRow<3>(rows, out, count, step, kernel);
    case 5: return filterRow<5>(rows, out, count, step, kernel);
    case 7: return filterRow<7>(rows, out, count, step, kernel);
    case 9: return filterRow<9>(rows, out, count, step, kernel);
    default: return filterRow<0>(rows, out, count, step, kernel);
    }
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::FloatingConvolutionWorkers zkit::FloatingConvolutionWorkers::ZKIT_SET = {ZKIT_SET::widen, ZKIT_SET::row};
