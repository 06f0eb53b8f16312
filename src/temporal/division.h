// Division by a period.
#pragma once

#include "temporal/moving_average_workers.h"

#include <algorithm>
#include <bit>

namespace zkit {

// By a number that is not 0. The factor is 2^16 (2^l - by) / by, truncated, plus 1, for the smallest l with 2^l >= by;
// beyond 2^16 every quotient is 0, as it is for 2^16.
inline Division divisionBy(std::uint32_t by)
{
    const std::uint32_t divisor = std::min(by, 65536U);
    const auto bits = static_cast<int>(std::bit_width(divisor - 1));
    const std::uint32_t factor = (((1U << bits) - divisor) << 16) / divisor + 1;
    return {by, std::has_single_bit(by) ? std::countr_zero(by) : 0, static_cast<std::uint16_t>(factor),
            std::min(bits, 1), std::max(bits - 1, 0)};
}

}  // namespace zkit
