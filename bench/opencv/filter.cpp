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

constexpr Peer table[] = {
    {"ImgConvolLowpass3", "BW8", lowpass3},
    {"ImgConvolLowpass3", "C24", lowpass3Color},
};

}  // namespace

std::span<const Peer> filterPeers() { return table; }

}  // namespace bench::opencv
