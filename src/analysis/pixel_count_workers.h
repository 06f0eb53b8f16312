// Counting grey pixels below and above a range.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct PixelCounts {
    std::uint32_t below;  // pixels < low
    std::uint32_t above;  // pixels > high that are not below
};

struct PixelCountWorkers {
    PixelCounts (*count)(Source, std::uint8_t low, std::uint8_t high);

    static const PixelCountWorkers plain, sse2, avx2;
};

}  // namespace zkit
