// PNG, through libpng.
#include "picture/encoders.h"
#include "picture/images.h"
#include "picture/jumping_calls.h"

#include <png.h>

#include <bit>
#include <new>

namespace zkit::tool {
namespace {

class PngWriter {
public:
    PngWriter()
        : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, &calls_, fail, ignore)),
          info_(png_ == nullptr ? nullptr : png_create_info_struct(png_))
    {
        if (info_ == nullptr) {
            png_destroy_write_struct(&png_, nullptr);
            throw std::bad_alloc();
        }
    }

    ~PngWriter() { png_destroy_write_struct(&png_, &info_); }
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    FileBytes write(const ZGenericROI& image, int bits, int colourType)
    {
        calls_.run([this, pixels = &image, bits, colourType] {
            png_set_write_fn(png_, this, append, flush);
            png_set_IHDR(png_, info_, static_cast<png_uint_32>(pixels->GetWidth()),
                         static_cast<png_uint_32>(pixels->GetHeight()), bits, colourType, PNG_INTERLACE_NONE,
                         PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
            png_write_info(png_, info_);
            if (colourType == PNG_COLOR_TYPE_RGB)
                png_set_bgr(png_);
            if (bits == 16 && std::endian::native == std::endian::little)
                png_set_swap(png_);
            for (int y = 0; y < pixels->GetHeight(); ++y)
                png_write_row(png_, pixelAddress(*pixels, 0, y));
            png_write_end(png_, nullptr);
        });
        if (outOfMemory_)
            throw std::bad_alloc();
        return std::move(bytes_);
    }

private:
    [[noreturn]] static void fail(png_structp png, png_const_charp message)
    {
        static_cast<JumpingCalls*>(png_get_error_ptr(png))->fail(message);
    }

    static void ignore(png_structp, png_const_charp) {}
    static void flush(png_structp) {}

    // Nothing may be thrown through libpng.
    static void append(png_structp png, png_bytep data, std::size_t count)
    {
        auto* writer = static_cast<PngWriter*>(png_get_io_ptr(png));
        try {
            writer->bytes_.insert(writer->bytes_.end(), data, data + count);
        } catch (const std::bad_alloc&) {
            writer->outOfMemory_ = true;
        }
    }

    FileBytes bytes_;
    bool outOfMemory_ = false;
    JumpingCalls calls_{"PNG"};
    png_structp png_;
    png_infop info_;
};

}  // namespace

FileBytes encodePng(const Picture& picture)
{
    if (holds<ZC24>(picture))
        return PngWriter().write(pixelsOf(picture), 8, PNG_COLOR_TYPE_RGB);
    return PngWriter().write(pixelsOf(picture), bitsOf(picture), PNG_COLOR_TYPE_GRAY);
}

}  // namespace zkit::tool
