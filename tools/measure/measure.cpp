#include "measure/measure.h"

#include "measure/figures.h"

#include "zkit/core/error.h"

#include <string>

namespace zkit::tool {
namespace {

struct PixelType {
    const char* name;
    int threshold, greatest;
};

int thresholdFor(const PixelType& type, const MeasureRequest& request)
{
    const int threshold = request.threshold.value_or(type.threshold);
    if (threshold > type.greatest)
        throw MeasureError("threshold " + std::to_string(threshold) + " is above " + std::to_string(type.greatest) +
                           ", the greatest level of a picture of this type (" + type.name + ")");
    return threshold;
}

}  // namespace

ImagePointer<ZBW8> expand(const ZImage<ZBW1>& bits)
{
    auto grey = std::make_unique<ZImage<ZBW8>>(bits.GetWidth(), bits.GetHeight());
    throwPendingError();
    for (int y = 0; y < bits.GetHeight(); ++y)
        for (int x = 0; x < bits.GetWidth(); ++x)
            grey->SetPixel(bits.GetPixel(x, y).bits, x, y);
    return grey;
}

namespace {

// Fills in the figures and the name of the picture's type.
struct Measurer {
    Measurement& result;
    const MeasureRequest& request;

    void operator()(const ImagePointer<ZBW1>& image) const { grey({"1-bit", 1, 1}, *expand(*image), measureGrey); }
    void operator()(const ImagePointer<ZBW8>& image) const { grey({"8-bit grey", 128, 255}, *image, measureGrey); }
    void operator()(const ImagePointer<ZBW16>& image) const
    {
        grey({"16-bit grey", 32768, 65535}, *image, measureWide);
    }
    void operator()(const ImagePointer<ZC24>& image) const
    {
        result.type = "24-bit colour";
        result.figures = measureColour(*image, result.region);
    }

    template <class T>
    void grey(const PixelType& type, ZImage<T>& image,
              GreyFigures (*figuresOf)(ZImage<T>&, const Rectangle&, int)) const
    {
        result.type = type.name;
        result.figures = figuresOf(image, result.region, thresholdFor(type, request));
    }
};

}  // namespace

void throwPendingError()
{
    const short code = ZGetError();
    if (code == Z_OK)
        return;
    std::string sentence = ZErrorText(code);
    for (int i = 0; i < ZGetTraceCount(); ++i)
        sentence += (i == 0 ? " (" : ", ") + std::string(ZGetTrace(i));
    if (ZGetTraceCount() > 0)
        sentence += ")";
    throw MeasureError(sentence);
}

Rectangle regionOf(const Picture& picture, const MeasureRequest& request)
{
    return request.region.value_or(std::visit(
        [](const auto& image) {
            return Rectangle{0, 0, image->GetWidth(), image->GetHeight()};
        },
        picture));
}

Measurement measure(const Picture& picture, const MeasureRequest& request)
{
    const ZThreadErrorScope scope;
    Measurement result;
    std::visit(
        [&](const auto& image) {
            result.width = image->GetWidth();
            result.height = image->GetHeight();
        },
        picture);
    result.region = regionOf(picture, request);
    std::visit(Measurer{result, request}, picture);
    return result;
}

}  // namespace zkit::tool
