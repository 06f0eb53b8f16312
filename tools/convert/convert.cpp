#include "convert/convert.h"

#include "measure/measure.h"

#include "zkit/color.h"
#include "zkit/core/error.h"
#include "zkit/img/analysis.h"
#include "zkit/img/point.h"

#include <bit>
#include <cstring>

namespace zkit::tool {
namespace {

constexpr ZBW8 white = 255;
constexpr unsigned firstWhite = 128;
constexpr int greyBits = 8;

template <class T>
ImagePointer<T> imageLike(const ZGenericROI& other)
{
    auto image = std::make_unique<ZImage<T>>(other.GetWidth(), other.GetHeight());
    throwPendingError();
    return image;
}

unsigned neededShift(const ZROI<ZBW16>& image)
{
    unsigned levels = 0;
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            levels |= image.GetPixel(x, y);
    return static_cast<unsigned>(std::max(0, static_cast<int>(std::bit_width(levels)) - greyBits));
}

struct ToGrey {
    Shift shift;

    ImagePointer<ZBW8> operator()(const ImagePointer<ZBW1>& image) const
    {
        auto grey = imageLike<ZBW8>(*image);
        ImgThreshold(image.get(), grey.get(), 0, white);
        return grey;
    }

    ImagePointer<ZBW8> operator()(const ImagePointer<ZBW8>& image) const
    {
        auto grey = imageLike<ZBW8>(*image);
        ImgOper(ARITH_LOGIC_COPY, image.get(), grey.get());
        return grey;
    }

    ImagePointer<ZBW8> operator()(const ImagePointer<ZBW16>& image) const
    {
        auto grey = imageLike<ZBW8>(*image);
        ImgConvert(image.get(), grey.get(), shift ? *shift : neededShift(*image));
        return grey;
    }

    ImagePointer<ZBW8> operator()(const ImagePointer<ZC24>& image) const
    {
        auto grey = imageLike<ZBW8>(*image);
        auto again = imageLike<ZC24>(*image);
        ClrGetComponent(image.get(), grey.get(), 0, nullptr);
        ImgConvert(grey.get(), again.get());
        if (ImgPixelCompare(image.get(), again.get()) != 0)
            ImgConvert(image.get(), grey.get());
        return grey;
    }
};

Picture fromGrey(ImagePointer<ZBW8> grey, PixelType type, unsigned shift)
{
    switch (type) {
    case PixelType::binary: {
        auto image = imageLike<ZBW1>(*grey);
        ImgThreshold(grey.get(), image.get(), firstWhite);
        return image;
    }
    case PixelType::wide: {
        auto image = imageLike<ZBW16>(*grey);
        ImgConvert(grey.get(), image.get(), shift);
        return image;
    }
    case PixelType::colour: {
        auto image = imageLike<ZC24>(*grey);
        ImgConvert(grey.get(), image.get());
        return image;
    }
    case PixelType::grey: break;
    }
    return grey;
}

template <class T>
bool areEqual(const ZImage<T>& first, const ZImage<T>& second)
{
    for (int y = 0; y < first.GetHeight(); ++y)
        for (int x = 0; x < first.GetWidth(); ++x) {
            const T a = first.GetPixel(x, y), b = second.GetPixel(x, y);
            if (std::memcmp(&a, &b, sizeof a) != 0)
                return false;
        }
    return true;
}

}  // namespace

ImagePointer<ZBW8> toGrey(const Picture& picture, Shift shift)
{
    const ZThreadErrorScope scope;
    auto grey = std::visit(ToGrey{shift}, picture);
    throwPendingError();
    return grey;
}

Picture convert(const Picture& picture, PixelType type, Shift shift)
{
    const ZThreadErrorScope scope;
    Picture converted = fromGrey(toGrey(picture, shift), type, shift.value_or(0));
    throwPendingError();
    return converted;
}

const char* lossOf(const Picture& picture, const Picture& converted, Shift shift)
{
    constexpr const char* losses[] = {"white that is not all bits", "levels between black and white",
                                      "bits of its levels", "its colours"};
    if (const auto* const wide = std::get_if<ImagePointer<ZBW16>>(&picture); wide != nullptr && !shift)
        shift = neededShift(**wide);
    const Picture back = convert(converted, static_cast<PixelType>(picture.index()), shift);
    const bool same = std::visit(
        [&](const auto& image) { return areEqual(*image, *std::get<std::decay_t<decltype(image)>>(back)); }, picture);
    return same ? nullptr : losses[picture.index()];
}

}  // namespace zkit::tool
