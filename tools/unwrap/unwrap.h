// Rings unwrapped into rectangles.
#pragma once

#include "picture/picture.h"

namespace zkit::tool {

/// A ring around a point of a picture, or a sector of one. Coordinates count from the centre of the top-left pixel;
/// angles are degrees, clockwise from the x axis as one sees it.
struct Ring {
    float centreX = 0, centreY = 0;
    float firstRadius = 0, lastRadius = 0;  // of the top and of the bottom row
    float firstAngle = 0, lastAngle = 0;    // of the left and of the right column
    int width = 0, height = 0;              // of the rectangle
};

/// The largest coordinate of a centre and the largest radius: the library's maps hold coordinates up to 32767.
constexpr float maxRingLength = 16000;

/// The rectangle, whose pixels are those of the picture nearest to the ring's points; 0 outside the picture. 1-bit
/// pictures become grey ones. Throws MeasureError, also for 16-bit pictures.
Picture unwrap(const Picture& picture, const Ring& ring);

}  // namespace zkit::tool
