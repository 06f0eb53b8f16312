// Gain and offset of grey and of colour pixels.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

struct GainOffset {
    std::int32_t gain;  // in 1/32
    std::int32_t offset;
    const std::uint8_t* table;  // what the definition makes of the 256 levels
    bool narrow;                // arithmetic of 16 bits gives what the table holds
};

// The same for the bytes 0, 1 and 2 of colour pixels.
struct ColourGainOffset {
    const std::uint8_t* tables;  // three, one after the other
    bool whole;                  // entry i of a table is ((i factor) >> shift) + offset, clipped to 0..255
    std::uint32_t factor[3];     // below 2^24
    std::uint32_t shift[3];      // at least 1, at most 31
    std::int32_t offset[3];      // of 16 bits
};

struct GainOffsetWorkers {
    // A row. Where 16 bits are not enough, packed workers differ from the table in an intended way between the first
    // and the last dst address that are multiples of 8.
    void (*grey)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const GainOffset& how,
                 Stores stores);

    // A row of colour pixels.
    void (*colour)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const ColourGainOffset& how,
                   Stores stores);

    static const GainOffsetWorkers plain, sse2, avx2;
};

}  // namespace zkit
