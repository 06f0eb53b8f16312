#include "point/threshold_workers.h"
#include "simd/map.h"

namespace zkit::ZKIT_SET {
namespace {

inline Bytes atLeast(Bytes a, Bytes b) { return equal(max(a, b), a); }

void grey(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, std::uint8_t threshold, std::uint8_t low,
          std::uint8_t high, Stores stores)
{
    const Bytes least = broadcast(threshold), below = broadcast(low), above = broadcast(high);
    mapRow(dst, count, stores, [=](auto at) { return select(atLeast(at.bytes(src), least), below, above); });
}

void twice(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const DoubleThreshold& levels,
           Stores stores)
{
    const Bytes least = broadcast(levels.lowThreshold), most = broadcast(levels.highThreshold);
    const Bytes below = broadcast(levels.below), between = broadcast(levels.between), above = broadcast(levels.above);
    mapRow(dst, count, stores, [=](auto at) {
        const Bytes pixels = at.bytes(src);
        return select(atLeast(most, pixels), above, select(atLeast(pixels, least), below, between));
    });
}

// Writes the first `count` bits, at most Bytes::lanes of them, from bit `position` of a byte on; when that is not 0 the
// bits end within the byte.
inline void mergeBits(std::uint8_t* dst, int position, std::uint32_t bits, std::ptrdiff_t count)
{
    const std::ptrdiff_t whole = (position + count) / 8 * (position == 0);
    __builtin_memcpy(dst, &bits, static_cast<std::size_t>(whole));
    const std::ptrdiff_t left = count - 8 * whole;
    if (left == 0)
        return;
    const std::uint32_t mask = (0xFF00U >> left & 0xFFU) >> position, last = (bits >> 8 * whole & 0xFFU) >> position;
    dst[whole] = static_cast<std::uint8_t>((dst[whole] & ~mask) | (last & mask));
}

void greyToBits(const std::uint8_t* src, std::uint8_t* dst, int position, std::ptrdiff_t count, int threshold)
{
    const Bytes least = broadcast(static_cast<std::uint8_t>(threshold > 255 ? 255 : threshold));
    const Bytes reachable = broadcast(threshold > 255 ? 0 : 255);
    const auto bits = [=](Bytes pixels) { return packBits(atLeast(pixels, least) & reachable); };
    if (position > 0 && count > 0) {
        const std::ptrdiff_t first = count < 8 - position ? count : 8 - position;
        mergeBits(dst++, position, bits(LastVector(first).bytes(src)), first);
        src += first;
        count -= first;
    }
    for (; count >= Bytes::lanes; count -= Bytes::lanes, src += Bytes::lanes, dst += Bytes::lanes / 8) {
        const std::uint32_t whole = bits(load(src));
        __builtin_memcpy(dst, &whole, Bytes::lanes / 8);
    }
    if (count > 0)
        mergeBits(dst, 0, bits(LastVector(count).bytes(src)), count);
}

void bitsToGrey(const std::uint8_t* src, int position, std::uint8_t* dst, std::ptrdiff_t count, std::uint8_t zero,
                std::uint8_t one, Stores stores)
{
    const Bytes clear = broadcast(zero), set = broadcast(one);
    // In most images all vectors are of whole bytes.
    if (position == 0 && count % 8 == 0 && reinterpret_cast<std::uintptr_t>(dst) % 8 == 0)
        mapRow(dst, count, stores, [=](auto at) { return select(at.bitBytes(src), clear, set); });
    else
        mapRow(dst, count, stores, [=](auto at) { return select(at.bits(src, position), clear, set); });
}

void colour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const ColourRange& range, Stores stores)
{
    const auto bound = [](const std::uint8_t(&bytes)[3]) {
        return Components{broadcast(bytes[0]), broadcast(bytes[1]), broadcast(bytes[2])};
    };
    const Components least = bound(range.minimum), most = bound(range.maximum);
    const Bytes outside = broadcast(range.outside), inside = broadcast(range.inside);
    mapRow(dst, count, stores, [=](auto at) {
        const Components c = takeApart(at.interleaved(src));
        const Bytes reach = atLeast(c.c0, least.c0) & atLeast(c.c1, least.c1) & atLeast(c.c2, least.c2);
        const Bytes within = atLeast(most.c0, c.c0) & atLeast(most.c1, c.c1) & atLeast(most.c2, c.c2);
        return select(reach & within, outside, inside);
    });
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::ThresholdWorkers zkit::ThresholdWorkers::ZKIT_SET = {ZKIT_SET::grey, ZKIT_SET::twice, ZKIT_SET::greyToBits,
                                                                 ZKIT_SET::bitsToGrey, ZKIT_SET::colour};
