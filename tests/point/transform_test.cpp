#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/point.h"

#include <cmath>

namespace {

class TransformTest : public OperationTest {};

std::vector<int> calls;

unsigned char recorded(unsigned char level)
{
    calls.push_back(level);
    return static_cast<unsigned char>(255 - level);
}

unsigned char complaining(unsigned char level)
{
    if (level == 7)
        ZSetError(Z_ERROR_BAD_MODE);
    return 1;
}

TEST_F(TransformTest, the_function_is_called_in_order)
{
    ZImage<ZBW8> src, dst(3, 2);
    draw(src, "312 754");
    calls.clear();
    ImgTransform(&src, &dst, recorded, 0);
    EXPECT_EQ(calls, (std::vector<int>{3, 1, 2, 7, 5, 4}));
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{252, 254, 253, 248, 250, 251}));
    calls.clear();
    ImgTransform(&src, &src, recorded, -1);
    ASSERT_EQ(calls.size(), 256U);
    for (int level = 0; level < 256; ++level)
        EXPECT_EQ(calls[static_cast<std::size_t>(level)], level);
    EXPECT_EQ(bytesOf(src), bytesOf(dst));

    draw(src, "770 123");
    ImgTransform(&src, &dst, complaining, 0);
    EXPECT_FAILURE(1009, "ImgTransform");
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{1, 1, 1, 1, 1, 1}));
    ImgTransform(&src, &dst, nullptr, 0);
    EXPECT_FAILURE(1013, "ImgTransform");
}

TEST_F(TransformTest, normalizing_moves_mean_and_deviation)
{
    ZImage<ZBW8> src, dst(4, 1);
    draw(src, "1155");  // mean 3, deviation 2
    withBothWorkers([&] {
        EXPECT_EQ(ImgNormalize(&src, &dst, 100, 20), 0);
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{80, 80, 120, 120}));
        ImgNormalize(&src, &dst, 3, 2);
        EXPECT_EQ(bytesOf(dst), bytesOf(src));
        ImgNormalize(&src, &dst, 0, 400);
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{0, 0, 255, 255}));
    });
    ZClearError();  // the trail that measuring leaves
}

TEST_F(TransformTest, without_deviation_what_is_no_number_is_black)
{
    ZImage<ZBW8> src, dst(2, 1);
    draw(src, "55");
    ImgNormalize(&src, &dst, 100, 20);  // infinite times 5 minus infinite times 5
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{0, 0}));
    ImgNormalize(&src, &dst, NAN, 20);
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{0, 0}));
    ZClearError();

    ZImage<ZBW8> empty, alsoEmpty, small(1, 1);
    EXPECT_EQ(ImgNormalize(&src, &small, 1, 1), 1402);
    EXPECT_FAILURE(1402, "ImgNormalize");
    EXPECT_EQ(ImgNormalize(&empty, &alsoEmpty, 1, 1), 1400);
    EXPECT_FAILURE(1400, "ImgPixelVariance (BW8)", "ImgPixelStdDev", "ImgNormalize");
    ZROI<ZBW8> outside(&dst, 1, 0, 2, 1);
    EXPECT_EQ(ImgNormalize(&src, &outside, 1, 1), 1401);
    EXPECT_FAILURE(1401, "ImgLut", "ImgNormalize");
}

}  // namespace
