// The inspection of one picture: what objects it shows, and their figures.
#pragma once

#include "inspect/request.h"
#include "measure/measure.h"

#include "zkit/img/vectors.h"

#include <memory>
#include <optional>
#include <vector>

namespace zkit::tool {

/// An object. The centre of the picture's top-left pixel is (0, 0).
struct Object {
    Rectangle box = {};
    std::int64_t area = 0;            // pixels
    double centreX = 0, centreY = 0;  // centre of gravity
    double orientation = 0;           // of the long axis: degrees counter-clockwise from the x axis, above -90 to 90
    double elongation = 0;            // long axis divided by short one
    double perimeter = 0;             // length of the outer contour through the centres of its pixels
    double mean = 0, deviation = 0;   // of the grey levels in the picture
    bool touchesEdge = false;         // of the picture
    std::unique_ptr<ZPathVector> contour;  // outer; not closed: the last pixel is a neighbour of the first
};

struct Inspection {
    int width = 0, height = 0;
    std::optional<int> threshold;   // none where thresholds follow the light
    std::vector<Object> objects;    // in the order of their first pixels, row by row from the top left
    ZBW8HistogramVector histogram;  // of the levels that the threshold was applied to
};

/// The greatest side of a picture that contours can be followed in.
constexpr int maxInspectedSide = 32767;

/// Inspects a grey picture. Throws MeasureError.
std::unique_ptr<Inspection> inspect(ZImage<ZBW8>& grey, const InspectRequest& request);

}  // namespace zkit::tool
