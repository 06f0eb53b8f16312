#include "writers.h"

#include <cstdio>
#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

std::size_t rowBytes(const Drawing& drawing)
{
    return (static_cast<std::size_t>(drawing.width * drawing.bits * drawing.channels) + 7) / 8;
}

const unsigned char* row(const Drawing& drawing, int y)
{
    return drawing.samples.data() + rowBytes(drawing) * static_cast<std::size_t>(y);
}

void append(FileBytes& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<unsigned char>(value >> 8 * i));
}

// Samples of one channel out of several, 8 bits each.
FileBytes channelOf(const FileBytes& samples, int channels, int channel)
{
    FileBytes result;
    for (auto i = static_cast<std::size_t>(channel); i < samples.size(); i += static_cast<std::size_t>(channels))
        result.push_back(samples[i]);
    return result;
}

// One tile of the drawing, padded with 0xee.
FileBytes tileOf(const Drawing& drawing, const FileBytes& samples, int channels, int left, int top, int side)
{
    const int pixelBits = drawing.bits * channels;
    const auto bytes = static_cast<std::size_t>(side * pixelBits / 8);
    const std::size_t pitch = (static_cast<std::size_t>(drawing.width * pixelBits) + 7) / 8;
    FileBytes tile(bytes * static_cast<std::size_t>(side), 0xee);
    for (int y = 0; y < side && top + y < drawing.height; ++y) {
        const auto first = static_cast<std::size_t>(left * pixelBits / 8);
        const auto* from = samples.data() + pitch * static_cast<std::size_t>(top + y) + first;
        std::copy_n(from, std::min(bytes, pitch - first), tile.data() + bytes * static_cast<std::size_t>(y));
    }
    return tile;
}

void writePlane(TIFF* tiff, const Drawing& drawing, const TiffLayout& layout, int plane)
{
    const int channels = layout.separate ? 1 : drawing.channels;
    FileBytes samples = layout.separate ? channelOf(drawing.samples, drawing.channels, plane) : drawing.samples;
    const auto sample = static_cast<std::uint16_t>(plane);
    const auto pitch = (drawing.width * drawing.bits * channels + 7) / 8;
    if (!layout.tiled) {
        for (int y = 0; y < drawing.height; ++y)
            TIFFWriteScanline(tiff, samples.data() + pitch * y, static_cast<std::uint32_t>(y), sample);
        return;
    }
    constexpr int side = 16;
    for (int y = 0; y < drawing.height; y += side)
        for (int x = 0; x < drawing.width; x += side) {
            FileBytes tile = tileOf(drawing, samples, channels, x, y, side);
            TIFFWriteTile(tiff, tile.data(), static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), 0, sample);
        }
}

void setPalette(TIFF* tiff, const Drawing& drawing)
{
    std::array<std::vector<std::uint16_t>, 3> maps;
    for (std::size_t i = 0; i < 3; ++i) {
        for (const auto& entry : drawing.palette)
            maps[i].push_back(static_cast<std::uint16_t>(entry[i] * 257));
        maps[i].resize(std::size_t{1} << drawing.bits);
    }
    TIFFSetField(tiff, TIFFTAG_COLORMAP, maps[0].data(), maps[1].data(), maps[2].data());
}

}  // namespace

Drawing drawing(int width, int height, int bits, int channels, int greatest)
{
    const int perRow = width * channels;
    return {width, height, bits, channels,
            pack(pattern(perRow * height, greatest == 0 ? (1 << bits) - 1 : greatest), perRow, bits)};
}

