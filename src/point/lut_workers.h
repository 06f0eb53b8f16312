// Applying a table of 256 bytes.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct LutWorkers {
    // dst[i] = table[src[i]]; dst is src or apart from it.
    void (*row)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* table);
};

namespace plain {
extern const LutWorkers lut;
}
namespace sse2 {
extern const LutWorkers lut;
}
namespace avx2 {
extern const LutWorkers lut;
}

}  // namespace zkit
