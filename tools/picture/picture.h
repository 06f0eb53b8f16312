// Pictures from files: PNG, TIFF, JPEG, BMP and PNM, read into the library's images.
#pragma once

#include "zkit/core/pixel.h"
#include "zkit/core/roi.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <variant>

namespace zkit::tool {

/// An image that can be handed on: images themselves stay where they are, since regions refer to them by address.
template <class T>
using ImagePointer = std::unique_ptr<ZImage<T>>;

/// One picture, in the pixel type in which its file holds it. Never null.
using Picture = std::variant<ImagePointer<ZBW1>, ImagePointer<ZBW8>, ImagePointer<ZBW16>, ImagePointer<ZC24>>;

/// Why a picture could not be read or written, in one line without the name of the file.
class PictureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the first picture of a file. The format is recognised by the file's first bytes, not by its name.
///
/// Pixels arrive as they are stored: levels are not rescaled (a 12-bit picture in 16-bit samples keeps its values, a
/// PNM picture keeps its values whatever its greatest one is), alpha is dropped without blending, gamma and orientation
/// are left to the caller. Grey of 2 and 4 bits is spread over 0 to 255. Pictures with a palette become colour, or grey
/// where every entry is grey; 1-bit ones whose palette is black and white stay 1-bit. In 1-bit pictures 1 is white.
///
/// Throws PictureError for files that cannot be read, are truncated or corrupt, hold more than 65535 pixels a side or
/// 2^28 in all, or have pixels that no image type holds exactly (colour of 16 bits, CMYK, floating point).
Picture readPicture(const std::filesystem::path& path);

/// Writes a picture in the format of the file's ending: .png, .tif, .tiff, .jpg, .jpeg, .bmp, .pbm, .pgm, .ppm or .pnm,
/// in any case. All but JPEG hold the pixels exactly. Throws PictureError for other endings, for pixels of a type that
/// the format does not have, and for files that cannot be written; there is then no file, or the one that was there.
void writePicture(const std::filesystem::path& path, const Picture& picture);

/// Whether the file's name has an ending of a picture.
bool hasPictureEnding(const std::filesystem::path& path);

/// Whether pixels change when they are written under this name.
bool hasLossyEnding(const std::filesystem::path& path);

/// The name of the picture's pixel type: "1-bit", "8-bit grey", "16-bit grey" or "24-bit colour".
const char* typeName(const Picture& picture);

}  // namespace zkit::tool
