// Thresholds on rows of `count` pixels. dst is src or apart from it, always apart when it is streamed to or when the
// pixels are of different types.
#pragma once

#include "simd/plane.h"
#include "simd/stores.h"

namespace zkit {

// What two thresholds make of a pixel: above for pixel > highThreshold, else between for pixel >= lowThreshold, else
// below.
struct DoubleThreshold {
    std::uint8_t lowThreshold, highThreshold, below, between, above;
};

// What becomes of a colour: inside where minimum <= byte <= maximum for its three bytes, else outside.
struct ColourRange {
    std::uint8_t minimum[3], maximum[3], outside, inside;
};

struct ThresholdWorkers {
    // dst = src >= threshold ? high : low.
    void (*grey)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, std::uint8_t threshold,
                 std::uint8_t low, std::uint8_t high, Stores stores);

    void (*twice)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const DoubleThreshold& levels,
                  Stores stores);

    // Bits of a row begin with bit `position` of its first byte, counted from the most significant one (0 to 7). Set
    // where src >= threshold, which is 0 to 256; the other bits of the first and last byte keep their values.
    void (*greyToBits)(const std::uint8_t* src, std::uint8_t* dst, int position, std::ptrdiff_t count, int threshold);

    // dst = bit of src ? one : zero.
    void (*bitsToGrey)(const std::uint8_t* src, int position, std::uint8_t* dst, std::ptrdiff_t count,
                       std::uint8_t zero, std::uint8_t one, Stores stores);

    void (*colour)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const ColourRange& range,
                   Stores stores);

    static const ThresholdWorkers plain, sse2, avx2;
};

}  // namespace zkit
