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

bool KeptRows::allocate(std::ptrdiff_t rowBytes)
{
    rowBytes_ = rowBytes;
    rows_.reset(new (std::nothrow) std::uint8_t[2 * static_cast<std::size_t>(rowBytes)]);
    return require(rows_ != nullptr, Z_ERROR_OUT_OF_MEMORY);
}

const std::uint8_t* KeptRows::keep(std::ptrdiff_t y, const std::uint8_t* row)
{
    std::uint8_t* const kept = rows_.get() + y % 2 * rowBytes_;
    return static_cast<const std::uint8_t*>(std::memcpy(kept, row, static_cast<std::size_t>(rowBytes_)));
}

bool OutsideRow::fill(std::ptrdiff_t rowBytes, std::span<const std::uint8_t> pixel)
{
    row_.reset(new (std::nothrow) std::uint8_t[static_cast<std::size_t>(rowBytes)]);
    if (!require(row_ != nullptr, Z_ERROR_OUT_OF_MEMORY))
        return false;
    for (std::size_t x = 0; x < static_cast<std::size_t>(rowBytes); ++x)
        row_[x] = pixel[x % pixel.size()];
    return true;
}

}  // namespace zkit
