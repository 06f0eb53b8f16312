// Walking over the rows of regions.
#pragma once

#include "frame/checks.h"
#include "frame/overlap.h"
#include "frame/planes.h"
#include "simd/stores.h"

#include <algorithm>
#include <array>
#include <cstring>
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

// What a filter takes for the row above the first one and below the last one.
enum class OuterRows { zero, repeated };

// Filters all rows from the top down. Source and destination may overlap; the destination is as large as the source.
// Widths count bytes. `filter` is a FilterBand or an object that is called like one. Raises 1303 and returns false when
// there is no memory for the rows it keeps.
template <class Band>
bool filterRows(Source src, const Target& dst, int step, Band filter, OuterRows outer)
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
