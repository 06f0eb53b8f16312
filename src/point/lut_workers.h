// Applying a table of 256 bytes.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct LutWorkers {
    // dst[i] = table[src[i]]; dst is src or apart from it.
    void (*row)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* table);

    static const LutWorkers plain, sse2, avx2;
};

}  // namespace zkit
