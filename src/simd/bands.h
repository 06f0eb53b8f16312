// Walking over the bands of rows of 3 x 3 filters, with memory that the caller has.
#pragma once

#include "simd/plane.h"

namespace zkit {

// What a filter is told of the row above it in place.
enum class Above { unfiltered, filtered };

namespace {

// Fills with copies of a pixel of `step` bytes, 1 or 3, doubling what is there.
inline void fillPixels(std::uint8_t* out, std::ptrdiff_t bytes, const std::uint8_t* pixel, int step)
{
    for (std::ptrdiff_t i = 0; i < 3 && i < step && i < bytes; ++i)
        out[i] = pixel[i];
    for (std::ptrdiff_t filled = step; filled < bytes; filled *= 2) {
        const std::ptrdiff_t left = bytes - filled;
        __builtin_memcpy(out + filled, out, static_cast<std::size_t>(filled < left ? filled : left));
    }
}

// Working memory that is stored to and loaded again begins with a line of the cache, `alignment` bytes long.
inline constexpr std::int64_t alignment = 64;

inline std::int64_t aligned(std::int64_t bytes) { return (bytes + alignment - 1) / alignment * alignment; }

inline std::uint8_t* aligned(std::uint8_t* memory)
{
    const auto misaligned = static_cast<std::ptrdiff_t>(reinterpret_cast<std::uintptr_t>(memory) % alignment);
    return memory + (alignment - misaligned) % alignment;
}

// The rows that filterBands keeps: one outside, and in place those of a band and the one above it as they were.
inline std::ptrdiff_t rowsKept(bool overwritten) { return overwritten ? 2 + rowsOfBand : 1; }

// Filters all rows from the top down. The destination is as large as the source, and the same pixels or apart. Widths
// count bytes; `memory` has room for as many rows as are kept. Where rows count the one above them as filtered already,
// bands are single rows. `filter` is a FilterBand or an object that is called like one.
template <class Band>
void filterBands(const Source& src, const Target& dst, const Border& border, const Band& filter, Above given,
                 std::uint8_t* memory)
{
    const bool overwritten = src.data == dst.data, sequential = overwritten && given == Above::filtered;
    std::uint8_t *const outside = memory, *const kept = memory + src.width;
    fillPixels(outside, src.width, border.pixel, border.step);
    const auto sourceRow = [&](std::ptrdiff_t y) { return src.data + y * src.pitch; };
    const auto unchangedRow = [&](std::ptrdiff_t y) -> const std::uint8_t* {
        if (!overwritten)
            return sourceRow(y);
        std::uint8_t* const copy = kept + y % (rowsOfBand + 1) * src.width;
        __builtin_memcpy(copy, sourceRow(y), static_cast<std::size_t>(src.width));
        return copy;
    };
    const auto outerRow = [&](const std::uint8_t* nearest) { return border.repeated ? nearest : outside; };

    const std::ptrdiff_t most = sequential ? 1 : rowsOfBand;
    const std::uint8_t* rows[rowsOfBand + 2];
    for (std::ptrdiff_t top = 0; top < src.height; top += most) {
        const std::ptrdiff_t left = src.height - top, count = left < most ? left : most;
        for (std::ptrdiff_t i = 0; i < count; ++i)
            rows[i + 1] = unchangedRow(top + i);
        if (top == 0)
            rows[0] = outerRow(rows[1]);
        rows[count + 1] = count < left ? sourceRow(top + count) : outerRow(rows[count]);
        const Target band{dst.data + top * dst.pitch, dst.pitch, src.width, count};
        filter(rows, band, border);
        rows[0] = sequential ? band.data : rows[count];
    }
}

}  // namespace
}  // namespace zkit
