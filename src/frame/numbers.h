// Numbers that do not fit.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace zkit {

// Truncated toward zero; the nearest integer for numbers beyond the range, 0 for NaN.
inline std::int32_t truncated(double value)
{
    constexpr double least = std::numeric_limits<std::int32_t>::min(), most = std::numeric_limits<std::int32_t>::max();
    return std::isnan(value) ? 0 : static_cast<std::int32_t>(std::clamp(value, least, most));
}

// Clipped to the range of a byte.
inline std::uint8_t clipped(std::int32_t value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 255)); }

}  // namespace zkit
