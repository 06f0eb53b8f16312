// Rows of pixels fetched from where maps say. dst is apart from the source and the maps.
#pragma once

#include "simd/plane.h"

namespace zkit {

// A row of signed 16-bit coordinates of each kind, and what is added to them.
struct SeparateMaps {
    const std::uint8_t *x, *y;
    std::int32_t offsetX, offsetY;
};

// Packed workers need sizes, a source pitch and offsets of signed 16 bits, and a source with pixels.
struct WarpWorkers {
    // dst = the source pixels at the maps' coordinates, 0 where there is none.
    void (*grey)(const Source& src, const SeparateMaps& maps, std::uint8_t* dst, std::ptrdiff_t count);
    void (*colour)(const Source& src, const SeparateMaps& maps, std::uint8_t* dst, std::ptrdiff_t count);

    // The same from unsigned coordinates, x in the low and y in the high 16 bits of the map's numbers, as far as they
    // lie in the source. Returns how many pixels that are. `next` is a part of the map, as long, that is wanted soon.
    std::ptrdiff_t (*packedMap)(const Source& src, const std::uint8_t* map, std::uint8_t* dst, std::ptrdiff_t count,
                                const std::uint8_t* next);

    // Whether all of them lie there.
    bool (*inside)(const Source& src, const std::uint8_t* map, std::ptrdiff_t count);

    static const WarpWorkers plain, sse2, avx2;
};

}  // namespace zkit
