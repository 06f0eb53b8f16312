#include "frame/walk.h"

#include "frame/checks.h"

#include <cstring>
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

bool filterRows(Source src, const Target& dst, int step, FilterRow filter)
{
    if (src.width <= 0 || src.height <= 0)
        return true;
    const auto width = static_cast<std::size_t>(src.width);
    SeparateSource separate;
    const bool overwritten = inPlace(src, dst);
    if (!overwritten && !separate.forNeighbours(src, dst))
        return false;

    // A row of zeros, and in place the last two rows as they were before they were overwritten.
    const std::unique_ptr<std::uint8_t[]> rows(new (std::nothrow) std::uint8_t[(overwritten ? 3 : 1) * width]());
    if (!require(rows != nullptr, Z_ERROR_OUT_OF_MEMORY))
        return false;
    const std::uint8_t* const outside = rows.get();
    std::uint8_t* const kept[2] = {rows.get() + width, rows.get() + 2 * width};

    const std::uint8_t* above = outside;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* here = src.data + y * src.pitch;
        const std::uint8_t* below = y + 1 < src.height ? here + src.pitch : outside;
        if (overwritten)
            here = static_cast<std::uint8_t*>(std::memcpy(kept[y % 2], here, width));
        filter(above, here, below, dst.data + y * dst.pitch, src.width, step);
        above = here;
    }
    return true;
}

}  // namespace zkit
