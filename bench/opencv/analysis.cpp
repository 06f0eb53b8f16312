// Measurements of regions.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

namespace bench::opencv {

namespace {

void pixelMin(Scene& scene)
{
    double min;
    cv::minMaxIdx(grey(scene), &min, nullptr);
}

void pixelMax(Scene& scene)
{
    double max;
    cv::minMaxIdx(grey(scene), nullptr, &max);
}

// There is no single pass for all three.
void pixelStat(Scene& scene)
{
    const cv::Mat source = grey(scene);
    double min, max;
    cv::minMaxIdx(source, &min, &max);
    cv::mean(source);
}

void pixelAverage(Scene& scene) { cv::mean(grey(scene)); }

void pixelAverageColor(Scene& scene) { cv::mean(color(scene)); }

// Two thresholds, two masks; the third count is what remains.
void pixelCount(Scene& scene)
{
    const cv::Mat source = grey(scene);
    cv::Mat mask = greyResult(scene);
    cv::threshold(source, mask, high, 255, cv::THRESH_BINARY);
    cv::countNonZero(mask);
    cv::threshold(source, mask, low - 1, 255, cv::THRESH_BINARY_INV);
    cv::countNonZero(mask);
}

void area(Scene& scene)
{
    cv::Mat mask = greyResult(scene);
    cv::threshold(grey(scene), mask, high, 255, cv::THRESH_BINARY);
    cv::countNonZero(mask);
}

void pixelCompare(Scene& scene)
{
    cv::Mat mask = greyResult(scene);
    cv::absdiff(grey(scene), greyReference(scene), mask);
    cv::countNonZero(mask);
}

// The pixels of which all three differences are 0, then what remains.
void pixelCompareColor(Scene& scene)
{
    cv::Mat difference = colorResult(scene), equal = greyResult(scene);
    cv::absdiff(color(scene), colorReference(scene), difference);
    cv::inRange(difference, cv::Scalar::all(0), cv::Scalar::all(0), equal);
    cv::countNonZero(equal);
}

void deviation(const cv::Mat& source)
{
    cv::Scalar average, deviations;
    cv::meanStdDev(source, average, deviations);
}

void pixelVariance(Scene& scene) { deviation(grey(scene)); }

// Does less: it has no covariances, and the operation that has them turns the picture into floats first.
void pixelVarianceColor(Scene& scene) { deviation(color(scene)); }

// Takes every pixel that is not 0, which in these pictures are about as many as are above the threshold.
void binaryMoments(Scene& scene) { cv::moments(grey(scene), true); }

void weighedMoments(Scene& scene) { cv::moments(grey(scene), false); }

double squaredDifferences(const cv::Mat& one, const cv::Mat& other) { return cv::norm(one, other, cv::NORM_L2SQR); }

// Within the region, unlike the slanted walk: the same number of differences.
void focus(const cv::Mat& source)
{
    const cv::Rect here(0, 0, source.cols - 1, source.rows - 1);
    squaredDifferences(source(here), source(here + cv::Point(1, 0)));
    squaredDifferences(source(here), source(here + cv::Point(0, 1)));
}

void focusing(Scene& scene) { focus(grey(scene)); }

void focusingColor(Scene& scene) { focus(color(scene)); }

void signalNoiseRatio(Scene& scene)
{
    const cv::Mat source = grey(scene);
    cv::norm(source, cv::NORM_L2SQR);
    squaredDifferences(source, greyReference(scene));
}

// The quotient is rounded rather than truncated.
cv::Mat averageOfSum(Scene& scene)
{
    cv::Mat average = greyResult(scene);
    greySum(scene).convertTo(average, CV_8U, 1.0 / Scene::summedImages);
    return average;
}

void signalNoiseRatioToSum(Scene& scene)
{
    const cv::Mat source = grey(scene);
    cv::norm(source, cv::NORM_L2SQR);
    squaredDifferences(source, averageOfSum(scene));
}

void rmsNoise(Scene& scene) { squaredDifferences(grey(scene), greyReference(scene)); }

void rmsNoiseToSum(Scene& scene) { squaredDifferences(grey(scene), averageOfSum(scene)); }

// Counts are floats.
void histogram(const cv::Mat& source, int bins, float end)
{
    static cv::Mat counts;
    constexpr int channel = 0;
    const float range[] = {0, end};
    const float* ranges = range;
    cv::calcHist(&source, 1, &channel, {}, counts, 1, &bins, &ranges);
}

void histogramOfGrey(Scene& scene) { histogram(grey(scene), 256, 256); }

void histogramOfTwoLevels(Scene& scene) { histogram(matrix(scene.mask(), CV_8UC1), 256, 256); }

template <int bits>
void histogramOfSum(Scene& scene)
{
    histogram(greySum(scene), 1 << bits, 2 << highBitOfSum);
}

void equalize(Scene& scene) { cv::equalizeHist(grey(scene), greyResult(scene)); }

template <int dimension>
void project(Scene& scene)
{
    static cv::Mat sums;
    cv::reduce(grey(scene), sums, dimension, cv::REDUCE_SUM, CV_32S);
}

constexpr Peer table[] = {
    {"ImgPixelMin", "BW8", pixelMin},
    {"ImgPixelMax", "BW8", pixelMax},
    {"ImgPixelStat", "BW8", pixelStat},
    {"ImgPixelAverage", "BW8", pixelAverage},
    {"ImgPixelAverage", "C24", pixelAverageColor},
    {"ImgPixelCount", "BW8", pixelCount},
    {"ImgArea", "BW8", area},
    {"ImgPixelCompare", "BW8", pixelCompare},
    {"ImgPixelCompare", "C24", pixelCompareColor},
    {"ImgPixelVariance", "BW8", pixelVariance},
    {"ImgPixelVariance", "C24", pixelVarianceColor},
    {"ImgPixelStdDev", "BW8", pixelVariance},
    {"ImgPixelStdDev", "C24", pixelVarianceColor},
    {"ImgBinaryMoments", "BW8", binaryMoments},
    {"ImgWeighedMoments", "BW8", weighedMoments},
    {"ImgGravityCenter", "BW8", binaryMoments},
    {"ImgFocusing", "BW8", focusing},
    {"ImgFocusing", "C24", focusingColor},
    {"ImgSignalNoiseRatio", "BW8", signalNoiseRatio},
    {"ImgSignalNoiseRatio", "BW16", signalNoiseRatioToSum},
    {"ImgRmsNoise", "BW8", rmsNoise},
    {"ImgRmsNoise", "BW16", rmsNoiseToSum},
    {"ImgHistogram", "BW8", histogramOfGrey},
    {"ImgHistogram", "BW8 two levels", histogramOfTwoLevels},
    {"ImgHistogram", "BW8 untyped", histogramOfGrey},
    {"ImgHistogram", "BW16 256 bins", histogramOfSum<8>},
    {"ImgHistogram", "BW16 4096 bins", histogramOfSum<12>},
    {"ImgEqualize", "BW8", equalize},
    {"ImgProjectOnARow", "BW8", project<0>},
    {"ImgProjectOnAColumn", "BW8", project<1>},
};

}  // namespace

std::span<const Peer> analysisPeers() { return table; }

}  // namespace bench::opencv
