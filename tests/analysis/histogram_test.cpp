#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace {

class HistogramTest : public OperationTest {
protected:
    HistogramTest()
    {
        Random random(3);
        fill(grey_, random);
        fill(wide_, random);
    }

    ZImage<ZBW8> grey_{77, 9};
    ZImage<ZBW16> wide_{77, 9};
};

template <class T>
std::vector<unsigned> elements(const ZVectorTemplate<T>& vector)
{
    return {vector.GetDataPtr(), vector.GetDataPtr() + vector.GetNumElements()};
}

std::vector<unsigned> elements(const ZVector& vector)
{
    const auto* data = static_cast<const unsigned*>(vector.GetDataPtr());
    return {data, data + vector.GetAllocatedSize() / 4};
}

TEST_F(HistogramTest, every_level_of_a_region)
{
    ZROI<ZBW8> region(&grey_, 3, 1, 70, 7), none(&grey_, 3, 9, 70, 0);
    std::vector<unsigned> expected(256);
    for (const std::uint8_t pixel : bytesOf(region))
        ++expected[pixel];
    withBothWorkers([&] {
        ZBW8HistogramVector typed(300);
        typed.AddElement(99);
        ZVector untyped;
        ImgHistogram(&region, &typed);
        EXPECT_EQ(elements(typed), expected);
        EXPECT_EQ(typed.GetMaxElements(), 256U);
        EXPECT_EQ(ImgHistogram(&region, &untyped), 0);
        EXPECT_EQ(ImgHistogram(&region, &untyped), 0);  // once more, over the old counts
        EXPECT_EQ(elements(untyped), expected);
        EXPECT_EQ(untyped.GetVectType(), 2);
        ImgHistogram(&none, &typed);
        EXPECT_EQ(ImgHistogram(&none, &untyped), 0);
        EXPECT_EQ(elements(typed), std::vector<unsigned>(256));
        EXPECT_EQ(elements(untyped), std::vector<unsigned>(256));
    });
}

TEST_F(HistogramTest, an_untyped_vector_of_another_size_gets_what_it_has_room_for)
{
    grey_.SetPixel(2, 0, 0);
    ZROI<ZBW8> pixel(&grey_, 0, 0, 1, 1);
    ZVector small, large;
    small.SetType(2, 1, 3);
    large.SetType(2, 1, 258);
    static_cast<unsigned*>(large.GetDataPtr())[257] = 7;
    EXPECT_EQ(ImgHistogram(&pixel, &small), 0);
    EXPECT_EQ(elements(small), (std::vector<unsigned>{0, 0, 1}));
    EXPECT_EQ(ImgHistogram(&pixel, &large), 0);
    EXPECT_EQ(elements(large)[2], 1U);
    EXPECT_EQ(elements(large)[257], 7U);
}

TEST_F(HistogramTest, bits_of_wide_pixels)
{
    struct {
        unsigned highBit, bits;
        int saturate;
    } const cases[] = {{11, 8, 0}, {11, 8, 1},  {9, 10, 1},  {9, 10, 0}, {12, 12, 0}, {15, 16, 1},
                       {15, 8, 1}, {14, 15, 0}, {14, 15, 2}, {15, 0, 0}, {4, 0, 1},   {4, 0, 0}};
    ZROI<ZBW16> region(&wide_, 1, 1, 75, 8);
    for (const auto& c : cases) {
        const unsigned shift = c.highBit + 1 - c.bits;
        std::vector<unsigned> expected(std::size_t{1} << c.bits);
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 75; ++x) {
                const std::size_t bin = std::size_t{region.GetPixel(x, y)} >> shift;
                if (bin < expected.size())
                    ++expected[bin];
                else if (c.saturate != 0)
                    ++expected.back();
            }
        withBothWorkers([&] {
            ZBW8HistogramVector hist;
            ImgHistogram(&region, &hist, c.highBit, c.bits, c.saturate);
            EXPECT_EQ(elements(hist), expected) << c.highBit << ' ' << c.bits << ' ' << c.saturate;
        });
    }
}

