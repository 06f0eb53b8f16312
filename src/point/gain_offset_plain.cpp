#include "point/gain_offset_workers.h"

namespace zkit::plain {
namespace {

void grey(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const GainOffset& how, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = how.table[src[i]];
}

void colour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const ColourGainOffset& how, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        for (int c = 0; c < 3; ++c)
            dst[3 * i + c] = how.tables[256 * c + src[3 * i + c]];
}

}  // namespace
}  // namespace zkit::plain

const zkit::GainOffsetWorkers zkit::GainOffsetWorkers::plain = {plain::grey, plain::colour};
