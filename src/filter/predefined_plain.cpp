#include "filter/predefined_workers.h"

namespace zkit::plain {
namespace {

void lowpass3(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
              std::ptrdiff_t count, int step)
{
    const auto column = [=](std::ptrdiff_t x) { return x < 0 || x >= count ? 0 : above[x] + here[x] + below[x]; };
    for (std::ptrdiff_t x = 0; x < count; ++x)
        out[x] = static_cast<std::uint8_t>((column(x - step) + column(x) + column(x + step)) / 9);
}

}  // namespace
}  // namespace zkit::plain

const zkit::PredefinedWorkers zkit::PredefinedWorkers::plain = {plain::lowpass3};
