// Geometric transforms.
#include "operation.h"
#include "zkit/img.h"

#include <algorithm>

namespace bench {

namespace {

// Turns and scales about the middle.
template <int interpolationBits, class T>
void turn(ZImage<T>* from, ZImage<T>* to)
{
    const float x = float(from->GetWidth()) / 2, y = float(from->GetHeight()) / 2;
    ImgScaleRotate(from, x, y, x, y, scale, scale, rotation, to, interpolationBits);
}

template <int interpolationBits>
void scaleRotate(Scene& scene)
{
    turn<interpolationBits>(scene.grey(), scene.greyResult());
}

template <int interpolationBits>
void scaleRotateColor(Scene& scene)
{
    turn<interpolationBits>(scene.color(), scene.colorResult());
}

template <int interpolationBits>
void registerByShift(Scene& scene)
{
    ImgRegister(scene.grey(), scene.greyResult(), 10.f, 10.f, 13.25f, 8.5f, interpolationBits);
}

template <class T>
void reduce(ZImage<T>* from, ZImage<T>* to)
{
    ZROI<T> smaller(to, 0, 0, int(float(from->GetWidth()) / reduction), int(float(from->GetHeight()) / reduction));
    ImgShrink(from, &smaller);
}

void shrink(Scene& scene) { reduce(scene.grey(), scene.greyResult()); }

void shrinkColor(Scene& scene) { reduce(scene.color(), scene.colorResult()); }

void verticalMirror(Scene& scene) { ImgVerticalMirror(scene.greyResult()); }

void verticalMirrorColor(Scene& scene) { ImgVerticalMirror(scene.colorResult()); }

// A square, for which alone it is made.
void horizontalMirror(Scene& scene)
{
    const int side = std::min(scene.size().width, scene.size().height);
    ZROI<ZBW8> square(scene.greyResult(), 0, 0, side, side);
    ImgHorizontalMirror(&square);
}

constexpr Operation table[] = {
    {"ImgScaleRotate", "BW8 nearest", 1, 1, scaleRotate<0>},
    {"ImgScaleRotate", "BW8 bilinear", 1, 1, scaleRotate<8>},
    {"ImgScaleRotate", "C24 bilinear", 3, 3, scaleRotateColor<8>},
    {"ImgRegister", "BW8 nearest", 1, 1, registerByShift<0>},
    {"ImgRegister", "BW8 bilinear", 1, 1, registerByShift<8>},
    {"ImgShrink", "BW8", 1, 0, shrink},
    {"ImgShrink", "C24", 3, 0, shrinkColor},
    {"ImgVerticalMirror", "BW8", 1, 1, verticalMirror},
    {"ImgVerticalMirror", "C24", 3, 3, verticalMirrorColor},
    {"ImgHorizontalMirror", "BW8 square", 1, 1, horizontalMirror},
};

}  // namespace

std::span<const Operation> geometryOperations() { return table; }

}  // namespace bench
