// Linear filters.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

namespace bench::opencv {

namespace {

// The quotient is rounded rather than truncated.
void lowpass3(Scene& scene)
{
    cv::Mat result = greyResult(scene);
    cv::blur(grey(scene), result, {3, 3}, {-1, -1}, cv::BORDER_CONSTANT | cv::BORDER_ISOLATED);
}

void lowpass3Color(Scene& scene)
{
    cv::Mat result = colorResult(scene);
    cv::blur(color(scene), result, {3, 3}, {-1, -1}, cv::BORDER_CONSTANT | cv::BORDER_ISOLATED);
}

// In single precision, rounded.
template <int size, int border>
void convolve(const cv::Mat& from, cv::Mat to)
{
    static const cv::Mat kernel = [] {
        cv::Mat made(size, size, CV_32F);
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                made.at<float>(y, x) = coefficient(size, x, y);
        return made;
    }();
    cv::filter2D(from, to, -1, kernel, {-1, -1}, 0, border | cv::BORDER_ISOLATED);
}

template <int size, int border>
void convolveGrey(Scene& scene)
{
    convolve<size, border>(grey(scene), greyResult(scene));
}

template <int size, int border>
void convolveColor(Scene& scene)
{
    convolve<size, border>(color(scene), colorResult(scene));
}

constexpr int nearest = cv::BORDER_REPLICATE, zero = cv::BORDER_CONSTANT;

constexpr Peer table[] = {
    {"ImgConvolKernel", "BW8 fixed 3x3", convolveGrey<3, nearest>},
    {"ImgConvolKernel", "BW8 fixed 5x5", convolveGrey<5, nearest>},
    {"ImgConvolKernel", "BW8 fixed 7x7", convolveGrey<7, nearest>},
    {"ImgConvolKernel", "BW8 floating 3x3", convolveGrey<3, zero>},
    {"ImgConvolKernel", "BW8 floating 5x5", convolveGrey<5, zero>},
    {"ImgConvolKernel", "BW8 floating 7x7", convolveGrey<7, zero>},
    {"ImgConvolKernel", "BW8 floating 9x9", convolveGrey<9, zero>},
    {"ImgConvolKernel", "C24 fixed 3x3", convolveColor<3, nearest>},
    {"ImgConvolKernel", "C24 fixed 7x7", convolveColor<7, nearest>},
    {"ImgConvolKernel", "C24 floating 3x3", convolveColor<3, zero>},
    {"ImgConvolKernel", "C24 floating 9x9", convolveColor<9, zero>},
    {"ImgConvolSymmetricKernel", "BW8 3x3", convolveGrey<3, nearest>},
    {"ImgConvolSymmetricKernel", "BW8 5x5", convolveGrey<5, nearest>},
    {"ImgConvolSymmetricKernel", "BW8 7x7", convolveGrey<7, nearest>},
    {"ImgConvolLowpass3", "BW8", lowpass3},
    {"ImgConvolLowpass3", "C24", lowpass3Color},
};

}  // namespace

std::span<const Peer> filterPeers() { return table; }

}  // namespace bench::opencv
