// Rows of 3 x 3 filters on bytes, grey or interleaved colour.
//
// A filter is a class: what it keeps of a vector of columns, made from the three rows of it (by default: columns of
// zeros), and
//     template <int step> static Bytes filtered(previous, here, next);
// the results for the columns of `here`, given the columns before and after them. Neighbours are `step` columns away.
#pragma once

#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

// A value for each of as many columns as a vector has lanes: those of the even and of the odd columns apart.
struct Columns {
    Words even = broadcastWord(0), odd = broadcastWord(0);

    Columns() = default;
    Columns(Words ofEven, Words ofOdd) : even(ofEven), odd(ofOdd) {}
    explicit Columns(Bytes pixels) : even(evenBytes(pixels)), odd(oddBytes(pixels)) {}
};

inline Columns operator+(const Columns& a, const Columns& b) { return {a.even + b.even, a.odd + b.odd}; }

// The sums of the left and the right neighbours of the columns of `here`. Neighbours are an odd number of columns away,
// so that those of an even column are odd ones and the other way round.
template <int step>
Columns bothSides(const Columns& previous, const Columns& here, const Columns& next)
{
    constexpr int far = (step + 1) / 2, near = step / 2;
    Words rightOfEven = here.odd, leftOfOdd = here.even;
    if constexpr (near > 0) {
        rightOfEven = after<near>(here.odd, next.odd);
        leftOfOdd = before<near>(previous.even, here.even);
    }
    return {before<far>(previous.odd, here.odd) + rightOfEven, leftOfOdd + after<far>(here.even, next.even)};
}

// A row of at least three vectors, given the vectors of columns from x on, columns(x).
template <class Filter, int step, class ColumnsAt>
void filterLongRow(std::uint8_t* out, std::ptrdiff_t count, ColumnsAt columns)
{
    Filter previous, here = columns(0), next;
    std::ptrdiff_t x = 0;
    for (; x + 2 * Bytes::lanes <= count; x += Bytes::lanes) {
        next = columns(x + Bytes::lanes);
        store(out + x, Filter::template filtered<step>(previous, here, next));
        previous = here;
        here = next;
    }
    const std::ptrdiff_t last = count - Bytes::lanes;
    if (x < last) {  // the last two vectors end with the row and repeat a few columns
        previous = columns(last - 2 * Bytes::lanes);
        here = columns(last - Bytes::lanes);
        next = columns(last);
        store(out + last - Bytes::lanes, Filter::template filtered<step>(previous, here, next));
        previous = here;
        here = next;
    }
    store(out + last, Filter::template filtered<step>(previous, here, Filter()));
}

template <class Filter, int step>
void filterAnyRow(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
                  std::ptrdiff_t count)
{
    constexpr std::ptrdiff_t most = 3 * Bytes::lanes;
    if (count >= most) {
        filterLongRow<Filter, step>(
            out, count, [=](std::ptrdiff_t x) { return Filter(load(above + x), load(here + x), load(below + x)); });
        return;
    }
    // A short row is filtered with zeros behind it.
    std::uint8_t rows[3][most] = {}, filtered[most];
    const auto bytes = static_cast<std::size_t>(count);
    __builtin_memcpy(rows[0], above, bytes);
    __builtin_memcpy(rows[1], here, bytes);
    __builtin_memcpy(rows[2], below, bytes);
    filterLongRow<Filter, step>(filtered, most, [&](std::ptrdiff_t x) {
        return Filter(load(rows[0] + x), load(rows[1] + x), load(rows[2] + x));
    });
    __builtin_memcpy(out, filtered, bytes);
}

// A worker of type FilterRow.
template <class Filter>
void filterRow(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
               std::ptrdiff_t count, int step)
{
    if (step == 1)
        filterAnyRow<Filter, 1>(above, here, below, out, count);
    else
        filterAnyRow<Filter, 3>(above, here, below, out, count);
}

}  // namespace
}  // namespace zkit::ZKIT_SET
