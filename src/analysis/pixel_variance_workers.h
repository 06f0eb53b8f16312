// Sums of values, squares and products of grey and colour pixels.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct GreySums {
    std::uint32_t values;  // modulo 2^32
    double squares;        // every row's sum modulo 2^32, added up from the first row to the last
};

// Index i is byte i of the pixels.
struct ColourSums {
    std::uint32_t values[3];
};

// The sums of one row, modulo 2^32. Differences: of bytes 1 and 0, of 2 and 1, of 0 and 2.
struct ColourRowSums {
    std::uint32_t values[3], squares[3], squaredDifferences[3];
};

struct PixelVarianceWorkers {
    GreySums (*grey)(Source);
    ColourSums (*colour)(Source);  // three bytes a pixel
    ColourRowSums (*colourRow)(const std::uint8_t* row, std::ptrdiff_t width);

    static const PixelVarianceWorkers plain, sse2, avx2;
};

}  // namespace zkit
