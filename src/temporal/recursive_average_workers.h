// A recursive average over time, rows of `count` pixels.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

struct RecursiveAverageWorkers {
    // With `state` 16-bit numbers: sum = state + table[4095 + d], a signed number, with d = 16 src - state, at least
    // -4095; state = sum modulo 2^16; dst = sum / 16, rounded down, clipped to 0..255. The state is apart from the
    // others, dst is src or apart from it, always apart when it is streamed to.
    void (*row)(const std::uint8_t* src, std::uint8_t* state, std::uint8_t* dst, std::ptrdiff_t count,
                const std::uint16_t* table, Stores stores);

    static const RecursiveAverageWorkers plain, sse2, avx2;
};

}  // namespace zkit
