// Pixel types. Images are row-major; a row of three-byte colour pixels has no gaps between its pixels.
#pragma once

#include <complex>

using ZBW8 = unsigned char;              ///< grey, 0 black to 255 white
using ZBW16 = unsigned short;            ///< grey of 16 bits
using ZBW32 = unsigned int;              ///< sums and other 32-bit values
using ZComplex64 = std::complex<float>;  ///< a frequency-domain value

/// Binary, eight pixels a byte: the first pixel of a byte is its most significant bit (mask 0x80), the next 0x40, and
/// so on. As the value of a single pixel (ZROI::GetPixel, ZROI::SetPixel) `bits` is 0 or not 0.
struct ZBW1 {
    unsigned char bits;
};

/// Colour, three bytes in memory order. Component i of the colour library and of a ZColor is byte 2 - i, so that a
/// pixel stored as blue, green, red has red as its component 0.
struct ZC24 {
    unsigned char c0, c1, c2;
};

/// One float per colour component, in the order of the components.
union ZColor {
    float c[3];

    ZColor() = default;  ///< the values are left unset
    ZColor(float component0, float component1, float component2) : c{component0, component1, component2} {}
};
