// Moments of a row of pixels.
#pragma once

#include "simd/plane.h"

namespace zkit {

// Sums of the weights w, of w x and of w x^2 over the columns x of a row, modulo 2^32.
struct RowMoments {
    std::uint32_t w, wx, wxx;
};

struct MomentsWorkers {
    RowMoments (*binary)(const std::uint8_t* row, std::ptrdiff_t width, std::uint8_t threshold);  // w = 1 from it on
    RowMoments (*weighed)(const std::uint8_t* row, std::ptrdiff_t width);                         // w = grey level

    static const MomentsWorkers plain, sse2, avx2;
};

}  // namespace zkit
