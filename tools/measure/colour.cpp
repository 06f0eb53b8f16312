// Colour pictures.
#include "measure/figures.h"
#include "measure/tiles.h"

#include "zkit/img/analysis.h"

#include <algorithm>
#include <cmath>

namespace zkit::tool {
namespace {

enum : int { red, green, blue };

// Means and covariances of a piece. Red is byte 2 of a pixel.
void addTile(PooledStatistics<3>& statistics, ZROI<ZC24>& tile)
{
    float redMean = 0, greenMean = 0, blueMean = 0;
    float redVariance = 0, greenVariance = 0, blueVariance = 0, redGreen = 0, greenBlue = 0, blueRed = 0;
    ImgPixelVariance(&tile, redVariance, greenVariance, blueVariance, redGreen, greenBlue, blueRed, redMean, greenMean,
                     blueMean);
    statistics.add(
        double{1} * tile.GetWidth() * tile.GetHeight(), {redMean, greenMean, blueMean},
        {{redVariance, redGreen, blueRed}, {redGreen, greenVariance, greenBlue}, {blueRed, greenBlue, blueVariance}});
}

}  // namespace

ColourFigures measureColour(ZImage<ZC24>& image, const Rectangle& region)
{
    ZROI<ZC24> whole(&image, region.x, region.y, region.width, region.height);
    ColourFigures figures;
    figures.focus = ImgFocusing(&whole);
    throwPendingError();
    PooledStatistics<3> statistics;
    forEachTile(image, region, [&](ZROI<ZC24>& tile, int, int) { addTile(statistics, tile); });
    throwPendingError();
    const auto deviation = [&](int i) { return std::sqrt(std::max(statistics.covariance(i, i), 0.0)); };
    const auto correlation = [&](int i, int j) { return statistics.covariance(i, j) / (deviation(i) * deviation(j)); };
    figures.mean = {statistics.mean(red), statistics.mean(green), statistics.mean(blue)};
    figures.deviation = {deviation(red), deviation(green), deviation(blue)};
    figures.redGreen = correlation(red, green);
    figures.greenBlue = correlation(green, blue);
    figures.blueRed = correlation(blue, red);
    return figures;
}

}  // namespace zkit::tool
