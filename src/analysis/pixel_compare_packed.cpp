#include "analysis/pixel_compare_workers.h"
#include "simd/count.h"

namespace zkit::ZKIT_SET {
namespace {

std::uint32_t pixelsOf(Source src) { return static_cast<std::uint32_t>(src.width * src.height); }

std::uint32_t grey(Source first, Source second)
{
    Counter<1> same;
    for (std::ptrdiff_t y = 0; y < first.height; ++y) {
        const std::uint8_t* p = first.data + y * first.pitch;
        const std::uint8_t* q = second.data + y * second.pitch;
        same.countRow(first.width, [=](auto at) { return Having<1>{{equal(at.bytes(p), at.bytes(q))}}; });
    }
    return pixelsOf(first) - same.total(0);
}

std::uint32_t colour(Source first, Source second)
{
    Counter<1> same;
    for (std::ptrdiff_t y = 0; y < first.height; ++y) {
        const std::uint8_t* p = first.data + y * first.pitch;
        const std::uint8_t* q = second.data + y * second.pitch;
        same.countRow(first.width, [=](auto at) {
            const Components a = at.interleaved(p), b = at.interleaved(q);
            const Components difference = takeApart({a.c0 ^ b.c0, a.c1 ^ b.c1, a.c2 ^ b.c2});
            return Having<1>{{equal(difference.c0 | difference.c1 | difference.c2, broadcast(0))}};
        });
    }
    return pixelsOf(first) - same.total(0);
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::PixelCompareWorkers zkit::PixelCompareWorkers::ZKIT_SET = {ZKIT_SET::grey, ZKIT_SET::colour};
