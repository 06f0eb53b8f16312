#include "analysis/pixel_count_workers.h"
#include "simd/count.h"

namespace zkit::ZKIT_SET {
namespace {

PixelCounts count(Source src, std::uint8_t low, std::uint8_t high)
{
    enum { below, above };
    if (high < low)
        high = static_cast<std::uint8_t>(low - 1);  // what is below is not above as well
    // Vectors compare signed bytes: turning bit 7 of both sides keeps the order of unsigned ones.
    const Bytes sign = broadcast(0x80), signedLow = broadcast(low) ^ sign, signedHigh = broadcast(high) ^ sign;
    Counter<2> counter;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* row = src.data + y * src.pitch;
        counter.countRow(src.width, [&](std::ptrdiff_t x) {
            const Bytes pixels = load(row + x) ^ sign;
            return Having<2>{{greaterSigned(signedLow, pixels), greaterSigned(pixels, signedHigh)}};
        });
        for (std::ptrdiff_t x = wholeVectors(src.width); x < src.width; ++x) {
            counter.count(below, row[x] < low);
            counter.count(above, row[x] > high);
        }
    }
    return {counter.total(below), counter.total(above)};
}

}  // namespace

const PixelCountWorkers pixelCount = {count};

}  // namespace zkit::ZKIT_SET
