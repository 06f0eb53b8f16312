// Counting the pixels in which two regions differ.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct PixelCompareWorkers {
    std::uint32_t (*grey)(Source, Source);
    std::uint32_t (*colour)(Source, Source);  // three bytes a pixel
};

namespace plain {
extern const PixelCompareWorkers pixelCompare;
}
namespace sse2 {
extern const PixelCompareWorkers pixelCompare;
}
namespace avx2 {
extern const PixelCompareWorkers pixelCompare;
}

}  // namespace zkit
