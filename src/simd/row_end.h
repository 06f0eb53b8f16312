// The ends of rows: what is left of a row when no whole vector fits any more.
#pragma once

#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

struct LaneMask {
    std::uint8_t bytes[2 * Bytes::lanes];
};

constexpr LaneMask makeLaneMask()
{
    LaneMask mask{};
    for (int i = Bytes::lanes; i < 2 * Bytes::lanes; ++i)
        mask.bytes[i] = 255;
    return mask;
}

inline constexpr LaneMask laneMask = makeLaneMask();

// All bits set in the last or the first `count` lanes.
inline Bytes lastLanes(std::ptrdiff_t count) { return load(laneMask.bytes + count); }
inline Bytes firstLanes(std::ptrdiff_t count) { return equal(lastLanes(Bytes::lanes - count), broadcast(0)); }

// Copies the first `count` pixels, fewer than a vector has, and makes the others black.
inline const std::uint8_t* padFirst(std::uint8_t (&padded)[3 * Bytes::lanes], const std::uint8_t* p,
                                    std::ptrdiff_t count)
{
    for (int i = 0; i < 3; ++i)
        store(padded + i * Bytes::lanes, broadcast(0));
    __builtin_memcpy(padded, p, static_cast<std::size_t>(3 * count));
    return padded;
}

inline Components loadFirstInterleaved(const std::uint8_t* p, std::ptrdiff_t count)
{
    std::uint8_t padded[3 * Bytes::lanes];
    return loadInterleaved(padFirst(padded, p, count));
}

// `count` bits from bit `first` of a row on, at most Bytes::lanes of them, as spreadBits takes them. No byte beyond
// theirs is read.
[[gnu::always_inline]] inline std::uint32_t loadBits(const std::uint8_t* row, std::ptrdiff_t first,
                                                     std::ptrdiff_t count)
{
    const std::ptrdiff_t before = first & 7, whole = (count + 7) >> 3;
    const std::uint8_t* p = row + (first >> 3);
    const std::ptrdiff_t bytes = (before + count + 7) >> 3;
    std::uint32_t bits = 0;
    __builtin_memcpy(&bits, p, static_cast<std::size_t>(whole < bytes ? whole : bytes));
    if (before == 0 || count == 0)
        return bits;
    // The bits of a byte move up, and the first ones of the next byte follow.
    const std::uint32_t up = 0x01010101U * (0xFFU << before & 0xFFU);
    const std::uint32_t next = bytes > whole ? static_cast<std::uint32_t>(p[whole]) << 8 * (whole - 1) : 0;
    const std::uint32_t following = bits >> 8 | next;
    return (bits << before & up) | (following >> (8 - before) & ~up);
}

// Takes Bytes::lanes pixels from column x on out of rows.
struct WholeVector {
    std::ptrdiff_t x;

    Bytes bytes(const std::uint8_t* row) const { return load(row + x); }
    TwoWords words(const std::uint8_t* row) const { return loadTwoWords(row + 2 * x); }
    Bytes bits(const std::uint8_t* row, int position) const
    {
        return spreadBits(loadBits(row, position + x, Bytes::lanes));
    }

    // The same where they are whole bytes.
    Bytes bitBytes(const std::uint8_t* row) const { return spreadBits(loadBits(row, x & -8, Bytes::lanes)); }
    Components interleaved(const std::uint8_t* row) const { return loadInterleaved(row + 3 * x); }

    // The address of colour pixels; `padded` is for those of rows that are too short.
    const std::uint8_t* colours(const std::uint8_t* row, std::uint8_t (&)[3 * Bytes::lanes]) const
    {
        return row + 3 * x;
    }
};

// The last vector of a row: the pixels that no whole vector before it has held, among others that do not count. No
// byte outside the row is read.
class LastVector {
public:
    explicit LastVector(std::ptrdiff_t width) : width_(width), left_(width % Bytes::lanes), wide_(width >= Bytes::lanes)
    {
    }

    // Column of the first lane.
    std::ptrdiff_t start() const { return wide_ ? width_ - Bytes::lanes : 0; }

    // All bits set where the pixels count.
    Bytes counting() const { return wide_ ? lastLanes(left_) : firstLanes(left_); }

    Bytes bytes(const std::uint8_t* row) const
    {
        if (wide_)
            return load(row + start());
        std::uint8_t pixels[Bytes::lanes] = {};
        __builtin_memcpy(pixels, row, static_cast<std::size_t>(left_));
        return load(pixels);
    }

    TwoWords words(const std::uint8_t* row) const
    {
        if (wide_)
            return loadTwoWords(row + 2 * start());
        std::uint8_t pixels[2 * Bytes::lanes] = {};
        __builtin_memcpy(pixels, row, static_cast<std::size_t>(2 * left_));
        return loadTwoWords(pixels);
    }

    Bytes bits(const std::uint8_t* row, int position) const
    {
        return spreadBits(loadBits(row, position + start(), wide_ ? Bytes::lanes : left_));
    }

    Bytes bitBytes(const std::uint8_t* row) const { return bits(row, 0); }

    Components interleaved(const std::uint8_t* row) const
    {
        return wide_ ? loadInterleaved(row + 3 * start()) : loadFirstInterleaved(row, left_);
    }

    const std::uint8_t* colours(const std::uint8_t* row, std::uint8_t (&padded)[3 * Bytes::lanes]) const
    {
        return wide_ ? row + 3 * start() : padFirst(padded, row, left_);
    }

private:
    std::ptrdiff_t width_, left_;
    bool wide_;
};

}  // namespace
}  // namespace zkit::ZKIT_SET