TEST_F(HistogramTest, failures)
{
    ZBW8HistogramVector hist(4);
    hist.AddElement(9);
    ZVector emptied(2);
    emptied.Reallocate(0);
    ZImage<ZBW16> empty;
    ImgHistogram(&empty, &hist, 16, 8, 0);
    EXPECT_FAILURE(1400, "ImgHistogram (ZBW16)");
    ImgHistogram(&wide_, &hist, 16, 20, 0);
    EXPECT_FAILURE(1013, "ImgHistogram (ZBW16)");
    for (const unsigned bits : {9U, 32U, 0xFFFFFFFFU}) {
        ImgHistogram(&wide_, &hist, 7, bits, 0);
        EXPECT_FAILURE(1014, "ImgHistogram (ZBW16)");
    }
    ImgHistogram(&wide_, nullptr, 7, 8, 0);
    EXPECT_FAILURE(1601, "ImgHistogram (ZBW16)");
    ImgHistogram(&grey_, static_cast<ZBW8HistogramVector*>(nullptr));
    EXPECT_FAILURE(1601, "ImgHistogram");
    EXPECT_EQ(ImgHistogram(&grey_, static_cast<ZVector*>(nullptr)), 1601);
    EXPECT_FAILURE(1601, "ImgHistogram (ZVector)");
    EXPECT_EQ(ImgHistogram(&grey_, &emptied), 1601);
    EXPECT_FAILURE(1601, "ImgHistogram (ZVector)");
    EXPECT_EQ(elements(hist), std::vector<unsigned>{9});
}

TEST_F(HistogramTest, projections)
{
    ZROI<ZBW8> region(&grey_, 5, 2, 71, 6);
    std::vector<unsigned> columns(71), rows(6);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 71; ++x) {
            columns[static_cast<std::size_t>(x)] += region.GetPixel(x, y);
            rows[static_cast<std::size_t>(y)] += region.GetPixel(x, y);
        }
    withBothWorkers([&] {
        ZBW32Vector typed(3);
        typed.AddElement(99);
        ZVector untyped;
        ImgProjectOnARow(&region, &typed);
        EXPECT_EQ(elements(typed), columns);
        ImgProjectOnAColumn(&region, &typed);
        EXPECT_EQ(elements(typed), rows);
        EXPECT_EQ(ImgProjectOnARow(&region, &untyped), 0);
        EXPECT_EQ(elements(untyped), columns);
        EXPECT_EQ(ImgProjectOnAColumn(&region, &untyped), 0);
        EXPECT_EQ(elements(untyped), rows);
        EXPECT_EQ(untyped.GetVectType(), 2);

        ZROI<ZBW8> noRow(&grey_, 0, 9, 4, 0), noColumn(&grey_, 0, 0, 0, 4);
        ImgProjectOnARow(&noRow, &typed);
        EXPECT_EQ(elements(typed), std::vector<unsigned>(4));
        ImgProjectOnARow(&noColumn, &typed);
        EXPECT_EQ(elements(typed), std::vector<unsigned>());
        EXPECT_EQ(ImgProjectOnAColumn(&noColumn, &untyped), 0);
        EXPECT_EQ(elements(untyped), std::vector<unsigned>(4));
        EXPECT_EQ(ImgProjectOnARow(&noColumn, &untyped), 0);
        EXPECT_EQ(elements(untyped), std::vector<unsigned>(256));
    });
    ImgProjectOnARow(&region, static_cast<ZBW32Vector*>(nullptr));
    EXPECT_FAILURE(1601, "ImgProjectOnARow (ZBW32Vector)");
    EXPECT_EQ(ImgProjectOnAColumn(&region, static_cast<ZVector*>(nullptr)), 1601);
    EXPECT_FAILURE(1601, "ImgProjectOnAColumn");
}

