#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/profile.h"

#include <climits>
#include <cstdlib>
#include <tuple>

namespace {

class ProfileTest : public OperationTest {};

template <class T, class Vector = ZBW8Vector>
struct Filled : Vector {
    Filled(std::initializer_list<T> elements)
    {
        for (const T& element : elements)
            this->AddElement(element);
    }
};
using Grey = Filled<ZBW8>;

template <class T>
std::vector<T> elements(const ZVectorTemplate<T>& vector)
{
    return {vector.GetDataPtr(), vector.GetDataPtr() + vector.GetNumElements()};
}

using Levels = std::vector<ZBW8>;

TEST_F(ProfileTest, paths)
{
    ZImage<ZBW8> image(6, 5);
    ZROI<ZBW8> region(&image, 1, 1, 4, 3);
    for (int i = 0; i < 30; ++i)
        image.SetPixel(static_cast<ZBW8>(i), i % 6, i / 6);
    Filled<ZBW8Path, ZBW8PathVector> path{{0, 0, 99}, {-1, 0, 98}, {4, 0, 97},
                                          {3, 2, 96}, {0, 3, 95},  {SHRT_MIN, SHRT_MAX, 94}};
    ImgImageToPath(&region, &path);
    EXPECT_FAILURE(1503);
    const int levels[] = {7, 98, 97, 22, 95, 94};
    for (unsigned i = 0; i < 6; ++i)
        EXPECT_EQ(path[i].Pixel, levels[i]);
    path[0].Pixel = 50;
    path[3] = {0, 0, 51};
    ImgPathToImage(&region, &path);
    EXPECT_FAILURE(1503);
    EXPECT_EQ(image.GetPixel(1, 1), 51);  // the last one wins
    EXPECT_EQ(image.GetPixel(0, 1), 6);
    EXPECT_EQ(image.GetPixel(1, 4), 25);

    ZImage<ZC24> colour(2, 2);
    Filled<ZC24Path, ZC24PathVector> colours{{1, 0, {1, 2, 3}}, {1, 1, {4, 5, 6}}}, read{{1, 1, {}}, {0, 1, {9, 9, 9}}};
    ImgPathToImage(&colour, &colours);
    ImgImageToPath(&colour, &read);
    EXPECT_EQ(bytesOf(colour), (std::vector<std::uint8_t>{0, 0, 0, 1, 2, 3, 0, 0, 0, 4, 5, 6}));
    EXPECT_EQ(read[0].Pixel.c2, 6);
    EXPECT_EQ(read[1].Pixel.c0, 0);
    ImgPathToImage(&colour, nullptr);
    EXPECT_FAILURE(1601, "ImgPathToImage (C24)");
}

// The pixels of a line by their definition.
std::vector<std::pair<int, int>> line(int x0, int y0, int x1, int y1)
{
    const int dx = x1 - x0, dy = y1 - y0;
    const bool steep = std::abs(dx) < std::abs(dy);
    const int n = std::max(std::abs(dx), std::abs(dy)), minor = std::min(std::abs(dx), std::abs(dy));
    std::vector<std::pair<int, int>> pixels;
    for (int k = 0; k <= n; ++k) {
        const int aside = n == 0 ? 0 : (n / 2 + k * minor) / n, x = steep ? aside : k, y = steep ? k : aside;
        pixels.emplace_back(dx > 0 ? x0 + x : x0 - x, dy > 0 ? y0 + y : y0 - y);
    }
    return pixels;
}

// All lines in a region, of images of every type whose pixels are all different.
TEST_F(ProfileTest, lines)
{
    EXPECT_EQ(line(0, 0, 4, 2), (std::vector<std::pair<int, int>>{{0, 0}, {1, 1}, {2, 1}, {3, 2}, {4, 2}}));
    ZImage<ZBW8> grey(12, 9);
    ZImage<ZBW16> wide(12, 9);
    ZImage<ZC24> colour(12, 9);
    for (int i = 0; i < 108; ++i) {
        const auto level = static_cast<ZBW8>(i);
        grey.SetPixel(level, i % 12, i / 12);
        wide.SetPixel(static_cast<ZBW16>(i * 257), i % 12, i / 12);
        colour.SetPixel({level, 1, static_cast<ZBW8>(255 - i)}, i % 12, i / 12);
    }
    ZROI<ZBW8> greys(&grey, 2, 1, 9, 7);
    ZROI<ZBW16> wides(&wide, 2, 1, 9, 7);
    ZROI<ZC24> colours(&colour, 2, 1, 9, 7);
    for (int ends = 0; ends < 63 * 63; ++ends) {
        const int x0 = ends % 9, y0 = ends / 9 % 7, x1 = ends / 63 % 9, y1 = ends / 567;
        SCOPED_TRACE(testing::Message() << x0 << ',' << y0 << " to " << x1 << ',' << y1);
        ZBW8Vector levels(40);
        ZBW16Vector wideLevels;
        ZC24Vector pixels;
        ImgImageToLineSegment(&greys, &levels, x0, y0, x1, y1);
        ImgImageToLineSegment(&wides, &wideLevels, x0, y0, x1, y1);
        ImgImageToLineSegment(&colours, &pixels, x0, y0, x1, y1);
        Levels expected;
        for (const auto& [x, y] : line(x0, y0, x1, y1))
            expected.push_back(greys.GetPixel(x, y));
        ASSERT_EQ(elements(levels), expected);
        EXPECT_EQ(levels.GetMaxElements(), expected.size());
        ASSERT_EQ(wideLevels.GetNumElements(), expected.size());
        for (unsigned i = 0; i < expected.size(); ++i)
            EXPECT_TRUE(wideLevels[i] == expected[i] * 257 && pixels[i].c0 == expected[i] &&
                        pixels[i].c2 == 255 - expected[i]);
    }
}

TEST_F(ProfileTest, lines_are_written_one_place_late)
{
    ZImage<ZBW8> image(4, 3);
    ZImage<ZC24> colour(3, 1);
    Grey profile{10, 20, 30};
    ImgLineSegmentToImage(&image, &profile, 3, 2, 1, 1);
    EXPECT_EQ(bytesOf(image), (Levels{0, 0, 0, 0, 0, 20, 10, 0, 0, 0, 0, 10}));
    ImgLineSegmentToImage(&image, static_cast<ZBW8>(7), 1, 0, 1, 2);
    EXPECT_EQ(bytesOf(image), (Levels{0, 7, 0, 0, 0, 7, 10, 0, 0, 7, 0, 10}));
    Filled<ZC24, ZC24Vector> colours{{1, 2, 3}, {4, 5, 6}};
    ImgLineSegmentToImage(&colour, ZC24{9, 8, 7}, 0, 0, 2, 0);
    ImgLineSegmentToImage(&colour, &colours, 1, 0, 0, 0);
    EXPECT_EQ(bytesOf(colour), (Levels{1, 2, 3, 1, 2, 3, 9, 8, 7}));
    ImgLineSegmentToImage(&colour, &colours, 1, 0, 1, 0);
    EXPECT_FAILURE(1613, "ImgLineSegmentToImage (C24, vector)");
    ImgLineSegmentToImage(&image, &profile, 0, 0, 3, 0);
    EXPECT_FAILURE(1613, "ImgLineSegmentToImage (BW8, vector)");
    EXPECT_EQ(image.GetPixel(0, 0), 0);
}

TEST_F(ProfileTest, ends_of_lines_are_within_the_region)
{
    ZImage<ZBW8> image(4, 3);
    Grey profile{1};
    const std::tuple<int, int, int, int, int> cases[] = {{4, 3, 4, 3, 1013},
                                                         {0, 3, 4, 3, 1014},
                                                         {0, 0, 4, 3, 1015},
                                                         {0, 0, 0, 3, 1016},
                                                         {-1, 0, 0, 0, 1013},
                                                         {INT_MIN, 0, INT_MAX, 0, 1013},
                                                         {0, INT_MAX, 0, INT_MIN, 1014},
                                                         {3, 2, INT_MIN, 0, 1015},
                                                         {3, 2, 0, INT_MIN, 1016}};
    for (const auto& [x0, y0, x1, y1, code] : cases) {
        ImgImageToLineSegment(&image, &profile, x0, y0, x1, y1);
        EXPECT_FAILURE(static_cast<short>(code), "ImgImageToLineSegment (BW8)");
        ImgLineSegmentToImage(&image, static_cast<ZBW8>(7), x0, y0, x1, y1);
        EXPECT_FAILURE(static_cast<short>(code), "ImgLineSegmentToImage (BW8, const)");
    }
    EXPECT_EQ(elements(profile), Levels{1});
    ImgImageToLineSegment(&image, nullptr, 0, 0, 1, 1);
    EXPECT_FAILURE(1601, "ImgImageToLineSegment (BW8)");
    ImgLineSegmentToImage(&image, nullptr, 0, 0, 1, 1);
    EXPECT_FAILURE(1601, "ImgLineSegmentToImage (BW8, vector)");
}

std::vector<ZPeak> peaks(ZBW8Vector& profile, unsigned low, unsigned high, unsigned amplitude = 0, unsigned area = 0)
{
    ZPeaksVector found(3);
    found.SetNumElements(2);
    ImgGetProfilePeaks(&profile, &found, low, high, amplitude, area);
    return elements(found);
}

testing::AssertionResult isPeak(const ZPeak& p, unsigned start, unsigned length, int amplitude, int area, float center)
{
    if (p.Start == start && p.Length == length && p.Amplitude == amplitude && p.Area == area && p.Center == center)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << p.Start << ' ' << p.Length << ' ' << p.Amplitude << ' ' << p.Area << ' '
                                       << p.Center;
}

TEST_F(ProfileTest, peaks_and_valleys)
{
    Grey single{0, 200, 200, 0};
    std::vector<ZPeak> found = peaks(single, 50, 150);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(isPeak(found[0], 1, 2, 50, 100, 1.5F));

    // A peak at the begin, a valley, a peak that follows it directly, levels between the thresholds, a valley at the
    // end that is open.
    Grey many{200, 10, 40, 180, 160, 155, 100, 100, 151, 100, 20};
    found = peaks(many, 50, 150);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_TRUE(isPeak(found[0], 1, 2, -40, -50, 1.2F));
    EXPECT_TRUE(isPeak(found[1], 3, 3, 30, 45, static_cast<float>(6 - (30. + 40 + 45) / 45)));
    EXPECT_TRUE(isPeak(found[2], 8, 1, 1, 1, 8));
    EXPECT_EQ(peaks(many, 50, 150, 30, 0).size(), 2U);
    EXPECT_EQ(peaks(many, 50, 150, 0, 46).size(), 1U);
    EXPECT_EQ(peaks(many, 50, 150, 0x80000000, 0x80000000).size(), 3U);  // negative
    EXPECT_EQ(peaks(many, 50, 150, 41, 0).size(), 0U);

    // Thresholds beyond all levels: below them the excess wraps, 40 - UINT_MAX = 41.
    EXPECT_EQ(peaks(many, 0, UINT_MAX).size(), 0U);
    EXPECT_EQ(peaks(many, UINT_MAX, UINT_MAX).size(), 0U);
    EXPECT_EQ(peaks(many, 151, 150).size(), 2U);  // as they were
    EXPECT_FAILURE(1007, "ImgGetProfilePeaks");
}

// The sums that the center needs leave 32 bits long before the area does.
TEST_F(ProfileTest, a_long_peak)
{
    ZBW8Vector profile;
    profile.AddElement(0);
    for (int i = 0; i < 10000; ++i)
        profile.AddElement(255);
    profile.AddElement(0);
    const std::vector<ZPeak> found = peaks(profile, 0, 0);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(isPeak(found[0], 1, 10000, 255, 2550000, 5000.5F));
}

TEST_F(ProfileTest, derivatives)
{
    const std::pair<Levels, Levels> cases[] = {{{}, {}},
                                               {{77}, {128}},
                                               {{0, 255}, {255, 255}},
                                               {{200, 10}, {0, 0}},
                                               {{10, 20, 40}, {138, 143, 148}},
                                               {{0, 255, 1, 0, 255, 0, 7}, {255, 128, 0, 255, 128, 4, 135}}};
    for (const auto& [samples, slopes] : cases) {
        Grey profile{};
        for (const ZBW8 sample : samples)
            profile.AddElement(sample);
        ZBW8Vector derivative(2);
        ImgProfileDerivative(&profile, &derivative);
        EXPECT_EQ(elements(derivative), slopes);
        ImgProfileDerivative(&profile, &profile);
        EXPECT_EQ(elements(profile), slopes);
    }
    ZBW8Vector profile;
    ImgProfileDerivative(&profile, nullptr);
    EXPECT_FAILURE(1601, "ImgProfileDerivative");
    ImgGetProfilePeaks(nullptr, nullptr, 0, 0, 0, 0);
    EXPECT_FAILURE(1601, "ImgGetProfilePeaks");
}

}  // namespace
