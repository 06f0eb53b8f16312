// Point operations and conversions.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

namespace bench::opencv {

namespace {

void lut(Scene& scene)
{
    static const cv::Mat table = [] {
        cv::Mat entries(1, 256, CV_8U);
        for (int level = 0; level < 256; ++level)
            entries.at<unsigned char>(level) = tableEntry(level);
        return entries;
    }();
    cv::LUT(grey(scene), table, greyResult(scene));
}

// Like every convertTo here it rounds rather than truncates.
void normalize(Scene& scene)
{
    const cv::Mat source = grey(scene);
    cv::Scalar average, deviation;
    cv::meanStdDev(source, average, deviation);
    const double factor = wantedDeviation / deviation[0];
    source.convertTo(greyResult(scene), CV_8U, factor, wantedMean - factor * average[0]);
}

void gainOffset(Scene& scene) { grey(scene).convertTo(greyResult(scene), CV_8U, gain, offset); }

void steepGainOffset(Scene& scene) { grey(scene).convertTo(greyResult(scene), CV_8U, steepGain, offset); }

// The same gain and offset for all components: what tells them apart is several times slower.
void gainOffsetColor(Scene& scene) { color(scene).convertTo(colorResult(scene), CV_8U, gain, offset); }

void uniformize(Scene& scene) { cv::divide(grey(scene), greyReference(scene), greyResult(scene), lightLevel); }

// Takes pixels below the dark reference for dark.
void uniformizeLightAndDark(Scene& scene)
{
    static cv::Mat range;
    const cv::Mat dark = matrix(scene.dark(), CV_8UC1), result = greyResult(scene);
    cv::subtract(greyReference(scene), dark, range);
    cv::subtract(grey(scene), dark, result);
    cv::divide(result, range, result, lightLevel - darkLevel);
    cv::add(result, cv::Scalar(darkLevel), result);
}

void threshold(Scene& scene) { cv::threshold(grey(scene), greyResult(scene), high - 1, 255, cv::THRESH_BINARY); }

// It knows one automatic mode of these, the least residue.
void chosenThreshold(Scene& scene)
{
    cv::threshold(grey(scene), greyResult(scene), 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
}

void colorRange(Scene& scene)
{
    cv::inRange(color(scene), cv::Scalar(0, low, 0), cv::Scalar(high, high, 255), greyResult(scene));
}

void narrow(Scene& scene) { greySum(scene).convertTo(greyResult(scene), CV_8U, 1.0 / (1 << shift)); }

void widen(Scene& scene) { grey(scene).convertTo(grey16Result(scene), CV_16U, 1 << shift); }

void greyToColor(Scene& scene) { cv::cvtColor(grey(scene), colorResult(scene), cv::COLOR_GRAY2BGR); }

// Weighs the components.
void colorToGrey(Scene& scene) { cv::cvtColor(color(scene), greyResult(scene), cv::COLOR_BGR2GRAY); }

// Both bytes as one number. Merging an image with a grey one is no faster unless whole vectors fill the rows.
void to422(Scene& scene) { grey(scene).convertTo(grey16Result(scene), CV_16U, 1, 128 << 8); }

constexpr Peer table[] = {
    {"ImgLut", "BW8", lut},
    {"ImgTransform", "BW8", lut},
    {"ImgOper1c2", "BW8 const add", lut},
    {"ImgNormalize", "BW8", normalize},
    {"ImgGainOffset", "BW8", gainOffset},
    {"ImgGainOffset", "BW8 steep", steepGainOffset},
    {"ImgGainOffset", "C24", gainOffsetColor},
    {"ImgUniformize", "BW8 light", uniformize},
    {"ImgUniformize", "BW8 light, dark", uniformizeLightAndDark},
    {"ImgThreshold", "BW8", threshold},
    {"ImgThreshold", "BW8 isodata", chosenThreshold},
    {"ImgThreshold", "BW8 entropy", chosenThreshold},
    {"ImgThreshold", "BW8 residue", chosenThreshold},
    {"ImgThreshold", "BW8 relative", chosenThreshold},
    {"ImgThreshold", "C24", colorRange},
    {"ImgDoubleThreshold", "BW8", threshold},
    {"ImgConvert", "BW16 to BW8", narrow},
    {"ImgConvert", "BW8 to BW16", widen},
    {"ImgConvert", "BW8 to C24", greyToColor},
    {"ImgConvert", "C24 to BW8", colorToGrey},
    {"ImgConvertTo422", "BW8", to422},
};

}  // namespace

std::span<const Peer> pointPeers() { return table; }

}  // namespace bench::opencv