TEST_F(HistogramTest, features)
{
    // 4 pixels of level 1, 7 of 2, 7 of 5, 2 of 9.
    ZBW8HistogramVector typed;
    typed.SetNumElements(256);
    std::fill_n(typed.GetDataPtr(), 256, 0U);
    for (const auto& [level, count] : {std::pair{1U, 4U}, {2U, 7U}, {5U, 7U}, {9U, 2U}})
        typed[level] = count;
    ZVector untyped(2);
    std::copy_n(typed.GetDataPtr(), 256, static_cast<unsigned*>(untyped.GetDataPtr()));

    // Scans start at bin 0 and end with the bins; the greatest value is looked for downwards from one level.
    struct {
        int feature, from, to;
        int expected;
    } const cases[] = {
        {0, 0, 255, 2},   {0, 10, 20, 12},  {0, 3, 2, 0},  {0, 7, 7, 0},     {0, INT_MIN, INT_MAX, INT_MIN + 2},
        {1, 0, 255, 7},   {1, 10, 11, 4},   {1, 3, 2, 0},  {1, -2, 300, 7},  {2, 0, 255, 0},
        {2, 30, 31, 30},  {2, 3, 2, 0},     {2, 1, 9, 1},  {3, 0, 255, 0},   {3, 3, 2, -1},
        {4, 0, 255, 1},   {4, 6, 8, 7},     {4, 6, 6, 7},  {4, 8, 6, 8},     {4, INT_MAX, INT_MAX, INT_MIN},
        {5, 0, 255, 255}, {5, 255, 255, 9}, {5, 9, 8, 5},  {5, 400, 300, 9}, {5, 0, 0, -1},
        {5, -3, -4, -4},  {6, 0, 255, 20},  {6, 2, 5, 14}, {6, 5, 2, 0},     {6, -9, 1000, 20}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.feature << " from " << c.from << " to " << c.to);
        int result = 77;
        EXPECT_EQ(ImgAnalyseHistogram(&untyped, c.from, c.to, c.feature, result), 0);
        EXPECT_EQ(result, c.expected);
        const auto feature = static_cast<IMG_HISTOGRAM_FEATURE>(c.feature);
        EXPECT_EQ(ImgAnalyseHistogram(&typed, feature, c.from, c.to), static_cast<float>(c.expected));
    }

    // Levels 2 to 5: (2 * 7 + 5 * 7) / 14. The deviation is always that of the bins from 0 on.
    float average = 0, deviation = 0;
    EXPECT_EQ(ImgAnalyseHistogram(&untyped, 2, 5, 7, average), 0);
    EXPECT_EQ(average, 3.5F);
    EXPECT_EQ(ImgAnalyseHistogram(&typed, IMG_HISTOGRAM_AVERAGE_VALUE, 2, 5), 3.5F);
    EXPECT_EQ(ImgAnalyseHistogram(&typed, IMG_HISTOGRAM_AVERAGE_VALUE, 3, 4), 0);
    for (const auto& [from, to] : {std::pair{0, 9}, {0, 255}, {100, 110}, {-20, 1000}}) {
        EXPECT_EQ(ImgAnalyseHistogram(&untyped, from, to, 8, deviation), 0);
        EXPECT_NEAR(deviation, 2.4181605, 0.01) << from << ' ' << to;
    }
    EXPECT_NEAR(ImgAnalyseHistogram(&typed, IMG_HISTOGRAM_STANDARD_DEVIATION, 0, 2), 0.4810457, 1e-6);
    EXPECT_EQ(ImgAnalyseHistogram(&typed, IMG_HISTOGRAM_STANDARD_DEVIATION, 3, 3), 0);
    EXPECT_EQ(ImgAnalyseHistogram(&typed, IMG_HISTOGRAM_STANDARD_DEVIATION, 5, 3), 0);
}

