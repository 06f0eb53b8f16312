#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/geometry.h"

namespace {

class ShrinkTest : public OperationTest {};

TEST_F(ShrinkTest, blocks_are_averaged_and_truncated)
{
    ZImage<ZBW8> src, dst(3, 1);
    draw(src, "0012340567");  // columns 0 to 2, 3 to 5, 6 to 9
    withBothWorkers([&] {
        EXPECT_EQ(ImgShrink(&src, &dst), 0);
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{0, 3, 4}));
    });
    draw(src, "11 11 11 92 92");
    dst.SetSize(2, 2);
    ImgShrink(&src, &dst);
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{1, 1, 6, 1}));
    ZImage<ZC24> colour(2, 1), one(1, 1);
    colour.SetPixel({10, 20, 255}, 0, 0);
    colour.SetPixel({11, 40, 255}, 1, 0);
    ImgShrink(&colour, &one);
    EXPECT_EQ(bytesOf(one), (std::vector<std::uint8_t>{10, 30, 255}));
}

TEST_F(ShrinkTest, large_blocks_are_exact)
{
    ZImage<ZBW8> src(3000, 2000), dst(2, 1);
    for (int y = 0; y < 2000; ++y)
        std::memset(src.GetPixelPtr(0, y), 255, 3000);
    src.SetPixel(254, 2999, 1999);
    withBothWorkers([&] {
        ImgShrink(&src, &dst);
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{255, 254}));
    });
}

TEST_F(ShrinkTest, unusable_regions)
{
    ZImage<ZBW8> src(4, 4), wide(5, 4), high(4, 5), empty;
    ZROI<ZBW8> nothing(&src, 0, 0, 0, 4), outside(&src, 2, 2, 3, 3);
    ImgShrink(&src, &wide);
    EXPECT_FAILURE(1403, "ImgShrink");
    ImgShrink(&src, &high);
    EXPECT_FAILURE(1403, "ImgShrink");
    ImgShrink(&outside, &empty);
    EXPECT_FAILURE(1400, "ImgShrink");
    ImgShrink(&src, nullptr);
    EXPECT_FAILURE(1400, "ImgShrink");
    ImgShrink(&src, &outside);
    EXPECT_FAILURE(1401, "ImgShrink");
    EXPECT_EQ(ImgShrink(&src, &nothing), 0);
    ImgShrink(&nothing, &src);
    EXPECT_FAILURE(1403, "ImgShrink");
    ZImage<ZC24> colour(4, 4), larger(4, 5);
    ImgShrink(&colour, &larger);
    EXPECT_FAILURE(1403, "ImgShrink", "ImgShrink (C24)");
}

}  // namespace
