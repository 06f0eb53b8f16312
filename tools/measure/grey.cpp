// 8-bit grey pictures.
#include "measure/figures.h"
#include "measure/tiles.h"

#include "zkit/img/analysis.h"

#include <cmath>

namespace zkit::tool {
namespace {

struct FloatMoments {
    float m00 = 0, m10 = 0, m01 = 0, m20 = 0, m11 = 0, m02 = 0;
};

// Adds the moments of a piece whose corner is (x, y).
void add(Moments& sum, const FloatMoments& piece, double x, double y)
{
    sum.m00 += piece.m00;
    sum.m10 += piece.m10 + x * piece.m00;
    sum.m01 += piece.m01 + y * piece.m00;
    sum.m20 += piece.m20 + 2 * x * piece.m10 + x * x * piece.m00;
    sum.m11 += piece.m11 + x * piece.m01 + y * piece.m10 + x * y * piece.m00;
    sum.m02 += piece.m02 + 2 * y * piece.m01 + y * y * piece.m00;
}

// Area and moments of a piece.
void addTile(GreyFigures& figures, ZROI<ZBW8>& tile, int x, int y)
{
    int area = 0;
    ImgArea(&tile, static_cast<unsigned char>(figures.threshold), area);
    figures.area += area;
    addBinaryMoments(figures.binary, tile, figures.threshold, x, y);
    FloatMoments moments;
    ImgWeighedMoments(&tile, moments.m00, moments.m10, moments.m01, moments.m20, moments.m11, moments.m02);
    add(figures.weighed, moments, x, y);
}

}  // namespace

void addBinaryMoments(Moments& sum, ZROI<ZBW8>& piece, int threshold, double x, double y)
{
    FloatMoments moments;
    ImgBinaryMoments(&piece, static_cast<unsigned>(threshold), moments.m00, moments.m10, moments.m01, moments.m20,
                     moments.m11, moments.m02);
    add(sum, moments, x, y);
}

GreyFigures measureGrey(ZImage<ZBW8>& image, const Rectangle& region, int threshold)
{
    ZROI<ZBW8> whole(&image, region.x, region.y, region.width, region.height);
    GreyFigures figures;
    figures.threshold = threshold;
    unsigned char min = 0, max = 0;
    float mean = 0;
    ImgPixelStat(&whole, min, max, mean);
    throwPendingError();
    figures.min = min;
    figures.max = max;
    figures.focus = ImgFocusing(&whole);
    PooledStatistics<1> statistics;
    forEachTile(image, region, [&](ZROI<ZBW8>& tile, int x, int y) {
        float variance = 0, average = 0;
        ImgPixelVariance(&tile, variance, average);
        statistics.add(double{1} * tile.GetWidth() * tile.GetHeight(), {average}, {{variance}});
        addTile(figures, tile, x, y);
    });
    throwPendingError();
    figures.mean = figures.weighed.m00 / region.width / region.height;
    figures.deviation = std::sqrt(statistics.covariance(0, 0));
    return figures;
}

}  // namespace zkit::tool
