#include "drawing/cairo_device.h"

#include "picture/file.h"

#include <cairo-svg.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace zkit::tool {

namespace {

constexpr int maxSide = 32767;

cairo_status_t append(void* text, const unsigned char* data, unsigned int length)
{
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

bool hasEnding(const std::filesystem::path& file, const char* ending)
{
    std::string given = file.extension().string();
    for (char& letter : given)
        letter = static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter);
    return given == ending;
}

void check(cairo_status_t status)
{
    if (status != CAIRO_STATUS_SUCCESS)
        throw DrawingError(std::string("drawing failed: ") + cairo_status_to_string(status));
}

}  // namespace

void CairoDevice::Release::operator()(cairo_t* context) const { cairo_destroy(context); }

void CairoDevice::Release::operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }

CairoDevice::CairoDevice(std::filesystem::path file, int width, int height)
    : file_(std::move(file)), isPng_(hasEnding(file_, ".png"))
{
    if (!isPng_ && !hasEnding(file_, ".svg"))
        throw DrawingError("a drawing is a .png or an .svg file");
    if (width < 1 || height < 1 || width > maxSide || height > maxSide)
        throw DrawingError("a drawing has 1 to 32767 pixels a side");
    surface_.reset(isPng_ ? cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)
                          : cairo_svg_surface_create_for_stream(append, &svg_, width, height));
    check(cairo_surface_status(surface_.get()));
    context_.reset(cairo_create(surface_.get()));
    check(cairo_status(context_.get()));
    cairo_set_source_rgb(context_.get(), 1, 1, 1);
    cairo_paint(context_.get());
    cairo_set_source_rgb(context_.get(), 0, 0, 0);
    cairo_set_line_width(context_.get(), 1);
    cairo_set_line_cap(context_.get(), CAIRO_LINE_CAP_SQUARE);  // both end pixels belong to a line
    cairo_select_font_face(context_.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context_.get(), 11);
}

CairoDevice::~CairoDevice() = default;

void CairoDevice::stroke() { cairo_stroke(context_.get()); }

// A line runs through the middle of its pixels.
void CairoDevice::MoveTo(int x, int y)
{
    stroke();
    cairo_move_to(context_.get(), x + 0.5, y + 0.5);
}

void CairoDevice::LineTo(int x, int y) { cairo_line_to(context_.get(), x + 0.5, y + 0.5); }

void CairoDevice::Text(int x, int y, const char* text)
{
    cairo_t* const context = context_.get();
    stroke();
    cairo_font_extents_t extents;
    cairo_font_extents(context, &extents);
    cairo_move_to(context, x, y + extents.ascent);
    if (outlined_) {
        constexpr double outlineWidth = 3;
        cairo_text_path(context, text);
        cairo_set_source_rgb(context, 0, 0, 0);
        cairo_set_line_width(context, outlineWidth);
        cairo_stroke_preserve(context);
        cairo_set_line_width(context, 1);
        cairo_set_source_rgb(context, pen_.red, pen_.green, pen_.blue);
        cairo_fill(context);
    } else {
        cairo_show_text(context, text);
    }
    cairo_new_path(context);
}

void CairoDevice::setPen(const Pen& pen)
{
    stroke();
    pen_ = pen;
    outlined_ = true;
    cairo_set_source_rgb(context_.get(), pen.red, pen.green, pen.blue);
}

void CairoDevice::drawPicture(const ZImage<ZC24>& picture)
{
    const int width = picture.GetWidth(), height = picture.GetHeight();
    const std::unique_ptr<cairo_surface_t, Release> pixels(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    check(cairo_surface_status(pixels.get()));
    unsigned char* row = cairo_image_surface_get_data(pixels.get());
    for (int y = 0; y < height; ++y, row += cairo_image_surface_get_stride(pixels.get()))
        for (int x = 0; x < width; ++x) {
            const ZC24 pixel = picture.GetPixel(x, y);
            const std::uint32_t word = std::uint32_t{pixel.c2} << 16 | std::uint32_t{pixel.c1} << 8 | pixel.c0;
            std::memcpy(row + 4 * static_cast<std::ptrdiff_t>(x), &word, sizeof word);
        }
    cairo_surface_mark_dirty(pixels.get());
    stroke();
    cairo_set_source_surface(context_.get(), pixels.get(), 0, 0);
    cairo_paint(context_.get());
    cairo_set_source_rgb(context_.get(), pen_.red, pen_.green, pen_.blue);
}

void CairoDevice::write()
{
    stroke();
    check(cairo_status(context_.get()));
    cairo_surface_flush(surface_.get());
    std::string png;
    if (isPng_) {
        check(cairo_surface_write_to_png_stream(surface_.get(), append, &png));
    } else {
        cairo_surface_finish(surface_.get());
        check(cairo_surface_status(surface_.get()));
    }
    const std::string& bytes = isPng_ ? png : svg_;

    writeFile(file_, {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

}  // namespace zkit::tool
