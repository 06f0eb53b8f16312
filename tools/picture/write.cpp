// Pictures into files.
#include "picture/encoders.h"
#include "picture/file.h"

#include <algorithm>
#include <new>
#include <string>
#include <string_view>

namespace zkit::tool {
namespace {

// Pixel types as bits, in the order of Picture.
enum : unsigned { binary = 1, grey = 2, wide = 4, colour = 8, all = binary | grey | wide | colour };

struct Format {
    FileBytes (*encode)(const Picture&);
    std::string_view ending;
    unsigned types;
};

constexpr Format formats[] = {
    {encodePng, ".png", all},         {encodeTiff, ".tif", all},           {encodeTiff, ".tiff", all},
    {encodeBmp, ".bmp", all & ~wide}, {encodeJpeg, ".jpg", grey | colour}, {encodeJpeg, ".jpeg", grey | colour},
    {encodePnm, ".pbm", binary},      {encodePnm, ".pgm", grey | wide},    {encodePnm, ".ppm", colour},
    {encodePnm, ".pnm", all},
};

char lowerCase(char letter) { return static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter); }

// Null for an ending of no picture.
const Format* formatOf(const std::filesystem::path& path)
{
    std::string ending = path.extension().string();
    std::ranges::transform(ending, ending.begin(), lowerCase);
    const auto* const format =
        std::ranges::find_if(formats, [&](const Format& known) { return known.ending == ending; });
    return format == std::end(formats) ? nullptr : format;
}

}  // namespace

bool hasPictureEnding(const std::filesystem::path& path) { return formatOf(path) != nullptr; }

bool hasLossyEnding(const std::filesystem::path& path)
{
    const Format* const format = formatOf(path);
    return format != nullptr && format->encode == encodeJpeg;
}

const char* typeName(const Picture& picture)
{
    constexpr const char* names[] = {"1-bit", "8-bit grey", "16-bit grey", "24-bit colour"};
    return names[picture.index()];
}

void writePicture(const std::filesystem::path& path, const Picture& picture)
try {
    const Format* const format = formatOf(path);
    if (format == nullptr)
        throw PictureError("the name does not end like a picture's (.png, .tif, .jpg, .bmp, .pbm, .pgm, .ppm, .pnm)");
    if ((format->types >> picture.index() & 1) == 0)
        throw PictureError(std::string("a ") + std::string(format->ending) + " file has no " + typeName(picture) +
                           " pixels");
    writeFile(path, format->encode(picture));
} catch (const std::bad_alloc&) {
    throw PictureError("there is not enough memory for the picture");
}

}  // namespace zkit::tool
