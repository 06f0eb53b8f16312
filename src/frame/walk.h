// Walking over the rows of regions.
#pragma once

#include "frame/planes.h"

namespace zkit {

// Calls row(src, dst, count) for every row of two planes of pixels of the same size, or once for all of them where
// no gaps lie between the rows.
template <class Row>
void walkRows(Source src, Target dst, int pixelSize, Row row)
{
    joinRows(pixelSize, src, dst);
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        row(src.data + y * src.pitch, dst.data + y * dst.pitch, src.width);
}

// One row of a 3 x 3 filter on `count` bytes; neighbours to the left and right are `step` bytes away, and those beyond
// the ends of the row count 0. `out` shares no byte with the three rows.
using FilterRow = void (*)(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below,
                           std::uint8_t* out, std::ptrdiff_t count, int step);

// Filters all rows from the top down, the rows above the first and below the last counting 0. Source and destination
// may overlap. Widths count bytes. Raises 1303 and returns false when there is no memory for the rows it keeps.
bool filterRows(Source src, const Target& dst, int step, FilterRow filter);

}  // namespace zkit
