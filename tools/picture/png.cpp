// PNG, through libpng.
#include "picture/decoders.h"
#include "picture/images.h"
#include "picture/jumping_calls.h"
#include "picture/samples.h"

#include <png.h>

#include <bit>
#include <cstring>
#include <new>
#include <vector>

namespace zkit::tool {
namespace {

struct Header {
    png_uint_32 width = 0, height = 0;
    int bits = 0, colourType = 0;
};

class PngReader {
public:
    explicit PngReader(Bytes file) : PngReader()
    {
        file_ = file;
        calls_.run([this] {
            png_set_read_fn(png_, this, read);
            png_set_user_limits(png_, maxSide, maxSide);
            png_set_chunk_malloc_max(png_, 8 << 20);
            png_read_info(png_, info_);
        });
    }

    ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    Header header()
    {
        Header header;
        calls_.run([&] {
            png_get_IHDR(png_, info_, &header.width, &header.height, &header.bits, &header.colourType, nullptr, nullptr,
                         nullptr);
        });
        return header;
    }

    std::vector<PaletteEntry> palette()
    {
        png_colorp colours = nullptr;
        int count = 0;
        calls_.run([&] { png_get_PLTE(png_, info_, &colours, &count); });
        std::vector<PaletteEntry> entries;
        entries.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            entries.push_back({colours[i].red, colours[i].green, colours[i].blue});
        return entries;
    }

    // Reads the pixels and all that follows them, converted by the transforms that prepare(png) asks for. They must
    // bring a row to the size of one of the image's rows.
    template <class T, class Prepare>
    ImagePointer<T> pixels(const Header& header, Prepare prepare)
    {
        auto image = newImage<T>(header.width, header.height);
        std::vector<png_bytep> rows;
        rows.reserve(header.height);
        for (int y = 0; y < image->GetHeight(); ++y)
            rows.push_back(pixelAddress(*image, 0, y));
        const std::size_t rowBytes = (header.width * std::size_t{bitsPerPixel<T>} + 7) / 8;
        calls_.run([this, prepare, rowBytes, first = rows.data()] {
            prepare(png_);
            png_set_interlace_handling(png_);
            png_read_update_info(png_, info_);
            if (png_get_rowbytes(png_, info_) != rowBytes)
                png_error(png_, "unexpected size of a row");
            png_read_image(png_, first);
            png_read_end(png_, nullptr);
        });
        return image;
    }

private:
    PngReader()
        : png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, &calls_, fail, ignore)),
          info_(png_ == nullptr ? nullptr : png_create_info_struct(png_))
    {
        if (info_ == nullptr) {
            png_destroy_read_struct(&png_, nullptr, nullptr);
            throw std::bad_alloc();
        }
    }

    [[noreturn]] static void fail(png_structp png, png_const_charp message)
    {
        static_cast<JumpingCalls*>(png_get_error_ptr(png))->fail(message);
    }

    static void ignore(png_structp, png_const_charp) {}

    static void read(png_structp png, png_bytep to, std::size_t count)
    {
        auto* reader = static_cast<PngReader*>(png_get_io_ptr(png));
        if (count > reader->file_.size())
            png_error(png, "the file is truncated");
        std::memcpy(to, reader->file_.data(), count);
        reader->file_ = reader->file_.subspan(count);
    }

    Bytes file_;  // what has not been read yet
    JumpingCalls calls_{"PNG"};
    png_structp png_;
    png_infop info_;
};

}  // namespace

// Grey of 1 bit comes as it is stored: 1 is white here and in ZBW1, and both begin with the most significant bit.
Picture decodePng(Bytes file)
{
    PngReader reader(file);
    const Header header = reader.header();
    checkSize(header.width, header.height);
    if (header.colourType == PNG_COLOR_TYPE_PALETTE)
        return applyPalette(reader.pixels<ZBW8>(header, [](png_structp png) { png_set_packing(png); }), header.bits,
                            reader.palette());
    if ((header.colourType & PNG_COLOR_MASK_COLOR) != 0) {
        if (header.bits > 8)
            throw PictureError("colour of 16 bits a component is not supported: it would lose information");
        return reader.pixels<ZC24>(header, [](png_structp png) {
            png_set_strip_alpha(png);
            png_set_bgr(png);
        });
    }
    if (header.bits == 1)
        return reader.pixels<ZBW1>(header, [](png_structp) {});
    if (header.bits == 16)
        return reader.pixels<ZBW16>(header, [](png_structp png) {
            png_set_strip_alpha(png);
            if constexpr (std::endian::native == std::endian::little)
                png_set_swap(png);
        });
    return reader.pixels<ZBW8>(header, [](png_structp png) {
        png_set_expand_gray_1_2_4_to_8(png);
        png_set_strip_alpha(png);
    });
}

}  // namespace zkit::tool
