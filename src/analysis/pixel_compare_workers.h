// Counting the pixels in which two regions differ.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct PixelCompareWorkers {
    std::uint32_t (*grey)(Source, Source);
    std::uint32_t (*colour)(Source, Source);  // three bytes a pixel

    static const PixelCompareWorkers plain, sse2, avx2;
};

}  // namespace zkit
