#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"

#include <cmath>

namespace {

class PixelVarianceTest : public OperationTest {};

TEST_F(PixelVarianceTest, grey)
{
    ZImage<ZBW8> image;
    draw(image, "13 57");
    withBothWorkers([&] {
        float variance = 0, average = 0;
        EXPECT_EQ(ImgPixelVariance(&image, variance, average), 0);
        EXPECT_EQ(variance, 5);
        EXPECT_EQ(average, 4);
        EXPECT_EQ(ImgPixelStdDev(&image, variance, average), 0);
        EXPECT_EQ(variance, std::sqrt(5.0F));
        EXPECT_EQ(trail(), (Trail{"ImgPixelStdDev"}));  // also after success
        ZClearError();
    });
}

// The squares of a row of 70000 white pixels do not fit into 32 bits.
TEST_F(PixelVarianceTest, the_squares_of_a_row_wrap)
{
    ZImage<ZBW8> image(70000, 1);
    std::memset(image.GetPixelPtr(0, 0), 255, 70000);
    const double pixels = 70000, sum = 255 * pixels, squares = 255 * sum - 4294967296.0;
    const double expected = (pixels * squares - sum * sum) / (pixels * pixels);
    withBothWorkers([&] {
        float variance = 0, average = 0;
        ImgPixelVariance(&image, variance, average);
        EXPECT_EQ(variance, expected < 0 ? 0.0F : static_cast<float>(expected));
        EXPECT_EQ(average, 255);
    });
}

TEST_F(PixelVarianceTest, colour)
{
    Random random(5);
    ZImage<ZC24> image(67, 30);
    fill(image, random);
    double sums[3] = {}, products[3][3] = {};
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 67; ++x) {
            const ZC24 pixel = image.GetPixel(x, y);
            const double c[3] = {double(pixel.c0), double(pixel.c1), double(pixel.c2)};
            for (int i = 0; i < 3; ++i) {
                sums[i] += c[i];
                for (int j = 0; j < 3; ++j)
                    products[i][j] += c[i] * c[j];
            }
        }
    const double pixels = 67 * 30;
    const auto covariance = [&](int i, int j) { return products[i][j] / pixels - sums[i] / pixels * sums[j] / pixels; };
    const auto correlation = [&](int i, int j) {
        return covariance(i, j) / std::sqrt(covariance(i, i) * covariance(j, j));
    };
    withBothWorkers([&] {
        float var[3], cov21 = 0, cov10 = 0, cov02 = 0, average[3];
        ImgPixelVariance(&image, var[2], var[1], var[0], cov21, cov10, cov02, average[2], average[1], average[0]);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(average[i], sums[i] / pixels, 1e-4);
            EXPECT_NEAR(var[i], covariance(i, i), 0.01);
        }
        EXPECT_NEAR(cov21, covariance(2, 1), 0.01);
        EXPECT_NEAR(cov10, covariance(1, 0), 0.01);
        EXPECT_NEAR(cov02, covariance(0, 2), 0.01);
        ImgPixelStdDev(&image, var[2], var[1], var[0], cov21, cov10, cov02, average[2], average[1], average[0]);
        EXPECT_NEAR(var[1], std::sqrt(covariance(1, 1)), 1e-3);
        EXPECT_NEAR(cov21, correlation(2, 1), 1e-5);
        EXPECT_NEAR(cov10, correlation(1, 0), 1e-5);
        EXPECT_NEAR(cov02, correlation(0, 2), 1e-5);
        EXPECT_EQ(ZGetTraceCount(), 0);  // unlike the grey form
    });
}

TEST_F(PixelVarianceTest, failures_nest)
{
    ZROI<ZBW8> grey;
    ZROI<ZC24> colour;
    float a = 5, b = 5;
    EXPECT_EQ(ImgPixelStdDev(&grey, a, b), 1400);
    EXPECT_FAILURE(1400, "ImgPixelVariance (BW8)", "ImgPixelStdDev");
    ImgPixelStdDev(&colour, a, a, a, a, a, a, b, b, b);
    EXPECT_FAILURE(1400, "ImgPixelVariance (C24)", "ImgPixelStdDev");
    EXPECT_EQ(a, 5);
    int area = 5;
    EXPECT_EQ(ImgArea(&grey, 1, area), 1400);
    EXPECT_FAILURE(1400, "ImgPixelCount", "ImgArea");
    EXPECT_EQ(ImgAreaDoubleThreshold(&grey, 1, 2, area), 1400);
    EXPECT_FAILURE(1400, "ImgPixelCount", "ImgAreaDoubleThreshold");
    EXPECT_EQ(area, 5);
}

}  // namespace