// An odd sum beyond 2^24, and a number of pixels beyond 2^31.
TEST_F(HistogramTest, features_of_very_many_pixels)
{
    ZVector hist(2);
    auto* bins = static_cast<unsigned*>(hist.GetDataPtr());
    bins[0] = 1U << 24;
    bins[1] = 1;
    float deviation = 0;
    EXPECT_EQ(ImgAnalyseHistogram(&hist, 0, 2, 8, deviation), 0);
    // Values 2 and 1: their sum is 2^25 + 1, of which the float keeps 2^25; their squares 2^26 + 1.
    const double count = 16777217, mean = 33554432 / count;
    EXPECT_EQ(deviation, static_cast<float>(std::sqrt(std::abs(67108865 / count - mean * static_cast<float>(mean)))));
    bins[0] = 0x80000000;
    bins[1] = 0x7FFFFFFF;  // 2^32 - 1 pixels are -1
    EXPECT_EQ(ImgAnalyseHistogram(&hist, 0, 1, 7, deviation), 0);
    EXPECT_EQ(deviation, -2147483647.0F);
}

TEST_F(HistogramTest, histograms_that_cannot_be_analysed)
{
    ZVector none, table(3), small, emptied(2);
    small.SetType(2, 1, 3);
    emptied.Reallocate(0);
    ZBW8HistogramVector typed(3);
    int whole = 77;
    float fraction = 77;
    EXPECT_EQ(ImgAnalyseHistogram(nullptr, 0, 9, 0, whole), 1601);
    EXPECT_FAILURE(1601, "ImgAnalyseHistogram");
    EXPECT_EQ(ImgAnalyseHistogram(&none, 0, 9, 0, whole), 1601);
    EXPECT_FAILURE(1601, "ImgAnalyseHistogram");
    EXPECT_EQ(ImgAnalyseHistogram(&emptied, 0, 9, 7, fraction), 1601);
    EXPECT_FAILURE(1601, "ImgAnalyseHistogram");
    EXPECT_EQ(ImgAnalyseHistogram(&table, 0, 9, 7, fraction), 1602);
    EXPECT_FAILURE(1602, "ImgAnalyseHistogram");
    EXPECT_EQ(ImgAnalyseHistogram(&small, 0, 9, 7, whole), 0);  // features of the other kind
    EXPECT_EQ(ImgAnalyseHistogram(&small, 0, 9, 6, fraction), 0);
    EXPECT_EQ(whole, 77);
    EXPECT_EQ(fraction, 77);
    std::fill_n(static_cast<unsigned*>(small.GetDataPtr()), 3, 5U);
    EXPECT_EQ(ImgAnalyseHistogram(&small, 0, 9, IMG_HISTOGRAM_LEAST_FREQUENT_VALUE, whole), 0);
    EXPECT_EQ(whole, 3);  // the first that is missing
    EXPECT_EQ(ImgAnalyseHistogram(&small, 0, 9, IMG_HISTOGRAM_STANDARD_DEVIATION, fraction), 0);
    EXPECT_NEAR(fraction, 0.8164966, 1e-6);
    std::fill_n(static_cast<unsigned*>(small.GetDataPtr()), 3, 10000000U);
    EXPECT_EQ(ImgAnalyseHistogram(&small, 0, 300, IMG_HISTOGRAM_STANDARD_DEVIATION, fraction), 0);
    EXPECT_NEAR(fraction, 0.8164966, 0.1);  // bins that are missing do not wrap the sums

    EXPECT_EQ(ImgAnalyseHistogram(&typed, IMG_HISTOGRAM_PIXEL_COUNT, 0, 9), 0);
    EXPECT_FAILURE(1613, "ImgAnalyseHistogram");
    typed.SetNumElements(256);
    for (const int feature : {9, -1}) {
        EXPECT_EQ(ImgAnalyseHistogram(&typed, static_cast<IMG_HISTOGRAM_FEATURE>(feature), 0, 9), 0);
        EXPECT_FAILURE(0, "ImgAnalyseHistogram");  // only the name
    }
}

}  // namespace
