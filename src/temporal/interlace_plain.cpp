#include "temporal/interlace_workers.h"

#include <cstring>

namespace zkit::plain {
namespace {

void copy(const std::uint8_t* src, const std::uint8_t*, std::uint8_t* dst, std::ptrdiff_t count, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = src[i];
}

void shift(const Source& src, const Target& dst, const Shift& by, Stores)
{
    for (std::ptrdiff_t y = 0; y < dst.height; ++y) {
        const std::uint8_t* const in = src.data + y * src.pitch;
        std::uint8_t* const out = dst.data + y * dst.pitch;
        std::uint8_t pixel[3];
        std::memcpy(pixel, in + by.filling, static_cast<std::size_t>(by.pixelSize));
        std::memmove(out + by.to, in + by.from, static_cast<std::size_t>(by.count));
        std::uint8_t* const free = by.to > 0 ? out : out + by.count;
        for (std::ptrdiff_t i = 0; i < dst.width - by.count; ++i)
            free[i] = pixel[i % by.pixelSize];
    }
}

void mean(const Source& src, const Target& dst, Stores)
{
    for (std::ptrdiff_t y = 0; y < dst.height; ++y) {
        const std::uint8_t *const above = src.data + y * src.pitch, *const below = above + src.pitch;
        std::uint8_t* const out = dst.data + y * dst.pitch;
        const std::ptrdiff_t width = dst.width;
        for (std::ptrdiff_t i = 0; i < width; ++i)
            out[i] = static_cast<std::uint8_t>((above[i] + below[i]) >> 1);
    }
}

std::uint32_t squares(const std::uint8_t* a, const std::uint8_t* b, std::ptrdiff_t count)
{
    std::uint32_t sum = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const int difference = a[i] - b[i];
        sum += static_cast<std::uint32_t>(difference * difference);
    }
    return sum;
}

std::ptrdiff_t match(const std::uint8_t* a, const std::uint8_t* b, std::ptrdiff_t count, std::ptrdiff_t step,
                     std::ptrdiff_t candidates)
{
    std::ptrdiff_t best = -1;
    std::uint32_t least = UINT32_MAX;
    for (std::ptrdiff_t k = 0; k < candidates; ++k) {
        const std::uint32_t sum = squares(a, b - k * step, count);
        if (sum < least) {
            least = sum;
            best = k;
        }
    }
    return best;
}

}  // namespace
}  // namespace zkit::plain

const zkit::InterlaceWorkers zkit::InterlaceWorkers::plain = {plain::copy, plain::shift, plain::mean, plain::match};
