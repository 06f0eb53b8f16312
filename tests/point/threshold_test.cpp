#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"
#include "zkit/img/point.h"

namespace {

class ThresholdTest : public OperationTest {};

// One row of all grey levels.
struct AllLevels : ZImage<ZBW8> {
    AllLevels() : ZImage<ZBW8>(256, 1)
    {
        for (int level = 0; level < 256; ++level)
            SetPixel(static_cast<ZBW8>(level), level, 0);
    }
};

void fillBits(ZImage<ZBW1>& image, Random& random)
{
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            image.SetPixel({static_cast<unsigned char>(random(0, 1))}, x, y);
}

TEST_F(ThresholdTest, one_threshold)
{
    AllLevels src;
    ZImage<ZBW8> dst(256, 1);
    withBothWorkers([&] {
        for (const unsigned threshold : {0U, 1U, 128U, 255U})
            for (const auto& [low, high] : {std::pair{0, 255}, {200, 3}}) {
                ImgThreshold(&src, &dst, threshold, static_cast<ZBW8>(low), static_cast<ZBW8>(high), 0);
                for (int level = 0; level < 256; ++level)
                    ASSERT_EQ(dst.GetPixel(level, 0), static_cast<unsigned>(level) >= threshold ? high : low);
            }
    });
}

TEST_F(ThresholdTest, two_thresholds)
{
    AllLevels src;
    ZImage<ZBW8> dst(256, 1);
    withBothWorkers([&] {
        for (const auto& [low, high] : {std::pair{50U, 100U},
                                        {100U, 50U},
                                        {0U, 255U},
                                        {255U, 254U},
                                        {256U, 256U},
                                        {300U, 10U},
                                        {0U, 0xFFFFFFFFU}}) {
            ImgDoubleThreshold(&src, &dst, low, high, 7, 8, 9);
            for (unsigned level = 0; level < 256; ++level)
                ASSERT_EQ(dst.GetPixel(static_cast<int>(level), 0), level > high   ? 9
                                                                    : level >= low ? 8
                                                                                   : 7)
                    << level << " of " << low << ' ' << high;
        }
    });
}

TEST_F(ThresholdTest, chosen_thresholds)
{
    ZImage<ZBW8> src(20, 10), dst(20, 10);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 20; ++x)
            src.SetPixel(static_cast<ZBW8>(x < 5 ? 50 : 200 + x), x, y);
    EXPECT_EQ(ImgAutoThreshold(&src, IMG_THRESHOLD_MIN_RESIDUE, 0), 51);
    EXPECT_EQ(ImgAutoThreshold(&src, IMG_THRESHOLD_ISODATA, 0), 131);
    EXPECT_EQ(ImgAutoThreshold(&src, IMG_THRESHOLD_RELATIVE, 0.25F), 205);
    EXPECT_EQ(ImgAutoThreshold(&src, IMG_THRESHOLD_RELATIVE, 1), 0);  // 256
    EXPECT_EQ(ImgAutoThreshold(&src, static_cast<IMG_THRESHOLD_MODES>(99), 0), 99);
    withBothWorkers([&] {
        for (const auto& [mode, relative, first] : {std::tuple{IMG_THRESHOLD_MIN_RESIDUE, 0.0F, 5},
                                                    {IMG_THRESHOLD_RELATIVE, 0.5F, 10},
                                                    {IMG_THRESHOLD_RELATIVE, 1.0F, 20}})
            for (const int high : {255, 9}) {
                EXPECT_EQ(ImgThreshold(&src, &dst, static_cast<unsigned>(mode), 0, static_cast<ZBW8>(high), relative),
                          0);
                for (int x = 0; x < 20; ++x)
                    ASSERT_EQ(dst.GetPixel(x, 9), x < first ? 0 : high);
            }
    });
}

TEST_F(ThresholdTest, refused_selections_leave_the_destination)
{
    ZImage<ZBW8> src(8, 8), dst(8, 8), empty;
    dst.SetPixel(77, 3, 3);
    const std::vector<std::uint8_t> before = bytesOf(dst);
    EXPECT_EQ(ImgThreshold(&src, &dst, 256, 1, 2, 0), 1012);
    EXPECT_FAILURE(1012, "ImgHistogramThreshold", "ImgThreshold");
    EXPECT_EQ(ImgThreshold(&src, &dst, static_cast<unsigned>(IMG_THRESHOLD_RELATIVE), 1, 2, 1.5F), 1015);
    EXPECT_FAILURE(1015, "ImgHistogramThreshold", "ImgThreshold");
    EXPECT_EQ(ImgAutoThreshold(&src, static_cast<IMG_THRESHOLD_MODES>(-1), 0), 0);
    EXPECT_FAILURE(1012, "ImgHistogramThreshold");
    EXPECT_EQ(ImgAutoThreshold(&empty, IMG_THRESHOLD_ISODATA, 0), 0);
    EXPECT_FAILURE(1400, "ImgHistogram");
    EXPECT_EQ(bytesOf(dst), before);
}

