#include "point/convert_workers.h"
#include "simd/map.h"

namespace zkit::ZKIT_SET {
namespace {

void wideToGrey(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, int shift, Stores stores)
{
    const Words low = broadcastWord(255);
    mapRow(dst, count, stores, [=](auto at) {
        const TwoWords pixels = at.words(src);
        return narrowInOrder({shiftRight(pixels.low, shift) & low, shiftRight(pixels.high, shift) & low});
    });
}

void greyToWide(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, int shift, Stores stores)
{
    mapRow(dst, count, stores, [=](auto at) {
        const TwoWords pixels = widenInOrder(at.bytes(src));
        return TwoWords{shiftLeft(pixels.low, shift), shiftLeft(pixels.high, shift)};
    });
}

void greyTo422(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    const Words noColour = broadcastWord(128 << 8);
    mapRow(dst, count, stores, [=](auto at) {
        const TwoWords pixels = widenInOrder(at.bytes(src));
        return TwoWords{pixels.low | noColour, pixels.high | noColour};
    });
}

#ifdef __AVX2__  // SSE2 cannot repeat bytes

void greyToColour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    mapRow(dst, count, stores, [=](auto at) { return spread(at.bytes(src)); });
}

#else

void greyToColour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[3 * i] = dst[3 * i + 1] = dst[3 * i + 2] = src[i];
}

#endif

inline Words mean(Words c0, Words c1, Words c2) { return shiftRight((c0 + c1 + c2) * broadcastWord(85), 8); }

void colourToGrey(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    mapRow(dst, count, stores, [=](auto at) {
        const Components c = takeApart(at.interleaved(src));
        const TwoWords c0 = widen(c.c0), c1 = widen(c.c1), c2 = widen(c.c2);
        return narrow(TwoWords{mean(c0.low, c1.low, c2.low), mean(c0.high, c1.high, c2.high)});
    });
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::ConvertWorkers zkit::ConvertWorkers::ZKIT_SET = {
    ZKIT_SET::wideToGrey, ZKIT_SET::greyToWide, ZKIT_SET::greyTo422, ZKIT_SET::greyToColour, ZKIT_SET::colourToGrey};
