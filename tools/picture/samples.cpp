#include "picture/samples.h"

#include "picture/images.h"

#include <algorithm>
#include <string>

namespace zkit::tool {
namespace {

bool isGrey(PaletteEntry entry) { return entry.red == entry.green && entry.green == entry.blue; }

bool isBlackAndWhite(const std::vector<PaletteEntry>& palette)
{
    return palette.size() == 2 && isGrey(palette[0]) && isGrey(palette[1]) &&
           std::min(palette[0].red, palette[1].red) == 0 && std::max(palette[0].red, palette[1].red) == 255;
}

// Calls use(x, y, entry) for every pixel.
template <class Use>
void lookUp(const ZImage<ZBW8>& indices, const std::vector<PaletteEntry>& palette, Use use)
{
    for (int y = 0; y < indices.GetHeight(); ++y) {
        const unsigned char* row = pixelAddress(indices, 0, y);
        for (int x = 0; x < indices.GetWidth(); ++x) {
            if (row[x] >= palette.size())
                throw PictureError("corrupt: a pixel has colour " + std::to_string(row[x]) + " of a palette of " +
                                   std::to_string(palette.size()));
            use(x, y, palette[row[x]]);
        }
    }
}

}  // namespace

void checkSize(std::int64_t width, std::int64_t height)
{
    if (width < 1 || height < 1)
        throw PictureError("the picture has no pixels");
    if (width > maxSide || height > maxSide || width * height > maxPixels)
        throw PictureError("the picture is too large: " + std::to_string(width) + " x " + std::to_string(height) +
                           " pixels");
}

void unpackSamples(const unsigned char* packed, int bits, int count, unsigned char* values)
{
    const int perByte = 8 / bits, mask = (1 << bits) - 1;
    for (int i = 0; i < count; ++i) {
        const int shift = 8 - bits * (i % perByte + 1);
        values[i] = static_cast<unsigned char>(packed[i / perByte] >> shift & mask);
    }
}

void copyBits(const unsigned char* packed, bool oneIsBlack, int count, unsigned char* pixels)
{
    const int bytes = (count + 7) / 8, inversion = oneIsBlack ? 0xff : 0;
    for (int i = 0; i < bytes; ++i)
        pixels[i] = static_cast<unsigned char>(packed[i] ^ inversion);
    if (count % 8 != 0)
        pixels[bytes - 1] = static_cast<unsigned char>(pixels[bytes - 1] & 0xff00 >> count % 8);
}

Picture applyPalette(ImagePointer<ZBW8> indices, int bits, const std::vector<PaletteEntry>& palette)
{
    const int width = indices->GetWidth(), height = indices->GetHeight();
    if (bits == 1 && isBlackAndWhite(palette)) {
        auto image = newImage<ZBW1>(width, height);
        lookUp(*indices, palette, [&](int x, int y, PaletteEntry entry) { image->SetPixel({entry.red}, x, y); });
        return image;
    }
    if (std::ranges::all_of(palette, isGrey)) {
        lookUp(*indices, palette, [&](int x, int y, PaletteEntry entry) { *pixelAddress(*indices, x, y) = entry.red; });
        return indices;
    }
    auto image = newImage<ZC24>(width, height);
    lookUp(*indices, palette, [&](int x, int y, PaletteEntry entry) {
        unsigned char* pixel = pixelAddress(*image, x, y);
        pixel[0] = entry.blue;
        pixel[1] = entry.green;
        pixel[2] = entry.red;
    });
    return image;
}

}  // namespace zkit::tool
