#include "analysis/moments_workers.h"

namespace zkit::plain {
namespace {

template <class Weight>
RowMoments rowMoments(std::ptrdiff_t width, Weight weight)
{
    RowMoments sums{0, 0, 0};
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        const std::uint32_t w = weight(x), column = static_cast<std::uint32_t>(x);
        sums.w += w;
        sums.wx += w * column;
        sums.wxx += w * column * column;
    }
    return sums;
}

RowMoments binary(const std::uint8_t* row, std::ptrdiff_t width, std::uint8_t threshold)
{
    return rowMoments(width, [=](std::ptrdiff_t x) { return row[x] >= threshold ? 1U : 0U; });
}

RowMoments weighed(const std::uint8_t* row, std::ptrdiff_t width)
{
    return rowMoments(width, [=](std::ptrdiff_t x) { return row[x]; });
}

}  // namespace
}  // namespace zkit::plain

const zkit::MomentsWorkers zkit::MomentsWorkers::plain = {plain::binary, plain::weighed};
