// Bands of rows of 3 x 3 filters on bytes, grey or interleaved colour.
//
// A filter is a function Bytes(const Row& above, const Row& here, const Row& below), or an object with such an operator
// and a type Row: the results for the pixels of `here`. Row, a class of the filter's, is what it needs to know of a
// vector of pixels, made from their Neighbours. A vector is walked down a whole band, so that every Row is made once
// for the three rows of results that it is part of.
#pragma once

#include "simd/vector.h"

#include <type_traits>

namespace zkit::ZKIT_SET {
namespace {

// A value for each of as many pixels as a vector has lanes: those of the even and of the odd lanes apart.
struct Columns {
    Words even, odd;

    Columns(Words ofEven, Words ofOdd) : even(ofEven), odd(ofOdd) {}
    explicit Columns(Bytes pixels) : even(evenBytes(pixels)), odd(oddBytes(pixels)) {}
};

inline Columns operator+(const Columns& a, const Columns& b) { return {a.even + b.even, a.odd + b.odd}; }
inline Columns operator-(const Columns& a, const Columns& b) { return {a.even - b.even, a.odd - b.odd}; }
inline Columns max(const Columns& a, const Columns& b) { return {maxSigned(a.even, b.even), maxSigned(a.odd, b.odd)}; }
inline Columns magnitude(const Columns& a) { return {magnitude(a.even), magnitude(a.odd)}; }

// The same in the order that is made of pairs of pixels and goes back to bytes with fewer steps.
inline TwoWords operator+(TwoWords a, TwoWords b) { return {a.low + b.low, a.high + b.high}; }
inline TwoWords operator-(TwoWords a, TwoWords b) { return {a.low - b.low, a.high - b.high}; }
inline TwoWords max(TwoWords a, TwoWords b) { return {maxSigned(a.low, b.low), maxSigned(a.high, b.high)}; }
inline TwoWords magnitude(TwoWords a) { return {magnitude(a.low), magnitude(a.high)}; }

// So many times the first byte of each word and so many times the second one.
inline Words weighted(Words pairs, int first, int second)
{
    return multiplyAddBytes(pairs, broadcastWord((first & 0xFF) | (second & 0xFF) << 8));
}

inline TwoWords weighted(TwoWords pairs, int first, int second)
{
    return {weighted(pairs.low, first, second), weighted(pairs.high, first, second)};
}

// Signed values as bytes, with saturation to 0..255.
inline Bytes saturated(const Columns& a) { return interleaveSaturated(a.even, a.odd); }
inline Bytes saturated(TwoWords a) { return narrow(a); }

// A vector of pixels and those `step` bytes to the left and right of them.
template <int step>
struct Neighbours {
    Bytes left, here, right;

    // Neighbours of an even lane that are 1 byte away are odd lanes of the pixels themselves, and the other way round.
    Columns leftColumns() const { return step == 1 ? Columns(evenBytes(left), evenBytes(here)) : Columns(left); }
    Columns rightColumns() const { return step == 1 ? Columns(oddBytes(here), oddBytes(right)) : Columns(right); }

    // What is made of the three, as columns where neighbours are 1 byte away.
    using Values = std::conditional_t<step == 1, Columns, TwoWords>;

    Values centre() const
    {
        if constexpr (step == 1)
            return Columns(here);
        else
            return widen(here);
    }

    Values times(int factor) const
    {
        if constexpr (step == 1)
            return {weighted(Words{here.r}, factor, 0), weighted(Words{here.r}, 0, factor)};
        else
            return weighted(widen(here), factor, 0);
    }

    Values withLeft() const
    {
        if constexpr (step == 1)
            return leftColumns() + centre();
        else
            return weighted(pairs(left, here), 1, 1);
    }

    Values withRight() const
    {
        if constexpr (step == 1)
            return centre() + rightColumns();
        else
            return weighted(pairs(here, right), 1, 1);
    }

    Values slope() const
    {
        if constexpr (step == 1)
            return rightColumns() - leftColumns();
        else
            return weighted(pairs(left, right), -1, 1);
    }

