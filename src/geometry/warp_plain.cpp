#include "geometry/warp_workers.h"

namespace zkit::plain {
namespace {

int number(const std::uint8_t* p) { return p[0] | p[1] << 8; }

template <int pixelSize>
void separate(const Source& src, const SeparateMaps& maps, std::uint8_t* dst, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::int64_t x = std::int64_t{maps.offsetX} + static_cast<std::int16_t>(number(maps.x + 2 * i));
        const std::int64_t y = std::int64_t{maps.offsetY} + static_cast<std::int16_t>(number(maps.y + 2 * i));
        const bool inside = x >= 0 && x < src.width && y >= 0 && y < src.height;
        for (int c = 0; c < pixelSize; ++c)
            dst[pixelSize * i + c] = inside ? src.data[static_cast<std::ptrdiff_t>(y) * src.pitch +
                                                       static_cast<std::ptrdiff_t>(x) * pixelSize + c]
                                            : 0;
    }
}

std::ptrdiff_t packedMap(const Source& src, const std::uint8_t* map, std::uint8_t* dst, std::ptrdiff_t count,
                         const std::uint8_t*)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::ptrdiff_t x = number(map + 4 * i), y = number(map + 4 * i + 2);
        if (x >= src.width || y >= src.height)
            return i;
        dst[i] = src.data[y * src.pitch + x];
    }
    return count;
}

bool inside(const Source& src, const std::uint8_t* map, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        if (number(map + 4 * i) >= src.width || number(map + 4 * i + 2) >= src.height)
            return false;
    return true;
}

}  // namespace
}  // namespace zkit::plain

const zkit::WarpWorkers zkit::WarpWorkers::plain = {plain::separate<1>, plain::separate<3>, plain::packedMap,
                                                    plain::inside};
