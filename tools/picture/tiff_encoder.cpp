// TIFF, through libtiff.
#include "picture/encoders.h"
#include "picture/images.h"
#include "picture/samples.h"

#include <tiffio.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace zkit::tool {
namespace {

// The file in memory.
struct Target {
    FileBytes bytes;
    std::size_t position = 0;
    bool outOfMemory = false;
};

Target& targetOf(thandle_t handle) { return *static_cast<Target*>(handle); }

tmsize_t readTarget(thandle_t handle, void* to, tmsize_t count)
{
    Target& target = targetOf(handle);
    const std::size_t taken =
        std::min(target.bytes.size() - std::min(target.position, target.bytes.size()), static_cast<std::size_t>(count));
    if (taken > 0)
        std::memcpy(to, target.bytes.data() + target.position, taken);
    target.position += taken;
    return static_cast<tmsize_t>(taken);
}

// Nothing may be thrown through libtiff.
tmsize_t writeTarget(thandle_t handle, void* from, tmsize_t count)
{
    Target& target = targetOf(handle);
    const std::size_t end = target.position + static_cast<std::size_t>(count);
    try {
        if (end > target.bytes.size())
            target.bytes.resize(end);
    } catch (const std::bad_alloc&) {
        target.outOfMemory = true;
        return 0;
    }
    std::memcpy(target.bytes.data() + target.position, from, static_cast<std::size_t>(count));
    target.position = end;
    return count;
}

toff_t seekTarget(thandle_t handle, toff_t offset, int origin)
{
    Target& target = targetOf(handle);
    const std::size_t base = origin == SEEK_CUR ? target.position : origin == SEEK_END ? target.bytes.size() : 0;
    target.position = base + static_cast<std::size_t>(offset);
    return target.position;
}

using TiffPointer = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

TiffPointer openTiff(Target& target)
{
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   TIFFOpenOptionsFree);
    if (!options)
        throw std::bad_alloc();
    const auto silent = [](TIFF*, void*, const char*, const char*, va_list) { return 1; };
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), silent, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), silent, nullptr);
    const auto close = [](thandle_t) { return 0; };
    const auto size = [](thandle_t handle) { return static_cast<toff_t>(targetOf(handle).bytes.size()); };
    TiffPointer tiff(TIFFClientOpenExt("the file", "w", &target, readTarget, writeTarget, seekTarget, close, size,
                                       nullptr, nullptr, options.get()),
                     TIFFClose);
    if (!tiff)
        throw std::bad_alloc();
    return tiff;
}

// Colours are stored red first; in ZC24 red is the last byte.
void copyRow(const Picture& picture, int y, FileBytes& row)
{
    const unsigned char* const pixels = pixelAddress(pixelsOf(picture), 0, y);
    std::copy(pixels, pixels + row.size(), row.begin());
    if (holds<ZC24>(picture))
        for (std::size_t i = 0; i < row.size(); i += 3)
            std::swap(row[i], row[i + 2]);
}

bool writeRows(TIFF* tiff, const Picture& picture)
{
    const int width = pixelsOf(picture).GetWidth(), height = pixelsOf(picture).GetHeight();
    const bool colour = holds<ZC24>(picture);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, colour ? 8 : bitsOf(picture));
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, colour ? 3 : 1);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, colour ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
    FileBytes row(packedBytes(static_cast<std::size_t>(width), bitsOf(picture)));
    for (int y = 0; y < height; ++y) {
        copyRow(picture, y, row);
        if (TIFFWriteScanline(tiff, row.data(), static_cast<std::uint32_t>(y), 0) < 0)
            return false;
    }
    return TIFFFlush(tiff) != 0;
}

}  // namespace

FileBytes encodeTiff(const Picture& picture)
{
    Target target;
    const bool written = writeRows(openTiff(target).get(), picture);
    if (target.outOfMemory)
        throw std::bad_alloc();
    if (!written)
        throw PictureError("TIFF: the picture could not be encoded");
    return std::move(target.bytes);
}

}  // namespace zkit::tool
