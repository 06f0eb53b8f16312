// The figures of one picture.
#pragma once

#include "picture/picture.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <variant>

namespace zkit::tool {

struct Rectangle {
    int x, y, width, height;
};

struct MeasureRequest {
    std::optional<Rectangle> region = {};  // else the whole picture
    std::optional<int> threshold = {};     // else 1 for 1-bit, 128 for 8-bit and 32768 for 16-bit pictures
};

/// Raw moments: m_pq is the sum of weight x^p y^q, coordinates counting from the region's top-left pixel.
struct Moments {
    double m00 = 0, m10 = 0, m01 = 0, m20 = 0, m11 = 0, m02 = 0;
};

struct GreyFigures {
    int threshold = 0;
    int min = 0, max = 0;
    double mean = 0, deviation = 0;  // of all pixels (divided by their number)
    std::int64_t area = 0;           // pixels strictly above the threshold
    Moments binary;                  // of the pixels at or above the threshold, with weight 1; m00 counts them
    Moments weighed;                 // of all pixels, with their grey levels as weights
    double focus = 0;

    // Centre of gravity of the pixels at or above the threshold, not a number when there are none.
    double centreX() const { return binary.m10 / binary.m00; }
    double centreY() const { return binary.m01 / binary.m00; }
};

struct Components {
    double red = 0, green = 0, blue = 0;
};

struct ColourFigures {
    Components mean, deviation;
    double redGreen = 0, greenBlue = 0, blueRed = 0;  // correlations, not a number where a component is uniform
    double focus = 0;
};

struct Measurement {
    const char* type = "";  // of the picture's pixels
    int width = 0, height = 0;
    Rectangle region = {};
    std::variant<GreyFigures, ColourFigures> figures;
};

/// Why a picture could not be measured, in one line.
class MeasureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws what the library has pending: the sentence of the code and, in brackets, the trail.
void throwPendingError();

/// Measures a picture. Throws MeasureError for a region that does not lie within the picture, and for a threshold that
/// the pixel type cannot reach.
Measurement measure(const Picture& picture, const MeasureRequest& request);

}  // namespace zkit::tool
