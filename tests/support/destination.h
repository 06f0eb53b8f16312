// Running an operation from one region into another under all the circumstances that must not matter.
#pragma once

#include "support/images.h"
#include "zkit/core/pixel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>

template <class T>
using Operation = std::function<void(ZROI<T>* src, ZROI<T>* dst)>;

// Copies the pixels of a region.
template <class T>
void copyPixels(const ZROI<T>& from, ZROI<T>& to)
{
    const auto rowBytes = static_cast<std::size_t>(from.GetWidth() * from.GetPixelSize());
    for (int y = 0; y < from.GetHeight(); ++y)
        std::memcpy(to.GetPixelPtr(0, y), from.GetPixelPtr(0, y), rowBytes);
}

// What the operation gives with separate images of exactly the region's size.
template <class T>
std::vector<std::uint8_t> separateResult(const Operation<T>& operation, ZROI<T>& region)
{
    ZImage<T> src(region.GetWidth(), region.GetHeight()), dst(region.GetWidth(), region.GetHeight());
    copyPixels<T>(region, src);
    operation(&src, &dst);
    return bytesOf<T>(dst);
}

// A buffer of its own on the heap, at any address and pitch, without a byte after the last pixel.
template <class T>
struct ExactBuffer {
    ExactBuffer(Random& random, int width, int height)
    {
        const int offset = random(0, 9), rowBytes = width * static_cast<int>(sizeof(T)),
                  pitch = rowBytes + random(0, 9);
        bytes.reset(new std::uint8_t[static_cast<std::size_t>(offset + pitch * (height - 1) + rowBytes)]);
        const bool bottomUp = random(0, 3) == 0;
        image.Attach(bytes.get() + offset + (bottomUp ? pitch * (height - 1) : 0), width, height,
                     bottomUp ? -pitch : pitch);
    }

    std::unique_ptr<std::uint8_t[]> bytes;
    ZImage<T> image;
};

// Checks that the operation gives the same pixels with both kinds of workers, from and into regions of larger images,
// in buffers of a caller's, in place, and between regions that overlap; and that it changes nothing else.
template <class T>
void expectSameEverywhere(const Operation<T>& operation, int rounds)
{
    Random random(77);
    for (int round = 0; round < rounds; ++round) {
        const int width = random(1, round % 4 == 0 ? 300 : 40), height = random(1, 12);
        SCOPED_TRACE(testing::Message() << "round " << round << ": " << width << 'x' << height);
        ZSetMMX(round % 2);

        // Two regions of one image, apart, overlapping or the same.
        ZImage<T> image(2 * width + 8, 2 * height + 8);
        fill(image, random);
        const int near = round % 3;  // 0 the same place, 1 near it, 2 anywhere
        const int sx = random(0, width + 8), sy = random(0, height + 8);
        const auto place = [&](int at, int size) {
            return near == 0 ? at : near == 1 ? std::clamp(at + random(-3, 3), 0, size + 8) : random(0, size + 8);
        };
        const int dx = place(sx, width), dy = place(sy, height);
        ZROI<T> src(&image, sx, sy, width, height), dst(&image, dx, dy, width, height);
        ZSetMMX(0);
        const std::vector<std::uint8_t> expected = separateResult(operation, src);
        ZSetMMX(round % 2);
        EXPECT_EQ(separateResult(operation, src), expected);

        ZImage<T> before(image.GetWidth(), image.GetHeight());
        copyPixels<T>(image, before);
        ExactBuffer<T> in(random, width, height), out(random, width, height);
        copyPixels(src, in.image);
        operation(&src, &dst);
        EXPECT_EQ(bytesOf(dst), expected);
        for (int y = 0; y < image.GetHeight(); ++y)
            for (int x = 0; x < image.GetWidth(); ++x) {
                const bool inside = x >= dx && y >= dy && x < dx + width && y < dy + height;
                const bool same = std::memcmp(image.GetPixelPtr(x, y), before.GetPixelPtr(x, y), sizeof(T)) == 0;
                ASSERT_TRUE(inside || same) << "pixel " << x << ',' << y << " outside the destination";
            }

        operation(&in.image, &out.image);
        EXPECT_EQ(bytesOf(out.image), expected);
    }
    ZSetMMX(1);
}
