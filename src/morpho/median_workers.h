// Medians of 3 x 3 pixels, one row at a time.
#pragma once

#include "simd/plane.h"

namespace zkit {

// The rows around a pixel.
struct MedianRows {
    const std::uint8_t *above, *here, *below;
};

struct MedianWorkers {
    // `count` bytes, more than 0, grey or interleaved colour with values `step` (1 or 3) bytes apart. `outside` is what
    // each byte of a pixel is before and behind the row. `out` shares no byte with the rows.
    void (*constant)(const MedianRows& rows, std::uint8_t* out, std::ptrdiff_t count, int step,
                     const std::uint8_t* outside);

    // The same for grey; there are copies of the outermost pixels.
    void (*replicated)(const MedianRows& rows, std::uint8_t* out, std::ptrdiff_t count);

    static const MedianWorkers plain, sse2, avx2;
};

}  // namespace zkit
