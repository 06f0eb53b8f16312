#include "analysis/noise_workers.h"

namespace zkit::plain {
namespace {

void add(RowNoise& sums, int src, int ref)
{
    const auto difference = static_cast<std::uint32_t>(src - ref);
    sums.signal += static_cast<std::uint32_t>(src * src);
    sums.noise += difference * difference;
}

RowNoise grey(const std::uint8_t* src, const std::uint8_t* ref, std::ptrdiff_t width)
{
    RowNoise sums{0, 0};
    for (std::ptrdiff_t x = 0; x < width; ++x)
        add(sums, src[x], ref[x]);
    return sums;
}

RowNoise wide(const std::uint8_t* src, const std::uint8_t* ref, std::ptrdiff_t width, int shift)
{
    RowNoise sums{0, 0};
    for (std::ptrdiff_t x = 0; x < width; ++x)
        add(sums, src[x], (ref[2 * x] | ref[2 * x + 1] << 8) >> shift);
    return sums;
}

}  // namespace
}  // namespace zkit::plain

const zkit::NoiseWorkers zkit::NoiseWorkers::plain = {plain::grey, plain::wide};
