#include "point/uniformize_workers.h"

namespace zkit::plain {
namespace {

std::uint8_t clipped(int value) { return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value); }

void light(const std::uint8_t* src, const std::uint8_t* reference, std::uint8_t* dst, std::ptrdiff_t count, int level,
           Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = reference[i] == 0 ? 255 : clipped(src[i] * level / reference[i]);
}

void lightAndDark(const std::uint8_t* src, const std::uint8_t* light, const std::uint8_t* dark, std::uint8_t* dst,
                  std::ptrdiff_t count, int range, int darkLevel, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const int quotient = light[i] == dark[i] ? 0 : (src[i] - dark[i]) * range / (light[i] - dark[i]);
        dst[i] = clipped(quotient + darkLevel);
    }
}

}  // namespace
}  // namespace zkit::plain

const zkit::UniformizeWorkers zkit::UniformizeWorkers::plain = {plain::light, plain::lightAndDark};
