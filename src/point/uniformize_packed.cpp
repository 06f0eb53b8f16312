#include "point/uniformize_workers.h"
#include "simd/map.h"
#include "simd/quotient.h"

namespace zkit::ZKIT_SET {
namespace {

void light(const std::uint8_t* src, const std::uint8_t* reference, std::uint8_t* dst, std::ptrdiff_t count, int level,
           Stores stores)
{
    mapRow(dst, count, stores, [=](auto at) {
        const Bytes divisor = at.bytes(reference);
        return scaledQuotient(at.bytes(src), level, divisor) | equal(divisor, broadcast(0));
    });
}

void lightAndDark(const std::uint8_t* src, const std::uint8_t* light, const std::uint8_t* dark, std::uint8_t* dst,
                  std::ptrdiff_t count, int range, int darkLevel, Stores stores)
{
    const Floats factor = broadcastFloat(static_cast<float>(range));
    const Ints least = broadcastInt(static_cast<std::uint32_t>(darkLevel));
    mapRow(dst, count, stores, [=](auto at) {
        const auto made = [=](Floats pixel, Floats bright, Floats black) {
            return toInts((pixel - black) * factor / (bright - black)) + least;
        };
        const Bytes bright = at.bytes(light), black = at.bytes(dark);
        return select(equal(bright, black), throughFloats(made, at.bytes(src), bright, black),
                      broadcast(static_cast<std::uint8_t>(darkLevel)));
    });
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::UniformizeWorkers zkit::UniformizeWorkers::ZKIT_SET = {ZKIT_SET::light, ZKIT_SET::lightAndDark};
