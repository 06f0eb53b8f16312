// Contours and lines.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

namespace bench::opencv {

namespace {

// Looks for all objects; there is one.
void contour(Scene& scene)
{
    static std::vector<std::vector<cv::Point>> contours;
    cv::findContours(matrix(scene.comb(), CV_8UC1), contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_NONE);
}

template <class Pixel>
void read(const cv::Mat& source, const Line& line)
{
    static std::vector<Pixel> profile;
    cv::LineIterator pixel(source, {0, 0}, {line.x, line.y});
    profile.resize(std::size_t(pixel.count));
    for (int i = 0; i < pixel.count; ++i, ++pixel)
        profile[std::size_t(i)] = *reinterpret_cast<const Pixel*>(*pixel);
}

template <int fall>
void readGrey(Scene& scene)
{
    read<std::uint8_t>(grey(scene), Line(scene, fall));
}

void readColor(Scene& scene) { read<cv::Vec3b>(color(scene), Line(scene, steep)); }

void draw(Scene& scene)
{
    const Line line(scene, steep);
    cv::line(greyResult(scene), {0, 0}, {line.x, line.y}, constant);
}

constexpr Peer table[] = {
    {"ImgContour", "BW8 comb", contour},
    {"ImgContour", "BW8 comb, levels", contour},
    {"ImgImageToLineSegment", "a line, flat", readGrey<flat>},
    {"ImgImageToLineSegment", "a line, steep", readGrey<steep>},
    {"ImgImageToLineSegment", "a line, C24", readColor},
    {"ImgLineSegmentToImage", "a line", draw},
};

}  // namespace

std::span<const Peer> contourPeers() { return table; }

}  // namespace bench::opencv
