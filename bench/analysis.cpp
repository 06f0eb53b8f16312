// Measurements of regions.
#include "operation.h"
#include "zkit/img.h"

namespace bench {

namespace {

void pixelMin(Scene& scene)
{
    unsigned char min;
    ImgPixelMin(scene.grey(), min);
}

void pixelMax(Scene& scene)
{
    unsigned char max;
    ImgPixelMax(scene.grey(), max);
}

void pixelStat(Scene& scene)
{
    unsigned char min, max;
    float average;
    ImgPixelStat(scene.grey(), min, max, average);
}

void pixelAverage(Scene& scene)
{
    float average;
    ImgPixelAverage(scene.grey(), average);
}

void pixelAverageColor(Scene& scene)
{
    float average[3];
    ImgPixelAverage(scene.color(), average[2], average[1], average[0]);
}

void pixelCount(Scene& scene)
{
    int below, between, above;
    ImgPixelCount(scene.grey(), low, high, below, between, above);
}

void area(Scene& scene)
{
    int pixels;
    ImgArea(scene.grey(), high, pixels);
}

void areaDoubleThreshold(Scene& scene)
{
    int pixels;
    ImgAreaDoubleThreshold(scene.grey(), low, high, pixels);
}

void count(Scene& scene)
{
    ImgCount(scene.grey(), [](ZBW8& pixel) { return pixel > high ? 1 : 0; });
}

void countColor(Scene& scene)
{
    ImgCount(scene.color(), [](ZC24& pixel) { return pixel.c1 > high ? 1 : 0; });
}

void pixelCompare(Scene& scene) { ImgPixelCompare(scene.grey(), scene.greyReference()); }

void pixelCompareColor(Scene& scene) { ImgPixelCompare(scene.color(), scene.colorReference()); }

void pixelVariance(Scene& scene)
{
    float variance, average;
    ImgPixelVariance(scene.grey(), variance, average);
}

void pixelVarianceColor(Scene& scene)
{
    float variance[3], covariance[3], average[3];
    ImgPixelVariance(scene.color(), variance[2], variance[1], variance[0], covariance[0], covariance[1], covariance[2],
                     average[2], average[1], average[0]);
}

void pixelStdDev(Scene& scene)
{
    float deviation, average;
    ImgPixelStdDev(scene.grey(), deviation, average);
}

void pixelStdDevColor(Scene& scene)
{
    float deviation[3], correlation[3], average[3];
    ImgPixelStdDev(scene.color(), deviation[2], deviation[1], deviation[0], correlation[0], correlation[1],
                   correlation[2], average[2], average[1], average[0]);
}

void binaryMoments(Scene& scene)
{
    float m00, m10, m01, m20, m11, m02;
    ImgBinaryMoments(scene.grey(), low, m00, m10, m01, m20, m11, m02);
}

void weighedMoments(Scene& scene)
{
    float m00, m10, m01, m20, m11, m02;
    ImgWeighedMoments(scene.grey(), m00, m10, m01, m20, m11, m02);
}

void gravityCenter(Scene& scene)
{
    float x, y;
    ImgGravityCenter(scene.grey(), low, x, y);
}

void focusing(Scene& scene) { ImgFocusing(scene.grey()); }

void focusingColor(Scene& scene) { ImgFocusing(scene.color()); }

void signalNoiseRatio(Scene& scene)
{
    ImgSignalNoiseRatio(scene.grey(), scene.greyReference(), IMG_REFERENCE_INDEPENDENT_NOISE);
}

void signalNoiseRatioToSum(Scene& scene)
{
    ImgSignalNoiseRatio(scene.grey(), scene.greySum(), Scene::summedImages, IMG_REFERENCE_INDEPENDENT_NOISE);
}

void rmsNoise(Scene& scene) { ImgRmsNoise(scene.grey(), scene.greyReference(), IMG_REFERENCE_INDEPENDENT_NOISE); }

void rmsNoiseToSum(Scene& scene)
{
    ImgRmsNoise(scene.grey(), scene.greySum(), Scene::summedImages, IMG_REFERENCE_INDEPENDENT_NOISE);
}

void histogram(Scene& scene)
{
    static ZBW8HistogramVector counts;
    ImgHistogram(scene.grey(), &counts);
}

void histogramOfTwoLevels(Scene& scene)
{
    static ZBW8HistogramVector counts;
    ImgHistogram(scene.mask(), &counts);
}

void histogramUntyped(Scene& scene)
{
    static ZVector counts(2);
    ImgHistogram(scene.grey(), &counts);
}

template <unsigned bits>
void histogramOfSum(Scene& scene)
{
    static ZBW8HistogramVector counts;
    ImgHistogram(scene.greySum(), &counts, highBitOfSum, bits, 1);
}

void equalize(Scene& scene) { ImgEqualize(scene.grey(), scene.greyResult()); }

void setupEqualize(Scene&)
{
    static ZVector counts(2), curve(3);
    ImgSetupEqualize(&counts, &curve);
}

void analyseHistogram(Scene&)
{
    static ZVector counts(2);
    float deviation;
    ImgAnalyseHistogram(&counts, 0, 255, IMG_HISTOGRAM_STANDARD_DEVIATION, deviation);
}

void projectOnARow(Scene& scene)
{
    static ZBW32Vector sums;
    ImgProjectOnARow(scene.grey(), &sums);
}

void projectOnAColumn(Scene& scene)
{
    static ZBW32Vector sums;
    ImgProjectOnAColumn(scene.grey(), &sums);
}

// A histogram with pixels of every level.
struct AllLevels {
    ZBW8HistogramVector typed{256};
    ZVector untyped{2};

