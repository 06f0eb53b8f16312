#include "analysis/focusing_workers.h"

namespace zkit::plain {
namespace {

std::uint32_t row(const std::uint8_t* here, const std::uint8_t* below, std::ptrdiff_t count, int step)
{
    std::uint32_t sum = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const int across = here[i] - here[i + step], down = here[i] - below[i];
        sum += static_cast<std::uint32_t>(across * across + down * down);
    }
    return sum;
}

}  // namespace
}  // namespace zkit::plain

const zkit::FocusingWorkers zkit::FocusingWorkers::plain = {plain::row};
