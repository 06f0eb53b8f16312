// Combining the pixels of two rows, one worker for every code and width of pixels.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

// dst[i] = what the code makes of a[i], b[i] and, where it keeps that, dst[i]. Rows of `count` unsigned pixels at any
// address; dst is a, b or both, or apart from them; always apart when it is streamed to. Returns whether a pixel was
// divided by 0, which only the workers for division and remainder tell.
using CombineRow = bool (*)(const std::uint8_t* a, const std::uint8_t* b, std::uint8_t* dst, std::ptrdiff_t count,
                            Stores stores);

// The codes from ARITH_LOGIC_COPY to ARITH_LOGIC_SUBTRACT_MODULO; operations choose among them what they accept.
inline constexpr int combinations = 31;

struct ArithmeticWorkers {
    CombineRow bytes[combinations];
    CombineRow words[combinations];

    static const ArithmeticWorkers plain, sse2, avx2;
};

}  // namespace zkit