    AllLevels()
    {
        for (unsigned int level = 0; level < 256; ++level)
            typed.AddElement(static_cast<unsigned int*>(untyped.GetDataPtr())[level] = 1000 + level * 37 % 256);
    }
};

template <IMG_THRESHOLD_MODES mode>
void histogramThreshold(Scene&)
{
    static AllLevels histogram;
    auto threshold = static_cast<unsigned int>(mode);
    float lowMean, highMean;
    ImgHistogramThreshold(&histogram.typed, threshold, lowMean, highMean, 0.5f, 0, 255);
}

void isodataThreshold(Scene&)
{
    static AllLevels histogram;
    ImgIsodataThreshold(&histogram.typed, 0, 255);
}

void isodataThresholdUntyped(Scene&)
{
    static AllLevels histogram;
    ImgIsodataThreshold(&histogram.untyped, 0, 255);
}

void minResidueThreshold(Scene&)
{
    static AllLevels histogram;
    float lowMean, highMean;
    ImgMinResidueThreshold(&histogram.typed, lowMean, highMean);
}

void maxEntropyThreshold(Scene&)
{
    static AllLevels histogram;
    float lowMean, highMean;
    ImgMaxEntropyThreshold(&histogram.typed, lowMean, highMean);
}

void autoAdaptiveThreshold(Scene& scene)
{
    ImgAutoAdaptiveThreshold(scene.grey(), scene.greyResult(), IMG_THRESHOLD_ISODATA, 100, 0);
}

constexpr Operation table[] = {
    {"ImgPixelMin", "BW8", 1, 0, pixelMin},
    {"ImgPixelMax", "BW8", 1, 0, pixelMax},
    {"ImgPixelStat", "BW8", 1, 0, pixelStat},
    {"ImgPixelAverage", "BW8", 1, 0, pixelAverage},
    {"ImgPixelAverage", "C24", 3, 0, pixelAverageColor},
    {"ImgPixelCount", "BW8", 1, 0, pixelCount},
    {"ImgArea", "BW8", 1, 0, area},
    {"ImgAreaDoubleThreshold", "BW8", 1, 0, areaDoubleThreshold},
    {"ImgCount", "BW8", 1, 0, count},
    {"ImgCount", "C24", 3, 0, countColor},
    {"ImgPixelCompare", "BW8", 2, 0, pixelCompare},
    {"ImgPixelCompare", "C24", 6, 0, pixelCompareColor},
    {"ImgPixelVariance", "BW8", 1, 0, pixelVariance},
    {"ImgPixelVariance", "C24", 3, 0, pixelVarianceColor},
    {"ImgPixelStdDev", "BW8", 1, 0, pixelStdDev},
    {"ImgPixelStdDev", "C24", 3, 0, pixelStdDevColor},
    {"ImgBinaryMoments", "BW8", 1, 0, binaryMoments},
    {"ImgWeighedMoments", "BW8", 1, 0, weighedMoments},
    {"ImgGravityCenter", "BW8", 1, 0, gravityCenter},
    {"ImgFocusing", "BW8", 1, 0, focusing},
    {"ImgFocusing", "C24", 3, 0, focusingColor},
    {"ImgSignalNoiseRatio", "BW8", 2, 0, signalNoiseRatio},
    {"ImgSignalNoiseRatio", "BW16", 3, 0, signalNoiseRatioToSum},
    {"ImgRmsNoise", "BW8", 2, 0, rmsNoise},
    {"ImgRmsNoise", "BW16", 3, 0, rmsNoiseToSum},
    {"ImgHistogram", "BW8", 1, 0, histogram},
    {"ImgHistogram", "BW8 two levels", 1, 0, histogramOfTwoLevels},
    {"ImgHistogram", "BW8 untyped", 1, 0, histogramUntyped},
    {"ImgHistogram", "BW16 256 bins", 2, 0, histogramOfSum<8>},
    {"ImgHistogram", "BW16 4096 bins", 2, 0, histogramOfSum<12>},
    {"ImgEqualize", "BW8", 2, 1, equalize},
    {"ImgSetupEqualize", "no pixels", 0, 0, setupEqualize},
    {"ImgAnalyseHistogram", "no pixels", 0, 0, analyseHistogram},
    {"ImgProjectOnARow", "BW8", 1, 0, projectOnARow},
    {"ImgProjectOnAColumn", "BW8", 1, 0, projectOnAColumn},
    {"ImgAutoAdaptiveThreshold", "BW8", 1, 1, autoAdaptiveThreshold},
    {"ImgHistogramThreshold", "no pixels, isodata", 0, 0, histogramThreshold<IMG_THRESHOLD_ISODATA>},
    {"ImgHistogramThreshold", "no pixels, entropy", 0, 0, histogramThreshold<IMG_THRESHOLD_MAX_ENTROPY>},
    {"ImgIsodataThreshold", "no pixels", 0, 0, isodataThreshold},
    {"ImgIsodataThreshold", "no pixels, untyped", 0, 0, isodataThresholdUntyped},
    {"ImgMinResidueThreshold", "no pixels", 0, 0, minResidueThreshold},
    {"ImgMaxEntropyThreshold", "no pixels", 0, 0, maxEntropyThreshold},
};

}  // namespace

std::span<const Operation> analysisOperations() { return table; }

}  // namespace bench
