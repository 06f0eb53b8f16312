#include "point/gain_offset_workers.h"
#include "simd/map.h"
#include "simd/table.h"

namespace zkit::ZKIT_SET {
namespace {

void applyTable(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t first, std::ptrdiff_t last,
                const std::uint8_t* table)
{
    for (std::ptrdiff_t i = first; i < last; ++i)
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

void colourByTable(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* tables,
                   Stores stores)
{
    const Table table0(tables), table1(tables + 256), table2(tables + 512);
    mapRow(dst, count, stores, [&](auto at) {
        const Components c = takeApart(at.interleaved(src));
        return putTogether({table0(c.c0), table1(c.c1), table2(c.c2)});
    });
}

// A value for each component, laid out for Ints::lanes bytes of which the first is of component `first`.
inline Ints laidOut(const std::uint32_t (&values)[3], int first)
{
    std::uint32_t lanes[Ints::lanes];
    for (int i = 0; i < Ints::lanes; ++i)
        lanes[i] = values[(first + i) % 3];
    return loadInts(lanes);
}

// The arithmetic of the bytes of colour pixels; Ints::lanes of them start with component 0, 2 or 1 in turn.
class WholeArithmetic {
public:
    explicit WholeArithmetic(const ColourGainOffset& how)
    {
        const std::uint32_t offsets[] = {static_cast<std::uint32_t>(how.offset[0]),
                                         static_cast<std::uint32_t>(how.offset[1]),
                                         static_cast<std::uint32_t>(how.offset[2])};
        for (int i = 0; i < 3; ++i) {
            factor_[i] = laidOut(how.factor, i);
            shift_[i] = laidOut(how.shift, i);
            offset_[i] = laidOut(offsets, i);
        }
    }

    // A register full of bytes from `src` on, the first of component `first`.
    Bytes operator()(const std::uint8_t* src, int first) const
    {
        const auto ints = [=, this](int k) {
            const int i = (first + k * Ints::lanes) % 3;
            return shiftRight(widenToInts(src + k * Ints::lanes) * factor_[i], shift_[i]) + offset_[i];
        };
        return narrowInOrder({ints(0), ints(1)}, {ints(2), ints(3)});
    }

private:
    Ints factor_[3], shift_[3], offset_[3];
};

void colour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const ColourGainOffset& how,
            Stores stores)
{
    if (!how.whole) {
        colourByTable(src, dst, count, how.tables, stores);
        return;
    }
    const WholeArithmetic arithmetic(how);
    mapRow(dst, count, stores, [=](auto at) {
        constexpr int lanes = Bytes::lanes;
        std::uint8_t padded[3 * lanes];
        const std::uint8_t* pixels = at.colours(src, padded);
        return Interleaved{arithmetic(pixels, 0), arithmetic(pixels + lanes, lanes % 3),
                           arithmetic(pixels + 2 * lanes, 2 * lanes % 3)};
    });
}

#else

void colour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const ColourGainOffset& how, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        for (int c = 0; c < 3; ++c)
            dst[3 * i + c] = how.tables[256 * c + src[3 * i + c]];
}

#endif

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::GainOffsetWorkers zkit::GainOffsetWorkers::ZKIT_SET = {ZKIT_SET::grey, ZKIT_SET::colour};
