#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"

#include <cmath>

namespace {

class NoiseTest : public OperationTest {
protected:
    NoiseTest()
    {
        draw(src_, "345 678");  // squares: 199
        draw(ref_, "335 688");  // differences 1 and -1: 2
        wide_.SetSize(3, 2);
        for (int y = 0; y < 2; ++y)
            for (int x = 0; x < 3; ++x)
                wide_.SetPixel(static_cast<ZBW16>(4 * ref_.GetPixel(x, y) + x), x, y);
    }

    ZImage<ZBW8> src_, ref_;
    ZImage<ZBW16> wide_;
};

float decibels(double ratio) { return static_cast<float>(10 * std::log10(ratio)); }

TEST_F(NoiseTest, ratio_and_root_mean_square)
{
    withBothWorkers([&] {
        EXPECT_EQ(ImgSignalNoiseRatio(&src_, &ref_, IMG_REFERENCE_NOISELESS), decibels(199 / 2.0));
        EXPECT_FLOAT_EQ(ImgSignalNoiseRatio(&src_, &ref_, IMG_REFERENCE_INDEPENDENT_NOISE), decibels(199.0));
        EXPECT_EQ(ImgSignalNoiseRatio(&src_, &ref_, static_cast<IMG_REFERENCE_NOISE>(7)), decibels(199 / 2.0));
        EXPECT_FLOAT_EQ(ImgRmsNoise(&src_, &ref_, IMG_REFERENCE_NOISELESS), std::sqrt(2.0F / 6));
        EXPECT_FLOAT_EQ(ImgRmsNoise(&src_, &ref_, IMG_REFERENCE_INDEPENDENT_NOISE), std::sqrt(1.0F / 6));

        EXPECT_EQ(ImgSignalNoiseRatio(&src_, &wide_, 4, IMG_REFERENCE_NOISELESS), decibels(199 / 2.0));
        EXPECT_FLOAT_EQ(ImgSignalNoiseRatio(&src_, &wide_, 4, IMG_REFERENCE_INDEPENDENT_NOISE),
                        decibels(1.25 * 199 / 2));
        EXPECT_FLOAT_EQ(ImgSignalNoiseRatio(&src_, &wide_, 4, IMG_REFERENCE_INCLUDES_SOURCE), decibels(0.75 * 199 / 2));
        EXPECT_FLOAT_EQ(ImgRmsNoise(&src_, &wide_, 4, IMG_REFERENCE_INCLUDES_SOURCE), std::sqrt(2 / 0.75F / 6));
        EXPECT_EQ(ImgSignalNoiseRatio(&src_, &wide_, 1, IMG_REFERENCE_INCLUDES_SOURCE), -INFINITY);
        EXPECT_EQ(ImgRmsNoise(&src_, &wide_, 1, IMG_REFERENCE_INCLUDES_SOURCE), INFINITY);
    });
}

TEST_F(NoiseTest, without_noise_both_are_zero)
{
    EXPECT_EQ(ImgSignalNoiseRatio(&src_, &src_, IMG_REFERENCE_NOISELESS), 0);
    EXPECT_EQ(ImgSignalNoiseRatio(&src_, &src_, IMG_REFERENCE_INCLUDES_SOURCE), 0);
    EXPECT_EQ(ImgRmsNoise(&src_, &src_, IMG_REFERENCE_INDEPENDENT_NOISE), 0);
}

TEST_F(NoiseTest, the_count_is_checked_before_the_regions)
{
    for (const unsigned count : {0U, 3U, 257U, 512U, 0x80000000U}) {
        EXPECT_EQ(ImgSignalNoiseRatio(nullptr, &wide_, count, IMG_REFERENCE_NOISELESS), 0);
        EXPECT_FAILURE(1013, "ImgSignalNoiseRatio (BW8 source and BW16 reference)");
        EXPECT_EQ(ImgRmsNoise(&src_, nullptr, count, IMG_REFERENCE_NOISELESS), 0);
        EXPECT_FAILURE(1013, "ImgRmsNoise (BW8 source and BW16 reference)");
    }
    EXPECT_EQ(ImgSignalNoiseRatio(&src_, &ref_, IMG_REFERENCE_INCLUDES_SOURCE), 0);
    EXPECT_FAILURE(1013, "ImgSignalNoiseRatio (BW8 source and BW8 reference)");
    EXPECT_EQ(ImgRmsNoise(&src_, &src_, IMG_REFERENCE_INCLUDES_SOURCE), 0);
    EXPECT_FAILURE(1013, "ImgRmsNoise (BW8 source and BW8 reference)");
    ZImage<ZBW8> small(2, 2);
    EXPECT_EQ(ImgRmsNoise(&small, &ref_, IMG_REFERENCE_INCLUDES_SOURCE), 0);
    EXPECT_FAILURE(1402, "ImgRmsNoise (BW8 source and BW8 reference)");
}

}  // namespace
