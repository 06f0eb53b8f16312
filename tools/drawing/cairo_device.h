// Drawings in files: PNG and SVG, through cairo.
#pragma once

#include "zkit/core/drawing.h"
#include "zkit/core/roi.h"

#include <cairo.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

namespace zkit::tool {

/// Why a drawing could not be made or written, in one line without the name of the file.
class DrawingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The colour of lines and text: components from 0 to 1.
struct Pen {
    double red, green, blue;
};

/// A white sheet of paper on which lines and text are drawn, black unless another pen is set, and the file that it
/// becomes. Coordinates count pixels from the top-left corner.
class CairoDevice : public ZDrawingDevice {
public:
    /// A sheet for a file whose ending is .png or .svg. Throws DrawingError for any other ending, and for a sheet
    /// without extent or with more than 32767 pixels a side.
    CairoDevice(std::filesystem::path file, int width, int height);
    ~CairoDevice() override;
    CairoDevice(const CairoDevice&) = delete;
    CairoDevice& operator=(const CairoDevice&) = delete;

    void MoveTo(int x, int y) override;
    void LineTo(int x, int y) override;
    void Text(int x, int y, const char* text) override;

    /// From now on lines and text have this colour, and text a black outline that parts it from a picture.
    void setPen(const Pen& pen);

    /// Covers the sheet with a picture from its top-left corner on.
    void drawPicture(const ZImage<ZC24>& picture);

    /// Writes the file (writeFile, whose PictureError it throws). Throws DrawingError when cairo fails.
    void write();

private:
    struct Release {
        void operator()(cairo_t* context) const;
        void operator()(cairo_surface_t* surface) const;
    };

    void stroke();

    std::filesystem::path file_;
    std::unique_ptr<cairo_surface_t, Release> surface_;
    std::unique_ptr<cairo_t, Release> context_;
    std::string svg_;
    Pen pen_ = {0, 0, 0};
    bool outlined_ = false;
    bool isPng_;
};

}  // namespace zkit::tool
