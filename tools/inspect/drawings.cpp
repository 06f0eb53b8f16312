#include "inspect/drawings.h"

#include "drawing/cairo_device.h"

#include "zkit/core/error.h"
#include "zkit/img/point.h"

#include <cmath>

namespace zkit::tool {
namespace {

constexpr Pen contourPen = {0, 1, 0.3}, centrePen = {1, 0.2, 0.2}, numberPen = {1, 1, 0.2};
constexpr int crossSize = 3, numberOffset = 3;

void drawContour(CairoDevice& device, ZPathVector& contour)
{
    contour.Draw(&device, 1, 0, 0, 0);
    device.LineTo(contour[0].X, contour[0].Y);
}

void drawCentre(CairoDevice& device, int x, int y)
{
    device.MoveTo(x - crossSize, y);
    device.LineTo(x + crossSize, y);
    device.MoveTo(x, y - crossSize);
    device.LineTo(x, y + crossSize);
}

void drawPicture(CairoDevice& device, const Picture& picture, ZImage<ZBW8>& grey)
{
    if (const auto* const colours = std::get_if<ImagePointer<ZC24>>(&picture)) {
        device.drawPicture(**colours);
        return;
    }
    ZImage<ZC24> colours(grey.GetWidth(), grey.GetHeight());
    ImgConvert(&grey, &colours);
    throwPendingError();
    device.drawPicture(colours);
}

}  // namespace

void drawOverlay(const Picture& picture, ZImage<ZBW8>& grey, const Inspection& inspection,
                 const std::filesystem::path& file)
{
    const ZThreadErrorScope scope;
    CairoDevice device(file, grey.GetWidth(), grey.GetHeight());
    drawPicture(device, picture, grey);
    device.setPen(contourPen);
    for (const Object& object : inspection.objects)
        drawContour(device, *object.contour);
    int number = 0;
    for (const Object& object : inspection.objects) {
        const int x = static_cast<int>(std::lround(object.centreX)), y = static_cast<int>(std::lround(object.centreY));
        device.setPen(centrePen);
        drawCentre(device, x, y);
        device.setPen(numberPen);
        device.Text(x + numberOffset, y + numberOffset, std::to_string(++number).c_str());
    }
    device.write();
}

}  // namespace zkit::tool
