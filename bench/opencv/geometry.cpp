// Geometric transforms.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

namespace bench::opencv {

namespace {

// Coordinates have 5 bits of fraction, weights 15.
template <int interpolation>
void turn(const cv::Mat& from, cv::Mat to)
{
    const cv::Point2f centre(float(from.cols) / 2, float(from.rows) / 2);
    cv::warpAffine(from, to, cv::getRotationMatrix2D(centre, rotation, scale), to.size(), interpolation);
}

void nearest(Scene& scene) { turn<cv::INTER_NEAREST>(grey(scene), greyResult(scene)); }

void bilinear(Scene& scene) { turn<cv::INTER_LINEAR>(grey(scene), greyResult(scene)); }

void bilinearColor(Scene& scene) { turn<cv::INTER_LINEAR>(color(scene), colorResult(scene)); }

template <int interpolation>
void shift(Scene& scene)
{
    cv::Mat to = greyResult(scene);
    cv::warpAffine(grey(scene), to, cv::Matx23d(1, 0, 3.25, 0, 1, -1.5), to.size(), interpolation);
}

// Weighs the pixels that the borders of blocks cut, and rounds.
void reduce(const cv::Mat& from, const cv::Mat& to)
{
    cv::Mat smaller = to(cv::Rect(0, 0, int(float(from.cols) / reduction), int(float(from.rows) / reduction)));
    cv::resize(from, smaller, smaller.size(), 0, 0, cv::INTER_AREA);
}

void shrink(Scene& scene) { reduce(grey(scene), greyResult(scene)); }

void shrinkColor(Scene& scene) { reduce(color(scene), colorResult(scene)); }

void verticalMirror(Scene& scene)
{
    cv::Mat image = greyResult(scene);
    cv::flip(image, image, 0);
}

void verticalMirrorColor(Scene& scene)
{
    cv::Mat image = colorResult(scene);
    cv::flip(image, image, 0);
}

void horizontalMirror(Scene& scene)
{
    const int side = std::min(scene.size().width, scene.size().height);
    cv::Mat square = greyResult(scene)(cv::Rect(0, 0, side, side));
    cv::flip(square, square, 1);
}

constexpr Peer table[] = {
    {"ImgScaleRotate", "BW8 nearest", nearest},
    {"ImgScaleRotate", "BW8 bilinear", bilinear},
    {"ImgScaleRotate", "C24 bilinear", bilinearColor},
    {"ImgRegister", "BW8 nearest", shift<cv::INTER_NEAREST>},
    {"ImgRegister", "BW8 bilinear", shift<cv::INTER_LINEAR>},
    {"ImgShrink", "BW8", shrink},
    {"ImgShrink", "C24", shrinkColor},
    {"ImgVerticalMirror", "BW8", verticalMirror},
    {"ImgVerticalMirror", "C24", verticalMirrorColor},
    {"ImgHorizontalMirror", "BW8 square", horizontalMirror},
};

}  // namespace

std::span<const Peer> geometryPeers() { return table; }

}  // namespace bench::opencv
