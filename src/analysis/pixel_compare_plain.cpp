#include "analysis/pixel_compare_workers.h"

namespace zkit::plain {
namespace {

std::uint32_t grey(Source first, Source second)
{
    std::uint32_t different = 0;
    for (std::ptrdiff_t y = 0; y < first.height; ++y)
        for (std::ptrdiff_t x = 0; x < first.width; ++x)
            different += first.data[y * first.pitch + x] != second.data[y * second.pitch + x];
    return different;
}

std::uint32_t colour(Source first, Source second)
{
    std::uint32_t different = 0;
    for (std::ptrdiff_t y = 0; y < first.height; ++y)
        for (std::ptrdiff_t x = 0; x < first.width; ++x) {
            const std::uint8_t* p = first.data + y * first.pitch + 3 * x;
            const std::uint8_t* q = second.data + y * second.pitch + 3 * x;
            different += p[0] != q[0] || p[1] != q[1] || p[2] != q[2];
        }
    return different;
}

}  // namespace
}  // namespace zkit::plain

const zkit::PixelCompareWorkers zkit::PixelCompareWorkers::plain = {plain::grey, plain::colour};
