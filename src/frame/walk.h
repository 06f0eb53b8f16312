// Walking over the rows of regions.
#pragma once

#include "frame/overlap.h"
#include "frame/planes.h"
#include "simd/stores.h"

#include <array>
#include <memory>
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

// A row outside the region: copies of one pixel.
class OutsideRow {
public:
    // Raises 1303 and returns false when there is no memory.
    bool fill(std::ptrdiff_t rowBytes, std::span<const std::uint8_t> pixel);

    const std::uint8_t* get() const { return row_.get(); }

private:
    std::unique_ptr<std::uint8_t[]> row_;
};

// Copies of the last two rows of a source that is overwritten, as they were.
class KeptRows {
public:
    // Raises 1303 and returns false when there is no memory.
    bool allocate(std::ptrdiff_t rowBytes);

    const std::uint8_t* keep(std::ptrdiff_t y, const std::uint8_t* row);

private:
    std::unique_ptr<std::uint8_t[]> rows_;
    std::ptrdiff_t rowBytes_ = 0;
};

// What a row is told of the row above it in place.
enum class Above { unfiltered, filtered };

// Calls row(above, here, below, destination row) for every row from the top down, with null for a row outside the
// region. Source and destination may overlap: they are kept apart, but for the row above in place where that is to be
// the filtered one. Widths count bytes. Raises 1303 and returns false when there is no memory for it.
template <class Row>
bool neighbourRows(Source src, const Target& dst, Row row, Above given = Above::unfiltered)
{
    if (src.width <= 0 || src.height <= 0)
        return true;
    SeparateSource separate;
    KeptRows kept;
    const bool overwritten = inPlace(src, dst);
    if (!(overwritten ? kept.allocate(src.width) : separate.forNeighbours(src, dst)))
        return false;
    const std::uint8_t* above = nullptr;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* here = src.data + y * src.pitch;
        const std::uint8_t* below = y + 1 < src.height ? here + src.pitch : nullptr;
        if (overwritten)
            here = kept.keep(y, here);
        row(above, here, below, dst.data + y * dst.pitch);
        above = overwritten && given == Above::filtered ? dst.data + y * dst.pitch : here;
    }
    return true;
}

// Filters all rows from the top down, the rows above the first and below the last counting 0. Source and destination
// may overlap. Widths count bytes. Raises 1303 and returns false when there is no memory for the rows it keeps.
bool filterRows(Source src, const Target& dst, int step, FilterRow filter);

}  // namespace zkit
