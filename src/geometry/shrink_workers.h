// Means of blocks of pixels.
#pragma once

#include "simd/plane.h"

namespace zkit {

// Working memory of a row.
struct ShrinkMemory {
    std::uint16_t* columns;  // 64 elements more than the source has columns
    std::uint32_t* totals;   // an element for each destination pixel
};

struct ShrinkWorkers {
    // A destination row: pixel i is the mean, truncated, of the columns from edges[i] up to and not including
    // edges[i + 1] over all of the rows, at least one. These columns, edges[i] = i width / count, are of one width or
    // of one more, and at least one each. Sums wrap at 32 bits.
    void (*row)(const Source& rows, std::uint8_t* dst, const std::int32_t* edges, std::ptrdiff_t count,
                const ShrinkMemory& memory);

    static const ShrinkWorkers plain, sse2, avx2;
};

}  // namespace zkit
