#include "analysis/pixel_compare_workers.h"
#include "simd/count.h"

namespace zkit::ZKIT_SET {
namespace {

std::uint32_t grey(Source first, Source second)
{
    Counter<1> same;
    for (std::ptrdiff_t y = 0; y < first.height; ++y) {
        const std::uint8_t* p = first.data + y * first.pitch;
        const std::uint8_t* q = second.data + y * second.pitch;
        same.countRow(first.width, [&](std::ptrdiff_t x) { return Having<1>{{equal(load(p + x), load(q + x))}}; });
        for (std::ptrdiff_t x = wholeVectors(first.width); x < first.width; ++x)
            same.count(0, p[x] == q[x]);
    }
    return static_cast<std::uint32_t>(first.width * first.height) - same.total(0);
}

std::uint32_t colour(Source first, Source second)
{
    const Bytes zero = broadcast(0);
    Counter<1> same;
    for (std::ptrdiff_t y = 0; y < first.height; ++y) {
        const std::uint8_t* p = first.data + y * first.pitch;
        const std::uint8_t* q = second.data + y * second.pitch;
        same.countRow(first.width, [&](std::ptrdiff_t x) {
            const Components a = loadInterleaved(p + 3 * x), b = loadInterleaved(q + 3 * x);
            const Components difference = takeApart({a.c0 ^ b.c0, a.c1 ^ b.c1, a.c2 ^ b.c2});
            return Having<1>{{equal(difference.c0 | difference.c1 | difference.c2, zero)}};
        });
        for (std::ptrdiff_t x = wholeVectors(first.width); x < first.width; ++x)
            same.count(0, p[3 * x] == q[3 * x] && p[3 * x + 1] == q[3 * x + 1] && p[3 * x + 2] == q[3 * x + 2]);
    }
    return static_cast<std::uint32_t>(first.width * first.height) - same.total(0);
}

}  // namespace

const PixelCompareWorkers pixelCompare = {grey, colour};

}  // namespace zkit::ZKIT_SET
