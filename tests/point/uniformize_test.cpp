#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/point.h"

namespace {

class UniformizeTest : public OperationTest {};

int clip(int value) { return std::clamp(value, 0, 255); }

// Every pixel against every reference, so that each quotient of bytes is met.
TEST_F(UniformizeTest, light_background)
{
    ZImage<ZBW8> src(256, 256), reference(256, 256), dst(256, 256);
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x) {
            src.SetPixel(static_cast<ZBW8>(x), x, y);
            reference.SetPixel(static_cast<ZBW8>(y), x, y);
        }
    withBothWorkers([&] {
        for (const int level : {0, 1, 200, 255}) {
            ImgUniformize(&src, static_cast<ZBW8>(level), &reference, &dst);
            for (int y = 0; y < 256; ++y)
                for (int x = 0; x < 256; ++x)
                    ASSERT_EQ(dst.GetPixel(x, y), y == 0 ? 255 : clip(x * level / y)) << x << " over " << y;
        }
    });
    ImgUniformize(&src, 200, &reference, &reference);  // in place of the reference
    EXPECT_EQ(reference.GetPixel(100, 100), 200);
}

TEST_F(UniformizeTest, light_and_dark_background)
{
    Random random(6);
    ZImage<ZBW8> src(101, 40), light(101, 40), dark(101, 40), dst(101, 40);
    for (ZImage<ZBW8>* image : {&src, &light, &dark})
        fill(*image, random);
    withBothWorkers([&] {
        for (const auto& [lightLevel, darkLevel] : {std::pair{200, 20}, {20, 200}, {255, 0}, {7, 7}}) {
            ImgUniformize(&src, static_cast<ZBW8>(lightLevel), &light, static_cast<ZBW8>(darkLevel), &dark, &dst);
            for (int y = 0; y < 40; ++y)
                for (int x = 0; x < 101; ++x) {
                    const int black = dark.GetPixel(x, y), divisor = light.GetPixel(x, y) - black;
                    const int product = (src.GetPixel(x, y) - black) * (lightLevel - darkLevel);
                    ASSERT_EQ(dst.GetPixel(x, y), divisor == 0 ? darkLevel : clip(product / divisor + darkLevel))
                        << x << ',' << y;
                }
        }
    });
}

TEST_F(UniformizeTest, regions)
{
    ZImage<ZBW8> image(8, 8), small(7, 8);
    ZROI<ZBW8> outside(&image, 1, 0, 8, 8);
    ImgUniformize(&image, 1, &small, &image);
    EXPECT_FAILURE(1402, "ImgUniformize (light background)");
    ImgUniformize(&image, 1, &outside, &small);
    EXPECT_FAILURE(1401, "ImgUniformize (light background)");
    ImgUniformize(&image, 1, &image, 0, &small, &image);
    EXPECT_FAILURE(1402, "ImgUniformize (light/dark background)");
}

}  // namespace
