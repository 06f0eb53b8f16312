#include "frame/walk.h"

#include "frame/checks.h"

#include <algorithm>
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

bool filterRows(Source src, const Target& dst, int step, FilterBand filter, OuterRows outer)
{
    if (src.width <= 0 || src.height <= 0)
        return true;
    const auto width = static_cast<std::size_t>(src.width);
    SeparateSource separate;
    const bool overwritten = inPlace(src, dst);
    if (!overwritten && !separate.forNeighbours(src, dst))
        return false;

    // A row of zeros, and in place those of a band and the one above it as they were before they were overwritten.
    constexpr std::ptrdiff_t keptRows = rowsOfBand + 1;
    const std::unique_ptr<std::uint8_t[]> buffer(new (std::nothrow)
                                                     std::uint8_t[(overwritten ? keptRows + 1 : 1) * width]());
    if (!require(buffer != nullptr, Z_ERROR_OUT_OF_MEMORY))
        return false;
    const auto sourceRow = [&](std::ptrdiff_t y) { return src.data + y * src.pitch; };
    const auto unchangedRow = [&](std::ptrdiff_t y) -> const std::uint8_t* {
        if (!overwritten)
            return sourceRow(y);
        return static_cast<std::uint8_t*>(
            std::memcpy(buffer.get() + (1 + y % keptRows) * src.width, sourceRow(y), width));
    };
    const auto outerRow = [&](const std::uint8_t* nearest) {
        return outer == OuterRows::zero ? buffer.get() : nearest;
    };

    const std::uint8_t* rows[rowsOfBand + 2];
    const std::uint8_t* above = nullptr;
    for (std::ptrdiff_t top = 0; top < src.height; top += rowsOfBand) {
        const std::ptrdiff_t count = std::min<std::ptrdiff_t>(rowsOfBand, src.height - top);
        for (std::ptrdiff_t i = 0; i < count; ++i)
            rows[i + 1] = unchangedRow(top + i);
        rows[0] = top > 0 ? above : outerRow(rows[1]);
        rows[count + 1] = top + count < src.height ? sourceRow(top + count) : outerRow(rows[count]);
        filter(rows, {dst.data + top * dst.pitch, dst.pitch, src.width, count}, step);
        above = rows[count];
    }
    return true;
}

}  // namespace zkit
