#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/temporal.h"

#include <climits>

namespace {

using Bytes = std::vector<std::uint8_t>;

void setAll(ZROI<ZBW8>& image, int level)
{
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            image.SetPixel(static_cast<ZBW8>(level), x, y);
}

class MovingAverageTest : public OperationTest {
protected:
    // Gives the object one image after the other and returns a pixel of each mean.
    std::vector<int> means(ZMovingAverage& average, const std::vector<int>& levels)
    {
        unsigned int period = 0;
        int width = 0, height = 0, holdsSource = 0;
        average.GetSize(period, width, height, holdsSource);
        ZImage<ZBW8> src(width, height), dst(width, height);
        std::vector<int> all;
        for (const int level : levels) {
            if (holdsSource) {
                setAll(*average.GetSrcImage(), level);
                average.Average(&dst);
            } else {
                setAll(src, level);
                average.Average(&src, &dst);
            }
            all.push_back(dst.GetPixel(width - 1, height - 1));
        }
        return all;
    }
};

TEST_F(MovingAverageTest, means_of_the_last_images)
{
    withBothWorkers([&] {
        for (const int holdsSource : {0, 5}) {
            ZMovingAverage average(4, 40, 3, holdsSource);
            EXPECT_EQ(means(average, {8, 16, 16, 16, 16, 16}), (std::vector{8, 10, 12, 14, 16, 16}));
            average.SetSize(3, 7, 2, holdsSource);
            EXPECT_EQ(means(average, {9, 255, 255, 254, 0}), (std::vector{9, 91, 173, 254, 169}));
            average.SetSize(1, 7, 2, holdsSource);
            EXPECT_EQ(means(average, {9, 0, 255}), (std::vector{9, 0, 255}));
            average.SetSize(257, 1, 1, holdsSource);
            EXPECT_EQ(means(average, {255, 255, 254}), (std::vector{255, 255, 254}));
            average.SetSize(300, 1, 1, holdsSource);  // 300 times 255 does not fit: 10709 and 10964 are left of it
            EXPECT_EQ(means(average, {255, 255}), (std::vector{255, 76500 % 65536 / 300}));
            average.SetSize(70000, 1, 1, holdsSource);
            EXPECT_EQ(means(average, {255, 255}), (std::vector{255, 0}));
        }
    });
}

// The definition, image by image, for sequences that go several times round the ring.
TEST_F(MovingAverageTest, any_period_and_both_ways_of_feeding)
{
    Random random(3);
    const int width = 75, height = 3;
    for (const unsigned int period : {1U, 2U, 3U, 5U, 8U, 11U, 16U})
        withBothWorkers([&] {
            ZMovingAverage fed(period, width, height, 0), holding(period, width, height, 1);
            std::vector<std::unique_ptr<ZImage<ZBW8>>> images;
            ZImage<ZBW8> dst(width, height);
            for (std::size_t image = 0; image < 3 * period + 2; ++image) {
                images.push_back(std::make_unique<ZImage<ZBW8>>(width, height));
                fill(*images.back(), random);
                Bytes expected;
                for (int y = 0; y < height; ++y)
                    for (int x = 0; x < width; ++x) {
                        unsigned int sum = 0;
                        for (std::size_t k = 0; k < period; ++k)
                            sum += images[image < k ? 0 : image - k]->GetPixel(x, y);
                        expected.push_back(static_cast<std::uint8_t>(sum / period));
                    }
                copyPixels<ZBW8>(*images.back(), *holding.GetSrcImage());
                holding.Average(&dst);
                EXPECT_EQ(bytesOf(dst), expected) << period << ' ' << image;
                copyPixels<ZBW8>(*images.back(), dst);
                fed.Average(&dst, &dst);
                EXPECT_EQ(bytesOf(dst), expected) << period << ' ' << image << " in place";
            }
        });
}

// An image of the ring that lies in a caller's buffer, over the destination.
TEST_F(MovingAverageTest, the_ring_may_be_the_callers)
{
    withBothWorkers([&] {
        std::vector<std::uint8_t> buffer(300, 100);
        ZMovingAverage average(2, 80, 1, 1);
        ZImage<ZBW8> dst;
        dst.Attach(buffer.data() + 1, 80, 1, 80);
        average.GetSrcImage()->Attach(buffer.data(), 80, 1, 80);
        average.Average(&dst);
        EXPECT_EQ(bytesOf(dst), Bytes(80, 100));
        for (std::size_t i = 0; i < 80; ++i)
            buffer[i] = static_cast<std::uint8_t>(2 * i);
        setAll(*average.GetSrcImage(), 100);
        average.Average(&dst);
        EXPECT_EQ(bytesOf(dst), Bytes(80, 100));
        EXPECT_EQ(buffer[0], 0);

        average.GetSrcImage()->SetPlacement(1, 0, 80, 1);
        average.Average(&dst);
        EXPECT_FAILURE(1401, "ZMovingAverage::Average");
        average.GetSrcImage()->SetSize(81, 1);
        average.Average(&dst);
        EXPECT_FAILURE(1403, "ZMovingAverage::Average");
    });
}

TEST_F(MovingAverageTest, what_cannot_be_averaged)
{
    const Trail averaging{"ZMovingAverage::Average"}, sizing{"ZMovingAverage::SetSize"};
    ZImage<ZBW8> image(4, 4), small(3, 4), empty;
    ZROI<ZBW8> outside(&image, 1, 0, 4, 4), nothing(&image, 0, 0, 0, 0);
    ZMovingAverage average;
    const auto expectEmpty = [&] {
        unsigned int period = 9;
        int width = 9, height = 9, holdsSource = 9;
        average.GetSize(period, width, height, holdsSource);
        EXPECT_EQ(period + static_cast<unsigned>(width + height + holdsSource), 0U);
        average.Average(&image, &image);
        EXPECT_FAILURE(1403, "ZMovingAverage::Average");
        average.Average(&nothing, &nothing);
        average.Average(&image);
        EXPECT_FAILURE(1003, "ZMovingAverage::Average");
    };
    expectEmpty();
    const std::tuple<unsigned int, int, int, short> sizes[] = {{0, 4, 4, 1011},
                                                               {3, -1, 4, 1011},
                                                               {3, 4, INT_MIN, 1012},
                                                               {1, 4, -1, 1012},
                                                               {2, INT_MAX, INT_MAX, 1303},
                                                               {UINT_MAX, 4, 4, 1303},
                                                               {INT_MAX, 4, 4, 1303}};
    for (const auto& [period, width, height, code] : sizes) {
        average.SetSize(2, 4, 4, 1);
        average.SetSize(period, width, height, 0);
        const Failure failure = takeFailure();
        EXPECT_EQ(failure.code, code);
        EXPECT_EQ(failure.trail, sizing);
        expectEmpty();
    }
    average.SetSize(2, 0, 4, 0);
    average.Average(&nothing, &nothing);
    EXPECT_FAILURE(1403, "ZMovingAverage::Average");

    average.SetSize(2, 4, 4, 0);
    average.Average(&image, &image);
    setAll(image, 100);
    const std::tuple<ZROI<ZBW8>*, ZROI<ZBW8>*, short> regions[] = {
        {nullptr, &image, 1400}, {&image, nullptr, 1400},  {&small, &image, 1403},  {&image, &small, 1403},
        {&empty, &image, 1403},  {&outside, &image, 1401}, {&image, &outside, 1401}};
    for (const auto& [src, dst, code] : regions) {
        average.Average(src, dst);
        const Failure failure = takeFailure();
        EXPECT_EQ(failure.code, code);
        EXPECT_EQ(failure.trail, averaging);
    }
    EXPECT_EQ(average.GetSrcImage(), nullptr);
    EXPECT_FAILURE(1003, "ZMovingAverage::GetSrcImage");
    average.Average(&image, &image);
    EXPECT_EQ(image.GetPixel(0, 0), 50) << "failures are no part of the sequence";

    average.SetSize(2, 4, 4, 1);
    average.Average(&image, &image);
    EXPECT_FAILURE(1003, "ZMovingAverage::Average");
    average.Average(nullptr);
    EXPECT_FAILURE(1400, "ZMovingAverage::Average");
    ZSetError(Z_ERROR_BAD_MODE);
    average.SetSize(0, 1, 1, 0);
    EXPECT_EQ(average.GetSrcImage(), nullptr);
    average.Average(&image);
    EXPECT_FAILURE(1009, "ZMovingAverage::SetSize", "ZMovingAverage::GetSrcImage", "ZMovingAverage::Average");
    EXPECT_NE(average.GetSrcImage(), nullptr);
}

}  // namespace
