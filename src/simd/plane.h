// What workers work on: pixels at an address. Plain data without functions, since files compiled for different
// instruction sets share it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zkit {

// `height` rows of `width` pixels, `pitch` bytes from a row to the next. The worker knows what a pixel is.
struct Source {
    const std::uint8_t* data;
    std::ptrdiff_t pitch;
    std::ptrdiff_t width;
    std::ptrdiff_t height;
};

struct Target {
    std::uint8_t* data;
    std::ptrdiff_t pitch;
    std::ptrdiff_t width;
    std::ptrdiff_t height;
};

// One row of a 3 x 3 filter on `count` bytes; neighbours to the left and right are `step` bytes away (1, or 3 for
// colour), and those beyond the ends of the row count 0. `out` shares no byte with the three rows.
using FilterRow = void (*)(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below,
                           std::uint8_t* out, std::ptrdiff_t count, int step);

}  // namespace zkit
