// The predefined 3 x 3 filters, one row at a time.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct PredefinedWorkers {
    FilterRow lowpass3;

    static const PredefinedWorkers plain, sse2, avx2;
};

}  // namespace zkit
