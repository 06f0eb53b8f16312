// What several formats share below the level of files: packed samples and palettes.
#pragma once

#include "picture/picture.h"

#include <cstddef>
#include <vector>

namespace zkit::tool {

/// Takes apart `count` samples of 1, 2, 4 or 8 bits, the first of a byte being its most significant one.
void unpackSamples(const unsigned char* packed, int bits, int count, unsigned char* values);

/// Copies `count` 1-bit pixels, inverted where the file counts 1 as black; the bits left over in the last byte become
/// 0.
void copyBits(const unsigned char* packed, bool oneIsBlack, int count, unsigned char* pixels);

/// The bytes of a row of `width` samples of 1 to 8 bits without padding.
constexpr std::size_t packedBytes(std::size_t width, int bits)
{
    return (width * static_cast<std::size_t>(bits) + 7) / 8;
}

struct PaletteEntry {
    unsigned char red, green, blue;
};

/// Turns palette indices into colours: colour, grey where all entries are grey, or 1-bit where the indices had one bit
/// and the entries are black and white. Throws PictureError for an index without an entry.
/// @param bits  what an index had in the file
Picture applyPalette(ImagePointer<ZBW8> indices, int bits, const std::vector<PaletteEntry>& palette);

}  // namespace zkit::tool
