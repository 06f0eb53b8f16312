// Walking over the rows of regions.
#pragma once

#include "frame/checks.h"
#include "frame/overlap.h"
#include "frame/planes.h"
#include "simd/bands.h"
#include "simd/stores.h"

#include <array>
#include <memory>
#include <new>
#include <span>
#include <tuple>

namespace zkit {

// A region that a point operation reads, kept apart from the one that it writes. A null region stands for an operand
// without pixels and has null rows.
struct PointSource {
    explicit PointSource(const ZGenericROI* region)
    {
        if (region) {
            plane = source(region);
            pixelSize = region->GetPixelSize();
        }
    }

    const std::uint8_t* row(std::ptrdiff_t y) const { return plane.data + y * plane.pitch; }

    Source plane{};
    int pixelSize = 0;
    SeparateSource separate;
};

// Rows without gaps between them may be taken as one long row where rows mean nothing to the work.
enum class Joining { allowed, none };

// Prepares a walk over sources and a destination: copies the sources that overlap it, joins rows, says how to store.
// Raises 1303 and returns false when there is no memory for the copies.
bool preparePoints(std::span<PointSource> sources, Target& dst, int dstPixelSize, Joining joining, Stores& stores);

// Calls row(source rows..., destination row, count, stores) for every row, or once for all of them. The row reads every
// pixel before it writes the one at its place; regions of any pixel types may overlap. Raises 1303 and returns false
// when there is no memory to keep them apart.
template <class Row, class... Sources>
bool pointRows(Joining joining, const ZGenericROI* dst, Row row, const Sources*... sources)
{
    std::array<PointSource, sizeof...(Sources)> all{PointSource(sources)...};
    Target to = target(dst);
    Stores stores{};
    if (!preparePoints(all, to, dst->GetPixelSize(), joining, stores))
        return false;
    for (std::ptrdiff_t y = 0; y < to.height; ++y)
        std::apply([&](auto&... from) { row(from.row(y)..., to.data + y * to.pitch, to.width, stores); }, all);
    if (stores == Stores::streamed)
        endStreaming();
    return true;
}

template <class Row, class... Sources>
bool pointRows(const ZGenericROI* dst, Row row, const Sources*... sources)
{
    return pointRows(Joining::allowed, dst, row, sources...);
}

// Filters all rows from the top down. Source and destination may overlap; the destination is as large as the source.
// Widths count bytes. `filter` is a FilterBand or an object that is called like one. Raises 1303 and returns false when
// there is no memory for the rows it keeps.
template <class Band>
bool filterRows(Source src, const Target& dst, const Border& border, const Band& filter,
                Above given = Above::unfiltered)
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
