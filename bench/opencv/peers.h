// OpenCV's equivalents of each family, and the scene's images as its matrices. No image is allocated while it is
// measured: intermediate ones lie in the scene's result images or are kept.
#pragma once

#include "operation.h"

#include <opencv2/core.hpp>

namespace bench::opencv {

std::span<const Peer> analysisPeers();
std::span<const Peer> contourPeers();
std::span<const Peer> pointPeers();
std::span<const Peer> arithmeticPeers();
std::span<const Peer> filterPeers();
std::span<const Peer> geometryPeers();
std::span<const Peer> morphoPeers();
std::span<const Peer> temporalPeers();

template <class T>
cv::Mat matrix(ZImage<T>* image, int type)
{
    return {image->GetHeight(), image->GetWidth(), type, image->GetPixelPtr(0, 0), std::size_t(image->GetRowPitch())};
}

inline cv::Mat grey(Scene& scene) { return matrix(scene.grey(), CV_8UC1); }
inline cv::Mat greyReference(Scene& scene) { return matrix(scene.greyReference(), CV_8UC1); }
inline cv::Mat greyResult(Scene& scene) { return matrix(scene.greyResult(), CV_8UC1); }
inline cv::Mat greySum(Scene& scene) { return matrix(scene.greySum(), CV_16UC1); }
inline cv::Mat grey16Result(Scene& scene) { return matrix(scene.grey16Result(), CV_16UC1); }
inline cv::Mat color(Scene& scene) { return matrix(scene.color(), CV_8UC3); }
inline cv::Mat colorReference(Scene& scene) { return matrix(scene.colorReference(), CV_8UC3); }
inline cv::Mat colorResult(Scene& scene) { return matrix(scene.colorResult(), CV_8UC3); }

}  // namespace bench::opencv
