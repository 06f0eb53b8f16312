#include "geometry/shrink_workers.h"

namespace zkit::plain {
namespace {

void row(const Source& rows, std::uint8_t* dst, const std::int32_t* edges, std::ptrdiff_t count, const ShrinkMemory&)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        std::uint32_t sum = 0;
        for (std::ptrdiff_t y = 0; y < rows.height; ++y)
            for (std::ptrdiff_t x = edges[i]; x < edges[i + 1]; ++x)
                sum += rows.data[y * rows.pitch + x];
        const std::int64_t pixels = static_cast<std::int64_t>(edges[i + 1] - edges[i]) * rows.height;
        dst[i] = static_cast<std::uint8_t>(sum / pixels);
    }
}

}  // namespace
}  // namespace zkit::plain

const zkit::ShrinkWorkers zkit::ShrinkWorkers::plain = {plain::row};
