// Minima and maxima over squares, of whole regions.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

// Squares of 2 reach + 1 pixels a side on bytes, grey or interleaved colour, whose values are `step` (1 or 3) bytes
// apart.
struct Squares {
    int reach;  // at least 1
    int step;
    std::uint8_t outside[3];      // what every byte of a pixel is outside the region
    std::uint8_t outsideNext[3];  // the same in the second of two steps
};

struct MorphologyWorkers {
    struct Worker {
        // Source and destination are the same pixels or apart; their widths count bytes and are not 0, nor are the
        // heights.
        void (*filter)(const Source& src, const Target& dst, const Squares& squares, Stores stores,
                       std::uint8_t* memory);

        // How many bytes of memory it takes.
        std::int64_t (*memory)(const Source& src, const Target& dst, const Squares& squares);
    };

    // An opening is an erosion and then a dilation, a closing is the other way round. The top-hats are what these take
    // from the source or add to it, which is apart.
    Worker erode, dilate, open, close, whiteTopHat, blackTopHat;

    static const MorphologyWorkers plain, sse2, avx2;
};

}  // namespace zkit
