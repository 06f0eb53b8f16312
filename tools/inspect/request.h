// What is asked of an inspection.
#pragma once

#include "picture/picture.h"

#include "zkit/img/threshold_selection.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace zkit::tool {

/// How objects are told from the background.
struct ThresholdChoice {
    /// A level from 0 to 255, or one of IMG_THRESHOLD_MODES.
    unsigned level = static_cast<unsigned>(IMG_THRESHOLD_ISODATA);
    float relative = 0;  // for IMG_THRESHOLD_RELATIVE: the part of the pixels below it
    int cellWidth = 0;   // not 0: thresholds that follow the light, found in cells of this size
    int cellHeight = 0;
};

/// Reads isodata, entropy, residue, relative:PART, adaptive:W, adaptive:WxH or a level. Nothing for any other text.
std::optional<ThresholdChoice> parseThreshold(const std::string& text);

struct InspectRequest {
    const ZImage<ZBW8>* background = nullptr;  // the same scene without objects, which evens out the light
    std::optional<unsigned> shift = {};  // the lowest bit of 16-bit levels that counts, else as few as possible lost
    int medians = 1;                     // how many times the median filter is applied
    ThresholdChoice threshold = {};
    bool dark = false;  // objects are darker than the background
    int opening = 0;    // passes, 0 for none
    std::int64_t minArea = 1, maxArea = std::numeric_limits<std::int64_t>::max();
};

}  // namespace zkit::tool
