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

// Maps with their source, and the destination that is made from them.
template <std::size_t count>
struct Maps {
    const WarpWorkers& worker;
    Source src;
    Target dst;
    std::array<PointSource, count>& maps;
    int pixelSize;

    const std::uint8_t* at(std::size_t map, std::ptrdiff_t x, std::ptrdiff_t y) const
    {
        return maps[map].row(y) + x * maps[map].pixelSize;
    }

    std::uint8_t* to(std::ptrdiff_t x, std::ptrdiff_t y) const { return dst.data + y * dst.pitch + x * pixelSize; }
};

// The pixels across of strips of the destination, which are made one after the other, each from the top down. Wider
// ones of a turned source need more of its rows at a time, each in a page of memory of its own, than the processor
// keeps addresses of; for narrower ones it comes back more often to each page of the maps.
constexpr std::ptrdiff_t stripOfSeparateMaps = 2048, stripOfPackedMap = 1536;

// How many rows ahead a packed map is wanted.
constexpr std::ptrdiff_t rowsAhead = 8;

// part(x, y, count) for the parts of rows that strips consist of, from column x on and above row `end`.
template <class Part>
void inStrips(std::ptrdiff_t x, std::ptrdiff_t width, std::ptrdiff_t end, std::ptrdiff_t strip, const Part& part)
{
    for (; x < width; x += strip)
        for (std::ptrdiff_t y = 0; y < end; ++y)
            part(x, y, std::min(strip, width - x));
}

// Does the work, which takes the maps, unless there is no memory to keep overlapping regions apart (1303).
template <std::size_t count, class Work>
void withMaps(ZGenericROI* src, ZGenericROI* dst, std::array<PointSource, count> maps, int offsetX, int offsetY,
              Work work)
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
    work(Maps<count>{workersFor(from, offsetX, offsetY), from, to, maps, pixelSize});
}

short warp(ZGenericROI* src, ZGenericROI* dst, ZImage<ZBW16>* mapX, ZImage<ZBW16>* mapY, int offsetX, int offsetY)
{
    const CallFrame frame("ImgWarp");
    if (!(frame.clear() && hasPixels(src) && hasPixels(dst) && hasPixels(mapX) && hasPixels(mapY) &&
          sameSize(dst, mapX) && sameSize(dst, mapY) && placed(src) && placed(dst) && placed(mapX) && placed(mapY)))
        return frame.trace();
    const auto fetch = src->GetPixelSize() == 1 ? &WarpWorkers::grey : &WarpWorkers::colour;
    withMaps(src, dst, std::array{PointSource(mapX), PointSource(mapY)}, offsetX, offsetY, [=](const auto& maps) {
        inStrips(0, maps.dst.width, maps.dst.height, stripOfSeparateMaps, [&](auto x, auto y, auto count) {
            (maps.worker.*fetch)(maps.src, {maps.at(0, x, y), maps.at(1, x, y), offsetX, offsetY}, maps.to(x, y),
                                 count);
        });
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
    // Nothing may be written behind the first pixel outside: while the first strip is made, the map is looked at beside
    // it. The others end above the row of that pixel, which is made last.
    withMaps(src, dst, std::array{PointSource(map)}, 0, 0, [](const auto& maps) {
        const auto [data, pitch, width, height] = maps.dst;
        const auto part = [&maps, last = height - 1](auto x, auto y, auto count) {
            const std::uint8_t* const next = maps.at(0, x, std::min(y + rowsAhead, last));
            return maps.worker.packedMap(maps.src, maps.at(0, x, y), maps.to(x, y), count, next) == count;
        };
        const std::ptrdiff_t first = std::min(stripOfPackedMap, width);
        std::ptrdiff_t end = 0;
        while (end < height && part(0, end, first) &&
               maps.worker.inside(maps.src, maps.at(0, first, end), width - first))
            ++end;
        inStrips(first, width, end, stripOfPackedMap, part);
        require(end == height || part(0, end, width), Z_ERROR_OUTSIDE_IMAGE);
    });
    return frame.finish();
}