TEST_F(ThresholdTest, colours)
{
    Random random(3);
    ZImage<ZC24> src(61, 20);
    ZImage<ZBW8> dst(61, 20);
    fill(src, random);
    ZColorLookup toLuma(Z_COLOR_YUV);
    const auto within = [](int value, int least, int most) { return least <= value && value <= most; };
    withBothWorkers([&] {
        for (ZColorLookup* lookup : {static_cast<ZColorLookup*>(nullptr), &toLuma})
            for (const auto& [least, most] : {std::pair{ZC24{20, 100, 0}, ZC24{255, 180, 200}},
                                              {ZC24{0, 0, 0}, ZC24{255, 255, 255}},
                                              {ZC24{0, 9, 0}, ZC24{255, 8, 255}}}) {  // an empty range
                src.SetPixel({20, 180, 200}, 0, 0);
                ImgThreshold(&src, &dst, least, most, lookup, 3, 200);
                for (int y = 0; y < 20; ++y)
                    for (int x = 0; x < 61; ++x) {
                        ZC24 p = src.GetPixel(x, y);
                        if (lookup)
                            lookup->Transform(p, p);
                        const bool inside = within(p.c0, least.c0, most.c0) && within(p.c1, least.c1, most.c1) &&
                                            within(p.c2, least.c2, most.c2);
                        ASSERT_EQ(dst.GetPixel(x, y), inside ? 200 : 3) << x << ',' << y;
                    }
            }
    });
}

// Regions that begin and end with any bit of their bytes, there and back; no bit beside them changes.
TEST_F(ThresholdTest, bits)
{
    Random random(4);
    ZImage<ZBW8> grey(150, 3);
    ZImage<ZBW1> bits(170, 5), before(170, 5);
    fill(grey, random);
    withBothWorkers([&] {
        for (int round = 0; round < 200; ++round) {
            const int x0 = random(0, 17), width = random(0, 3) ? random(0, 20) : random(0, 150);
            const unsigned threshold = round % 9 == 0 ? 256 : round % 9 == 1 ? 0xFFFFFFFFU : unsigned(random(0, 255));
            SCOPED_TRACE(testing::Message() << width << " from " << x0 << " threshold " << threshold);
            fillBits(bits, random);
            for (int y = 0; y < 5; ++y)
                std::memcpy(before.GetPixelPtr(0, y), bits.GetPixelPtr(0, y), 22);
            ZROI<ZBW8> src(&grey, 150 - width, 0, width, 3);
            ZROI<ZBW1> region(&bits, x0, 1, width, 3);
            ZImage<ZBW8> back(std::max(width, 1), 3);
            ZROI<ZBW8> backRegion(&back, 0, 0, width, 3);
            ImgThreshold(&src, &region, threshold);
            ImgThreshold(&region, &backRegion, 50, 60);
            for (int y = 0; y < 5; ++y)
                for (int x = 0; x < 170; ++x) {
                    const int sx = x - x0, sy = y - 1;
                    const bool inside = sx >= 0 && sx < width && sy >= 0 && sy < 3;
                    const int expected = inside ? src.GetPixel(sx, sy) >= threshold : before.GetPixel(x, y).bits;
                    ASSERT_EQ(bits.GetPixel(x, y).bits, expected) << x << ',' << y;
                    if (inside) {
                        ASSERT_EQ(back.GetPixel(sx, sy), expected ? 60 : 50);
                    }
                }
        }
    });
}

TEST_F(ThresholdTest, regions)
{
    ZImage<ZBW8> image(8, 8), small(7, 8), empty;
    ZImage<ZBW1> bits(8, 8), noBits;
    ZImage<ZC24> colour(8, 8), noColour;
    ZROI<ZBW8> outside(&image, 1, 1, 8, 8), largeNowhere(&empty, 0, 0, 8, 8);
    ImgDoubleThreshold(&empty, &small, 1, 2, 3, 4, 5);
    EXPECT_FAILURE(1402, "ImgDoubleThreshold (BW8 to BW8)");
    ImgDoubleThreshold(&image, &outside, 1, 2, 3, 4, 5);
    EXPECT_FAILURE(1401, "ImgDoubleThreshold (BW8 to BW8)");
    ImgThreshold(&small, &noBits, 1);
    EXPECT_FAILURE(1400, "ImgThreshold (BW8 to BW1)");
    ImgThreshold(&empty, &bits, 1);
    EXPECT_FAILURE(1402, "ImgThreshold (BW8 to BW1)");
    ImgThreshold(&largeNowhere, &bits, 1);
    EXPECT_FAILURE(1400, "ImgThreshold (BW8 to BW1)");
    ImgThreshold(&bits, &outside, 1, 2);
    EXPECT_FAILURE(1401, "ImgThreshold (BW1 to BW8)");
    ImgThreshold(&noColour, &small, {}, {}, nullptr, 1, 2);
    EXPECT_FAILURE(1400, "ImgThreshold (C24)");
    ImgThreshold(&colour, &small, {}, {}, nullptr, 1, 2);
    EXPECT_FAILURE(1402, "ImgThreshold (C24)");
    EXPECT_EQ(ImgThreshold(&image, &outside, 300, 1, 2, 0), 1401);
    EXPECT_FAILURE(1401, "ImgThreshold");
}

}  // namespace
