// Images and regions for tests.
#pragma once

#include "zkit/core/cpu.h"
#include "zkit/core/roi.h"

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

// The same numbers on every platform.
class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}

    int operator()(int low, int high)  // both included
    {
        const auto range = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low + 1);
        return static_cast<int>(low + static_cast<std::int64_t>(engine_() % range));
    }

private:
    std::mt19937 engine_;
};

template <class T>
void fill(ZROI<T>& region, Random& random)
{
    for (int y = 0; y < region.GetHeight(); ++y)
        for (int x = 0; x < region.GetWidth(); ++x)
            for (int i = 0; i < static_cast<int>(sizeof(T)); ++i)
                static_cast<unsigned char*>(region.GetPixelPtr(x, y))[i] = static_cast<unsigned char>(random(0, 255));
}

// Sets all pixels from text, a digit a pixel: "123 456" has two rows of three pixels.
inline void draw(ZImage<ZBW8>& image, const char* rows)
{
    std::vector<std::vector<ZBW8>> pixels(1);
    for (const char* p = rows; *p; ++p)
        if (*p == ' ')
            pixels.emplace_back();
        else
            pixels.back().push_back(static_cast<ZBW8>(*p - '0'));
    image.SetSize(static_cast<int>(pixels[0].size()), static_cast<int>(pixels.size()));
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            image.SetPixel(pixels[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)], x, y);
}

// All bytes of an image's pixels, row by row.
template <class T>
std::vector<std::uint8_t> bytesOf(const ZROI<T>& region)
{
    std::vector<std::uint8_t> all;
    const int rowBytes = region.GetWidth() * region.GetPixelSize();
    for (int y = 0; y < region.GetHeight(); ++y) {
        const auto* row = static_cast<const std::uint8_t*>(region.GetPixelPtr(0, y));
        all.insert(all.end(), row, row + rowBytes);
    }
    return all;
}

// Copies the pixels of a region.
template <class T>
void copyPixels(const ZROI<T>& from, ZROI<T>& to)
{
    const auto rowBytes = static_cast<std::size_t>(from.GetWidth() * from.GetPixelSize());
    for (int y = 0; y < from.GetHeight(); ++y)
        std::memcpy(to.GetPixelPtr(0, y), from.GetPixelPtr(0, y), rowBytes);
}

// Runs an action with the plain workers, then with the packed ones.
template <class Action>
void withBothWorkers(Action action)
{
    for (const int packed : {0, 1}) {
        ZSetMMX(packed);
        action();
    }
}
