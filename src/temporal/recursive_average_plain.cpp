#include "temporal/recursive_average_workers.h"

namespace zkit::plain {
namespace {

void row(const std::uint8_t* src, std::uint8_t* state, std::uint8_t* dst, std::ptrdiff_t count,
         const std::uint16_t* table, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const int before = state[2 * i] | state[2 * i + 1] << 8;
        const int difference = 16 * src[i] - before;
        const int sum = before + static_cast<std::int16_t>(table[4095 + (difference < -4095 ? -4095 : difference)]);
        state[2 * i] = static_cast<std::uint8_t>(sum);
        state[2 * i + 1] = static_cast<std::uint8_t>(sum >> 8);
        dst[i] = static_cast<std::uint8_t>(sum < 0 ? 0 : sum > 4095 ? 255 : sum >> 4);
    }
}

}  // namespace
}  // namespace zkit::plain

const zkit::RecursiveAverageWorkers zkit::RecursiveAverageWorkers::plain = {plain::row};
