// ImgWarp with separate maps, grey and colour, and with a packed map.
#include "zkit/img/warp.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "geometry/warp_workers.h"
#include "simd/choice.h"

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace zkit;

namespace {

const WarpWorkers& workersFor(const Source& src, int offsetX, int offsetY)
{
    const auto fits = [](std::ptrdiff_t number) { return number >= INT16_MIN && number <= INT16_MAX; };
    const bool narrow = src.width > 0 && src.height > 0 && fits(src.width) && fits(src.height) && fits(src.pitch) &&
                        fits(offsetX) && fits(offsetY);
    return narrow ? workers<WarpWorkers>() : WarpWorkers::plain;
}

// Rows of maps, with their source, from which rows of a destination are made.
template <std::size_t count>
struct Maps {
    const WarpWorkers& worker;
    Source src;
    std::array<PointSource, count>& maps;

    const std::uint8_t* at(std::size_t map, std::ptrdiff_t x, std::ptrdiff_t y) const
    {
        return maps[map].row(y) + x * maps[map].pixelSize;
    }
};

// The part of the destination that is made before the next, so that source rows are still in the caches when the next
// destination row needs them.
constexpr std::ptrdiff_t tileWidth = 1024, tileHeight = 8;

// Makes parts of rows with part(maps, x, y, dst, count), which returns false to end this. Where inAnyOrder(maps, y) is
// false the rows from y on are made one after the other. Raises 1303 when there is no memory to keep overlapping
// regions apart.
template <std::size_t count, class InAnyOrder, class Part>
void warpRows(ZGenericROI* src, ZGenericROI* dst, std::array<PointSource, count> maps, int offsetX, int offsetY,
              InAnyOrder inAnyOrder, Part part)
{
    const int pixelSize = src->GetPixelSize();
    Target to = target(dst);
    for (PointSource& map : maps) {  // may be larger
        map.plane.width = to.width;
        map.plane.height = to.height;
    }
    Source from = bytes(source(src), pixelSize);
    SeparateSource separate;
    Stores stores{};
    if (!(separate.forNeighbours(from, bytes(to, pixelSize)) &&
          preparePoints(maps, to, pixelSize, Joining::none, stores)))
        return;
    from.width = src->GetWidth();
    const Maps<count> at{workersFor(from, offsetX, offsetY), from, maps};
    for (std::ptrdiff_t top = 0; top < to.height; top += tileHeight) {
        const std::ptrdiff_t end = std::min(top + tileHeight, to.height);
        const std::ptrdiff_t width = inAnyOrder(at, top, end) ? tileWidth : to.width;
        for (std::ptrdiff_t x = 0; x < to.width; x += width)
            for (std::ptrdiff_t y = top; y < end; ++y)
                if (!part(at, x, y, to.data + y * to.pitch + x * pixelSize, std::min(width, to.width - x)))
                    return;
    }
}

short warp(ZGenericROI* src, ZGenericROI* dst, ZImage<ZBW16>* mapX, ZImage<ZBW16>* mapY, int offsetX, int offsetY)
{
    const CallFrame frame("ImgWarp");
    if (!(frame.clear() && hasPixels(src) && hasPixels(dst) && hasPixels(mapX) && hasPixels(mapY) &&
          sameSize(dst, mapX) && sameSize(dst, mapY) && placed(src) && placed(dst) && placed(mapX) && placed(mapY)))
        return frame.trace();
    const auto fetch = src->GetPixelSize() == 1 ? &WarpWorkers::grey : &WarpWorkers::colour;
    warpRows(
        src, dst, std::array{PointSource(mapX), PointSource(mapY)}, offsetX, offsetY, [](auto&&...) { return true; },
        [=](const auto& maps, auto x, auto y, auto out, auto count) {
            (maps.worker.*fetch)(maps.src, {maps.at(0, x, y), maps.at(1, x, y), offsetX, offsetY}, out, count);
            return true;
        });
    return frame.finish();
}

bool covers(const ZGenericROI* region, const ZGenericROI* other)
{
    return region->GetWidth() >= other->GetWidth() && region->GetHeight() >= other->GetHeight();
}

}  // namespace

short ImgWarp(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZImage<ZBW16>* mapX, ZImage<ZBW16>* mapY, int offsetX, int offsetY)
{
    return warp(src, dst, mapX, mapY, offsetX, offsetY);
}

// As if each component were warped by the grey form.
void ImgWarp(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZImage<ZBW16>* mapX, ZImage<ZBW16>* mapY, int offsetX, int offsetY)
{
    const CallFrame frame("ImgWarp (C24)");
    if (frame.clear() && placed(src) && placed(dst))
        warp(src, dst, mapX, mapY, offsetX, offsetY);
    frame.finish();
}

short ImgWarp(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZImage<ZBW32>* map)
{
    const CallFrame frame("ImgWarp");
    if (!(frame.clear() && sameSize(src, dst) && require(map, Z_ERROR_NO_PIXELS) &&
          require(covers(map, dst), Z_ERROR_MAP_SIZE) && hasPixels(src) && hasPixels(dst) && hasPixels(map) &&
          placed(src) && placed(dst) && placed(map)))
        return frame.trace();
    warpRows(
        src, dst, std::array{PointSource(map)}, 0, 0,
        [width = dst->GetWidth()](const auto& maps, auto y, auto end) {
            while (y < end && maps.worker.inside(maps.src, maps.at(0, 0, y), width))
                ++y;
            return y == end;
        },
        [lastRow = dst->GetHeight() - std::ptrdiff_t{1}](const auto& maps, auto x, auto y, auto out, auto count) {
            const auto next = maps.at(0, x, std::min(y + tileHeight, lastRow));
            return require(maps.worker.packedMap(maps.src, maps.at(0, x, y), out, count, next) == count,
                           Z_ERROR_OUTSIDE_IMAGE);
        });
    return frame.finish();
}
