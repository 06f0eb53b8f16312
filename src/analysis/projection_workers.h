// Sums of the columns and of the rows of grey pixels, modulo 2^32.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct ProjectionWorkers {
    void (*onRow)(Source, std::uint32_t* sums);     // adds every column to its sum
    void (*onColumn)(Source, std::uint32_t* sums);  // adds every row to its sum

    static const ProjectionWorkers plain, sse2, avx2;
};

}  // namespace zkit
