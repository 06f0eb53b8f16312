// 16-bit grey pictures.
#include "measure/figures.h"

#include "zkit/core/error.h"

#include <algorithm>
#include <cmath>

namespace zkit::tool {
namespace {

double square(double value) { return value * value; }

void add(Moments& moments, double weight, double x, double y)
{
    moments.m00 += weight;
    moments.m10 += weight * x;
    moments.m01 += weight * y;
    moments.m20 += weight * x * x;
    moments.m11 += weight * x * y;
    moments.m02 += weight * y * y;
}

// Calls use(level, x, y) for every pixel.
template <class Use>
void forEachPixel(const ZROI<ZBW16>& region, Use use)
{
    for (int y = 0; y < region.GetHeight(); ++y) {
        const auto* row = static_cast<const ZBW16*>(region.GetPixelPtr(0, y));
        for (int x = 0; x < region.GetWidth(); ++x)
            use(row[x], x, y);
    }
}

double focusOf(const ZROI<ZBW16>& region)
{
    double sum = 0;
    forEachPixel(region, [&](double level, int x, int y) {
        if (x + 1 < region.GetWidth() && y + 1 < region.GetHeight())
            sum += square(level - region.GetPixel(x + 1, y)) + square(level - region.GetPixel(x, y + 1));
    });
    return std::sqrt(sum / region.GetWidth() / region.GetHeight());
}

}  // namespace

GreyFigures measureWide(ZImage<ZBW16>& image, const Rectangle& region, int threshold)
{
    ZROI<ZBW16> whole(&image, region.x, region.y, region.width, region.height);
    whole.CheckPlacement();
    throwPendingError();
    GreyFigures figures;
    figures.threshold = threshold;
    figures.min = 65535;
    forEachPixel(whole, [&](int level, int x, int y) {
        figures.min = std::min(figures.min, level);
        figures.max = std::max(figures.max, level);
        figures.area += level > threshold ? 1 : 0;
        if (level >= threshold)
            add(figures.binary, 1, x, y);
        add(figures.weighed, level, x, y);
    });
    const double pixels = double{1} * region.width * region.height;
    figures.mean = figures.weighed.m00 / pixels;
    double squares = 0;
    forEachPixel(whole, [&](double level, int, int) { squares += square(level - figures.mean); });
    figures.deviation = std::sqrt(squares / pixels);
    figures.focus = focusOf(whole);
    return figures;
}

}  // namespace zkit::tool
