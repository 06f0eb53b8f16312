#include "point/lut_workers.h"

namespace zkit::plain {
namespace {

void row(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* table, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = table[src[i]];
}

}  // namespace
}  // namespace zkit::plain

const zkit::LutWorkers zkit::LutWorkers::plain = {plain::row};
