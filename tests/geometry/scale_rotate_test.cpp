#include "support/colours.h"
#include "support/errors.h"
#include "zkit/core/angle.h"
#include "zkit/img/geometry.h"

#include <cmath>
#include <limits>

namespace {

using Bytes = std::vector<std::uint8_t>;

class ScaleRotateTest : public OperationTest {};

TEST_F(ScaleRotateTest, shifts_by_whole_pixels_and_parts_of_them)
{
    ZImage<ZBW8> src, dst(4, 3);
    draw(src, "123 456");
    withBothWorkers([&] {
        EXPECT_EQ(ImgScaleRotate(&src, 5, 5, 5, 5, 1, 1, 0, &dst, 0), 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{1, 2, 3, 0, 4, 5, 6, 0, 0, 0, 0, 0}));
        ImgScaleRotate(&src, 0, 0, 0, 0, 1, 1, 0, &dst, 8);  // needs a right and a lower neighbour
        EXPECT_EQ(bytesOf(dst), (Bytes{1, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
        ImgRegister(&src, &dst, 0, 0, 0.5F, 1, 0);  // -0.5 is in pixel -1
        EXPECT_EQ(bytesOf(dst), (Bytes{0, 0, 0, 0, 0, 1, 2, 3, 0, 4, 5, 6}));
        ImgRegister(&src, &dst, 2, 1, 1, 0, 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
        ImgRegister(&src, &dst, -40000, 0, 0, 0, 0);
        EXPECT_EQ(bytesOf(dst), Bytes(12, 0));
    });
}

TEST_F(ScaleRotateTest, mixes_with_4_and_8_bits)
{
    ZImage<ZBW8> src(2, 2), dst(1, 1);
    src.SetPixel(100, 1, 0);
    src.SetPixel(200, 0, 1);
    src.SetPixel(255, 1, 1);
    const auto mixed = [&](float x, float y, int bits) {
        ImgRegister(&src, &dst, x, y, 0, 0, bits);
        return int(dst.GetPixel(0, 0));
    };
    withBothWorkers([&] {
        EXPECT_EQ(mixed(0.3F, 0, 8), 100 * 76 / 256);
        EXPECT_EQ(mixed(0.3F, 0, 4), 100 * 4 / 16);
        EXPECT_EQ(mixed(0, 0.75F, 8), 150);
        EXPECT_EQ(mixed(0.5F, 0.75F, 8), (100 + 3 * (200 + 255)) / 8);
        EXPECT_EQ(mixed(0.5F, 0.75F, 4), (100 + 3 * (200 + 255)) / 8);
    });
    std::memset(src.GetPixelPtr(0, 0), 255, 2);
    std::memset(src.GetPixelPtr(0, 1), 255, 2);
    withBothWorkers([&] { EXPECT_EQ(mixed(0.9999F, 0.3333F, 8), 255); });
}

TEST_F(ScaleRotateTest, turns_counter_clockwise_about_the_pivot)
{
    ZImage<ZBW8> src, dst(2, 3);
    draw(src, "123 456");
    withBothWorkers([&] {
        ImgScaleRotate(&src, 0, 0, 0, 2, 1, 1, 90, &dst, 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{3, 6, 2, 5, 1, 4}));
        ImgScaleRotate(&src, 2, 0, 0, 2, -1, 1, 90, &dst, 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{1, 4, 2, 5, 3, 6}));
    });
    ZSetAngleUnit(Z_ANGLE_RADIANS);
    ImgScaleRotate(&src, 0, 0, 0, 2, 1, 1, 1.5707964F, &dst, 0);
    ZSetAngleUnit(Z_ANGLE_DEGREES);
    EXPECT_EQ(bytesOf(dst), (Bytes{3, 6, 2, 5, 1, 4}));
    ZImage<ZBW8> large(6, 4);
    ImgScaleRotate(&src, 0, 0, 0, 0, 2, 2, 0, &large, 0);
    EXPECT_EQ(bytesOf(large), (Bytes{1, 1, 2, 2, 3, 3, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 4, 4, 5, 5, 6, 6}));
}

// Destinations of several tiles, walked by adding the steps.
TEST_F(ScaleRotateTest, large_destinations_are_walked_in_exact_steps)
{
    Random random(2);
    ZImage<ZBW8> src(300, 200), dst(2100, 70);
    fill(src, random);
    for (const double degrees : {10.0, 80.0, -170.0}) {
        const double radians = degrees * 3.14159265358979 / 180;
        const auto s = static_cast<float>(std::sin(static_cast<double>(ZToRadians(static_cast<float>(degrees)))));
        const auto c = static_cast<float>(std::cos(static_cast<double>(ZToRadians(static_cast<float>(degrees)))));
        EXPECT_NEAR(s, std::sin(radians), 1e-6);
        const float a11 = 8 * c, a12 = 8 * s, a21 = -(8 * s), a22 = 8 * c, det = a22 * a11 - a21 * a12;
        const float i11 = a22 / det, i12 = -a12 / det, i21 = -a21 / det, i22 = a11 / det;
        const float b1 = 1000 - (a11 * 150 + a12 * 100), b2 = 30 - (a21 * 150 + a22 * 100);
        const auto fixed = [](float value) { return static_cast<int>(value * 65536.0); };
        ImgScaleRotate(&src, 150, 100, 1000, 30, 8, 8, static_cast<float>(degrees), &dst, 0);
        int rowX = fixed(-(i11 * b1 + i12 * b2)), rowY = fixed(-(i21 * b1 + i22 * b2)), wrong = 0;
        for (int j = 0; j < 70; ++j, rowX += fixed(i12), rowY += fixed(i22))
            for (int i = 0, x = rowX, y = rowY; i < 2100; ++i, x += fixed(i11), y += fixed(i21))
                wrong += dst.GetPixel(i, j) != src.GetPixel(x >> 16, y >> 16);
        EXPECT_EQ(wrong, 0) << degrees;
    }
}

TEST_F(ScaleRotateTest, registers_two_points)
{
    ZImage<ZBW8> src(40, 40), dst(40, 40);
    src.SetPixel(9, 10, 10);
    src.SetPixel(7, 20, 10);
    const auto pixels = [&](int x0, int y0, int x1, int y1) {
        return std::pair(int(dst.GetPixel(x0, y0)), int(dst.GetPixel(x1, y1)));
    };
    ImgRegister(&src, &dst, 10, 10, 20, 10, 5, 6, 15, 6, 0, 0);
    EXPECT_EQ(pixels(5, 6, 15, 6), std::pair(9, 7));
    ImgRegister(&src, &dst, 9.75F, 9.75F, 19.75F, 9.75F, 30, 5, 30, 15, 0, 0);  // a quarter turn
    EXPECT_EQ(pixels(29, 6, 29, 16), std::pair(9, 7));
    ImgRegister(&src, &dst, 10.5F, 10.5F, 20.5F, 10.5F, 2, 3, 32, 3, 0, 1);  // three times as large
    EXPECT_EQ(pixels(2, 3, 32, 3), std::pair(9, 7));
    EXPECT_EQ(pixels(3, 4, 4, 3), std::pair(9, 0));
    ImgRegister(&src, &dst, 10.5F, 10.5F, 20.5F, 10.5F, 2, 3, 32, 3, 0, 0);
    EXPECT_EQ(pixels(2, 3, 12, 3), std::pair(9, 7));
    ImgRegister(&src, &dst, 10, 10, 10, 10, 2, 3, 32, 3, 0, 1);
    EXPECT_FAILURE(1411, "ImgScaleRotate");
}

TEST_F(ScaleRotateTest, colour_is_grey_three_times)
{
    const auto turn = [](auto src, auto dst, auto...) { ImgScaleRotate(src, 30, 25, 35, 20, 1.1F, 0.9F, 25, dst, 8); };
    const auto shift = [](auto src, auto dst, auto...) { ImgRegister(src, dst, 1.5F, 2, 0, 0, 8); };
    expectByteByByte({60, 50}, {70, 40}, turn, turn);
    expectByteByByte({60, 50}, {70, 40}, shift, shift);
}

TEST_F(ScaleRotateTest, failures_in_order)
{
    ZImage<ZBW8> image(4, 4), empty;
    ZImage<ZC24> colour(4, 4), noColour;
    ZROI<ZBW8> outside(&image, 1, 1, 4, 4);
    image.SetPixel(5, 3, 3);
    const auto turn = [](auto src, auto dst, float scale, int bits) {
        ImgScaleRotate(src, 0, 0, 0, 0, scale, 1, 0, dst, bits);
    };
    turn(&image, &image, 0, 1);
    EXPECT_FAILURE(1411, "ImgScaleRotate");
    turn(&image, &image, 1, 1);
    EXPECT_FAILURE(1007, "ImgScaleRotate");
    turn(&image, &outside, 0, 1);
    EXPECT_FAILURE(1401, "ImgScaleRotate");
    turn(&outside, &empty, 0, 1);  // nothing to write is no error
    EXPECT_FAILURE(0);
    turn(&empty, &empty, 1, 0);
    EXPECT_FAILURE(1400, "ImgScaleRotate");
    turn(&image, static_cast<ZROI<ZBW8>*>(nullptr), 0, 1);
    EXPECT_FAILURE(1400, "ImgScaleRotate");
    EXPECT_EQ(image.GetPixel(3, 3), 5);
    turn(&colour, &colour, 0, 1);
    EXPECT_FAILURE(1411, "ImgScaleRotate", "ImgScaleRotate (C24)");
    turn(&colour, &noColour, 0, 1);
    EXPECT_FAILURE(1400, "ImgScaleRotate (C24)");
    ZROI<ZC24> none(&colour, 4, 0, 0, 4);
    turn(&colour, &none, 1, 0);
    colour.SetPixel({1, 2, 3}, 2, 2);
    turn(&none, &colour, 1, 0);  // nothing to fetch
    EXPECT_EQ(bytesOf(colour), Bytes(48, 0));
}

}  // namespace
