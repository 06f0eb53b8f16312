// TIFF, through libtiff.
#include "picture/decoders.h"
#include "picture/images.h"
#include "picture/samples.h"

#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

namespace zkit::tool {
namespace {

constexpr tmsize_t maxBlockBytes = tmsize_t{1} << 30;

// The file in memory, and what libtiff has to say about it.
struct Source {
    Bytes file;
    std::uint64_t position = 0;
    bool decoding = false;  // from then on a warning is a failure: pixels are not as they were stored
    char complaint[200] = "";

    bool hasComplaint() const { return complaint[0] != '\0'; }

    [[noreturn]] void fail() const
    {
        throw PictureError(std::string("TIFF: ") + (hasComplaint() ? complaint : "the file is corrupt"));
    }
};

Source& sourceOf(thandle_t handle) { return *static_cast<Source*>(handle); }

tmsize_t readSource(thandle_t handle, void* to, tmsize_t count)
{
    Source& source = sourceOf(handle);
    const std::uint64_t size = source.file.size(), left = size - std::min(source.position, size);
    const std::size_t taken = std::min(static_cast<std::size_t>(left), static_cast<std::size_t>(count));
    if (taken < static_cast<std::size_t>(count) && !source.hasComplaint())
        std::snprintf(source.complaint, sizeof source.complaint, "the file is truncated");
    if (taken > 0)
        std::memcpy(to, source.file.data() + source.position, taken);
    source.position += taken;
    return static_cast<tmsize_t>(taken);
}

toff_t seekSource(thandle_t handle, toff_t offset, int origin)
{
    Source& source = sourceOf(handle);
    const std::uint64_t base = origin == SEEK_CUR ? source.position : origin == SEEK_END ? source.file.size() : 0;
    return source.position = base + offset;
}

// Keeps the first complaint, in one line.
int complain(TIFF*, void* user, const char*, const char* format, va_list values)
{
    auto& source = *static_cast<Source*>(user);
    if (!source.hasComplaint()) {
        std::vsnprintf(source.complaint, sizeof source.complaint, format, values);
        std::replace_if(
            source.complaint, source.complaint + std::strlen(source.complaint),
            [](char character) { return static_cast<unsigned char>(character) < ' '; }, ' ');
    }
    return 1;
}

int warn(TIFF* tiff, void* user, const char* module, const char* format, va_list values)
{
    return static_cast<Source*>(user)->decoding ? complain(tiff, user, module, format, values) : 1;
}

using TiffPointer = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

TiffPointer openTiff(Source& source)
{
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   TIFFOpenOptionsFree);
    if (!options)
        throw std::bad_alloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), complain, &source);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), warn, &source);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), maxBlockBytes);
    const auto write = [](thandle_t, void*, tmsize_t) { return tmsize_t{0}; };
    const auto close = [](thandle_t) { return 0; };
    const auto size = [](thandle_t handle) { return static_cast<toff_t>(sourceOf(handle).file.size()); };
    TiffPointer tiff(TIFFClientOpenExt("the file", "rm", &source, readSource, write, seekSource, close, size, nullptr,
                                       nullptr, options.get()),
                     TIFFClose);
    if (!tiff)
        source.fail();
    return tiff;
}

struct Header {
    std::uint32_t width = 0, height = 0;
    std::uint16_t bits = 1, samples = 1, planes = PLANARCONFIG_CONTIG, colours = 0, sampleFormat = SAMPLEFORMAT_UINT;

    bool separate() const { return samples > 1 && planes == PLANARCONFIG_SEPARATE; }
    int stride() const { return separate() ? 1 : samples; }  // samples from a pixel to the next
};

Header headerOf(TIFF* tiff, const Source& source)
{
    Header header;
    if (TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &header.width) == 0 ||
        TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &header.height) == 0)
        source.fail();
    checkSize(header.width, header.height);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &header.bits);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &header.samples);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &header.planes);
    TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &header.sampleFormat);
    if (TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &header.colours) == 0)
        throw PictureError("TIFF: the file does not say what its samples mean");
    return header;
}

// Strips or tiles, as the file has them.
struct Blocks {
    bool tiled = false;
    std::uint32_t width = 0, height = 0;
    tmsize_t bytes = 0, rowBytes = 0;
};

