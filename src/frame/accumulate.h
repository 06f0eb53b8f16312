// Sums of rows in a float, the precision that some operations are defined in.
#pragma once

#include <cstdint>

namespace zkit {

// Adds the sum of a row, rounding once.
inline void accumulate(float& sum, std::uint32_t row) { sum = static_cast<float>(static_cast<double>(sum) + row); }

}  // namespace zkit
