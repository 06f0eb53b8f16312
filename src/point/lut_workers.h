// Applying a table of 256 bytes.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

struct LutWorkers {
    // dst[i] = table[src[i]]; dst is src or apart from it, always apart when it is streamed to.
    void (*row)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* table,
                Stores stores);

    static const LutWorkers plain, sse2, avx2;
};

}  // namespace zkit
