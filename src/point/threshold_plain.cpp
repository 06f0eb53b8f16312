#include "point/threshold_workers.h"

namespace zkit::plain {
namespace {

void grey(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, std::uint8_t threshold, std::uint8_t low,
          std::uint8_t high, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = src[i] >= threshold ? high : low;
}

void twice(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const DoubleThreshold& levels, Stores)
{
    const DoubleThreshold d = levels;
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = src[i] > d.highThreshold ? d.above : src[i] >= d.lowThreshold ? d.between : d.below;
}

void greyToBits(const std::uint8_t* src, std::uint8_t* dst, int position, std::ptrdiff_t count, int threshold)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        std::uint8_t* const byte = dst + (position + i) / 8;
        const int mask = 0x80 >> (position + i) % 8;
        *byte = static_cast<std::uint8_t>(src[i] >= threshold ? *byte | mask : *byte & ~mask);
    }
}

void bitsToGrey(const std::uint8_t* src, int position, std::uint8_t* dst, std::ptrdiff_t count, std::uint8_t zero,
                std::uint8_t one, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = src[(position + i) / 8] & 0x80 >> (position + i) % 8 ? one : zero;
}

void colour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const ColourRange& range, Stores)
{
    const auto within = [&](std::ptrdiff_t i, int c) {
        return src[3 * i + c] >= range.minimum[c] && src[3 * i + c] <= range.maximum[c];
    };
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = within(i, 0) && within(i, 1) && within(i, 2) ? range.inside : range.outside;
}

}  // namespace
}  // namespace zkit::plain

const zkit::ThresholdWorkers zkit::ThresholdWorkers::plain = {plain::grey, plain::twice, plain::greyToBits,
                                                              plain::bitsToGrey, plain::colour};
