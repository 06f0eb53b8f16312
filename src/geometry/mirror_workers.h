// Rows that change places and rows that are turned round.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct MirrorWorkers {
    // Exchanges the bytes of two rows that are apart.
    void (*swap)(std::uint8_t* a, std::uint8_t* b, std::ptrdiff_t count);

    // Puts the bytes of a row into the opposite order.
    void (*reverse)(std::uint8_t* row, std::ptrdiff_t count);

    static const MirrorWorkers plain, sse2, avx2;
};

}  // namespace zkit
