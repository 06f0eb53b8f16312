// The walk of convolutions, which make two rows of results at a time.
#pragma once

#include "filter/work_rows.h"
#include "simd/plane.h"
#include "simd/stores.h"

#include <algorithm>

namespace zkit {

// Asks memory for rows y and y + 1, for so many columns from x on.
inline void fetchRows(const std::uint8_t* data, std::ptrdiff_t pitch, std::ptrdiff_t height, std::ptrdiff_t y,
                      std::ptrdiff_t x, std::ptrdiff_t count)
{
    constexpr std::ptrdiff_t line = 64;
    for (std::ptrdiff_t row = y; row < std::min(y + 2, height); ++row)
        for (std::ptrdiff_t i = 0; i < count; i += line)
            __builtin_prefetch(data + row * pitch + x + i);
}

// prepare(y) makes what the results of rows y and y + 1 are made of, down to `below` rows below them, then
// filter(x, count, upper, lower, whether with the kernel of the border) makes `count` results of both from column x on.
// Large images go piece by piece, and what the next two rows need is fetched from memory in the meantime. The border of
// 3 x 3 kernels that have one of their own is filtered once more. Raises 1303 and returns false when there is no
// memory.
template <class Prepare, class Filter>
bool walkTwoRows(const Source& src, const Target& dst, int step, std::ptrdiff_t below, bool bordered,
                 const Prepare& prepare, const Filter& filter)
{
    const bool large = storesFor(2 * dst.width * dst.height) == Stores::streamed;
    const std::ptrdiff_t piece = large ? 256 : dst.width;
    WorkRows<std::uint8_t> spare;  // for rows of results that do not count
    if (!spare.make(1, 0, dst.width, 0, 0))
        return false;
    for (std::ptrdiff_t y = 0; y < dst.height; y += 2) {
        prepare(y);
        std::uint8_t* const upper = dst.data + y * dst.pitch;
        std::uint8_t* const lower = y + 1 < dst.height ? upper + dst.pitch : spare.row(0);
        for (std::ptrdiff_t x = 0; x < dst.width;) {
            const std::ptrdiff_t left = dst.width - x, count = left < 2 * piece ? left : piece;
            if (large) {
                fetchRows(src.data, src.pitch, src.height, y + below + 2, x, count);
                fetchRows(dst.data, dst.pitch, dst.height, y + 2, x, count);
            }
            filter(x, count, upper, lower, false);
            x += count;
        }
        if (!bordered)
            continue;
        filter(0, step, upper, lower, true);
        filter(dst.width - step, step, upper, lower, true);
        if (y == 0 || y + 1 == dst.height)
            filter(0, dst.width, upper, spare.row(0), true);
        if (y + 2 == dst.height)
            filter(0, dst.width, spare.row(0), lower, true);
    }
    return true;
}

}  // namespace zkit
