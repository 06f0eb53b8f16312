// Bands of rows of 3 x 3 filters on bytes, grey or interleaved colour.
//
// A filter is a function Bytes(const Row& above, const Row& here, const Row& below), or an object with such an operator
// and a type Row: the results for the pixels of `here`. Row, a class of the filter's, is what it needs to know of a
// vector of pixels, made from their Neighbours. A vector is walked down a whole band, so that every Row is made once
// for the three rows of results that it is part of.
#pragma once

#include "simd/vector.h"

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
inline Columns operator*(int factor, const Columns& a)
{
    return {broadcastWord(factor) * a.even, broadcastWord(factor) * a.odd};
}
inline Columns magnitude(const Columns& a) { return {magnitude(a.even), magnitude(a.odd)}; }

// Signed values as bytes, with saturation to 0..255.
inline Bytes saturated(const Columns& a) { return interleaveSaturated(a.even, a.odd); }

// A vector of pixels and those `step` bytes to the left and right of them.
template <int step>
struct Neighbours {
    Bytes left, here, right;

    // Neighbours of an even lane that are 1 byte away are odd lanes of the pixels themselves, and the other way round.
    Columns leftColumns() const { return step == 1 ? Columns(evenBytes(left), evenBytes(here)) : Columns(left); }
    Columns rightColumns() const { return step == 1 ? Columns(oddBytes(here), oddBytes(right)) : Columns(right); }

    // The sums of the three.
    Columns three() const
    {
        if constexpr (step != 1)
            return Columns(left) + Columns(here) + Columns(right);
        const Words pair = evenBytes(here) + oddBytes(here);
        return {evenBytes(left) + pair, pair + oddBytes(right)};
    }
};

// What lies beyond the ends of a row: the vectors before its first pixel and after its last one, of which only the
// nearest `step` bytes matter.
struct ZerosOutside {
    template <int step>
    static Bytes before(const std::uint8_t*)
    {
        return broadcast(0);
    }

    template <int step>
    static Bytes after(const std::uint8_t*)
    {
        return broadcast(0);
    }
};

struct RepeatedOutside {
    template <int step>
    static Bytes before(const std::uint8_t* first)
    {
        if constexpr (step == 1)
            return broadcast(first[0]);
        std::uint8_t pixels[Bytes::lanes] = {};
        __builtin_memcpy(pixels + Bytes::lanes - step, first, step);
        return load(pixels);
    }

    template <int step>
    static Bytes after(const std::uint8_t* end)
    {
        if constexpr (step == 1)
            return broadcast(end[-1]);
        std::uint8_t pixels[Bytes::lanes] = {};
        __builtin_memcpy(pixels, end - step, step);
        return load(pixels);
    }
};

// Vectors of pixels at an address with their neighbours: within a row, at its beginning and at its end.
template <int step>
Neighbours<step> within(const std::uint8_t* p)
{
    return {load(p - step), load(p), load(p + step)};
}

template <class Outside, int step>
Neighbours<step> first(const std::uint8_t* p)
{
    return {before<step>(Outside::template before<step>(p), load(p)), load(p), load(p + step)};
}

template <class Outside, int step>
Neighbours<step> last(const std::uint8_t* p)
{
    return {load(p - step), load(p), after<step>(load(p), Outside::template after<step>(p + Bytes::lanes))};
}

template <class R>
R rowOf(Bytes (*filter)(const R& above, const R& here, const R& below));

// A function as an object.
template <auto filter>
struct Formula {
    using Row = decltype(rowOf(filter));

    Bytes operator()(const Row& above, const Row& here, const Row& below) const { return filter(above, here, below); }
};

// The columns from x on; neighbours(p) are those of the pixels at p.
template <auto neighbours, class Filter>
[[gnu::flatten]] void filterColumns(const Filter filter, const std::uint8_t* const* rows, const Target& out,
                                    std::ptrdiff_t x)
{
    using Row = typename Filter::Row;
    const auto at = [=](std::ptrdiff_t y) { return Row(neighbours(rows[y] + x)); };
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

// Rows that are too short for a vector at either end are filtered among what lies outside them.
template <class Outside, int step, class Filter>
void filterShortRows(const Filter& filter, const std::uint8_t* const* rows, const Target& out)
{
    constexpr int most = 2 * Bytes::lanes;  // pixels that are filtered, whatever the width
    std::uint8_t padded[rowsOfBand + 2][2 * most] = {}, filtered[rowsOfBand][most];
    const std::uint8_t* paddedRows[rowsOfBand + 2];
    for (int y = 0; y < rowsOfBand + 2; ++y)
        paddedRows[y] = padded[y] + Bytes::lanes;
    for (std::ptrdiff_t y = 0; y < out.height + 2; ++y) {
        std::uint8_t* const row = padded[y] + Bytes::lanes;
        store(row - Bytes::lanes, Outside::template before<step>(rows[y]));
        __builtin_memcpy(row, rows[y], static_cast<std::size_t>(out.width));
        store(row + out.width, Outside::template after<step>(rows[y] + out.width));
    }
    for (int x = 0; x < most; x += Bytes::lanes)
        filterColumns<within<step>>(filter, paddedRows, {filtered[0], most, most, out.height}, x);
    for (std::ptrdiff_t y = 0; y < out.height; ++y)
        __builtin_memcpy(out.data + y * out.pitch, filtered[y], static_cast<std::size_t>(out.width));
}

template <class Outside, int step, class Filter>
void filterRowsOf(const Filter& filter, const std::uint8_t* const* rows, const Target& out)
{
    if (out.width < Bytes::lanes + step) {
        filterShortRows<Outside, step>(filter, rows, out);
        return;
    }
    // The last two vectors end with the row and with the last pixel that has a right neighbour; they may repeat
    // columns.
    const std::ptrdiff_t end = out.width - Bytes::lanes;
    filterColumns<first<Outside, step>>(filter, rows, out, 0);
    for (std::ptrdiff_t x = Bytes::lanes; x < end; x += Bytes::lanes)
        filterColumns<within<step>>(filter, rows, out, x < end - step ? x : end - step);
    filterColumns<last<Outside, step>>(filter, rows, out, end);
}

template <class Outside, class Filter>
void filterBandWith(const Filter& filter, const std::uint8_t* const* rows, const Target& out, int step)
{
    if (step == 1)
        filterRowsOf<Outside, 1>(filter, rows, out);
    else
        filterRowsOf<Outside, 3>(filter, rows, out);
}

// A worker of type FilterBand.
template <auto filter, class Outside>
void filterBand(const std::uint8_t* const* rows, const Target& out, int step)
{
    filterBandWith<Outside>(Formula<filter>{}, rows, out, step);
}

}  // namespace
}  // namespace zkit::ZKIT_SET
