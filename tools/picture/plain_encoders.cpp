// The formats that are no more than a header and the pixels: BMP and PNM.
#include "picture/encoders.h"
#include "picture/images.h"
#include "picture/samples.h"

#include <cstdint>
#include <sstream>
#include <string>

namespace zkit::tool {
namespace {

std::size_t rowBytes(const Picture& picture)
{
    return packedBytes(static_cast<std::size_t>(pixelsOf(picture).GetWidth()), bitsOf(picture));
}

// A little-endian number.
void append(FileBytes& file, std::uint32_t number, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        file.push_back(static_cast<unsigned char>(number >> 8 * i));
}

void appendBmpHeader(FileBytes& file, const Picture& picture, std::uint32_t colours, std::size_t pixelBytes)
{
    constexpr std::uint32_t headerBytes = 54, infoBytes = 40;
    const std::uint32_t start = headerBytes + 4 * colours;
    append(file, 'B' | 'M' << 8, 2);
    append(file, static_cast<std::uint32_t>(start + pixelBytes), 4);
    append(file, 0, 4);
    append(file, start, 4);
    append(file, infoBytes, 4);
    append(file, static_cast<std::uint32_t>(pixelsOf(picture).GetWidth()), 4);
    append(file, static_cast<std::uint32_t>(pixelsOf(picture).GetHeight()), 4);
    append(file, 1, 2);  // planes
    append(file, static_cast<std::uint32_t>(bitsOf(picture)), 2);
    append(file, 0, 4);  // uncompressed
    append(file, static_cast<std::uint32_t>(pixelBytes), 4);
    for (const std::uint32_t number : {0U, 0U, colours, 0U})  // resolutions, palette, colours that matter
        append(file, number, 4);
}

void appendRow(FileBytes& file, const Picture& picture, int y)
{
    const unsigned char* const row = pixelAddress(pixelsOf(picture), 0, y);
    file.insert(file.end(), row, row + rowBytes(picture));
}

// Bitmaps count 1 as black, ZBW1 as white.
void appendBits(FileBytes& file, const ZImage<ZBW1>& image, int y)
{
    file.resize(file.size() + packedBytes(static_cast<std::size_t>(image.GetWidth()), 1));
    unsigned char* const end = file.data() + file.size();
    copyBits(pixelAddress(image, 0, y), true, image.GetWidth(),
             end - packedBytes(static_cast<std::size_t>(image.GetWidth()), 1));
}

// The more significant byte comes first.
void appendWide(FileBytes& file, const ZImage<ZBW16>& image, int y)
{
    for (int x = 0; x < image.GetWidth(); ++x) {
        const unsigned level = image.GetPixel(x, y);
        file.insert(file.end(), {static_cast<unsigned char>(level >> 8), static_cast<unsigned char>(level & 0xff)});
    }
}

// Red comes first; in ZC24 it is the last byte.
void appendColours(FileBytes& file, const ZImage<ZC24>& image, int y)
{
    for (int x = 0; x < image.GetWidth(); ++x) {
        const ZC24 pixel = image.GetPixel(x, y);
        file.insert(file.end(), {pixel.c2, pixel.c1, pixel.c0});
    }
}

struct PnmRow {
    FileBytes& file;
    int y;

    void operator()(const ImagePointer<ZBW1>& image) const { appendBits(file, *image, y); }
    void operator()(const ImagePointer<ZBW8>& image) const
    {
        const unsigned char* const row = pixelAddress(*image, 0, y);
        file.insert(file.end(), row, row + image->GetWidth());
    }
    void operator()(const ImagePointer<ZBW16>& image) const { appendWide(file, *image, y); }
    void operator()(const ImagePointer<ZC24>& image) const { appendColours(file, *image, y); }
};

}  // namespace

// Rows run from the bottom up and end at multiples of 4 bytes; pixels are blue, green, red here as in ZC24.
FileBytes encodeBmp(const Picture& picture)
{
    const std::uint32_t colours = holds<ZC24>(picture) ? 0 : 1U << bitsOf(picture);
    const int height = pixelsOf(picture).GetHeight();
    const std::size_t gap = (4 - rowBytes(picture) % 4) % 4;
    FileBytes file;
    appendBmpHeader(file, picture, colours, (rowBytes(picture) + gap) * static_cast<std::size_t>(height));
    for (std::uint32_t i = 0; i < colours; ++i)
        append(file, i * (255 / (colours - 1)) * 0x10101, 4);
    for (int y = height; y-- > 0;) {
        appendRow(file, picture, y);
        file.resize(file.size() + gap);
    }
    return file;
}

FileBytes encodePnm(const Picture& picture)
{
    const int kind = holds<ZBW1>(picture) ? 4 : holds<ZC24>(picture) ? 6 : 5;
    const ZGenericROI& pixels = pixelsOf(picture);
    std::ostringstream header;
    header << 'P' << kind << '\n' << pixels.GetWidth() << ' ' << pixels.GetHeight() << '\n';
    if (kind != 4)
        header << (holds<ZBW16>(picture) ? 65535 : 255) << '\n';
    const std::string text = header.str();
    FileBytes file(text.begin(), text.end());
    for (int y = 0; y < pixels.GetHeight(); ++y)
        std::visit(PnmRow{file, y}, picture);
    return file;
}

}  // namespace zkit::tool
