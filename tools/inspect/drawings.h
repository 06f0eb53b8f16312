// What an inspection found, drawn.
#pragma once

#include "inspect/inspect.h"

#include <filesystem>

namespace zkit::tool {

/// Draws the picture with the outer contours, centres and numbers of the objects over it into a .png or .svg file.
/// Throws DrawingError, PictureError or MeasureError.
void drawOverlay(const Picture& picture, ZImage<ZBW8>& grey, const Inspection& inspection,
                 const std::filesystem::path& file);

}  // namespace zkit::tool
