// ImgRegister: ImgScaleRotate from pairs of points.
#include "zkit/core/angle.h"
#include "zkit/img/geometry.h"

#include <cmath>

namespace {

// The line from one point to another.
struct Line {
    Line(float x0, float y0, float x1, float y1) : x(x1 - x0), y(y1 - y0) {}

    double direction() const { return std::atan2(y, x); }
    double length() const { return std::sqrt(x * x + y * y); }

    double x, y;  // floats
};

template <class T>
void shift(ZROI<T>* src, ZROI<T>* dst, float srcX, float srcY, float dstX, float dstY, int interpolationBits)
{
    ImgScaleRotate(src, srcX, srcY, dstX, dstY, 1, 1, 0, dst, interpolationBits);
}

template <class T>
void fit(ZROI<T>* src, ZROI<T>* dst, float srcX0, float srcY0, float srcX1, float srcY1, float dstX0, float dstY0,
         float dstX1, float dstY1, int interpolationBits, int scalingFlag)
{
    const Line from(srcX0, srcY0, srcX1, srcY1), to(dstX0, dstY0, dstX1, dstY1);
    const float angle = ZFromRadians(static_cast<float>(to.direction() - from.direction()));
    const float scale = scalingFlag ? static_cast<float>(to.length() / from.length()) : 1;
    ImgScaleRotate(src, srcX0, srcY0, dstX0, dstY0, scale, scale, -angle, dst, interpolationBits);
}

}  // namespace

void ImgRegister(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, float srcX, float srcY, float dstX, float dstY,
                 int interpolationBits)
{
    shift(src, dst, srcX, srcY, dstX, dstY, interpolationBits);
}

void ImgRegister(ZROI<ZC24>* src, ZROI<ZC24>* dst, float srcX, float srcY, float dstX, float dstY,
                 int interpolationBits)
{
    shift(src, dst, srcX, srcY, dstX, dstY, interpolationBits);
}

void ImgRegister(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, float srcX0, float srcY0, float srcX1, float srcY1, float dstX0,
                 float dstY0, float dstX1, float dstY1, int interpolationBits, int scalingFlag)
{
    fit(src, dst, srcX0, srcY0, srcX1, srcY1, dstX0, dstY0, dstX1, dstY1, interpolationBits, scalingFlag);
}

void ImgRegister(ZROI<ZC24>* src, ZROI<ZC24>* dst, float srcX0, float srcY0, float srcX1, float srcY1, float dstX0,
                 float dstY0, float dstX1, float dstY1, int interpolationBits, int scalingFlag)
{
    fit(src, dst, srcX0, srcY0, srcX1, srcY1, dstX0, dstY0, dstX1, dstY1, interpolationBits, scalingFlag);
}
