// New images for decoded pictures, within the limits that hold for all formats.
#pragma once

#include "picture/picture.h"

#include "zkit/core/error.h"

#include <cstdint>
#include <new>

namespace zkit::tool {

constexpr std::int64_t maxSide = 65535;
constexpr std::int64_t maxPixels = std::int64_t{1} << 28;

/// Throws PictureError for a picture without pixels or with too many.
void checkSize(std::int64_t width, std::int64_t height);

/// A black image of a checked size.
template <class T>
ImagePointer<T> newImage(std::int64_t width, std::int64_t height)
{
    checkSize(width, height);
    const ZThreadErrorScope scope;
    auto image = std::make_unique<ZImage<T>>(static_cast<int>(width), static_cast<int>(height));
    if (ZGetError() != Z_OK)
        throw std::bad_alloc();
    return image;
}

/// The byte that holds pixel (x, y).
inline unsigned char* pixelAddress(const ZGenericROI& image, int x, int y)
{
    return static_cast<unsigned char*>(image.GetPixelPtr(x, y));
}

}  // namespace zkit::tool
