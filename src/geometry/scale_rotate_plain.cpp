#include "geometry/scale_rotate_workers.h"

namespace zkit::plain {
namespace {

std::ptrdiff_t whole(std::uint32_t coordinate) { return static_cast<std::int32_t>(coordinate) >> 16; }

void nearest(const Source& src, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at)
{
    for (std::ptrdiff_t i = 0; i < count; ++i, at.x += at.dx, at.y += at.dy) {
        const std::ptrdiff_t x = whole(at.x), y = whole(at.y);
        const bool inside = x >= 0 && x < src.width && y >= 0 && y < src.height;
        dst[i] = inside ? src.data[y * src.pitch + x] : 0;
    }
}

std::uint8_t mixed(const std::uint8_t* above, std::ptrdiff_t pitch, std::uint32_t fx, std::uint32_t fy, int bits)
{
    const std::uint8_t* const below = above + pitch;
    const std::uint32_t one = 1U << bits;
    const std::uint32_t top = above[0] * (one - fx) + above[1] * fx;
    const std::uint32_t bottom = below[0] * (one - fx) + below[1] * fx;
    return static_cast<std::uint8_t>((top * (one - fy) + bottom * fy) >> 2 * bits);
}

void bilinear(const Source& src, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at, int bits)
{
    const auto fraction = [bits](std::uint32_t coordinate) { return (coordinate & 0xFFFF) >> (16 - bits); };
    for (std::ptrdiff_t i = 0; i < count; ++i, at.x += at.dx, at.y += at.dy) {
        const std::ptrdiff_t x = whole(at.x), y = whole(at.y);
        const bool inside = x >= 0 && x < src.width - 1 && y >= 0 && y < src.height - 1;
        dst[i] = inside ? mixed(src.data + y * src.pitch + x, src.pitch, fraction(at.x), fraction(at.y), bits) : 0;
    }
}

}  // namespace
}  // namespace zkit::plain

const zkit::ScaleRotateWorkers zkit::ScaleRotateWorkers::plain = {plain::nearest, plain::bilinear};
