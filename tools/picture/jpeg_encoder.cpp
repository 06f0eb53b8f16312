// JPEG, through libjpeg.
#include "picture/encoders.h"
#include "picture/images.h"
#include "picture/jumping_calls.h"

#include <cstdio>
// The library's header needs the two above it.
#include <jpeglib.h>

#include <cstdlib>

namespace zkit::tool {
namespace {

constexpr int quality = 90;

class JpegWriter {
public:
    JpegWriter()
    {
        compress_.err = jpeg_std_error(&errors_);
        compress_.client_data = this;
        errors_.error_exit = [](j_common_ptr common) { static_cast<JpegWriter*>(common->client_data)->fail(); };
        errors_.output_message = [](j_common_ptr) {};
    }

    ~JpegWriter()
    {
        jpeg_destroy_compress(&compress_);
        std::free(data_);  // NOLINT: libjpeg allocates it so
    }
    JpegWriter(const JpegWriter&) = delete;
    JpegWriter& operator=(const JpegWriter&) = delete;

    FileBytes write(const ZGenericROI& image, int components, J_COLOR_SPACE order)
    {
        calls_.run([this, pixels = &image, components, order] {
            jpeg_create_compress(&compress_);
            jpeg_mem_dest(&compress_, &data_, &size_);
            compress_.image_width = static_cast<JDIMENSION>(pixels->GetWidth());
            compress_.image_height = static_cast<JDIMENSION>(pixels->GetHeight());
            compress_.input_components = components;
            compress_.in_color_space = order;
            jpeg_set_defaults(&compress_);
            jpeg_set_quality(&compress_, quality, TRUE);
            jpeg_start_compress(&compress_, TRUE);
            while (compress_.next_scanline < compress_.image_height) {
                JSAMPROW row = pixelAddress(*pixels, 0, static_cast<int>(compress_.next_scanline));
                jpeg_write_scanlines(&compress_, &row, 1);
            }
            jpeg_finish_compress(&compress_);
        });
        return {data_, data_ + size_};
    }

private:
    [[noreturn]] void fail()
    {
        char message[JMSG_LENGTH_MAX];
        errors_.format_message(reinterpret_cast<j_common_ptr>(&compress_), message);
        calls_.fail(message);
    }

    jpeg_compress_struct compress_{};
    jpeg_error_mgr errors_{};
    JumpingCalls calls_{"JPEG"};
    unsigned char* data_ = nullptr;
    unsigned long size_ = 0;
};

}  // namespace

FileBytes encodeJpeg(const Picture& picture)
{
    return holds<ZC24>(picture) ? JpegWriter().write(pixelsOf(picture), 3, JCS_EXT_BGR)
                                : JpegWriter().write(pixelsOf(picture), 1, JCS_GRAYSCALE);
}

}  // namespace zkit::tool
