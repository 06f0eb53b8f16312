// Convolution in double precision.
#pragma once

#include "simd/plane.h"

namespace zkit {

// Coefficients row by row, and how sums become pixels.
struct FloatingKernel {
    const double* coefficients;
    std::ptrdiff_t columns, rows;
    std::int32_t rectifier;  // 1 the negative response, 2 the positive one, 3 the absolute value
    std::int32_t offset;
    bool fits;  // all sums lie within the range of 32 bits
};

struct FloatingConvolutionWorkers {
    void (*widen)(const std::uint8_t* pixels, double* out, std::ptrdiff_t count);

    // Two rows of the result, of at least one pixel, of kernel.rows + 1 rows: pixel x of the upper one is made of the
    // entries x + k * step for all columns k in all rows but the last, that of the lower one in all but the first. Sums
    // are formed in the order of the coefficients and truncated toward zero (beyond 32 bits the nearest number, 0 for
    // NaN). Up to readAhead more entries may be read.
    void (*rows)(const double* const* rows, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count, int step,
                 const FloatingKernel& kernel);

    static const FloatingConvolutionWorkers plain, sse2, avx2;
};

}  // namespace zkit
