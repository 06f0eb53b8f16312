// One encoder per format. Each gives the bytes of a whole file, of a picture of a type that the format has.
#pragma once

#include "picture/picture.h"

#include <vector>

namespace zkit::tool {

using FileBytes = std::vector<unsigned char>;

FileBytes encodePng(const Picture& picture);
FileBytes encodeTiff(const Picture& picture);  // compressed without loss
FileBytes encodeJpeg(const Picture& picture);  // 8-bit grey and colour, of good quality: 90 of 100
FileBytes encodeBmp(const Picture& picture);   // all but 16-bit grey
FileBytes encodePnm(const Picture& picture);

/// The picture's pixels, whatever their type: a row has (width bits + 7) / 8 bytes.
inline const ZGenericROI& pixelsOf(const Picture& picture)
{
    return std::visit([](const auto& image) -> const ZGenericROI& { return *image; }, picture);
}

template <class T>
bool holds(const Picture& picture)
{
    return std::holds_alternative<ImagePointer<T>>(picture);
}

inline int bitsOf(const Picture& picture)
{
    constexpr int bits[] = {1, 8, 16, 24};
    return bits[picture.index()];
}

}  // namespace zkit::tool