Blocks blocksOf(TIFF* tiff, const Header& header, const Source& source)
{
    Blocks blocks;
    blocks.tiled = TIFFIsTiled(tiff) != 0;
    if (blocks.tiled) {
        TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &blocks.width);
        TIFFGetField(tiff, TIFFTAG_TILELENGTH, &blocks.height);
        blocks.bytes = TIFFTileSize(tiff);
        blocks.rowBytes = TIFFTileRowSize(tiff);
    } else {
        blocks.width = header.width;
        TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &blocks.height);
        blocks.height = std::min(blocks.height, header.height);
        blocks.bytes = TIFFStripSize(tiff);
        blocks.rowBytes = TIFFScanlineSize(tiff);
    }
    const std::size_t expected =
        packedBytes(std::size_t{blocks.width} * static_cast<std::size_t>(header.stride()), header.bits);
    if (source.hasComplaint())
        source.fail();
    if (blocks.width == 0 || blocks.height == 0 || (blocks.tiled && blocks.width % 16 != 0) ||
        blocks.rowBytes != static_cast<tmsize_t>(expected))
        throw PictureError("TIFF: corrupt layout of strips or tiles");
    if (blocks.bytes < 1 || blocks.bytes > maxBlockBytes)
        throw PictureError("TIFF: the strips or tiles are too large");
    return blocks;
}

// Calls use(samples, x, y, count) for every row of every block of a plane, in the part that belongs to the picture.
template <class Use>
void readPlane(TIFF* tiff, const Header& header, std::uint16_t plane, Source& source, Use use)
{
    const Blocks blocks = blocksOf(tiff, header, source);
    std::vector<unsigned char> buffer(static_cast<std::size_t>(blocks.bytes));
    source.decoding = true;
    for (std::uint32_t top = 0; top < header.height; top += blocks.height) {
        const std::uint32_t rows = std::min(blocks.height, header.height - top);
        for (std::uint32_t left = 0; left < header.width; left += blocks.width) {
            const tmsize_t read =
                blocks.tiled
                    ? TIFFReadEncodedTile(tiff, TIFFComputeTile(tiff, left, top, 0, plane), buffer.data(), blocks.bytes)
                    : TIFFReadEncodedStrip(tiff, TIFFComputeStrip(tiff, top, plane), buffer.data(), blocks.bytes);
            if (read < blocks.rowBytes * static_cast<tmsize_t>(rows) || source.hasComplaint())
                source.fail();
            const int count = static_cast<int>(std::min(blocks.width, header.width - left));
            for (std::uint32_t row = 0; row < rows; ++row)
                use(buffer.data() + blocks.rowBytes * static_cast<tmsize_t>(row), static_cast<int>(left),
                    static_cast<int>(top + row), count);
        }
    }
}

// An image from the first sample of each pixel: convert(samples, pixels, count) fills a piece of a row.
template <class T, class Convert>
ImagePointer<T> readSamples(TIFF* tiff, const Header& header, Source& source, Convert convert)
{
    auto image = newImage<T>(header.width, header.height);
    readPlane(tiff, header, 0, source, [&](const unsigned char* samples, int x, int y, int count) {
        convert(samples, pixelAddress(*image, x, y), count);
    });
    return image;
}

// Every stride-th sample, each flipped by `inversion`.
template <class Sample>
void copySamples(const unsigned char* samples, int stride, unsigned inversion, unsigned char* pixels, int count)
{
    for (int i = 0; i < count; ++i) {
        Sample sample;
        std::memcpy(&sample, samples + sizeof sample * static_cast<std::size_t>(i) * static_cast<std::size_t>(stride),
                    sizeof sample);
        sample = static_cast<Sample>(sample ^ inversion);
        std::memcpy(pixels + sizeof sample * static_cast<std::size_t>(i), &sample, sizeof sample);
    }
}

