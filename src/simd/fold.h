// Folding the bytes of a plane into one vector of partial results, and that into one value.
#pragma once

#include "simd/row_end.h"

namespace zkit::ZKIT_SET {
namespace {

// Folds every vector of a row into `partial` with step(partial, bytes). Four partial results take turns, so that no
// step waits for the one before it; join(partial, partial) brings them together. Lanes beyond the row's end hold
// `fill`.
template <class Partial, class Step, class Join>
Partial foldRow(const std::uint8_t* row, std::ptrdiff_t count, Partial start, std::uint8_t fill, Step step, Join join)
{
    Partial a = start, b = start, c = start, d = start;
    std::ptrdiff_t x = 0;
    for (; x + 4 * Bytes::lanes <= count; x += 4 * Bytes::lanes) {
        a = step(a, load(row + x));
        b = step(b, load(row + x + Bytes::lanes));
        c = step(c, load(row + x + 2 * Bytes::lanes));
        d = step(d, load(row + x + 3 * Bytes::lanes));
    }
    for (; x + Bytes::lanes <= count; x += Bytes::lanes)
        a = step(a, load(row + x));
    if (x < count) {
        const LastVector last(count);
        b = step(b, select(last.counting(), broadcast(fill), last.bytes(row)));
    }
    return join(join(a, b), join(c, d));
}

// The same over all rows. Joining the start must change nothing.
template <class Partial, class Step, class Join>
Partial foldRows(Source src, Partial start, std::uint8_t fill, Step step, Join join)
{
    Partial all = start;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        all = join(all, foldRow(src.data + y * src.pitch, src.width, start, fill, step, join));
    return all;
}

// Folds the lanes of a vector with operation(bytes, bytes).
template <class Operation>
std::uint8_t foldLanes(Bytes all, Operation operation)
{
    std::uint8_t lanes[2 * Bytes::lanes];
    for (int half = Bytes::lanes / 2; half > 0; half /= 2) {
        store(lanes, all);
        store(lanes + Bytes::lanes, all);
        all = operation(all, load(lanes + half));
    }
    store(lanes, all);
    return lanes[0];
}

}  // namespace
}  // namespace zkit::ZKIT_SET
