// Rows of interlaced frames, `count` bytes of them. `next` is the row that will be read next, and as long: it may be
// fetched from memory in the meantime.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

struct InterlaceWorkers {
    // dst = src; they are apart.
    void (*copy)(const std::uint8_t* src, const std::uint8_t* next, std::uint8_t* dst, std::ptrdiff_t count,
                 Stores stores);

    // dst = (above + below) / 2, truncated. dst is one of them or apart from them, always apart when it is streamed to.
    void (*mean)(const std::uint8_t* above, const std::uint8_t* below, const std::uint8_t* next, std::uint8_t* dst,
                 std::ptrdiff_t count, Stores stores);

    // That k from 0 to candidates - 1 with the smallest sum of (a[i] - b[i - k step])^2, modulo 2^32, the first of
    // equal ones; -1 when all sums are 2^32 - 1.
    std::ptrdiff_t (*match)(const std::uint8_t* a, const std::uint8_t* b, std::ptrdiff_t count, std::ptrdiff_t step,
                            std::ptrdiff_t candidates);

    static const InterlaceWorkers plain, sse2, avx2;
};

}  // namespace zkit
