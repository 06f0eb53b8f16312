// Minimum, maximum and sums of grey pixels.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct PixelStat {
    std::uint8_t min, max;
    double rowMeans;  // sum of the rows' means, added from the first row to the last
};

struct PixelStatWorkers {
    std::uint8_t (*minimum)(Source);                // 255 without pixels
    std::uint8_t (*maximum)(Source);                // 0 without pixels
    std::uint32_t (*sum)(Source);                   // modulo 2^32
    PixelStat (*stat)(Source, std::uint8_t first);  // min and max start at `first`

    static const PixelStatWorkers plain, sse2, avx2;
};

}  // namespace zkit
