// Rows of pixels beside rows of 16-bit numbers that every pixel changes, exactly once.
#pragma once

#include "simd/map.h"

namespace zkit::ZKIT_SET {
namespace {

// Takes Bytes::lanes pixels from column x on out of rows and puts others there.
struct WholePlace : WholeVector {
    void put(std::uint8_t* row, Bytes pixels) const { store(row + x, pixels); }
    void put(std::uint8_t* row, TwoWords numbers) const { store(row + 2 * x, numbers); }
};

// The same with `count` pixels, fewer than a vector has.
struct PartialPlace {
    std::ptrdiff_t x, count;

    Bytes bytes(const std::uint8_t* row) const
    {
        std::uint8_t pixels[Bytes::lanes] = {};
        __builtin_memcpy(pixels, row + x, static_cast<std::size_t>(count));
        return load(pixels);
    }

    TwoWords words(const std::uint8_t* row) const
    {
        std::uint8_t numbers[2 * Bytes::lanes] = {};
        __builtin_memcpy(numbers, row + 2 * x, static_cast<std::size_t>(2 * count));
        return loadTwoWords(numbers);
    }

    void put(std::uint8_t* row, Bytes pixels) const
    {
        std::uint8_t all[Bytes::lanes];
        store(all, pixels);
        __builtin_memcpy(row + x, all, static_cast<std::size_t>(count));
    }

    void put(std::uint8_t* row, TwoWords numbers) const
    {
        std::uint8_t all[2 * Bytes::lanes];
        store(all, numbers);
        __builtin_memcpy(row + 2 * x, all, static_cast<std::size_t>(2 * count));
    }
};

// For every place of a row step(place, numbers) changes the numbers that stand there and returns the pixels of dst. dst
// may be one of the source rows unless it is streamed to; the numbers are apart from all others. The step is inlined
// whatever its size.
template <class Step>
[[gnu::flatten]] void updateRow(std::uint8_t* numbers, std::uint8_t* dst, std::ptrdiff_t count, Stores stores,
                                Step step)
{
    const auto part = [=](std::ptrdiff_t first, std::ptrdiff_t pixels) {
        const PartialPlace at{first, pixels};
        TwoWords changed = at.words(numbers);
        at.put(dst, step(at, changed));
        at.put(numbers, changed);
    };
    std::ptrdiff_t x = 0;
    if (stores == Stores::streamed && count >= Bytes::lanes) {
        x = firstAligned(dst, 1);
        if (x > 0)
            part(0, x);
        for (; x + Bytes::lanes <= count; x += Bytes::lanes) {
            const WholePlace at{{x}};
            TwoWords changed = at.words(numbers);
            stream(dst + x, step(at, changed));
            at.put(numbers, changed);
        }
    } else {
        for (; x + Bytes::lanes <= count; x += Bytes::lanes) {
            const WholePlace at{{x}};
            TwoWords changed = at.words(numbers);
            at.put(dst, step(at, changed));
            at.put(numbers, changed);
        }
    }
    if (x < count)
        part(x, count - x);
}

}  // namespace
}  // namespace zkit::ZKIT_SET
