// ImgScaleRotate, grey and colour.
#include "frame/by_component.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/numbers.h"
#include "frame/overlap.h"
#include "frame/planes.h"
#include "geometry/scale_rotate_workers.h"
#include "simd/choice.h"
#include "zkit/core/angle.h"
#include "zkit/img/geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace zkit;

namespace {

// x' = a11 x + a12 y + b1, y' = a21 x + a22 y + b2.
struct Affine {
    float a11, a12, b1, a21, a22, b2;

    float determinant() const { return a22 * a11 - a21 * a12; }
};

Affine aboutPivots(float srcX, float srcY, float dstX, float dstY, float scaleX, float scaleY, float radians)
{
    const auto s = static_cast<float>(std::sin(static_cast<double>(radians)));
    const auto c = static_cast<float>(std::cos(static_cast<double>(radians)));
    const float a11 = scaleX * c, a12 = scaleY * s, a21 = -(scaleX * s), a22 = scaleY * c;
    return {a11, a12, dstX - (a11 * srcX + a12 * srcY), a21, a22, dstY - (a21 * srcX + a22 * srcY)};
}

// Where destination pixels come from: coordinates of pixel (0, 0) with their steps a column, and those a row.
struct Inverse {
    Coordinates first;
    std::uint32_t dxRow, dyRow;

    explicit Inverse(const Affine& forward)
    {
        const auto fixed = [](float value) { return static_cast<std::uint32_t>(truncated(value * 65536.0)); };
        const float det = forward.determinant();
        const float i11 = forward.a22 / det, i12 = -forward.a12 / det, i21 = -forward.a21 / det,
                    i22 = forward.a11 / det;
        first = {fixed(-(i11 * forward.b1 + i12 * forward.b2)), fixed(-(i21 * forward.b1 + i22 * forward.b2)),
                 fixed(i11), fixed(i21)};
        dxRow = fixed(i12);
        dyRow = fixed(i22);
    }

    Coordinates at(std::ptrdiff_t column, std::ptrdiff_t row) const
    {
        const auto i = static_cast<std::uint32_t>(column), j = static_cast<std::uint32_t>(row);
        return {first.x + i * first.dx + j * dxRow, first.y + i * first.dy + j * dyRow, first.dx, first.dy};
    }
};

// Packed workers count the source's bytes in 32 bits.
const ScaleRotateWorkers& workersFor(const Source& src)
{
    const bool large = std::abs(static_cast<double>(src.pitch)) * static_cast<double>(src.height) >= 0x1p31;
    return large ? ScaleRotateWorkers::plain : workers<ScaleRotateWorkers>();
}

// The part of the destination that is filled before the next: whole rows where each comes from one source row, else
// tiles, so that source rows are still in the caches when the next destination row needs them. The more source rows a
// destination row crosses, the more rows must share them.
struct Tile {
    std::ptrdiff_t width, height;

    Tile(const Target& dst, const Coordinates& at)
    {
        const auto steepness = std::abs(static_cast<double>(static_cast<std::int32_t>(at.dy)));
        const bool steep = steepness > std::abs(static_cast<double>(static_cast<std::int32_t>(at.dx)));
        width = at.dy == 0 ? dst.width : 1024;
        height = steep ? 32 : 8;
    }
};

// Raises 1303 and returns false when there is no memory to keep overlapping regions apart.
bool resample(Source src, const Target& dst, const Inverse& inverse, int bits)
{
    SeparateSource separate;
    if (!separate.forNeighbours(src, dst))
        return false;
    const ScaleRotateWorkers& worker = workersFor(src);
    const Tile tile(dst, inverse.first);
    for (std::ptrdiff_t top = 0; top < dst.height; top += tile.height)
        for (std::ptrdiff_t left = 0; left < dst.width; left += tile.width)
            for (std::ptrdiff_t y = top; y < std::min(top + tile.height, dst.height); ++y) {
                std::uint8_t* const out = dst.data + y * dst.pitch + left;
                const std::ptrdiff_t count = std::min(tile.width, dst.width - left);
                if (bits == 0)
                    worker.nearest(src, out, count, inverse.at(left, y));
                else
                    worker.bilinear(src, out, count, inverse.at(left, y), bits);
            }
    return true;
}

}  // namespace

short ImgScaleRotate(ZROI<ZBW8>* src, float srcPivotX, float srcPivotY, float dstPivotX, float dstPivotY, float scaleX,
                     float scaleY, float angle, ZROI<ZBW8>* dst, int interpolationBits)
{
    const CallFrame frame("ImgScaleRotate");
    if (!(frame.clear() && require(src && dst, Z_ERROR_NO_PIXELS) && hasPixels(src)))
        return frame.trace();
    if (!dst->GetPixelPtr(0, 0))  // is no error, which is intended
        return frame.finish();
    const Affine forward = aboutPivots(srcPivotX, srcPivotY, dstPivotX, dstPivotY, scaleX, scaleY, ZToRadians(angle));
    const float det = forward.determinant();
    const int bits = interpolationBits;
    if (!(placed(src) && placed(dst) && require(det < 0 || det > 0, Z_ERROR_DIVISION_BY_ZERO) &&
          require(bits == 0 || bits == 4 || bits == 8, Z_ERROR_INCONSISTENT_ARGUMENTS) &&
          resample(source(src), target(dst), Inverse(forward), bits)))
        return frame.trace();
    return frame.finish();
}

void ImgScaleRotate(ZROI<ZC24>* src, float srcPivotX, float srcPivotY, float dstPivotX, float dstPivotY, float scaleX,
                    float scaleY, float angle, ZROI<ZC24>* dst, int interpolationBits)
{
    byComponent("ImgScaleRotate (C24)", src, dst, [=](ZROI<ZBW8>* in, ZROI<ZBW8>* out, int) {
        return ImgScaleRotate(in, srcPivotX, srcPivotY, dstPivotX, dstPivotY, scaleX, scaleY, angle, out,
                              interpolationBits);
    });
}
