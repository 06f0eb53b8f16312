// A moving average over time, rows of `count` pixels.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

// Division of 16-bit numbers by a constant, truncated.
struct Division {
    std::uint32_t by;
    int shift;  // not 0: by = 2^shift
    // With h the upper 16 bits of n * factor, n / by = (h + ((n - h) >> before)) >> after.
    std::uint16_t factor;
    int before, after;
};

// dst is src or oldest, or apart from the others, always apart when it is streamed to; kept may be oldest.
struct AverageRows {
    const std::uint8_t* src;
    const std::uint8_t* oldest;
    std::uint8_t* sum;   // 16-bit numbers
    std::uint8_t* kept;  // gets src; null when that is kept already
    std::uint8_t* dst;
};

struct MovingAverageWorkers {
    // dst = src; sum = src times, modulo 2^16.
    void (*first)(const AverageRows& rows, std::ptrdiff_t count, std::uint32_t times);

    // dst = the low 8 bits of (sum + src) / by; sum = sum + src - oldest; all modulo 2^16.
    void (*later)(const AverageRows& rows, std::ptrdiff_t count, const Division& division, Stores stores);

    static const MovingAverageWorkers plain, sse2, avx2;
};

}  // namespace zkit
