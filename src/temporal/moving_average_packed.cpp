#include "simd/update.h"
#include "temporal/moving_average_workers.h"

namespace zkit::ZKIT_SET {
namespace {

// What comes once a sequence need not be fast.
void first(const AverageRows& rows, std::ptrdiff_t count, std::uint32_t times)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::uint8_t pixel = rows.src[i];
        const auto sum = static_cast<std::uint16_t>(times * pixel);
        __builtin_memcpy(rows.sum + 2 * i, &sum, sizeof sum);
        rows.dst[i] = pixel;
        if (rows.kept)
            rows.kept[i] = pixel;
    }
}

template <class Divide>
void divided(const AverageRows& rows, std::ptrdiff_t count, Stores stores, Divide divide)
{
    updateRow(rows.sum, rows.dst, count, stores, [=](auto at, TwoWords& sums) {
        const Bytes pixels = at.bytes(rows.src);
        const TwoWords wide = widenInOrder(pixels), oldest = widenInOrder(at.bytes(rows.oldest));
        const Words low = sums.low + wide.low, high = sums.high + wide.high, byte = broadcastWord(255);
        sums = {low - oldest.low, high - oldest.high};
        if (rows.kept)
            at.put(rows.kept, pixels);
        return narrowInOrder(TwoWords{divide(low) & byte, divide(high) & byte});
    });
}

void later(const AverageRows& rows, std::ptrdiff_t count, const Division& division, Stores stores)
{
    if (division.shift != 0) {
        divided(rows, count, stores, [shift = division.shift](Words n) { return shiftRight(n, shift); });
        return;
    }
    const Words factor = broadcastWord(division.factor);
    divided(rows, count, stores, [factor, before = division.before, after = division.after](Words n) {
        const Words high = multiplyHigh(n, factor);
        return shiftRight(high + shiftRight(n - high, before), after);
    });
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::MovingAverageWorkers zkit::MovingAverageWorkers::ZKIT_SET = {ZKIT_SET::first, ZKIT_SET::later};
