#include "analysis/projection_workers.h"

namespace zkit::plain {
namespace {

void onRow(Source src, std::uint32_t* sums)
{
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x)
            sums[x] += src.data[y * src.pitch + x];
}

void onColumn(Source src, std::uint32_t* sums)
{
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x)
            sums[y] += src.data[y * src.pitch + x];
}

}  // namespace
}  // namespace zkit::plain

const zkit::ProjectionWorkers zkit::ProjectionWorkers::plain = {plain::onRow, plain::onColumn};
