// The predefined 3 x 3 filters, one row at a time.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct PredefinedWorkers {
    // See FilterRow (frame/walk.h) for the arguments.
    void (*lowpass3)(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
                     std::ptrdiff_t count, int step);
};

namespace plain {
extern const PredefinedWorkers predefined;
}
namespace sse2 {
extern const PredefinedWorkers predefined;
}
namespace avx2 {
extern const PredefinedWorkers predefined;
}

}  // namespace zkit
