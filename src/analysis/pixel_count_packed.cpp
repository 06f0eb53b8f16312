#include "analysis/pixel_count_workers.h"
#include "simd/count.h"

namespace zkit::ZKIT_SET {
namespace {

PixelCounts count(Source src, std::uint8_t low, std::uint8_t high)
{
    // Vectors compare signed bytes: turning bit 7 of both sides keeps the order of unsigned ones.
    const Bytes sign = broadcast(0x80), signedLow = broadcast(low) ^ sign;
    const Bytes signedHigh = broadcast(high < low ? static_cast<std::uint8_t>(low - 1) : high) ^ sign;
    const auto isBelow = [=](Bytes pixels) { return greaterSigned(signedLow, pixels ^ sign); };
    const auto isAbove = [=](Bytes pixels) { return greaterSigned(pixels ^ sign, signedHigh); };
    const auto row = [=](std::ptrdiff_t y) { return src.data + y * src.pitch; };

    if (low == 0) {  // an area: nothing is below
        Counter<1> above;
        for (std::ptrdiff_t y = 0; y < src.height; ++y)
            above.countRow(src.width, [=](auto at) { return Having<1>{{isAbove(at.bytes(row(y)))}}; });
        return {0, above.total(0)};
    }
    Counter<2> both;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        both.countRow(src.width, [=](auto at) {
            const Bytes pixels = at.bytes(row(y));
            return Having<2>{{isBelow(pixels), isAbove(pixels)}};
        });
    return {both.total(0), both.total(1)};
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::PixelCountWorkers zkit::PixelCountWorkers::ZKIT_SET = {ZKIT_SET::count};
