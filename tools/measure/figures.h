// The figures of a region, one function per pixel type. They throw MeasureError.
#pragma once

#include "measure/measure.h"

namespace zkit::tool {

/// By the library's operations.
GreyFigures measureGrey(ZImage<ZBW8>& image, const Rectangle& region, int threshold);
ColourFigures measureColour(ZImage<ZC24>& image, const Rectangle& region);

/// By formulas of its own in double precision, since the library measures 8-bit pixels. Focus takes each pixel's
/// differences to the right-hand and the lower neighbour within the region.
GreyFigures measureWide(ZImage<ZBW16>& image, const Rectangle& region, int threshold);

/// The region that is asked for, else the whole picture.
Rectangle regionOf(const Picture& picture, const MeasureRequest& request);

/// A 1-bit picture with levels 0 and 1.
ImagePointer<ZBW8> expand(const ZImage<ZBW1>& bits);

/// Adds the moments of a piece's pixels at or above the threshold; the piece's corner is (x, y).
void addBinaryMoments(Moments& sum, ZROI<ZBW8>& piece, int threshold, double x, double y);

}  // namespace zkit::tool
