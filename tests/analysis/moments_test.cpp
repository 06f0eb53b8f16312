#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"

namespace {

class MomentsTest : public OperationTest {};

struct Moments {
    float m00 = -1, m10 = -1, m01 = -1, m20 = -1, m11 = -1, m02 = -1;
    bool operator==(const Moments&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Moments& m)
{
    return out << m.m00 << ' ' << m.m10 << ' ' << m.m01 << ' ' << m.m20 << ' ' << m.m11 << ' ' << m.m02;
}

Moments binary(ZROI<ZBW8>& region, unsigned threshold)
{
    Moments m, first;
    ImgBinaryMoments(&region, threshold, m.m00, m.m10, m.m01, m.m20, m.m11, m.m02);
    ImgBinaryMoments(&region, threshold, first.m00, first.m10, first.m01);
    EXPECT_EQ(first.m00, m.m00);
    EXPECT_EQ(first.m10, m.m10);
    EXPECT_EQ(first.m01, m.m01);
    return m;
}

Moments weighed(ZROI<ZBW8>& region)
{
    Moments m, first;
    ImgWeighedMoments(&region, m.m00, m.m10, m.m01, m.m20, m.m11, m.m02);
    ImgWeighedMoments(&region, first.m00, first.m10, first.m01);
    EXPECT_EQ(first.m00, m.m00);
    EXPECT_EQ(first.m10, m.m10);
    EXPECT_EQ(first.m01, m.m01);
    return m;
}

TEST_F(MomentsTest, worked_by_hand)
{
    ZImage<ZBW8> image;
    draw(image, "99999 90020 90301");
    ZROI<ZBW8> region(&image, 1, 1, 4, 2);  // 0020 / 0301
    withBothWorkers([&] {
        EXPECT_EQ(binary(region, 2), (Moments{2, 3, 1, 5, 1, 1}));
        EXPECT_EQ(binary(region, 0), (Moments{8, 12, 4, 28, 6, 4}));
        EXPECT_EQ(binary(region, 256), (Moments{0, 0, 0, 0, 0, 0}));
        EXPECT_EQ(weighed(region), (Moments{6, 10, 4, 20, 6, 4}));
        float x = 0, y = 0;
        EXPECT_EQ(ImgGravityCenter(&region, 1, x, y), 0);
        EXPECT_FLOAT_EQ(x, 2);
        EXPECT_FLOAT_EQ(y, 2.0F / 3);
        EXPECT_EQ(ImgGravityCenter(&region, 4, x, y), 0);
        EXPECT_EQ(x, 0);
        EXPECT_EQ(y, 0);
    });
    ZClearError();
}

// Rows wider than 2048 columns have sums of squares beyond 32 bits when they are white.
TEST_F(MomentsTest, the_sums_of_a_row_wrap)
{
    const int width = 2700;
    ZImage<ZBW8> image(width, 2);
    std::memset(image.GetPixelPtr(0, 0), 255, width);
    std::memset(image.GetPixelPtr(0, 1), 255, width);
    std::uint32_t squares = 0, differences = 0;
    for (std::uint32_t x = 0; x < width; ++x) {
        squares += 255 * x * x;
        differences += 255 * (x - 1) * (x - 1);
    }
    const auto m20 = static_cast<float>(2.0 * static_cast<float>(squares));
    const auto d = static_cast<float>(static_cast<double>(static_cast<float>(squares)) + differences);
    const float m02 = 255.0F * width;
    withBothWorkers([&] {
        const Moments m = weighed(image);
        EXPECT_EQ(m.m20, m20);
        EXPECT_EQ(m.m02, m02);
        EXPECT_EQ(m.m11, static_cast<float>((static_cast<double>(m20) + m02 - d) * 0.5));
    });
    ZClearError();
}

TEST_F(MomentsTest, a_pending_error_does_not_stop_them_and_their_names_are_always_recorded)
{
    ZImage<ZBW8> image;
    draw(image, "11");
    ZSetError(Z_ERROR_BAD_MODE);
    EXPECT_EQ(binary(image, 1), (Moments{2, 1, 0, 1, 0, 0}));
    EXPECT_EQ(weighed(image), (Moments{2, 1, 0, 1, 0, 0}));
    EXPECT_FAILURE(1009, "ImgBinaryMoments (second order)", "ImgBinaryMoments (first order)",
                   "ImgWeighedMoments (second order)", "ImgWeighedMoments (first order)");
    ZROI<ZBW8> nowhere;
    EXPECT_EQ(binary(nowhere, 1), (Moments{0, 0, 0, 0, 0, 0}));
    EXPECT_FAILURE(1400, "ImgBinaryMoments (second order)", "ImgBinaryMoments (first order)");
    float m = 5;
    ImgWeighedMoments(nullptr, m, m, m);
    EXPECT_FAILURE(1400, "ImgWeighedMoments (first order)");
    EXPECT_EQ(m, 0);
}

}  // namespace
