// Morphology and the median.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

namespace bench::opencv {

namespace {

// The square of n passes, made once.
template <int n>
const cv::Mat& square()
{
    static const cv::Mat element = cv::getStructuringElement(cv::MORPH_RECT, {2 * n + 1, 2 * n + 1});
    return element;
}

template <int n>
void erode(Scene& scene)
{
    cv::erode(grey(scene), greyResult(scene), square<n>());
}

template <int n>
void dilate(Scene& scene)
{
    cv::dilate(grey(scene), greyResult(scene), square<n>());
}

template <int n>
void erodeColor(Scene& scene)
{
    cv::erode(color(scene), colorResult(scene), square<n>());
}

template <int n>
void dilateColor(Scene& scene)
{
    cv::dilate(color(scene), colorResult(scene), square<n>());
}

template <int operation>
void both(Scene& scene)
{
    cv::morphologyEx(grey(scene), greyResult(scene), operation, square<1>());
}

template <int operation>
void bothColor(Scene& scene)
{
    cv::morphologyEx(color(scene), colorResult(scene), operation, square<1>());
}

// Edges are replicated; there is no other form.
void median(Scene& scene) { cv::medianBlur(grey(scene), greyResult(scene), 3); }

void medianColor(Scene& scene) { cv::medianBlur(color(scene), colorResult(scene), 3); }

constexpr Peer table[] = {
    {"ImgErode", "BW8 n=1", erode<1>},
    {"ImgErode", "BW8 n=5", erode<5>},
    {"ImgErode", "BW8 n=15", erode<15>},
    {"ImgErode", "C24 n=1", erodeColor<1>},
    {"ImgErode", "C24 n=15", erodeColor<15>},
    {"ImgDilate", "BW8 n=1", dilate<1>},
    {"ImgDilate", "BW8 n=5", dilate<5>},
    {"ImgDilate", "BW8 n=15", dilate<15>},
    {"ImgDilate", "C24 n=1", dilateColor<1>},
    {"ImgOpen", "BW8 n=1", both<cv::MORPH_OPEN>},
    {"ImgOpen", "C24 n=1", bothColor<cv::MORPH_OPEN>},
    {"ImgClose", "BW8 n=1", both<cv::MORPH_CLOSE>},
    {"ImgClose", "C24 n=1", bothColor<cv::MORPH_CLOSE>},
    {"ImgWhiteTopHat", "BW8 n=1", both<cv::MORPH_TOPHAT>},
    {"ImgWhiteTopHat", "C24 n=1", bothColor<cv::MORPH_TOPHAT>},
    {"ImgBlackTopHat", "BW8 n=1", both<cv::MORPH_BLACKHAT>},
    {"ImgBlackTopHat", "C24 n=1", bothColor<cv::MORPH_BLACKHAT>},
    {"ImgMedian", "BW8 replicated", median},
    {"ImgMedian", "BW8 constant", median},
    {"ImgMedian", "C24", medianColor},
};

}  // namespace

std::span<const Peer> morphoPeers() { return table; }

}  // namespace bench::opencv
