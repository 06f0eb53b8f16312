// Counting pixels with one or several properties.
#pragma once

#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

// For every lane and every property: all bits set where the pixel has it.
template <int properties>
struct Having {
    Bytes of[properties];
};

// Counts pixels, modulo 2^32.
template <int properties>
class Counter {
public:
    // Counts the pixels of all whole vectors of a row; test(x) tells the properties of the vector at x.
    template <class Test>
    void countRow(std::ptrdiff_t width, Test test)
    {
        for (std::ptrdiff_t x = 0; x + Bytes::lanes <= width;) {
            // A lane of the counts holds up to 255.
            const std::ptrdiff_t vectors = (width - x) / Bytes::lanes;
            const std::ptrdiff_t end = x + (vectors < 255 ? vectors : 255) * Bytes::lanes;
            Having<properties> even, odd;
            for (int i = 0; i < properties; ++i)
                even.of[i] = odd.of[i] = broadcast(0);
            for (; x + 2 * Bytes::lanes <= end; x += 2 * Bytes::lanes) {
                add(even, test(x));
                add(odd, test(x + Bytes::lanes));
            }
            if (x < end)
                add(even, test(x));
            x = end;
            for (int i = 0; i < properties; ++i)
                sums_[i] = sums_[i] + sumsOfEight(even.of[i]) + sumsOfEight(odd.of[i]);
        }
    }

    // Counts a single pixel.
    void count(int property, bool has) { single_[property] += has; }

    std::uint32_t total(int property) const { return ZKIT_SET::total(sums_[property]) + single_[property]; }

private:
    static void add(Having<properties>& counts, const Having<properties>& having)
    {
        for (int i = 0; i < properties; ++i)
            counts.of[i] = counts.of[i] - having.of[i];
    }

    Longs sums_[properties] = {};
    std::uint32_t single_[properties] = {};
};

// The first pixel of a row that no whole vector covers.
inline std::ptrdiff_t wholeVectors(std::ptrdiff_t width)
{
    return width - width % Bytes::lanes;
}

}  // namespace
}  // namespace zkit::ZKIT_SET
