// ImgSetCircleWarp.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/numbers.h"
#include "zkit/core/angle.h"
#include "zkit/img/warp.h"

#include <cmath>

using namespace zkit;

namespace {

// Whether the image has been made so large; it has raised 1303 otherwise.
bool sized(ZImage<ZBW16>* image, int width, int height)
{
    image->SetSize(width, height);
    return image->GetPixelPtr(0, 0) && image->GetWidth() == width && image->GetHeight() == height;
}

// Rounded to a float first: what a sum in double is wrong by does not move a point off a whole pixel.
ZBW16 mapEntry(double coordinate)
{
    return static_cast<ZBW16>(static_cast<std::uint32_t>(truncated(static_cast<float>(coordinate))));
}

void store(ZImage<ZBW16>* map, int column, int row, ZBW16 entry)
{
    static_cast<ZBW16*>(map->GetPixelPtr(0, row))[column] = entry;
}

}  // namespace

void ImgSetCircleWarp(float centerX, float centerY, int radialCount, float radiusA, float radiusB, int angularCount,
                      float angleStart, float angleEnd, ZImage<ZBW16>* mapX, ZImage<ZBW16>* mapY)
{
    const CallFrame frame("ImgSetCircleWarp");
    if (frame.clear() && require(mapX && mapY, Z_ERROR_NO_PIXELS) &&
        require(radialCount >= 1, Z_ERROR_ARGUMENT_3_OUT_OF_RANGE) &&
        require(angularCount >= 1, Z_ERROR_ARGUMENT_6_OUT_OF_RANGE) && sized(mapX, angularCount, radialCount) &&
        sized(mapY, angularCount, radialCount)) {
        const double start = ZToRadians(angleStart), end = ZToRadians(angleEnd);
        const int n = angularCount - 1;
        const double step = radialCount > 1 ? 1.0 / (radialCount - 1) : 0;
        for (int j = 0; j <= n; ++j) {
            const double theta = n > 0 ? ((n - j) * start + j * end) / n : start;
            const double c = static_cast<float>(std::cos(theta)), s = static_cast<float>(std::sin(theta));
            const double xA = radiusA * c + centerX, xB = radiusB * c + centerX;
            const double yA = radiusA * s + centerY, yB = radiusB * s + centerY;
            double t = 0, rest = 1;
            for (int i = 0; i < radialCount; ++i, t += step, rest -= step) {
                store(mapX, j, i, mapEntry(t * xA + rest * xB));
                store(mapY, j, i, mapEntry(rest * yB + t * yA));
            }
        }
    }
    frame.finish();
}
