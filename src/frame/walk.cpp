#include "frame/walk.h"

#include "frame/checks.h"

#include <memory>
#include <new>

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

bool filterRows(Source src, const Target& dst, const Border& border, FilterBand filter, Above given)
{
    if (src.width <= 0 || src.height <= 0)
        return true;
    SeparateSource separate;
    const bool overwritten = inPlace(src, dst);
    if (!overwritten && !separate.forNeighbours(src, dst))
        return false;
    const auto bytes = static_cast<std::size_t>(rowsKept(overwritten)) * static_cast<std::size_t>(src.width);
    const std::unique_ptr<std::uint8_t[]> memory(new (std::nothrow) std::uint8_t[bytes]);
    if (!require(memory != nullptr, Z_ERROR_OUT_OF_MEMORY))
        return false;
    filterBands(src, dst, border, filter, given, memory.get());
    return true;
}

}  // namespace zkit
