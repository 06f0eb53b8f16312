// Making every pixel of a row from the pixels at its place.
#pragma once

#include "simd/row_end.h"
#include "simd/stores.h"

namespace zkit::ZKIT_SET {
namespace {

// What a step makes of Bytes::lanes pixels: as many registers as the pixels have bytes, in the order of memory.
template <class Result>
constexpr std::ptrdiff_t bytesOf = sizeof(Result) / sizeof(Register);

// The first pixel at the address of a whole register; Bytes::lanes where no pixel has such an address.
inline std::ptrdiff_t firstAligned(const std::uint8_t* dst, std::ptrdiff_t pixelSize)
{
    std::ptrdiff_t x = 0;
    while (x < Bytes::lanes && reinterpret_cast<std::uintptr_t>(dst + x * pixelSize) % sizeof(Register) != 0)
        ++x;
    return x;
}

// dst[i] = step(at) for every vector `at` of a row (WholeVector, LastVector), which takes out of the source rows what
// stands at its place. dst is one of the source rows or apart from them, always apart when it is streamed to. The step
// is inlined whatever its size.
template <class Step>
[[gnu::flatten]] void mapRow(std::uint8_t* dst, std::ptrdiff_t count, Stores stores, Step step)
{
    using Result = decltype(step(WholeVector{0}));
    constexpr std::ptrdiff_t size = bytesOf<Result>;
    if (count < Bytes::lanes) {
        std::uint8_t pixels[size * Bytes::lanes];
        store(pixels, step(LastVector(count)));
        __builtin_memcpy(dst, pixels, static_cast<std::size_t>(size * count));
        return;
    }
    // The last vector ends with the row and repeats a few pixels: it is made before they are overwritten.
    const std::ptrdiff_t last = count - Bytes::lanes;
    const Result end = step(WholeVector{last});
    const std::ptrdiff_t aligned = stores == Stores::streamed ? firstAligned(dst, size) : Bytes::lanes;
    std::ptrdiff_t x = 0;
    if (aligned < Bytes::lanes) {
        if (aligned > 0)
            store(dst, step(WholeVector{0}));
        for (x = aligned; x <= last; x += Bytes::lanes)
            stream(dst + size * x, step(WholeVector{x}));
        if (x == count)
            return;
    } else {
#pragma GCC unroll 2
        for (; x < last; x += Bytes::lanes)
            store(dst + size * x, step(WholeVector{x}));
    }
    store(dst + size * last, end);
}

}  // namespace
}  // namespace zkit::ZKIT_SET
