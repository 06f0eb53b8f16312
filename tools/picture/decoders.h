// One decoder per format. Each takes the whole file, whose first bytes are those of its format, and throws
// PictureError.
#pragma once

#include "picture/picture.h"

#include <span>

namespace zkit::tool {

using Bytes = std::span<const unsigned char>;

Picture decodePng(Bytes file);
Picture decodeTiff(Bytes file);
Picture decodeJpeg(Bytes file);
Picture decodeBmp(Bytes file);
Picture decodePnm(Bytes file);

}  // namespace zkit::tool
