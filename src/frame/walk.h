// Walking over the rows of regions.
#pragma once

#include "frame/overlap.h"
#include "frame/planes.h"

namespace zkit {

// Calls row(src, dst, count) for every row of two planes of pixels of the same size, or once for all of them where
// no gaps lie between the rows. The row reads every pixel before it writes the one at its place; source and destination
// may overlap. Raises 1303 and returns false when there is no memory to keep them apart.
template <class Row>
bool pointRows(Source src, Target dst, int pixelSize, Row row)
{
    SeparateSource separate;
    if (!separate.forPoints(src, pixelSize, dst, pixelSize))
        return false;
    joinRows(pixelSize, src, dst);
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        row(src.data + y * src.pitch, dst.data + y * dst.pitch, src.width);
    return true;
}

// Filters all rows from the top down, the rows above the first and below the last counting 0. Source and destination
// may overlap. Widths count bytes. Raises 1303 and returns false when there is no memory for the rows it keeps.
bool filterRows(Source src, const Target& dst, int step, FilterRow filter);

}  // namespace zkit
