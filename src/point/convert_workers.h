// Pixels of one type made from pixels of another, `count` of them at any address; src and dst are apart.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

struct ConvertWorkers {
    // The low 8 bits of 16-bit pixels shifted right, the low 16 bits of 8-bit pixels shifted left, by 0 to 31 bits.
    void (*wideToGrey)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, int shift, Stores stores);
    void (*greyToWide)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, int shift, Stores stores);

    // Every byte followed by the byte 128.
    void (*greyTo422)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores);

    // Every byte three times; 85 / 256 of the sum of every three bytes.
    void (*greyToColour)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores);
    void (*colourToGrey)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores);

    static const ConvertWorkers plain, sse2, avx2;
};

}  // namespace zkit
