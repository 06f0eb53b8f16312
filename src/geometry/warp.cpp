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

// The pixels across of strips of the destination, which are made one after the other, each from the top down. Wider
// ones of a turned source need more of its rows at a time, each in a page of memory of its own, than the processor
// keeps addresses of; for narrower ones it comes back more often to each page of the maps.
constexpr std::ptrdiff_t stripOfSeparateMaps = 2048, stripOfPackedMap = 1536;

// How many rows ahead a packed map is wanted.
constexpr std::ptrdiff_t rowsAhead = 8;

// Makes parts of rows with part(maps, x, y, dst, count), which returns false to end this. They are no wider than
// stripOf(maps). Raises 1303 when there is no memory to keep overlapping regions apart.
template <std::size_t count, class StripOf, class Part>
void warpRows(ZGenericROI* src, ZGenericROI* dst, std::array<PointSource, count> maps, int offsetX, int offsetY,
              StripOf stripOf, Part part)
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
    const std::ptrdiff_t strip = stripOf(at);
    for (std::ptrdiff_t x = 0; x < to.width; x += strip)
        for (std::ptrdiff_t y = 0; y < to.height; ++y)
            if (!part(at, x, y, to.data + y * to.pitch + x * pixelSize, std::min(strip, to.width - x)))
                return;
}

short warp(ZGenericROI* src, ZGenericROI* dst, ZImage<ZBW16>* mapX, ZImage<ZBW16>* mapY, int offsetX, int offsetY)
{
    const CallFrame frame("ImgWarp");
    if (!(frame.clear() && hasPixels(src) && hasPixels(dst) && hasPixels(mapX) && hasPixels(mapY) &&
          sameSize(dst, mapX) && sameSize(dst, mapY) && placed(src) && placed(dst) && placed(mapX) && placed(mapY)))
        return frame.trace();
    const auto fetch = src->GetPixelSize() == 1 ? &WarpWorkers::grey : &WarpWorkers::colour;
    warpRows(
        src, dst, std::array{PointSource(mapX), PointSource(mapY)}, offsetX, offsetY,
        [](const auto&) { return stripOfSeparateMaps; },
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
        [width = std::ptrdiff_t{dst->GetWidth()}, height = dst->GetHeight()](const auto& maps) {
            std::ptrdiff_t y = 0;
            while (y < height && maps.worker.inside(maps.src, maps.at(0, 0, y), width))
                ++y;
            return y == height ? stripOfPackedMap : width;  // whole rows up to the first pixel outside
        },
        [lastRow = dst->GetHeight() - std::ptrdiff_t{1}](const auto& maps, auto x, auto y, auto out, auto count) {
            const auto next = maps.at(0, x, std::min(y + rowsAhead, lastRow));
            return require(maps.worker.packedMap(maps.src, maps.at(0, x, y), out, count, next) == count,
                           Z_ERROR_OUTSIDE_IMAGE);
        });
    return frame.finish();
}
