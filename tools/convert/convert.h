// Pictures of one pixel type from those of another, by the library's conversions.
#pragma once

#include "picture/picture.h"

#include <optional>

namespace zkit::tool {

/// In the order of Picture.
enum class PixelType : unsigned char { binary, grey, wide, colour };

/// How many low bits 16-bit levels have more than 8-bit ones. Without a value: of 16-bit levels that are to lose bits
/// as many as the greatest one has above 8, of 8-bit levels none.
using Shift = std::optional<unsigned>;

/// The picture in grey levels of 8 bits: black and white as 0 and 255, of 16-bit levels the bits from `shift` on, of
/// colours the mean of the components (their common value where they are equal). Throws MeasureError.
ImagePointer<ZBW8> toGrey(const Picture& picture, Shift shift);

/// A picture of another type, by way of grey levels of 8 bits: those from 128 on are white in 1-bit pictures.
Picture convert(const Picture& picture, PixelType type, Shift shift);

/// What converting loses, in words; null when the way back gives the same pixels.
const char* lossOf(const Picture& picture, const Picture& converted, Shift shift);

}  // namespace zkit::tool
