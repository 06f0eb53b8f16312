// From a picture to the pixels of its objects.
#pragma once

#include "inspect/request.h"
#include "measure/measure.h"

#include "zkit/img/vectors.h"

#include <memory>
#include <optional>

namespace zkit::tool {

struct Segmentation {
    ImagePointer<ZBW8> mask;       // objects 255, background 0
    ImagePointer<ZBW8> levels;     // what the threshold was applied to: evened out and filtered
    std::optional<int> threshold;  // none where thresholds follow the light; 256 is above all levels
};

/// Evens out the light, filters, finds the threshold and applies it, opens. Throws MeasureError.
Segmentation segment(ZImage<ZBW8>& grey, const InspectRequest& request);

}  // namespace zkit::tool
