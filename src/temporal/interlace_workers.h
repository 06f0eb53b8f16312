// Rows of interlaced frames, their widths counting bytes.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

// How rows are moved: `count` bytes from byte `from` of the source to byte `to`. What is left free, before them if `to`
// is above 0 and else behind them, takes again and again the pixel that begins with byte `filling` of the source.
struct Shift {
    std::ptrdiff_t from, to, count;
    std::ptrdiff_t filling;
    int pixelSize;
};

struct InterlaceWorkers {
    // dst = src; they are the same or apart, always apart when dst is streamed to. `next` is the row that will be read
    // next, and as long: it may be fetched from memory in the meantime.
    void (*copy)(const std::uint8_t* src, const std::uint8_t* next, std::uint8_t* dst, std::ptrdiff_t count,
                 Stores stores);

    // Every row of dst from that of src at its place. They are the same or apart, always apart when dst is streamed to.
    void (*shift)(const Source& src, const Target& dst, const Shift& by, Stores stores);

    // Every row of dst from the row of src at its place and the next one, of which src has one more: (a + b) / 2,
    // truncated. They are apart.
    void (*mean)(const Source& src, const Target& dst, Stores stores);

    // That k from 0 to candidates - 1 with the smallest sum of (a[i] - b[i - k step])^2, modulo 2^32, the first of
    // equal ones; -1 when all sums are 2^32 - 1.
    std::ptrdiff_t (*match)(const std::uint8_t* a, const std::uint8_t* b, std::ptrdiff_t count, std::ptrdiff_t step,
                            std::ptrdiff_t candidates);

    static const InterlaceWorkers plain, sse2, avx2;
};

}  // namespace zkit
