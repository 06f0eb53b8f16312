// Signal and noise of a row of pixels against a reference.
#pragma once

#include "simd/plane.h"

namespace zkit {

// Sums of src^2 and of (src - ref)^2 over a row, modulo 2^32.
struct RowNoise {
    std::uint32_t signal, noise;
};

struct NoiseWorkers {
    RowNoise (*grey)(const std::uint8_t* src, const std::uint8_t* ref, std::ptrdiff_t width);

    // The reference holds 16-bit pixels at any address, which are shifted right first.
    RowNoise (*wide)(const std::uint8_t* src, const std::uint8_t* ref, std::ptrdiff_t width, int shift);

    static const NoiseWorkers plain, sse2, avx2;
};

}  // namespace zkit
