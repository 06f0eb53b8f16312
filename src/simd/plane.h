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

// The rows that a 3 x 3 filter makes in one go, at most. More would share a little more work, but where rows are 2048
// bytes apart, these and the eight that they are made from are all that a first-level cache has room for.
constexpr int rowsOfBand = 6;

// What a 3 x 3 filter takes for the pixels around the region: copies of the outermost ones, or one pixel everywhere.
// Pixels are `step` bytes (1, or 3 for colour).
struct Border {
    int step;
    bool repeated;
    std::uint8_t pixel[3];
};

// Neighbouring rows of a 3 x 3 filter, as many as `out` is high: row i from rows[i] above it, rows[i + 1] at its place
// and rows[i + 2] below it, which share no byte with `out`. They are as wide as `out`, whose width is above 0 and
// counts bytes; the border says what lies beyond their ends.
using FilterBand = void (*)(const std::uint8_t* const* rows, const Target& out, const Border& border);

}  // namespace zkit
