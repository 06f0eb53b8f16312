// Evening out light, rows of `count` pixels. dst is one of the sources or apart from them, always apart when it is
// streamed to.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

struct UniformizeWorkers {
    // dst = src level / reference, truncated, at most 255; 255 where the reference is 0.
    void (*light)(const std::uint8_t* src, const std::uint8_t* reference, std::uint8_t* dst, std::ptrdiff_t count,
                  int level, Stores stores);

    // dst = (src - dark) range / (light - dark) + darkLevel, the quotient truncated toward zero and 0 where light and
    // dark are equal, clipped to 0..255.
    void (*lightAndDark)(const std::uint8_t* src, const std::uint8_t* light, const std::uint8_t* dark,
                         std::uint8_t* dst, std::ptrdiff_t count, int range, int darkLevel, Stores stores);

    static const UniformizeWorkers plain, sse2, avx2;
};

}  // namespace zkit
