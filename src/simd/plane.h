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

}  // namespace zkit
