// The table of 256 bytes that most point operations come down to.
#pragma once

#include "zkit/core/roi.h"

#include <array>
#include <cstdint>

namespace zkit {

using Table = std::array<std::uint8_t, 256>;

// dst = table[src] under the frame and the checks of ImgLut, whose name stands in the trail of a failure.
short lutOfTable(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, const Table& table);

// dst = table[src] for regions that have passed their checks. Raises 1303 and returns false when there is no memory to
// keep overlapping regions apart.
bool applyTable(const ZROI<ZBW8>* src, const ZROI<ZBW8>* dst, const Table& table);

}  // namespace zkit
