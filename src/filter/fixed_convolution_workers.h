// Convolution in fixed point. Rows come in pairs: an entry is the pixel of the upper row, and in its upper 16 bits that
// of the lower row.
#pragma once

#include "simd/plane.h"

namespace zkit {

// A kernel of size x size, 3, 5, 7 or 9, and how sums become pixels. All numbers wrap at 32 bits.
struct FixedKernel {
    static constexpr int largest = 9;

    int size;
    std::int32_t coefficients[largest * largest];
    std::int32_t offset;
    int fraction;  // bits of fraction that the coefficients and the offset have
    bool absolute;

    // The coefficients for packed workers, for both pixels of an entry, of the upper and of the lower of two
    // destination rows. `high` holds their upper 16 bits where some do not fit into the signed 16 of `low`.
    using Pairs = std::uint32_t[(largest + 1) / 2][largest];  // [pair of rows][column]
    Pairs low[2], high[2];
    bool wide;
    bool sidesAlike;  // whether the columns on either side of the middle are the same
    bool negative;    // whether there are coefficients below 0
};

struct FixedConvolutionWorkers {
    // out[x] = above[x] + below[x] * 65536
    void (*pair)(const std::uint8_t* above, const std::uint8_t* below, std::uint32_t* out, std::ptrdiff_t count);

    // Two rows of the result, of (size + 1) / 2 pairs of rows. There is at least one pixel. Entries to the left and
    // right of those for `count` pixels belong to the pixels outside, `step` entries apart, and up to readAhead more
    // may be read.
    void (*rows)(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count,
                 int step, const FixedKernel& kernel);

    // Rows of the result, as a FilterBand, of a 3 x 3 kernel without wide coefficients; the pixels at the ends of rows
    // are repeated.
    void (*band)(const std::uint8_t* const* rows, const Target& out, int step, const FixedKernel& kernel);

    // Like `rows`, but sums are as wide as they need, and the offset, which has no fraction, is added to the quotients,
    // which are truncated toward zero. The fraction has 16 to 46 bits and coefficients are below 2^30.
    void (*exactRows)(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count,
                      int step, const FixedKernel& kernel);

    static const FixedConvolutionWorkers plain, sse2, avx2;
};

}  // namespace zkit
