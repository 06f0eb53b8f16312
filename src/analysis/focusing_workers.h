// Differences of neighbouring bytes of a row.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct FocusingWorkers {
    // Sum over i < count of (here[i] - here[i + step])^2 + (here[i] - below[i])^2, modulo 2^32.
    std::uint32_t (*row)(const std::uint8_t* here, const std::uint8_t* below, std::ptrdiff_t count, int step);

    static const FocusingWorkers plain, sse2, avx2;
};

}  // namespace zkit
