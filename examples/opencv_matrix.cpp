// An OpenCV matrix as an image, and an image as a matrix, without a copy.
#include <zkit/img.h>

#include <opencv2/core.hpp>

#include <cstdio>

namespace {

// The image uses the matrix' pixels, which must outlive it.
void attach(ZImage<ZBW8>& image, cv::Mat& matrix)
{
    CV_Assert(matrix.type() == CV_8UC1);
    image.Attach(matrix.data, matrix.cols, matrix.rows, static_cast<int>(matrix.step));
}

// Colour pixels are blue, green, red in both.
void attach(ZImage<ZC24>& image, cv::Mat& matrix)
{
    CV_Assert(matrix.type() == CV_8UC3);
    image.Attach(matrix.data, matrix.cols, matrix.rows, static_cast<int>(matrix.step));
}

// The other way round.
cv::Mat matrixOf(ZROI<ZBW8>& region)
{
    return {region.GetHeight(), region.GetWidth(), CV_8UC1, region.GetPixelPtr(0, 0),
            static_cast<std::size_t>(region.GetRowPitch())};
}

}  // namespace

int main()
{
    cv::Mat colours(120, 160, CV_8UC3, cv::Scalar(10, 40, 100));
    cv::Mat whole(200, 300, CV_8UC1, cv::Scalar(7));
    cv::Mat part = whole(cv::Rect(20, 30, 160, 120));  // a part of a matrix has the pitch of the whole

    ZImage<ZC24> source;
    ZImage<ZBW8> grey;
    attach(source, colours);
    attach(grey, part);
    ImgConvert(&source, &grey);
    std::printf("grey level %d inside, %d outside\n", part.at<unsigned char>(5, 5), whole.at<unsigned char>(0, 0));

    ZImage<ZBW8> image(640, 480);
    ZROI<ZBW8> region(&image, 100, 100, 50, 50);
    matrixOf(region).setTo(255);
    int area = 0;
    ImgArea(&image, 0, area);
    std::printf("%d bright pixels\n", area);
    return ZGetError() == Z_OK && part.at<unsigned char>(5, 5) == 85 * 150 / 256 &&
                   whole.at<unsigned char>(0, 0) == 7 && area == 2500
               ? 0
               : 1;
}
