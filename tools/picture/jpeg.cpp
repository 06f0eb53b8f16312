// JPEG, through libjpeg.
#include "picture/decoders.h"
#include "picture/images.h"
#include "picture/jumping_calls.h"

#include <cstdio>
// The library's header needs the two above it.
#include <jpeglib.h>

namespace zkit::tool {
namespace {

// A picture is drawn in up to about a dozen passes; a file with many more only wastes time.
constexpr int maxPasses = 100;

class JpegReader {
public:
    explicit JpegReader(Bytes file) : JpegReader()
    {
        calls_.run([this, file] {
            jpeg_create_decompress(&decompress_);
            decompress_.progress = &progress_;
            decompress_.mem->max_memory_to_use = 0x7fffffff;
            jpeg_mem_src(&decompress_, file.data(), static_cast<unsigned long>(file.size()));
            jpeg_read_header(&decompress_, TRUE);
        });
    }

    ~JpegReader() { jpeg_destroy_decompress(&decompress_); }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;

    const jpeg_decompress_struct& header() const { return decompress_; }

    template <class T>
    ImagePointer<T> pixels(J_COLOR_SPACE order)
    {
        auto image = newImage<T>(decompress_.image_width, decompress_.image_height);
        calls_.run([this, order, target = image.get()] {
            decompress_.out_color_space = order;
            jpeg_start_decompress(&decompress_);
            while (decompress_.output_scanline < decompress_.output_height) {
                JSAMPROW row = pixelAddress(*target, 0, static_cast<int>(decompress_.output_scanline));
                jpeg_read_scanlines(&decompress_, &row, 1);
            }
            jpeg_finish_decompress(&decompress_);
        });
        return image;
    }

private:
    JpegReader()
    {
        decompress_.err = jpeg_std_error(&errors_);
        decompress_.client_data = this;
        errors_.error_exit = [](j_common_ptr common) { of(common).fail(); };
        errors_.emit_message = [](j_common_ptr common, int level) { of(common).message(level); };
        errors_.output_message = [](j_common_ptr) {};
        progress_.progress_monitor = [](j_common_ptr common) { of(common).limitPasses(); };
    }

    static JpegReader& of(j_common_ptr common) { return *static_cast<JpegReader*>(common->client_data); }

    [[noreturn]] void fail()
    {
        char message[JMSG_LENGTH_MAX];
        errors_.format_message(reinterpret_cast<j_common_ptr>(&decompress_), message);
        calls_.fail(message);
    }

    // A warning (a level below 0) says that the data are damaged and that pixels will be made up, as at the end of a
    // truncated file. Made-up pixels are not for measuring.
    void message(int level)
    {
        if (level < 0)
            fail();
    }

    void limitPasses()
    {
        if (decompress_.input_scan_number <= maxPasses)
            return;
        char message[JumpingCalls::longestMessage];
        std::snprintf(message, sizeof message, "more than %d passes over the picture", maxPasses);
        calls_.fail(message);
    }

    jpeg_decompress_struct decompress_{};
    jpeg_error_mgr errors_{};
    jpeg_progress_mgr progress_{};
    JumpingCalls calls_{"JPEG"};
};

}  // namespace

Picture decodeJpeg(Bytes file)
{
    JpegReader reader(file);
    checkSize(reader.header().image_width, reader.header().image_height);
    switch (reader.header().jpeg_color_space) {
    case JCS_GRAYSCALE: return reader.pixels<ZBW8>(JCS_GRAYSCALE);
    case JCS_RGB:
    case JCS_YCbCr: return reader.pixels<ZC24>(JCS_EXT_BGR);
    case JCS_CMYK:
    case JCS_YCCK: throw PictureError("CMYK colour is not supported");
    default: throw PictureError("JPEG: the colour space is unknown");
    }
}

}  // namespace zkit::tool
