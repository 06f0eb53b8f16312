#include "analysis/focusing_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

Ints squared(Words difference) { return multiplyAddPairs(difference, difference); }

std::uint32_t row(const std::uint8_t* here, const std::uint8_t* below, std::ptrdiff_t count, int step)
{
    Ints across = broadcastInt(0), down = across;
    std::ptrdiff_t i = 0;
    for (; i + Words::lanes <= count; i += Words::lanes) {
        const Words pixels = widen(here + i);
        across = across + squared(pixels - widen(here + i + step));
        down = down + squared(pixels - widen(below + i));
    }
    std::uint32_t sum = total(across + down);
    for (; i < count; ++i) {
        const int a = here[i] - here[i + step], d = here[i] - below[i];
        sum += static_cast<std::uint32_t>(a * a + d * d);
    }
    return sum;
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::FocusingWorkers zkit::FocusingWorkers::ZKIT_SET = {ZKIT_SET::row};
