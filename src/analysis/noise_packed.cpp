#include "analysis/noise_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

void add(RowNoise& sums, int src, int ref)
{
    const auto difference = static_cast<std::uint32_t>(src - ref);
    sums.signal += static_cast<std::uint32_t>(src * src);
    sums.noise += difference * difference;
}

RowNoise grey(const std::uint8_t* src, const std::uint8_t* ref, std::ptrdiff_t width)
{
    Ints signal = broadcastInt(0), noise = signal;
    std::ptrdiff_t x = 0;
    for (; x + Words::lanes <= width; x += Words::lanes) {
        const Words pixels = widen(src + x), difference = pixels - widen(ref + x);
        signal = signal + multiplyAddPairs(pixels, pixels);
        noise = noise + multiplyAddPairs(difference, difference);
    }
    RowNoise sums{total(signal), total(noise)};
    for (; x < width; ++x)
        add(sums, src[x], ref[x]);
    return sums;
}

RowNoise wide(const std::uint8_t* src, const std::uint8_t* ref, std::ptrdiff_t width, int shift)
{
    Ints signal = broadcastInt(0), noise = signal;
    std::ptrdiff_t x = 0;
    for (; x + Ints::lanes <= width; x += Ints::lanes) {
        const Ints pixels = widenToInts(src + x);
        const Ints difference = pixels - shiftRight(widenWordsToInts(ref + 2 * x), shift);
        signal = signal + pixels * pixels;
        noise = noise + difference * difference;
    }
    RowNoise sums{total(signal), total(noise)};
    for (; x < width; ++x)
        add(sums, src[x], (ref[2 * x] | ref[2 * x + 1] << 8) >> shift);
    return sums;
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::NoiseWorkers zkit::NoiseWorkers::ZKIT_SET = {ZKIT_SET::grey, ZKIT_SET::wide};
