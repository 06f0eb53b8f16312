// Counting pixels with one or several properties.
#pragma once

#include "simd/row_end.h"

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
    // Counts the pixels of a row; test(at) tells the properties of the vector that `at` takes out of rows.
    template <class Test>
    void countRow(std::ptrdiff_t width, Test test)
    {
        std::ptrdiff_t x = 0;
        while (x + Bytes::lanes <= width) {
            // A lane of the counts holds up to 255.
            const std::ptrdiff_t vectors = (width - x) / Bytes::lanes;
            const std::ptrdiff_t end = x + (vectors < 254 ? vectors : 254) * Bytes::lanes;
            Having<properties> even = none(), odd = none();
            for (; x + 2 * Bytes::lanes <= end; x += 2 * Bytes::lanes) {
                add(even, test(WholeVector{x}));
                add(odd, test(WholeVector{x + Bytes::lanes}));
            }
            if (x < end)
                add(even, test(WholeVector{x}));
            x = end;
            for (int i = 0; i < properties; ++i)
                sums_[i] = sums_[i] + sumsOfEight(even.of[i]) + sumsOfEight(odd.of[i]);
        }
        if (x < width) {
            const LastVector last(width);
            const Having<properties> having = test(last);
            for (int i = 0; i < properties; ++i)
                sums_[i] = sums_[i] + sumsOfEight(having.of[i] & last.counting() & broadcast(1));
        }
    }

    std::uint32_t total(int property) const { return ZKIT_SET::total(sums_[property]); }

private:
    static Having<properties> none()
    {
        Having<properties> counts;
        for (int i = 0; i < properties; ++i)
            counts.of[i] = broadcast(0);
        return counts;
    }

    static void add(Having<properties>& counts, const Having<properties>& having)
    {
        for (int i = 0; i < properties; ++i)
            counts.of[i] = counts.of[i] - having.of[i];
    }

    Longs sums_[properties] = {};
};

}  // namespace
}  // namespace zkit::ZKIT_SET
