#include "temporal/interlace_workers.h"

namespace zkit::plain {
namespace {

void copy(const std::uint8_t* src, const std::uint8_t*, std::uint8_t* dst, std::ptrdiff_t count, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = src[i];
}

void mean(const std::uint8_t* above, const std::uint8_t* below, const std::uint8_t*, std::uint8_t* dst,
          std::ptrdiff_t count, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = static_cast<std::uint8_t>((above[i] + below[i]) >> 1);
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

const zkit::InterlaceWorkers zkit::InterlaceWorkers::plain = {plain::copy, plain::mean, plain::match};
