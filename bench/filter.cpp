// Linear filters.
#include "operation.h"
#include "zkit/img.h"

namespace bench {

namespace {

void lowpass3(Scene& scene) { ImgConvolLowpass3(scene.grey(), scene.greyResult()); }

void lowpass3Color(Scene& scene) { ImgConvolLowpass3(scene.color(), scene.colorResult()); }

constexpr Operation table[] = {
    {"ImgConvolLowpass3", "BW8", 1, 1, lowpass3},
    {"ImgConvolLowpass3", "C24", 3, 3, lowpass3Color},
};

}  // namespace

std::span<const Operation> filterOperations() { return table; }

}  // namespace bench
