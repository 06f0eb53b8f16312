#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"

#include <climits>

namespace {

class AdaptiveThresholdTest : public OperationTest {};

// Two levels side by side everywhere, 40 apart, ever brighter to the right and, in half steps, downwards.
void drawSlope(ZImage<ZBW8>& image)
{
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            image.SetPixel(static_cast<ZBW8>(40 * ((x + y) % 2) + x / 8 + y / 16), x, y);
}

int isodataOf(ZImage<ZBW8>& image, int x0, int y0, int x1, int y1)
{
    ZROI<ZBW8> cell(&image, x0, y0, x1 - x0, y1 - y0);
    ZBW8HistogramVector histogram;
    ImgHistogram(&cell, &histogram);
    return ImgIsodataThreshold(&histogram, 0, 255);
}

// 8 x 6 cells of a picture of 640 x 480, centred at multiples of 640 / 7 and 96: there the thresholds are those of the
// cells, but for what the fixed point of the enlargement loses.
TEST_F(AdaptiveThresholdTest, thresholds_follow_the_light)
{
    ZImage<ZBW8> src(640, 480), dst(640, 480);
    drawSlope(src);
    for (const auto mode : {IMG_THRESHOLD_ISODATA, IMG_THRESHOLD_RELATIVE, static_cast<IMG_THRESHOLD_MODES>(9)}) {
        ImgAutoAdaptiveThreshold(&src, &dst, mode, 100, 0);
        EXPECT_EQ(dst.GetPixel(0, 0), isodataOf(src, 0, 0, 50, 50));
        EXPECT_NEAR(dst.GetPixel(274, 288), isodataOf(src, 224, 238, 324, 338), 1);
        EXPECT_NEAR(dst.GetPixel(639, 479), isodataOf(src, 590, 430, 640, 480), 1);
        EXPECT_NEAR(dst.GetPixel(0, 240), (isodataOf(src, 0, 142, 50, 242) + isodataOf(src, 0, 238, 50, 338)) / 2, 1);
    }
    // Cells of another height, and from a region; in place.
    ZROI<ZBW8> region(&src, 41, 33, 200, 300);
    const int corner = isodataOf(src, 41, 33, 91, 43);
    ImgAutoAdaptiveThreshold(&region, &region, IMG_THRESHOLD_MAX_ENTROPY, 100, 20);
    EXPECT_EQ(region.GetPixel(0, 0), corner);
}

TEST_F(AdaptiveThresholdTest, cells_of_any_size)
{
    ZImage<ZBW8> src(9, 7), dst(9, 7);
    drawSlope(src);
    for (const int size : {1, 2, 9, 10, 1000, INT_MAX}) {
        ImgAutoAdaptiveThreshold(&src, &dst, IMG_THRESHOLD_ISODATA, size, 0);
        EXPECT_EQ(dst.GetPixel(0, 0), isodataOf(src, 0, 0, std::min(size / 2, 9), std::min(size / 2, 7))) << size;
    }
    ZROI<ZBW8> nothing(&src, 9, 0, 0, 7);
    ImgAutoAdaptiveThreshold(&nothing, &nothing, IMG_THRESHOLD_ISODATA, 3, 3);
}

TEST_F(AdaptiveThresholdTest, errors_leave_the_destination)
{
    ZImage<ZBW8> src(9, 7), dst(9, 7), small(8, 7);
    ZROI<ZBW8> outside(&src, 1, 0, 9, 7);
    dst.SetPixel(77, 3, 3);
    const std::vector<std::uint8_t> before = bytesOf(dst);
    ImgAutoAdaptiveThreshold(&small, &dst, IMG_THRESHOLD_ISODATA, 0, 0);
    EXPECT_FAILURE(1402, "ImgAutoAdaptiveThreshold");
    ImgAutoAdaptiveThreshold(&small, &outside, IMG_THRESHOLD_ISODATA, 0, 0);
    EXPECT_FAILURE(1401, "ImgAutoAdaptiveThreshold");
    ImgAutoAdaptiveThreshold(&src, &dst, IMG_THRESHOLD_ISODATA, 0, -1);
    EXPECT_FAILURE(1014, "ImgAutoAdaptiveThreshold");
    ImgAutoAdaptiveThreshold(&src, &dst, IMG_THRESHOLD_ISODATA, 1, -1);
    EXPECT_FAILURE(1015, "ImgAutoAdaptiveThreshold");
    ImgAutoAdaptiveThreshold(&src, &dst, static_cast<IMG_THRESHOLD_MODES>(-1), 4, 4);
    EXPECT_FAILURE(1012, "ImgHistogramThreshold", "ImgAutoAdaptiveThreshold");
    EXPECT_EQ(bytesOf(dst), before);
}

}  // namespace
