#include "frame/walk.h"

#include "frame/checks.h"

namespace zkit {

bool preparePoints(std::span<PointSource> sources, Target& dst, int dstPixelSize, Joining joining, Stores& stores)
{
    bool separate = true, gapless = dst.pitch == dst.width * dstPixelSize;
    std::ptrdiff_t pixelSizes = dstPixelSize;
    for (PointSource& from : sources) {
        if (!from.separate.forPoints(from.plane, from.pixelSize, dst, dstPixelSize))
            return false;
        separate &= !inPlace(from.plane, dst);
        gapless &= from.plane.pitch == from.plane.width * from.pixelSize;
        pixelSizes += from.pixelSize;
    }
    stores = separate ? storesFor(dst.width * dst.height * pixelSizes) : Stores::cached;
    if (gapless && joining == Joining::allowed) {
        dst.width *= dst.height;
        dst.height = dst.height > 0;
    }
    return true;
}

}  // namespace zkit