    // `factor` times the pixels and `side` (1 or -1) times both neighbours.
    template <int side, int factor>
    Values sum() const
    {
        if constexpr (step == 1) {
            const auto add = [](Words a, Words b) { return side < 0 ? a - b : a + b; };
            const Words pixels{here.r};
            return {add(weighted(pixels, factor, side), evenBytes(left)),
                    add(weighted(pixels, side, factor), oddBytes(right))};
        } else {
            return weighted(pairs(left, right), side, side) + (factor == 1 ? centre() : times(factor));
        }
    }
};

// What lies beyond the ends of a row: the vectors before its first pixel and after its last one, of which only the
// nearest pixel matters.
template <int step>
class Outside {
public:
    explicit Outside(const Border& border)
        : repeated_(border.repeated), before_(endingWith(border.pixel)), after_(beginningWith(border.pixel))
    {
    }

    Bytes before(const std::uint8_t* first) const { return repeated_ ? endingWith(first) : before_; }
    Bytes after(const std::uint8_t* end) const { return repeated_ ? beginningWith(end - step) : after_; }

private:
    static Bytes endingWith(const std::uint8_t* pixel) { return with(pixel, Bytes::lanes - step); }
    static Bytes beginningWith(const std::uint8_t* pixel) { return with(pixel, 0); }

    static Bytes with(const std::uint8_t* pixel, int place)
    {
        if constexpr (step == 1)
            return broadcast(pixel[0]);
        std::uint8_t bytes[Bytes::lanes] = {};
        __builtin_memcpy(bytes + place, pixel, step);
        return load(bytes);
    }

    bool repeated_;
    Bytes before_, after_;
};

// Vectors of pixels at an address with their neighbours: within a row, at its beginning and at its end.
template <int step>
struct Within {
    Neighbours<step> operator()(const std::uint8_t* p) const { return {load(p - step), load(p), load(p + step)}; }
};

template <int step>
struct First {
    Outside<step> outside;

    Neighbours<step> operator()(const std::uint8_t* p) const
    {
        return {before<step>(outside.before(p), load(p)), load(p), load(p + step)};
    }
};

template <int step>
struct Last {
    Outside<step> outside;

    Neighbours<step> operator()(const std::uint8_t* p) const
    {
        return {load(p - step), load(p), after<step>(load(p), outside.after(p + Bytes::lanes))};
    }
};

template <class R>
R rowOf(Bytes (*filter)(const R& above, const R& here, const R& below));

// A function as an object.
template <auto filter>
struct Formula {
    using Row = decltype(rowOf(filter));

