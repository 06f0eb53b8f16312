#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"

#include <cmath>

namespace {

class PixelStatTest : public OperationTest {};

TEST_F(PixelStatTest, extremes_and_mean)
{
    ZImage<ZBW8> image;
    draw(image, "9123 4561");
    ZROI<ZBW8> region(&image, 1, 0, 3, 2);
    withBothWorkers([&] {
        unsigned char min = 0, max = 0;
        float average = 0;
        EXPECT_EQ(ImgPixelMin(&region, min), 0);
        EXPECT_EQ(ImgPixelMax(&region, max), 0);
        EXPECT_EQ(min, 1);
        EXPECT_EQ(max, 6);
        EXPECT_EQ(ImgPixelAverage(&region, average), 0);
        EXPECT_EQ(average, 3);
        min = max = 77;
        EXPECT_EQ(ImgPixelStat(&image, min, max, average), 0);
        EXPECT_EQ(min, 1);
        EXPECT_EQ(max, 9);
        EXPECT_EQ(average, 3.875F);
    });
}

TEST_F(PixelStatTest, regions_without_pixels)
{
    ZImage<ZBW8> image;
    draw(image, "12 34");
    struct {
        int x, y, width, height;
        int first;  // the pixel at (0, 0)
    } const cases[] = {{1, 1, 0, 1, 4}, {1, 0, 1, 0, 2}, {0, 2, 2, 0, 0}};
    for (const auto& c : cases) {
        ZROI<ZBW8> region(&image, c.x, c.y, c.width, c.height);
        withBothWorkers([&] {
            unsigned char min = 1, max = 1;
            float average = 0;
            EXPECT_EQ(ImgPixelMin(&region, min), 0);
            EXPECT_EQ(ImgPixelMax(&region, max), 0);
            EXPECT_EQ(min, 255);
            EXPECT_EQ(max, 0);
            EXPECT_EQ(ImgPixelAverage(&region, average), 0);
            EXPECT_TRUE(std::isnan(average));
            EXPECT_EQ(ImgPixelStat(&region, min, max, average), 0);
            EXPECT_EQ(min, c.first);
            EXPECT_EQ(max, c.first);
            EXPECT_TRUE(std::isnan(average));
        });
    }
}

// A sum of 32 bits holds 2^32 / 255 white pixels; the mean of the row means has no such limit.
TEST_F(PixelStatTest, the_sum_of_the_mean_wraps)
{
    ZImage<ZBW8> image(4200, 4100);
    for (int y = 0; y < 4100; ++y)
        std::memset(image.GetPixelPtr(0, y), 255, 4200);
    const double pixels = 4200.0 * 4100.0;
    withBothWorkers([&] {
        float average = 0;
        unsigned char min = 0, max = 0;
        ImgPixelAverage(&image, average);
        EXPECT_EQ(average, static_cast<float>((255.0 * pixels - 4294967296.0) / pixels));
        ImgPixelStat(&image, min, max, average);
        EXPECT_EQ(average, 255);
    });
}

TEST_F(PixelStatTest, colour_means_come_in_the_order_of_the_components)
{
    ZImage<ZC24> image(2, 1);
    image.SetPixel({10, 20, 30}, 0, 0);
    image.SetPixel({20, 40, 65}, 1, 0);
    withBothWorkers([&] {
        float average2 = 0, average1 = 0, average0 = 0;
        ImgPixelAverage(&image, average2, average1, average0);
        EXPECT_EQ(average2, 47.5F);
        EXPECT_EQ(average1, 30);
        EXPECT_EQ(average0, 15);
    });
}

TEST_F(PixelStatTest, counting_a_range)
{
    ZImage<ZBW8> image(4, 1);
    int i = 0;
    for (const int pixel : {128, 129, 75, 120})
        image.SetPixel(static_cast<ZBW8>(pixel), i++, 0);
    withBothWorkers([&] {
        int area = 0, below = 0, between = 0, above = 0;
        EXPECT_EQ(ImgArea(&image, 128, area), 0);
        EXPECT_EQ(area, 1);
        EXPECT_EQ(ImgAreaDoubleThreshold(&image, 128, 128, area), 0);
        EXPECT_EQ(area, 1);
        EXPECT_EQ(ImgPixelCount(&image, 100, 50, below, between, above), 0);  // 75 lies between the two
        EXPECT_EQ(below, 1);
        EXPECT_EQ(between, 0);
        EXPECT_EQ(above, 3);
    });
}

ZBW8* firstCounted;

TEST_F(PixelStatTest, a_predicate_meets_every_pixel_of_the_region_once)
{
    ZImage<ZBW8> image;
    draw(image, "12345 54321");
    ZROI<ZBW8> region(&image, 1, 0, 3, 2);
    firstCounted = nullptr;
    EXPECT_EQ(ImgCount(&region,
                       [](ZBW8& pixel) {
                           firstCounted = firstCounted ? firstCounted : &pixel;
                           return pixel > 2 ? -1 : 0;
                       }),
              4U);
    EXPECT_EQ(firstCounted, region.GetPixelPtr(0, 0));

    ZImage<ZC24> colour(3, 3);
    colour.SetPixel({1, 2, 3}, 2, 1);
    EXPECT_EQ(ImgCount(&colour, [](ZC24& pixel) { return pixel.c1 == 2 ? 1 : 0; }), 1U);
    EXPECT_EQ(ImgCount(&image, [](ZBW8&) -> int { return ZSetError(Z_ERROR_BAD_MODE); }), 0U);
    EXPECT_FAILURE(1009, "ImgCount (BW8)");
    EXPECT_EQ(ImgCount(&image, nullptr), 0U);
    EXPECT_FAILURE(1012, "ImgCount (BW8)");
}

TEST_F(PixelStatTest, comparing_counts_positions)
{
    ZImage<ZBW8> first(70, 3), second(70, 3);
    ZImage<ZC24> colour(70, 3), other(70, 3);
    for (const int x : {0, 31, 69}) {
        second.SetPixel(1, x, 1);
        other.SetPixel({static_cast<unsigned char>(x == 0), static_cast<unsigned char>(x == 31),
                        static_cast<unsigned char>(x >= 31)},
                       x, 2);
    }
    withBothWorkers([&] {
        EXPECT_EQ(ImgPixelCompare(&first, &second), 3U);
        EXPECT_EQ(ImgPixelCompare(&colour, &other), 3U);
        EXPECT_EQ(ImgPixelCompare(&first, &first), 0U);
    });
    ZImage<ZBW8> narrow(69, 3), empty;
    EXPECT_EQ(ImgPixelCompare(&first, &narrow), 0U);
    EXPECT_FAILURE(1402, "ImgPixelCompare (BW8)");
    EXPECT_EQ(ImgPixelCompare(&first, &empty), 0U);  // the sizes are looked at first
    EXPECT_FAILURE(1402, "ImgPixelCompare (BW8)");
    EXPECT_EQ(ImgPixelCompare(&empty, &empty), 0U);
    EXPECT_FAILURE(1400, "ImgPixelCompare (BW8)");
}

}  // namespace
