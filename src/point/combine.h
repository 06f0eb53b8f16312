// Combining two operands, images or constants, into a region.
#pragma once

#include "simd/stores.h"
#include "zkit/core/roi.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <span>

namespace zkit {

// Makes `count` pixels of the destination's type from pixels of another one.
using Convert = void (*)(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores);

// An operand: an image with the way its pixels become those of the destination (none where they are of its type), or a
// constant, a pixel of the destination's type.
class Operand {
public:
    explicit Operand(ZGenericROI* image, Convert conversion = nullptr) : image_(image), convert_(conversion) {}

    template <class Pixel>
    static Operand constant(const Pixel& pixel)
    {
        Operand operand(nullptr);
        std::memcpy(operand.pixel_.data(), &pixel, sizeof pixel);
        operand.pixelSize_ = sizeof pixel;
        return operand;
    }

    bool isConstant() const { return pixelSize_ > 0; }

    // The image; for a constant the given one.
    ZGenericROI* imageOr(ZGenericROI* other) const { return isConstant() ? other : image_; }
    Convert convert() const { return convert_; }

    // The bytes of the constant's pixel; none for an image.
    std::span<const std::uint8_t> pixel() const { return {pixel_.data(), pixelSize_}; }

private:
    ZGenericROI* image_;
    Convert convert_ = nullptr;
    std::array<std::uint8_t, 3> pixel_{};
    std::size_t pixelSize_ = 0;
};

// Pixels of 8 bits as colour pixels and as pixels of 16 bits.
void greyToColour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores);
void greyToWide(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores);

// dst = a and b combined as the code says, for regions that have passed their checks. Raises 1412 for zero pixels in an
// image that divides, and 1303 when there is no memory to keep overlapping regions apart.
void combine(int code, const Operand& a, const Operand& b, const ZGenericROI* dst);

}  // namespace zkit
