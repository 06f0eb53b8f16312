// Medians of 3 x 3 pixels, a band of rows at a time.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct MedianWorkers {
    FilterBand median;

    static const MedianWorkers plain, sse2, avx2;
};

}  // namespace zkit
