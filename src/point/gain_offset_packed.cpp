#include "point/gain_offset_workers.h"
#include "simd/map.h"
#include "simd/table.h"

namespace zkit::ZKIT_SET {
namespace {

void applyTable(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t begin, std::ptrdiff_t end,
                const std::uint8_t* table)
{
    for (std::ptrdiff_t i = begin; i < end; ++i)
        dst[i] = table[src[i]];
}

// Gain and offset with products of 16 bits and an offset of 16 bits.
void narrowRow(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Words gain, Words offset,
               Stores stores)
{
    const auto made = [=](Words pixels) { return addSaturatedSigned(shiftRightSigned(pixels * gain, 5), offset); };
    mapRow(dst, count, stores, [=](auto at) {
        const TwoWords pixels = widen(at.bytes(src));
        return narrow(TwoWords{made(pixels.low), made(pixels.high)});
    });
}

void grey(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const GainOffset& how, Stores stores)
{
    const std::int32_t most = 32767, least = -32768;
    const Words gain = broadcastWord(how.gain);
    const Words offset = broadcastWord(how.offset > most ? most : how.offset < least ? least : how.offset);
    if (how.narrow) {
        narrowRow(src, dst, count, gain, offset, stores);
        return;
    }
    const auto address = reinterpret_cast<std::uintptr_t>(dst);
    const auto toNext8 = static_cast<std::ptrdiff_t>(-address % 8);
    const std::ptrdiff_t begin = toNext8 < count ? toNext8 : count;
    const std::ptrdiff_t end = begin + (count - begin) / 8 * 8;
    applyTable(src, dst, 0, begin, how.table);
    narrowRow(src + begin, dst + begin, end - begin, gain, offset, stores);
    applyTable(src, dst, end, count, how.table);
}

#ifdef __AVX2__

void colour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* tables, Stores stores)
{
    const Table table0(tables), table1(tables + 256), table2(tables + 512);
    mapRow(dst, count, stores, [&](auto at) {
        const Components c = takeApart(at.interleaved(src));
        return putTogether({table0(c.c0), table1(c.c1), table2(c.c2)});
    });
}

#else

void colour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* tables, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        for (int c = 0; c < 3; ++c)
            dst[3 * i + c] = tables[256 * c + src[3 * i + c]];
}

#endif

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::GainOffsetWorkers zkit::GainOffsetWorkers::ZKIT_SET = {ZKIT_SET::grey, ZKIT_SET::colour};
