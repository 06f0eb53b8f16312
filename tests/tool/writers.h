// Files written by the formats' own libraries, and BMP and TIFF files put together byte by byte.
#pragma once

#include "samples.h"

#include <array>
#include <cstdint>
#include <utility>

/// What a file is to hold. Samples are as pack() makes them.
struct Drawing {
    int width = 0, height = 0;
    int bits = 8, channels = 1;
    FileBytes samples;
    std::vector<std::array<unsigned char, 3>> palette = {};  // red, green, blue
};

/// A drawing with samples of pattern(); levels may be kept below what the bits allow.
Drawing drawing(int width, int height, int bits, int channels, int greatest = 0);

FileBytes writePng(const Drawing& drawing, int colourType, bool interlaced = false);

struct TiffLayout {
    int photometric = 1;  // 0 zero is white, 1 zero is black, 2 colour, 3 palette
    int compression = 1;  // 1 none, 5 LZW, 8 deflate
    bool tiled = false;
    bool separate = false;
    const char* mode = "w";
};
FileBytes writeTiff(const Drawing& drawing, const TiffLayout& layout);

/// @param components  1 grey, 3 colour, 4 CMYK
FileBytes writeJpeg(const Drawing& drawing, bool progressive = false);

/// A little-endian TIFF file of one directory, followed by the pixels, from tags and values.
FileBytes makeTiff(const std::vector<std::pair<std::uint16_t, std::uint32_t>>& tags, const FileBytes& pixels);

/// An uncompressed BMP file. Samples are rows as pack() makes them, from the top; colour as blue, green, red.
FileBytes makeBmp(const Drawing& drawing, bool topDown = false);
