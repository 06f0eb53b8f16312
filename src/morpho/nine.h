// Extremes of 3 x 3 pixels.
#pragma once

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

}  // namespace
}  // namespace zkit::ZKIT_SET
