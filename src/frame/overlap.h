// Regions that overlap. Operations give the result of separate regions; what that takes is decided here.
#pragma once

#include "simd/plane.h"

#include <cstdint>
#include <memory>

namespace zkit {

// Whether source and destination share a byte; widths count bytes.
bool overlap(Source src, const Target& dst);

// Whether every pixel is read at the address at which it is written.
bool inPlace(const Source& src, const Target& dst);

// A source that an operation may read while it writes its destination: the pixels themselves where that is the same,
// else a copy of them that lives as long as this object.
class SeparateSource {
public:
    // For operations that write each pixel where they have just read it: a copy for any overlap but the exact one.
    // Widths count pixels of the given sizes. Raises 1303 and returns false when there is no memory for the copy.
    bool forPoints(Source& src, int srcPixelSize, const Target& dst, int dstPixelSize);

    // For operations that read around the pixel that they write: a copy for any overlap. Widths count bytes.
    bool forNeighbours(Source& src, const Target& dst);

private:
    bool copy(Source& src, std::ptrdiff_t rowBytes);

    std::unique_ptr<std::uint8_t[]> pixels_;
};

}  // namespace zkit