FileBytes writePng(const Drawing& drawing, int colourType, bool interlaced)
{
    FileBytes file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    const auto write = [](png_structp writer, png_bytep bytes, std::size_t count) {
        auto* to = static_cast<FileBytes*>(png_get_io_ptr(writer));
        to->insert(to->end(), bytes, bytes + count);
    };
    png_set_write_fn(png, &file, write, nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(drawing.width), static_cast<png_uint_32>(drawing.height),
                 drawing.bits, colourType, interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    std::vector<png_color> palette;
    for (const auto& entry : drawing.palette)
        palette.push_back({entry[0], entry[1], entry[2]});
    if (!palette.empty())
        png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    png_write_info(png, info);
    if (drawing.bits == 16 && std::endian::native == std::endian::little)
        png_set_swap(png);
    std::vector<png_bytep> rows;
    for (int y = 0; y < drawing.height; ++y)
        rows.push_back(const_cast<png_bytep>(row(drawing, y)));
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

FileBytes writeTiff(const Drawing& drawing, const TiffLayout& layout)
{
    const TemporaryFolder folder;
    const auto path = folder / "picture.tif";
    TIFF* tiff = TIFFOpen(path.c_str(), layout.mode);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, drawing.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, drawing.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, drawing.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, drawing.channels);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, layout.photometric);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, layout.compression);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, layout.separate ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    if (layout.photometric == PHOTOMETRIC_PALETTE)
        setPalette(tiff, drawing);
    if (layout.tiled) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 3);
    }
    for (int plane = 0; plane < (layout.separate ? drawing.channels : 1); ++plane)
        writePlane(tiff, drawing, layout, plane);
    TIFFClose(tiff);
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

FileBytes writeJpeg(const Drawing& drawing, bool progressive)
{
    jpeg_compress_struct compress{};
    jpeg_error_mgr errors{};
    compress.err = jpeg_std_error(&errors);
    jpeg_create_compress(&compress);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&compress, &buffer, &size);
    compress.image_width = static_cast<JDIMENSION>(drawing.width);
    compress.image_height = static_cast<JDIMENSION>(drawing.height);
    compress.input_components = drawing.channels;
    compress.in_color_space = drawing.channels == 1 ? JCS_GRAYSCALE : drawing.channels == 3 ? JCS_RGB : JCS_CMYK;
    jpeg_set_defaults(&compress);
    jpeg_set_quality(&compress, 100, TRUE);
    if (progressive)
        jpeg_simple_progression(&compress);
    jpeg_start_compress(&compress, TRUE);
    for (int y = 0; y < drawing.height; ++y) {
        auto* samples = const_cast<JSAMPROW>(row(drawing, y));
        jpeg_write_scanlines(&compress, &samples, 1);
    }
    jpeg_finish_compress(&compress);
    jpeg_destroy_compress(&compress);
    FileBytes file(buffer, buffer + size);
    std::free(buffer);
    return file;
}

FileBytes makeTiff(const std::vector<std::pair<std::uint16_t, std::uint32_t>>& tags, const FileBytes& pixels)
{
    constexpr std::uint32_t entryBytes = 12, before = 8 + 2, after = 4;
    constexpr std::uint16_t stripOffsets = 273, tileOffsets = 324, unsigned32 = 4;
    const auto pixelStart = static_cast<std::uint32_t>(before + entryBytes * tags.size() + after);
    FileBytes file = {'I', 'I', 42, 0, 8, 0, 0, 0};
    append(file, static_cast<std::uint32_t>(tags.size()), 2);
    for (const auto& [tag, value] : tags) {
        append(file, tag, 2);
        append(file, unsigned32, 2);
        append(file, 1, 4);
        append(file, tag == stripOffsets || tag == tileOffsets ? pixelStart : value, 4);
    }
    append(file, 0, 4);
    file.insert(file.end(), pixels.begin(), pixels.end());
    return file;
}

FileBytes makeBmp(const Drawing& drawing, bool topDown)
{
    const auto pixelStart = static_cast<std::uint32_t>(54 + 4 * drawing.palette.size());
    FileBytes file = {'B', 'M'};
    file.resize(10);
    append(file, pixelStart, 4);
    append(file, 40, 4);
    append(file, static_cast<std::uint32_t>(drawing.width), 4);
    append(file, static_cast<std::uint32_t>(topDown ? -drawing.height : drawing.height), 4);
    append(file, 1, 2);
    append(file, static_cast<std::uint32_t>(drawing.bits * drawing.channels), 2);
    for (const std::uint32_t field : {0U, 0U, 0U, 0U, static_cast<unsigned>(drawing.palette.size()), 0U})
        append(file, field, 4);
    for (const auto& entry : drawing.palette)
        file.insert(file.end(), {entry[2], entry[1], entry[0], 0});
    for (int i = 0; i < drawing.height; ++i) {
        const unsigned char* from = row(drawing, topDown ? i : drawing.height - 1 - i);
        file.insert(file.end(), from, from + rowBytes(drawing));
        file.resize(file.size() + (4 - rowBytes(drawing) % 4) % 4);
    }
    return file;
}