Picture readGrey(TIFF* tiff, const Header& header, Source& source)
{
    const bool zeroIsWhite = header.colours == PHOTOMETRIC_MINISWHITE;
    const unsigned inversion = zeroIsWhite ? 0xffff : 0;
    const int stride = header.stride(), bits = header.bits;
    if (bits == 16)
        return readSamples<ZBW16>(tiff, header, source, [=](const auto* samples, auto* pixels, int count) {
            copySamples<std::uint16_t>(samples, stride, inversion, pixels, count);
        });
    if (bits == 8)
        return readSamples<ZBW8>(tiff, header, source, [=](const auto* samples, auto* pixels, int count) {
            copySamples<std::uint8_t>(samples, stride, inversion, pixels, count);
        });
    if (stride != 1)
        throw PictureError("TIFF: several samples of fewer than 8 bits are not supported");
    if (bits == 1)
        return readSamples<ZBW1>(tiff, header, source, [=](const auto* samples, auto* pixels, int count) {
            copyBits(samples, zeroIsWhite, count, pixels);
        });
    const unsigned scale = 255U / ((1U << bits) - 1);
    return readSamples<ZBW8>(tiff, header, source, [=](const auto* samples, auto* pixels, int count) {
        unpackSamples(samples, bits, count, pixels);
        std::transform(pixels, pixels + count, pixels,
                       [=](unsigned value) { return static_cast<unsigned char>(value * scale ^ inversion); });
    });
}

// The entries have 16 bits, of which the upper 8 count; some writers fill in the lower 8 only.
std::vector<PaletteEntry> paletteOf(TIFF* tiff, int bits)
{
    std::uint16_t *red = nullptr, *green = nullptr, *blue = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_COLORMAP, &red, &green, &blue) == 0)
        throw PictureError("TIFF: the palette is missing");
    const int count = 1 << bits;
    const auto isSmall = [](unsigned value) { return value < 256; };
    const bool small = std::all_of(red, red + count, isSmall) && std::all_of(green, green + count, isSmall) &&
                       std::all_of(blue, blue + count, isSmall);
    const auto upper = [small](unsigned value) { return static_cast<unsigned char>(small ? value : value >> 8); };
    std::vector<PaletteEntry> entries;
    entries.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        entries.push_back({upper(red[i]), upper(green[i]), upper(blue[i])});
    return entries;
}

Picture readIndexed(TIFF* tiff, const Header& header, Source& source)
{
    const int bits = header.bits;
    if (bits > 8 || header.samples != 1)
        throw PictureError("TIFF: this kind of palette is not supported");
    const auto palette = paletteOf(tiff, bits);
    return applyPalette(readSamples<ZBW8>(tiff, header, source,
                                          [bits](const auto* samples, auto* pixels, int count) {
                                              unpackSamples(samples, bits, count, pixels);
                                          }),
                        bits, palette);
}

Picture readColour(TIFF* tiff, const Header& header, Source& source)
{
    if (header.bits == 16)
        throw PictureError("colour of 16 bits a component is not supported: it would lose information");
    if (header.bits != 8 || header.samples < 3)
        throw PictureError("TIFF: colour is supported with three components of 8 bits");
    auto image = newImage<ZC24>(header.width, header.height);
    const int stride = header.stride();
    const std::uint16_t planes = header.separate() ? 3 : 1;
    for (std::uint16_t plane = 0; plane < planes; ++plane)
        readPlane(tiff, header, plane, source, [&](const unsigned char* samples, int x, int y, int count) {
            const int first = plane, last = header.separate() ? plane : 2;
            unsigned char* pixels = pixelAddress(*image, x, y);
            for (int i = 0; i < count; ++i)
                for (int component = first; component <= last; ++component)
                    pixels[3 * i + 2 - component] = samples[stride * i + component - first];
        });
    return image;
}

}  // namespace

Picture decodeTiff(Bytes file)
{
    Source source;
    source.file = file;
    const TiffPointer tiff = openTiff(source);
    const Header header = headerOf(tiff.get(), source);
    if (header.sampleFormat != SAMPLEFORMAT_UINT && header.sampleFormat != SAMPLEFORMAT_VOID)
        throw PictureError("TIFF: signed and floating-point samples are not supported");
    if (header.bits != 1 && header.bits != 2 && header.bits != 4 && header.bits != 8 && header.bits != 16)
        throw PictureError("TIFF: " + std::to_string(header.bits) + " bits a sample are not supported");
    switch (header.colours) {
    case PHOTOMETRIC_MINISBLACK:
    case PHOTOMETRIC_MINISWHITE: return readGrey(tiff.get(), header, source);
    case PHOTOMETRIC_PALETTE: return readIndexed(tiff.get(), header, source);
    case PHOTOMETRIC_RGB: return readColour(tiff.get(), header, source);
    default: throw PictureError("TIFF: this colour space is not supported");
    }
}

}  // namespace zkit::tool
