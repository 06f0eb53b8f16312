// Linear filters. Quotients are rounded rather than truncated, and negative responses are 0 rather than their
// magnitude.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

namespace bench::opencv {

namespace {

constexpr int zerosOutside = cv::BORDER_CONSTANT | cv::BORDER_ISOLATED;

using Filter = void (*)(const cv::Mat& src, cv::Mat& dst);

template <Filter filter>
void onGrey(Scene& scene)
{
    cv::Mat result = greyResult(scene);
    filter(grey(scene), result);
}

template <Filter filter>
void onColor(Scene& scene)
{
    cv::Mat result = colorResult(scene);
    filter(color(scene), result);
}

void uniform(const cv::Mat& src, cv::Mat& dst) { cv::blur(src, dst, {3, 3}, {-1, -1}, zerosOutside); }

void gaussian(const cv::Mat& src, cv::Mat& dst) { cv::GaussianBlur(src, dst, {3, 3}, 0, 0, zerosOutside); }

template <int dx, int dy>
void sobel(const cv::Mat& src, cv::Mat& dst)
{
    cv::Sobel(src, dst, CV_8U, dx, dy, 3, 1, 0, zerosOutside);
}

void sobelXY(const cv::Mat& src, cv::Mat& dst)
{
    static cv::Mat vertical;
    sobel<0, 1>(src, vertical);
    sobel<1, 0>(src, dst);
    cv::add(dst, vertical, dst);
}

void laplacian(const cv::Mat& src, cv::Mat& dst) { cv::Laplacian(src, dst, CV_8U, 1, 1, 0, zerosOutside); }

template <int side, int corner, int centre, int divisor = 1>
void convolution(const cv::Mat& src, cv::Mat& dst)
{
    static const cv::Mat kernel =
        (cv::Mat_<float>(3, 3) << corner, side, corner, side, centre, side, corner, side, corner) / divisor;
    cv::filter2D(src, dst, CV_8U, kernel, {-1, -1}, 0, zerosOutside);
}

template <bool vertical>
void lowpass(const cv::Mat& src, cv::Mat& dst)
{
    static const cv::Mat smooth = (cv::Mat_<float>(1, 3) << 1, 2, 1) / 4;
    static const cv::Mat one = cv::Mat_<float>::ones(1, 1);
    cv::sepFilter2D(src, dst, CV_8U, vertical ? one : smooth, vertical ? smooth : one, {-1, -1}, 0,
                    cv::BORDER_REPLICATE | cv::BORDER_ISOLATED);
}

template <bool vertical>
void prewitt(const cv::Mat& src, cv::Mat& dst)
{
    static const cv::Mat slope = (cv::Mat_<float>(1, 3) << -1, 0, 1);
    static const cv::Mat sum = cv::Mat_<float>::ones(1, 3);
    cv::sepFilter2D(src, dst, CV_8U, vertical ? sum : slope, vertical ? slope : sum, {-1, -1}, 0, zerosOutside);
}

void prewittXY(const cv::Mat& src, cv::Mat& dst)
{
    static cv::Mat vertical;
    prewitt<true>(src, vertical);
    prewitt<false>(src, dst);
    cv::add(dst, vertical, dst);
}

constexpr Peer table[] = {
    {"ImgConvolHighpass1", "BW8", onGrey<convolution<-1, 0, 5>>},
    {"ImgConvolHighpass2", "BW8", onGrey<convolution<-1, -1, 9>>},
    {"ImgConvolLowpass1", "BW8", onGrey<gaussian>},
    {"ImgConvolLowpass1", "C24", onColor<gaussian>},
    {"ImgConvolLowpass2", "BW8", onGrey<convolution<1, 1, 0, 8>>},
    {"ImgConvolLowpass3", "BW8", onGrey<uniform>},
    {"ImgConvolLowpass3", "C24", onColor<uniform>},
    {"ImgConvolSobelX", "BW8", onGrey<sobel<1, 0>>},
    {"ImgConvolSobelX", "C24", onColor<sobel<1, 0>>},
    {"ImgConvolSobelY", "BW8", onGrey<sobel<0, 1>>},
    {"ImgConvolSobelY", "C24", onColor<sobel<0, 1>>},
    {"ImgConvolSobelXY", "BW8", onGrey<sobelXY>},
    {"ImgConvolPrewittX", "BW8", onGrey<prewitt<false>>},
    {"ImgConvolPrewittY", "BW8", onGrey<prewitt<true>>},
    {"ImgConvolPrewittXY", "BW8", onGrey<prewittXY>},
    {"ImgConvolLaplacian4", "BW8", onGrey<laplacian>},
    {"ImgConvolLaplacian8", "BW8", onGrey<convolution<1, 1, -8>>},
    {"ImgConvolLowpass1X", "BW8", onGrey<lowpass<false>>},
    {"ImgConvolLowpass1Y", "BW8", onGrey<lowpass<true>>},
};

}  // namespace

std::span<const Peer> filterPeers() { return table; }

}  // namespace bench::opencv
