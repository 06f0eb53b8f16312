// BMP: 1, 4 and 8 bits with a palette, 24 and 32 bits, uncompressed.
#include "picture/decoders.h"
#include "picture/images.h"
#include "picture/samples.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace zkit::tool {
namespace {

constexpr std::size_t fileHeaderBytes = 14, oldHeaderBytes = 12, headerBytes = 40;
constexpr std::uint32_t uncompressed = 0, withMasks = 3;

struct Header {
    std::int64_t width = 0, height = 0;
    bool topDown = false;
    int bits = 0;
    std::size_t paletteStart = 0, paletteEntries = 0, paletteEntryBytes = 4;
    std::size_t pixelStart = 0, rowBytes = 0;
};

// The little-endian number of `count` bytes at a position of the file.
std::uint32_t number(Bytes file, std::size_t position, std::size_t count)
{
    if (position + count > file.size())
        throw PictureError("BMP: the file is truncated");
    std::uint32_t value = 0;
    for (std::size_t i = count; i-- > 0;)
        value = value << 8 | file[position + i];
    return value;
}

void checkCompression(Bytes file, int bits)
{
    const std::uint32_t compression = number(file, 30, 4);
    if (compression == uncompressed)
        return;
    // The masks follow the first 40 bytes of every version of the header.
    if (compression != withMasks || bits != 32 || number(file, 54, 4) != 0xff0000 || number(file, 58, 4) != 0xff00 ||
        number(file, 62, 4) != 0xff)
        throw PictureError("BMP: compressed pixels and unusual colour masks are not supported");
}

void readSize(Bytes file, bool old, Header& header)
{
    if (old) {
        header.width = number(file, 18, 2);
        header.height = number(file, 20, 2);
        return;
    }
    header.width = static_cast<std::int32_t>(number(file, 18, 4));
    header.height = static_cast<std::int32_t>(number(file, 22, 4));
    header.topDown = header.height < 0;
    if (header.topDown)
        header.height = -header.height;
}

Header readHeader(Bytes file)
{
    Header header;
    header.pixelStart = number(file, 10, 4);
    const std::size_t infoBytes = number(file, fileHeaderBytes, 4);
    const bool old = infoBytes == oldHeaderBytes;
    if (!old && (infoBytes < headerBytes || infoBytes > 1024))
        throw PictureError("BMP: the header is of an unknown kind");
    readSize(file, old, header);
    checkSize(header.width, header.height);
    header.bits = static_cast<int>(number(file, old ? 24 : 28, 2));
    if (header.bits != 1 && header.bits != 4 && header.bits != 8 && header.bits != 24 && header.bits != 32)
        throw PictureError("BMP: " + std::to_string(header.bits) + " bits a pixel are not supported");
    if (!old)
        checkCompression(file, header.bits);
    if (header.bits <= 8) {
        const std::size_t capacity = std::size_t{1} << header.bits, announced = old ? 0 : number(file, 46, 4);
        header.paletteStart = fileHeaderBytes + infoBytes;
        header.paletteEntries = announced == 0 ? capacity : announced;
        header.paletteEntryBytes = old ? 3 : 4;
        if (header.paletteEntries > capacity)
            throw PictureError("BMP: the palette is larger than its pixels can name");
    }
    const std::size_t paletteEnd = header.paletteStart + header.paletteEntries * header.paletteEntryBytes;
    if (header.pixelStart < std::max(fileHeaderBytes + infoBytes, paletteEnd))
        throw PictureError("BMP: the pixels overlap the header");
    header.rowBytes = (static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.bits) + 31) / 32 * 4;
    if (header.pixelStart > file.size() ||
        header.rowBytes * static_cast<std::size_t>(header.height) > file.size() - header.pixelStart)
        throw PictureError("BMP: the file is truncated");
    return header;
}

std::vector<PaletteEntry> readPalette(Bytes file, const Header& header)
{
    std::vector<PaletteEntry> palette;
    for (std::size_t i = 0; i < header.paletteEntries; ++i) {
        const unsigned char* entry = file.data() + header.paletteStart + i * header.paletteEntryBytes;
        palette.push_back({entry[2], entry[1], entry[0]});
    }
    return palette;
}

// Calls use(row, y) for every row, the top one being 0.
template <class Use>
void forEachRow(Bytes file, const Header& header, Use use)
{
    const int height = static_cast<int>(header.height);
    for (int i = 0; i < height; ++i)
        use(file.data() + header.pixelStart + static_cast<std::size_t>(i) * header.rowBytes,
            header.topDown ? i : height - 1 - i);
}

}  // namespace

Picture decodeBmp(Bytes file)
{
    const Header header = readHeader(file);
    const int width = static_cast<int>(header.width), bits = header.bits;
    if (bits <= 8) {
        auto indices = newImage<ZBW8>(header.width, header.height);
        forEachRow(file, header, [&](const unsigned char* row, int y) {
            unpackSamples(row, bits, width, pixelAddress(*indices, 0, y));
        });
        return applyPalette(std::move(indices), bits, readPalette(file, header));
    }
    // Pixels are blue, green, red here as in ZC24; a fourth byte is dropped.
    auto image = newImage<ZC24>(header.width, header.height);
    const std::size_t pixelBytes = static_cast<std::size_t>(bits) / 8;
    forEachRow(file, header, [&](const unsigned char* row, int y) {
        unsigned char* pixels = pixelAddress(*image, 0, y);
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x)
            std::memcpy(pixels + 3 * x, row + pixelBytes * x, 3);
    });
    return image;
}

}  // namespace zkit::tool
