// ImgPixelVariance, ImgPixelStdDev, and ImgPixelAverage of colour pixels.
#include "analysis/pixel_variance_workers.h"
#include "frame/accumulate.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

#include <cmath>

using namespace zkit;

namespace {

// Of a variance, which rounding may leave a little below zero.
float squareRoot(float variance)
{
    return static_cast<float>(std::sqrt(variance < 0 ? 0.0 : static_cast<double>(variance)));
}

// From the sums of squares and of squared differences of two components: the mean of a b is the mean of
// (a^2 + b^2 - (a - b)^2) / 2.
float covariance(float squaresA, float squaresB, float squaredDifferences, double pixels, float averageA,
                 float averageB)
{
    const double products = (static_cast<double>(squaresA) + squaresB - squaredDifferences) * 0.5;
    return static_cast<float>(products / pixels - static_cast<double>(averageA) * averageB);
}

float correlation(float covariance, float deviationA, float deviationB)
{
    return static_cast<float>(covariance / (static_cast<double>(deviationA) * deviationB));
}

}  // namespace

void ImgPixelAverage(ZROI<ZC24>* src, float& average2, float& average1, float& average0)
{
    const CallFrame frame("ImgPixelAverage (C24)");
    if (!(frame.clear() && placed(src))) {
        frame.trace();
        return;
    }
    Source plane = source(src);
    joinRows(3, plane);
    const ColourSums sums = workers<PixelVarianceWorkers>().colour(plane);
    average2 = static_cast<float>(sums.values[2] / pixelsOf(src));
    average1 = static_cast<float>(sums.values[1] / pixelsOf(src));
    average0 = static_cast<float>(sums.values[0] / pixelsOf(src));
    frame.finish();
}

short ImgPixelVariance(ZROI<ZBW8>* src, float& variance, float& average)
{
    const CallFrame frame("ImgPixelVariance (BW8)");
    if (!(frame.clear() && placed(src)))
        return frame.trace();
    const GreySums sums = workers<PixelVarianceWorkers>().grey(source(src));
    const double pixels = pixelsOf(src), values = sums.values;
    const double result = (pixels * sums.squares - values * values) / (pixels * pixels);
    average = static_cast<float>(values / pixels);
    variance = static_cast<float>(result < 0 ? 0.0 : result);
    return frame.finish();
}

void ImgPixelVariance(ZROI<ZC24>* src, float& var2, float& var1, float& var0, float& cov21, float& cov10, float& cov02,
                      float& average2, float& average1, float& average0)
{
    const CallFrame frame("ImgPixelVariance (C24)");
    if (!(frame.clear() && placed(src))) {
        frame.trace();
        return;
    }
    const Source plane = source(src);
    double values[3] = {};
    float squares[3] = {}, differences[3] = {};
    const auto sumsOf = workers<PixelVarianceWorkers>().colourRow;
    for (std::ptrdiff_t y = 0; y < plane.height; ++y) {
        const ColourRowSums row = sumsOf(plane.data + y * plane.pitch, plane.width);
        for (int i = 0; i < 3; ++i) {
            values[i] += row.values[i];
            accumulate(squares[i], row.squares[i]);
            accumulate(differences[i], row.squaredDifferences[i]);
        }
    }
    const double pixels = static_cast<float>(pixelsOf(src));
    average2 = static_cast<float>(values[2] / pixels);
    average1 = static_cast<float>(values[1] / pixels);
    average0 = static_cast<float>(values[0] / pixels);
    var2 = covariance(squares[2], squares[2], 0, pixels, average2, average2);
    var1 = covariance(squares[1], squares[1], 0, pixels, average1, average1);
    var0 = covariance(squares[0], squares[0], 0, pixels, average0, average0);
    cov21 = covariance(squares[1], squares[2], differences[1], pixels, average1, average2);
    cov10 = covariance(squares[0], squares[1], differences[0], pixels, average1, average0);
    cov02 = covariance(squares[0], squares[2], differences[2], pixels, average2, average0);
    frame.finish();
}

short ImgPixelStdDev(ZROI<ZBW8>* src, float& stdDev, float& average)
{
    const CallFrame frame("ImgPixelStdDev");
    if (!frame.clear())
        return frame.trace();
    if (ImgPixelVariance(src, stdDev, average) == Z_OK)
        stdDev = squareRoot(stdDev);
    return frame.trace();  // records its name on success too, which is intended
}

void ImgPixelStdDev(ZROI<ZC24>* src, float& dev2, float& dev1, float& dev0, float& corr21, float& corr10, float& corr02,
                    float& average2, float& average1, float& average0)
{
    const CallFrame frame("ImgPixelStdDev");
    if (frame.clear())
        ImgPixelVariance(src, dev2, dev1, dev0, corr21, corr10, corr02, average2, average1, average0);
    if (!frame.clear()) {
        frame.trace();
        return;
    }
    dev2 = squareRoot(dev2);
    dev1 = squareRoot(dev1);
    dev0 = squareRoot(dev0);
    corr21 = correlation(corr21, dev1, dev2);
    corr10 = correlation(corr10, dev1, dev0);
    corr02 = correlation(corr02, dev2, dev0);
    frame.finish();
}
