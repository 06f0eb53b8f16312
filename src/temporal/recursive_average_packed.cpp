#include "simd/update.h"
#include "temporal/recursive_average_workers.h"

namespace zkit::ZKIT_SET {
namespace {

// The table's entries for the indices of Bytes::lanes pixels.
inline TwoWords entries(const std::uint16_t* table, TwoWords indices)
{
    alignas(sizeof(Register)) std::uint16_t of[Bytes::lanes];
    store(of, indices.low);
    store(of + Words::lanes, indices.high);
    return {fetchWords(table, of), fetchWords(table, of + Words::lanes)};
}

// 16 pixel + 4095 - state, at least 0. It cannot exceed the table.
inline Words index(Words pixel, Words state)
{
    return subtractSaturated(shiftLeft(pixel, 4) + broadcastWord(4095), state);
}

// (state + entry) / 16, the sum clipped to 0..65535.
inline Words shown(Words state, Words entry)
{
    const Words negative = shiftRightSigned(entry, 15);
    const Words more = entry & ~negative, less = (broadcastWord(0) - entry) & negative;
    return shiftRight(subtractSaturated(addSaturated(state, more), less), 4);
}

void row(const std::uint8_t* src, std::uint8_t* state, std::uint8_t* dst, std::ptrdiff_t count,
         const std::uint16_t* table, Stores stores)
{
    updateRow(state, dst, count, stores, [=](auto at, TwoWords& states) {
        const TwoWords pixels = widenInOrder(at.bytes(src)), before = states;
        const TwoWords found = entries(table, {index(pixels.low, before.low), index(pixels.high, before.high)});
        states = {before.low + found.low, before.high + found.high};
        return narrowInOrder(TwoWords{shown(before.low, found.low), shown(before.high, found.high)});
    });
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::RecursiveAverageWorkers zkit::RecursiveAverageWorkers::ZKIT_SET = {ZKIT_SET::row};
