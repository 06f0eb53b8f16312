#include "unwrap/unwrap.h"

#include "convert/convert.h"
#include "measure/measure.h"

#include "zkit/core/error.h"
#include "zkit/img.h"

namespace zkit::tool {
namespace {

struct Maps {
    ZImage<ZBW16> x, y;
};

// The library takes the pixel at the coordinates rounded down: half a pixel more makes it the nearest one.
void setMaps(const Ring& ring, Maps& maps)
{
    constexpr float half = 0.5F;
    ImgSetCircleWarp(ring.centreX + half, ring.centreY + half, ring.height, ring.lastRadius, ring.firstRadius,
                     ring.width, ring.firstAngle, ring.lastAngle, &maps.x, &maps.y);
    throwPendingError();
}

struct Unwrapper {
    Maps& maps;

    Picture operator()(const ImagePointer<ZBW1>& image) const
    {
        auto copy = std::make_unique<ZImage<ZBW8>>(image->GetWidth(), image->GetHeight());
        ImgThreshold(image.get(), copy.get(), 0, 255);
        return warped(*copy);
    }
    Picture operator()(const ImagePointer<ZBW8>& image) const { return warped(*image); }
    Picture operator()(const ImagePointer<ZC24>& image) const { return warped(*image); }
    Picture operator()(const ImagePointer<ZBW16>&) const
    {
        throw MeasureError("16-bit pictures cannot be unwrapped: convert it to --type 8 first");
    }

    template <class T>
    Picture warped(ZImage<T>& image) const
    {
        auto rectangle = std::make_unique<ZImage<T>>(maps.x.GetWidth(), maps.x.GetHeight());
        ImgWarp(&image, rectangle.get(), &maps.x, &maps.y, 0, 0);
        throwPendingError();
        return rectangle;
    }
};

}  // namespace

Picture unwrap(const Picture& picture, const Ring& ring)
{
    const ZThreadErrorScope scope;
    Maps maps;
    setMaps(ring, maps);
    return std::visit(Unwrapper{maps}, picture);
}

}  // namespace zkit::tool