    Bytes operator()(const Row& above, const Row& here, const Row& below) const { return filter(above, here, below); }
};

// The columns from x on; neighbours(p) are those of the pixels at p.
template <class Filter, class NeighboursAt>
[[gnu::flatten]] void filterColumns(const Filter filter, const std::uint8_t* const* rows, const Target& out,
                                    std::ptrdiff_t x, const NeighboursAt& neighbours)
{
    using Row = typename Filter::Row;
    const auto at = [&, rows, x](std::ptrdiff_t y) { return Row(neighbours(rows[y] + x)); };
    std::uint8_t* result = out.data + x;
    const auto put = [&result, pitch = out.pitch](Bytes pixels) {
        store(result, pixels);
        result += pitch;
    };
    // Each row takes the place of the one that is no longer needed.
    Row a = at(0), b = at(1);
    std::ptrdiff_t y = 2;
    const std::ptrdiff_t end = out.height + 2;
    for (; y + 3 <= end; y += 3) {
        const Row c = at(y);
        put(filter(a, b, c));
        a = at(y + 1);
        put(filter(b, c, a));
        b = at(y + 2);
        put(filter(c, a, b));
    }
    if (y < end) {
        const Row c = at(y);
        put(filter(a, b, c));
        if (y + 1 < end)
            put(filter(b, c, at(y + 1)));
    }
}

// How a filter takes the vectors within rows, those at the ends aside: down a band of all its rows, written out one
// after the other, so that their addresses stay in registers.
struct DownTheBand {
    // Filters vectors from column x on, none beyond column `last`, where the last one of the row begins. Returns the
    // first column that is left.
    template <int step, class Filter>
    [[gnu::flatten]] static std::ptrdiff_t within(const Filter filter, const std::uint8_t* const* rows,
                                                  const Target& out, std::ptrdiff_t x, std::ptrdiff_t last)
    {
        using Row = typename Filter::Row;
        if (out.height != rowsOfBand)
            return x;
        const std::uint8_t* from[rowsOfBand + 2];
        unrolled<rowsOfBand + 2>([&](int i) { from[i] = rows[i]; });
        const std::ptrdiff_t pitch = out.pitch;
        std::uint8_t *const upper = out.data, *const lower = upper + 3 * pitch;
        for (; x + step <= last; x += Bytes::lanes) {
            const auto at = [&](int i) { return Row(Within<step>()(from[i] + x)); };
            Row above = at(0), here = at(1);
            unrolled<rowsOfBand>([&](int i) {
                const Row below = at(i + 2);
                store((i < 3 ? upper + i * pitch : lower + (i - 3) * pitch) + x, filter(above, here, below));
                above = here;
                here = below;
            });
        }
        return x;
    }
};

// Rows that are too short for a vector at either end are filtered among what lies outside them.
template <class Filter, int step>
void filterShortRows(const Filter& filter, const std::uint8_t* const* rows, const Target& out,
                     const Outside<step>& outside)
{
    constexpr int most = 2 * Bytes::lanes;  // pixels that are filtered, whatever the width
    std::uint8_t padded[rowsOfBand + 2][2 * most] = {}, filtered[rowsOfBand][most];
    const std::uint8_t* paddedRows[rowsOfBand + 2];
    for (int y = 0; y < rowsOfBand + 2; ++y)
        paddedRows[y] = padded[y] + Bytes::lanes;
    for (std::ptrdiff_t y = 0; y < out.height + 2; ++y) {
        std::uint8_t* const row = padded[y] + Bytes::lanes;
        store(row - Bytes::lanes, outside.before(rows[y]));
        __builtin_memcpy(row, rows[y], static_cast<std::size_t>(out.width));
        store(row + out.width, outside.after(rows[y] + out.width));
    }
    for (int x = 0; x < most; x += Bytes::lanes)
        filterColumns(filter, paddedRows, {filtered[0], most, most, out.height}, x, Within<step>());
    for (std::ptrdiff_t y = 0; y < out.height; ++y)
        __builtin_memcpy(out.data + y * out.pitch, filtered[y], static_cast<std::size_t>(out.width));
}

template <class Walk, class Filter, int step>
void filterRowsOf(const Filter& filter, const std::uint8_t* const* rows, const Target& out,
                  const Outside<step>& outside)
{
    if (out.width < Bytes::lanes + step) {
        filterShortRows(filter, rows, out, outside);
        return;
    }
    // The last two vectors end with the row and with the last pixel that has a right neighbour; they may repeat
    // columns.
    const std::ptrdiff_t last = out.width - Bytes::lanes;
    filterColumns(filter, rows, out, 0, First<step>{outside});
    std::ptrdiff_t x = Walk::template within<step>(filter, rows, out, Bytes::lanes, last);
    for (; x < last; x += Bytes::lanes)
        filterColumns(filter, rows, out, x < last - step ? x : last - step, Within<step>());
    filterColumns(filter, rows, out, last, Last<step>{outside});
}

// A worker of type FilterBand, but for the filter.
template <class Filter, class Walk = DownTheBand>
void filterBandWith(const Filter& filter, const std::uint8_t* const* rows, const Target& out, const Border& border)
{
    if (border.step == 1)
        filterRowsOf<Walk>(filter, rows, out, Outside<1>(border));
    else
        filterRowsOf<Walk>(filter, rows, out, Outside<3>(border));
}

// A worker of type FilterBand, of filters for grey and for colour.
template <auto grey, auto colour>
void filterBand(const std::uint8_t* const* rows, const Target& out, const Border& border)
{
    if (border.step == 1)
        filterRowsOf<DownTheBand>(Formula<grey>{}, rows, out, Outside<1>(border));
    else
        filterRowsOf<DownTheBand>(Formula<colour>{}, rows, out, Outside<3>(border));
}

// A worker of type FilterBand.
template <auto filter, class Walk = DownTheBand>
void filterBand(const std::uint8_t* const* rows, const Target& out, const Border& border)
{
    filterBandWith<Formula<filter>, Walk>({}, rows, out, border);
}

}  // namespace
}  // namespace zkit::ZKIT_SET
