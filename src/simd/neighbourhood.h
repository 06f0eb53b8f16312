// Rows of 3 x 3 filters on bytes, grey or interleaved colour.
//
// A filter is a class: what it keeps of a vector of columns, made from the three rows of it, and
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

struct Thirds {
    std::uint8_t bytes[Bytes::lanes + 2];
};

constexpr Thirds makeThirds()
{
    Thirds mask{};
    for (int i = 0; i < Bytes::lanes + 2; i += 3)
        mask.bytes[i] = 255;
    return mask;
}

inline constexpr Thirds thirds = makeThirds();

// Border rules: the vectors of pixels before a row and behind it, of which the nearest ones count.
struct Zeros {
    static Bytes before(const std::uint8_t*) { return broadcast(0); }
    static Bytes behind(const std::uint8_t*, std::ptrdiff_t) { return broadcast(0); }
};

// Copies of the outermost pixels, which are grey.
struct Replicated {
    static Bytes before(const std::uint8_t* row) { return broadcast(row[0]); }
    static Bytes behind(const std::uint8_t* row, std::ptrdiff_t count) { return broadcast(row[count - 1]); }
};

// One pixel of `step` bytes everywhere.
class Constant {
public:
    Constant(const std::uint8_t* pixel, int step)
        : pixel_{broadcast(pixel[0]), broadcast(pixel[step == 1 ? 0 : 1]), broadcast(pixel[step == 1 ? 0 : 2])}
    {
    }

    Bytes before(const std::uint8_t*) const { return from(3 - Bytes::lanes % 3); }  // a pixel ends with the last lane
    Bytes behind(const std::uint8_t*, std::ptrdiff_t) const { return from(0); }

private:
    // The bytes from byte `first` of a pixel on; every third is set in the mask.
    Bytes from(int first) const
    {
        const auto every = [first](int byte) { return load(thirds.bytes + (first - byte + 3) % 3); };
        return (pixel_[0] & every(0)) | (pixel_[1] & every(1)) | (pixel_[2] & every(2));
    }

    Bytes pixel_[3];
};

// A row of at least three vectors, given the vectors of columns from x on, columns(x), and those before and behind.
template <class Filter, int step, class ColumnsAt>
void filterLongRow(std::uint8_t* out, std::ptrdiff_t count, ColumnsAt columns, Filter previous, const Filter& behind)
{
    Filter here = columns(0), next = behind;
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
    store(out + last, Filter::template filtered<step>(previous, here, behind));
}

template <class Filter, int step, class Border>
void filterAnyRow(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
                  std::ptrdiff_t count, const Border& border)
{
    const Filter before(border.before(above), border.before(here), border.before(below));
    const Filter behind(border.behind(above, count), border.behind(here, count), border.behind(below, count));
    constexpr std::ptrdiff_t most = 3 * Bytes::lanes;
    if (count >= most) {
        filterLongRow<Filter, step>(
            out, count, [=](std::ptrdiff_t x) { return Filter(load(above + x), load(here + x), load(below + x)); },
            before, behind);
        return;
    }
    // A short row is filtered with the border behind it.
    std::uint8_t rows[3][most + Bytes::lanes] = {}, filtered[most];
    const auto bytes = static_cast<std::size_t>(count);
    const std::uint8_t* const sources[3] = {above, here, below};
    for (int i = 0; i < 3; ++i) {
        __builtin_memcpy(rows[i], sources[i], bytes);
        store(rows[i] + count, border.behind(sources[i], count));
    }
    filterLongRow<Filter, step>(
        filtered, most,
        [&](std::ptrdiff_t x) { return Filter(load(rows[0] + x), load(rows[1] + x), load(rows[2] + x)); }, before,
        behind);
    __builtin_memcpy(out, filtered, bytes);
}

template <class Filter, class Border>
void filterRow(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
               std::ptrdiff_t count, int step, const Border& border)
{
    if (step == 1)
        filterAnyRow<Filter, 1>(above, here, below, out, count, border);
    else
        filterAnyRow<Filter, 3>(above, here, below, out, count, border);
}

// A worker of type FilterRow.
template <class Filter>
void filterRow(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
               std::ptrdiff_t count, int step)
{
    filterRow<Filter>(above, here, below, out, count, step, Zeros());
}

}  // namespace
}  // namespace zkit::ZKIT_SET
