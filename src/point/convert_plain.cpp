#include "point/convert_workers.h"

namespace zkit::plain {
namespace {

void wideToGrey(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, int shift, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = static_cast<std::uint8_t>((src[2 * i] | src[2 * i + 1] << 8) >> shift);
}

void greyToWide(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, int shift, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = static_cast<std::uint32_t>(src[i]) << shift;
        dst[2 * i] = static_cast<std::uint8_t>(pixel);
        dst[2 * i + 1] = static_cast<std::uint8_t>(pixel >> 8);
    }
}

void greyTo422(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        dst[2 * i] = src[i];
        dst[2 * i + 1] = 128;
    }
}

void greyToColour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[3 * i] = dst[3 * i + 1] = dst[3 * i + 2] = src[i];
}

void colourToGrey(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = static_cast<std::uint8_t>(85 * (src[3 * i] + src[3 * i + 1] + src[3 * i + 2]) >> 8);
}

}  // namespace
}  // namespace zkit::plain

const zkit::ConvertWorkers zkit::ConvertWorkers::plain = {plain::wideToGrey, plain::greyToWide, plain::greyTo422,
                                                          plain::greyToColour, plain::colourToGrey};
