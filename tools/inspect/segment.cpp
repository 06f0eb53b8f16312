#include "inspect/segment.h"

#include "zkit/core/error.h"
#include "zkit/img.h"

#include <cmath>

namespace zkit::tool {
namespace {

constexpr ZBW8 black = 0, white = 255;

ImagePointer<ZBW8> imageLike(const ZGenericROI& other)
{
    return std::make_unique<ZImage<ZBW8>>(other.GetWidth(), other.GetHeight());
}

// Brings the background to its own mean level everywhere.
void evenOut(ZImage<ZBW8>& levels, const ZImage<ZBW8>& background)
{
    auto& reference = const_cast<ZImage<ZBW8>&>(background);  // NOLINT: only read
    float mean = 0;
    ImgPixelAverage(&reference, mean);
    ImgUniformize(&levels, static_cast<unsigned char>(std::lround(mean)), &reference, &levels);
}

// The threshold of the whole picture; 256 where all pixels are below it.
int chooseThreshold(ZImage<ZBW8>& levels, const ThresholdChoice& choice)
{
    ZBW8HistogramVector histogram;
    ImgHistogram(&levels, &histogram);
    unsigned threshold = choice.level;
    float lowMean = 0, highMean = 0;
    ImgHistogramThreshold(&histogram, threshold, lowMean, highMean, choice.relative, 0, 255);
    return static_cast<int>(threshold);
}

// Objects are the pixels from the threshold on, or those below it.
void applyThreshold(Segmentation& result, int threshold, bool dark)
{
    if (threshold <= white)
        ImgThreshold(result.levels.get(), result.mask.get(), static_cast<unsigned>(threshold), dark ? white : black,
                     dark ? black : white, 0);
    else
        ImgOper(ARITH_LOGIC_COPY, dark ? white : black, result.mask.get());
    result.threshold = threshold;
}

void applyThresholds(Segmentation& result, const ThresholdChoice& choice, bool dark)
{
    ImgAutoAdaptiveThreshold(result.levels.get(), result.mask.get(), IMG_THRESHOLD_ISODATA, choice.cellWidth,
                             choice.cellHeight);
    ImgOper(dark ? ARITH_LOGIC_LESS : ARITH_LOGIC_GREATER_OR_EQUAL, result.levels.get(), result.mask.get(),
            result.mask.get());
}

}  // namespace

Segmentation segment(ZImage<ZBW8>& grey, const InspectRequest& request)
{
    Segmentation result{imageLike(grey), imageLike(grey), std::nullopt};
    ImgOper(ARITH_LOGIC_COPY, &grey, result.levels.get());
    if (request.background != nullptr)
        evenOut(*result.levels, *request.background);
    for (int i = 0; i < request.medians; ++i)
        ImgMedian(result.levels.get(), result.levels.get());
    if (request.threshold.cellWidth > 0)
        applyThresholds(result, request.threshold, request.dark);
    else
        applyThreshold(result, chooseThreshold(*result.levels, request.threshold), request.dark);
    if (request.opening > 0)
        ImgOpen(result.mask.get(), result.mask.get(), request.opening, white, black);
    throwPendingError();
    return result;
}

}  // namespace zkit::tool
