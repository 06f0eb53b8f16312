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

struct GainOffsetWorkers {
    // A row. Where 16 bits are not enough, packed workers differ from the table in an intended way between the first
    // and the last dst address that are multiples of 8.
    void (*grey)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const GainOffset& how,
                 Stores stores);

    // dst[3 i + c] = tables[256 c + src[3 i + c]] for every pixel i.
    void (*colour)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* tables,
                   Stores stores);

    static const GainOffsetWorkers plain, sse2, avx2;
};

}  // namespace zkit
