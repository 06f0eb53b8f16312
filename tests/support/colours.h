// Colour operations that do with every byte what another one does with grey levels.
#pragma once

#include "support/images.h"

#include <gtest/gtest.h>

// One byte of every pixel.
inline void takeByte(const ZImage<ZC24>& colours, int byte, ZImage<ZBW8>& grey)
{
    grey.SetSize(colours.GetWidth(), colours.GetHeight());
    for (int y = 0; y < grey.GetHeight(); ++y)
        for (int x = 0; x < grey.GetWidth(); ++x)
            grey.SetPixel(static_cast<const ZBW8*>(colours.GetPixelPtr(x, y))[byte], x, y);
}

struct Size {
    int width, height;
};

// Checks that colour(src, dst) gives in every byte what grey(src, dst, byte) gives.
template <class Colour, class Grey>
void expectByteByByte(Size from, Size to, const Colour& colour, const Grey& grey)
{
    Random random(4);
    ZImage<ZC24> src(from.width, from.height), dst(to.width, to.height);
    fill(src, random);
    colour(&src, &dst);
    for (int byte = 0; byte < 3; ++byte) {
        ZImage<ZBW8> in, out, expected(to.width, to.height);
        takeByte(src, byte, in);
        takeByte(dst, byte, out);
        grey(&in, &expected, byte);
        EXPECT_EQ(bytesOf(out), bytesOf(expected)) << "byte " << byte;
    }
}
