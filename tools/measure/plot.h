// The histogram of a picture as a drawing.
#pragma once

#include "measure/measure.h"

#include "zkit/img/vectors.h"

#include <filesystem>

namespace zkit::tool {

/// Draws the histogram of the picture's region with axes and captions into a .png or .svg file: of the levels that
/// grey pictures hold, of the mean of the components of colour pictures. Throws DrawingError or MeasureError.
void plotHistogram(const Picture& picture, const MeasureRequest& request, const std::filesystem::path& file);

/// Draws a histogram of 256 levels, with a line at the threshold if there is one.
void plotHistogram(ZBW8HistogramVector& histogram, std::optional<int> threshold, const std::filesystem::path& file);

}  // namespace zkit::tool
