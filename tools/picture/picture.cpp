#include "picture/picture.h"

#include "picture/decoders.h"
#include "picture/file.h"

#include <algorithm>
#include <new>
#include <string_view>

namespace zkit::tool {
namespace {

struct Format {
    Picture (*decode)(Bytes);
    std::string_view signature;
};

using namespace std::string_view_literals;

constexpr Format formats[] = {
    {decodePng, "\x89PNG\r\n\x1a\n"sv},
    {decodeJpeg, "\xff\xd8\xff"sv},
    {decodeTiff, "II*\0"sv},
    {decodeTiff, "MM\0*"sv},
    {decodeTiff, "II+\0"sv},
    {decodeTiff, "MM\0+"sv},
    {decodeBmp, "BM"sv},
    {decodePnm, "P1"sv},
    {decodePnm, "P2"sv},
    {decodePnm, "P3"sv},
    {decodePnm, "P4"sv},
    {decodePnm, "P5"sv},
    {decodePnm, "P6"sv},
};

bool begins(Bytes file, std::string_view signature)
{
    return file.size() >= signature.size() &&
           std::equal(signature.begin(), signature.end(), file.begin(),
                      [](char wanted, unsigned char found) { return static_cast<unsigned char>(wanted) == found; });
}

}  // namespace

Picture readPicture(const std::filesystem::path& path)
try {
    const auto file = readFile(path);
    const auto* const format =
        std::ranges::find_if(formats, [&](const Format& known) { return begins(file, known.signature); });
    if (format == std::end(formats))
        throw PictureError("not a picture of a known format (PNG, TIFF, JPEG, BMP, PNM)");
    return format->decode(file);
} catch (const std::bad_alloc&) {
    throw PictureError("there is not enough memory for the picture");
}

}  // namespace zkit::tool
