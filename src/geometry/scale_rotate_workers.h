// Rows of pixels fetched from anywhere in a source plane of less than 2 GiB. dst is apart from the source.
#pragma once

#include "simd/plane.h"

namespace zkit {

// Source coordinates along a row in 1/65536: those of its first pixel and the steps from pixel to pixel. They wrap.
struct Coordinates {
    std::uint32_t x, y, dx, dy;
};

struct ScaleRotateWorkers {
    // The source pixels at the coordinates rounded down, 0 outside.
    void (*nearest)(const Source& src, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at);

    // Mixtures of the four source pixels around the coordinates with weights of `bits` bits (4 or 8), 0 where one of
    // the four lies outside.
    void (*bilinear)(const Source& src, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at, int bits);

    static const ScaleRotateWorkers plain, sse2, avx2;
};

}  // namespace zkit
