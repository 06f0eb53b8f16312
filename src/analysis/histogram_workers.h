// Counting pixels by their values, in counts of 32 bits that wrap.
#pragma once

#include "simd/plane.h"

namespace zkit {

// Which bin a 16-bit pixel belongs to: the pixel shifted right by 0 to 16 bits; beyond the last bin it counts there, or
// nowhere.
struct WideBins {
    int shift;
    std::uint32_t last;  // at most 65535
    bool saturates;
};

struct HistogramWorkers {
    // Adds the number of pixels of every level to 256 counts.
    void (*grey)(Source, std::uint32_t* counts);

    // The same for 16-bit pixels at any address, in last + 1 bins.
    void (*wide)(Source, WideBins, std::uint32_t* counts);

    static const HistogramWorkers plain, sse2, avx2;
};

}  // namespace zkit
