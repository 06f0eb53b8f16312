// Extremes of 3 x 3 pixels.
#pragma once

#include "simd/bands.h"
#include "simd/neighbourhood.h"

namespace zkit::ZKIT_SET {
namespace {

template <class Extreme>
Bytes ofThree(Bytes a, Bytes b, Bytes c)
{
    return Extreme::of(Extreme::of(a, b), c);
}

// Three neighbours.
template <class Extreme>
struct Three {
    Bytes extreme;

    template <int step>
    explicit Three(const Neighbours<step>& n) : extreme(ofThree<Extreme>(n.left, n.here, n.right))
    {
    }
};

template <class Extreme>
Bytes ofThreeRows(const Three<Extreme>& above, const Three<Extreme>& here, const Three<Extreme>& below)
{
    return ofThree<Extreme>(above.extreme, here.extreme, below.extreme);
}

// Goes along two rows at a time, which have two of their rows in common, and makes the extremes of columns first: this
// takes the fewest loads, by which so little work is bound.
template <class Extreme>
struct AlongTwoRows {
    template <int step, class Filter>
    static std::ptrdiff_t within(const Filter&, const std::uint8_t* const* rows, const Target& out, std::ptrdiff_t x,
                                 std::ptrdiff_t last)
    {
        if (out.height < 2 || x + Bytes::lanes > last)
            return x;
        std::ptrdiff_t end = x;
        for (std::ptrdiff_t y = 0; y < out.height; y += 2) {
            const std::ptrdiff_t upper = y + 1 < out.height ? y : y - 1;
            end = twoRows<step>(rows + upper, out.data + upper * out.pitch, out.pitch, x, last);
        }
        return end;
    }

private:
    struct Columns {
        Bytes upper, lower;
    };

    template <int step>
    [[gnu::flatten]] static std::ptrdiff_t twoRows(const std::uint8_t* const* rows, std::uint8_t* out,
                                                   std::ptrdiff_t pitch, std::ptrdiff_t x, std::ptrdiff_t last)
    {
        const std::uint8_t *const a = rows[0], *const b = rows[1], *const c = rows[2], *const d = rows[3];
        const auto columns = [=](std::ptrdiff_t at) -> Columns {
            const Bytes shared = Extreme::of(load(b + at), load(c + at));
            return {Extreme::of(load(a + at), shared), Extreme::of(load(d + at), shared)};
        };
        const auto result = [](Bytes previous, Bytes here, Bytes next) {
            return ofThree<Extreme>(before<step>(previous, here), here, after<step>(here, next));
        };
        Columns previous = columns(x - Bytes::lanes), here = columns(x);
        for (; x + Bytes::lanes <= last; x += Bytes::lanes) {
            const Columns next = columns(x + Bytes::lanes);
            store(out + x, result(previous.upper, here.upper, next.upper));
            store(out + pitch + x, result(previous.lower, here.lower, next.lower));
            previous = here;
            here = next;
        }
        return x;
    }
};

// A worker of type FilterBand.
template <class Extreme>
void ofNine(const std::uint8_t* const* rows, const Target& out, const Border& border)
{
    filterBand<ofThreeRows<Extreme>, AlongTwoRows<Extreme>>(rows, out, border);
}

inline constexpr std::ptrdiff_t rowsBetween = 2 * rowsOfBand;

// Rows between two steps, and those of a band behind them, do not fall on the same lines of the cache.
inline std::ptrdiff_t pitchBetween(std::ptrdiff_t width) { return width / 128 * 128 + 192; }

inline std::int64_t memoryOfTwoSteps(std::ptrdiff_t width)
{
    return 2 * std::int64_t{width} + alignment + (rowsBetween + rowsOfBand) * std::int64_t{pitchBetween(width)};
}

// Those rows, behind two that are outside.
inline std::uint8_t* rowsBetweenIn(std::uint8_t* memory, std::ptrdiff_t width) { return aligned(memory + 2 * width); }

// Both steps, band by band: no more rows are kept between them than the second one needs, which put(rows, y, count) is
// to take for the rows of results from y on. It stays a row behind, so that in place no row is written before it has
// been read.
template <class First, class Put>
void ofNineTwice(const Source& src, const Border& first, const Border& second, std::uint8_t* memory, const Put& put)
{
    const std::ptrdiff_t width = src.width, pitch = pitchBetween(width);
    std::uint8_t *const outside = memory + width, *const between = rowsBetweenIn(memory, width);
    fillPixels(outside, width, second.pixel, second.step);
    std::ptrdiff_t begun = 0, done = 0;
    const auto finish = [&](std::ptrdiff_t count) {
        const std::uint8_t* rows[rowsOfBand + 2];
        for (std::ptrdiff_t i = 0; i < count + 2; ++i) {
            const std::ptrdiff_t y = done - 1 + i;
            rows[i] = y < 0 || y == src.height ? outside : between + y % rowsBetween * pitch;
        }
        put(rows, done, count);
        done += count;
    };
    const auto band = [&](const std::uint8_t* const* rows, const Target& out, const Border& border) {
        ofNine<First>(rows, {between + begun % rowsBetween * pitch, pitch, width, out.height}, border);
        begun += out.height;
        if (begun - 1 > done)
            finish(begun - 1 - done);
        if (begun == src.height)
            finish(1);
    };
    filterBands(src, {between, 0, width, src.height}, first, band, Above::unfiltered, memory);
}

}  // namespace
}  // namespace zkit::ZKIT_SET
