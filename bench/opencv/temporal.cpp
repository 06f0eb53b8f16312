// Averages over time, fields of rows, and warping.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

#include <map>

namespace bench::opencv {

namespace {

// The even or the odd rows.
cv::Mat field(cv::Mat image, int first)
{
    return {image.rows / 2, image.cols, image.type(), image.ptr(first), 2 * image.step};
}

void swapFrames(Scene& scene)
{
    for (const int first : {0, 1})
        field(grey(scene), 1 - first).copyTo(field(greyResult(scene), first));
}

// Without the filling.
void realign(const cv::Mat& from, const cv::Mat& to)
{
    for (const int first : {0, 1}) {
        const cv::Range left(0, from.cols - fieldShift), right(fieldShift, from.cols);
        field(from, first)(cv::Range::all(), left).copyTo(field(to, first)(cv::Range::all(), right));
    }
}

void realignGrey(Scene& scene) { realign(grey(scene), greyResult(scene)); }

void realignColor(Scene& scene) { realign(color(scene), colorResult(scene)); }

// A recursive average in floats, without a table.
void recursiveAverage(Scene& scene)
{
    static std::map<const Scene*, cv::Mat> states;
    cv::Mat& state = states[&scene];
    if (state.empty())
        state = cv::Mat(grey(scene).size(), CV_32FC1, cv::Scalar(0));
    cv::accumulateWeighted(grey(scene), state, 0.1);
}

// Coordinates one beside the other, as it takes them for nearest pixels.
const cv::Mat& maps(Scene& scene, bool inside)
{
    static std::map<const Scene*, cv::Mat> all[2];
    cv::Mat& map = all[inside][&scene];
    if (map.empty()) {
        const Size& size = scene.size();
        map = cv::Mat(size.height, size.width, CV_16SC2);
        for (int j = 0; j < size.height; ++j)
            for (int i = 0; i < size.width; ++i) {
                const Point at = inside ? nearest(turned(i, j, size), size) : turned(i, j, size);
                map.at<cv::Vec2s>(j, i) = {short(at.x), short(at.y)};
            }
    }
    return map;
}

void remap(const cv::Mat& from, cv::Mat to, const cv::Mat& map)
{
    cv::remap(from, to, map, cv::noArray(), cv::INTER_NEAREST, cv::BORDER_CONSTANT);
}

void warp(Scene& scene) { remap(grey(scene), greyResult(scene), maps(scene, false)); }

void warpColor(Scene& scene) { remap(color(scene), colorResult(scene), maps(scene, false)); }

void warpPacked(Scene& scene) { remap(grey(scene), greyResult(scene), maps(scene, true)); }

constexpr Peer table[] = {
    {"ImgSwapFrames", "BW8", swapFrames},
    {"ImgRealignFrame", "BW8", realignGrey},
    {"ImgRealignFrame", "C24", realignColor},
    {"ImgRecursiveAverage", "BW8", recursiveAverage},
    {"ImgWarp", "BW8", warp},
    {"ImgWarp", "C24", warpColor},
    {"ImgWarp", "BW8 packed map", warpPacked},
};

}  // namespace

std::span<const Peer> temporalPeers() { return table; }

}  // namespace bench::opencv
