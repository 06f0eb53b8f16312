// Folding the bytes of a plane into one vector of partial results, and that into one value.
#pragma once

#include "simd/row_end.h"

namespace zkit::ZKIT_SET {
namespace {

// A vector of a row. The last one may have lanes that do not count: those hold what the step puts in their place.
struct WholeLanes {
    Bytes pixels;

    Bytes orElse(std::uint8_t) const { return pixels; }
};

struct LastLanes {
    Bytes pixels, counting;

    Bytes orElse(std::uint8_t value) const { return select(counting, broadcast(value), pixels); }
};

// Folds every vector of a row into `partial` with step(partial, lanes). Four partial results take turns, so that no
// step waits for the one before it, or two where more would not fit the registers; join(partial, partial) brings them
// together, and joining the start must change nothing.
template <class Partial, class Step, class Join>
Partial foldRow(const std::uint8_t* row, std::ptrdiff_t count, Partial start, Step step, Join join)
{
    constexpr bool two = sizeof(Partial) > 2 * sizeof(Bytes);
    Partial a = start, b = start, third = start, fourth = start;
    Partial &c = two ? a : third, &d = two ? b : fourth;
    std::ptrdiff_t x = 0;
    for (; x + 4 * Bytes::lanes <= count; x += 4 * Bytes::lanes) {
        a = step(a, WholeLanes{load(row + x)});
        b = step(b, WholeLanes{load(row + x + Bytes::lanes)});
        c = step(c, WholeLanes{load(row + x + 2 * Bytes::lanes)});
        d = step(d, WholeLanes{load(row + x + 3 * Bytes::lanes)});
    }
    for (; x + Bytes::lanes <= count; x += Bytes::lanes)
        a = step(a, WholeLanes{load(row + x)});
    if (x < count) {
        const LastVector last(count);
        b = step(b, LastLanes{last.bytes(row), last.counting()});
    }
    return two ? join(a, b) : join(join(a, b), join(c, d));
}

// The same over all rows.
template <class Partial, class Step, class Join>
Partial foldRows(Source src, Partial start, Step step, Join join)
{
    Partial all = start;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        all = join(all, foldRow(src.data + y * src.pitch, src.width, start, step, join));
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
