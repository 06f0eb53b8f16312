#include "support/errors.h"
#include "zkit/img/threshold_selection.h"

#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>

namespace {

// A histogram with the given pixels: level, how many.
class Histogram : public ZBW8HistogramVector {
public:
    Histogram(std::initializer_list<std::pair<unsigned, unsigned>> pixels, unsigned size = 256)
    {
        SetNumElements(size);
        for (unsigned level = 0; level < size; ++level)
            Data[level] = 0;
        for (const auto& [level, count] : pixels)
            Data[level] = count;
    }
};

class UntypedHistogram : public ZVector {
public:
    explicit UntypedHistogram(std::initializer_list<std::pair<unsigned, unsigned>> pixels) : ZVector(2)
    {
        for (const auto& [level, count] : pixels)
            static_cast<unsigned*>(GetDataPtr())[level] = count;
    }
};

struct Selection {
    unsigned threshold = 0;
    float lowMean = -1, highMean = -1;
    bool operator==(const Selection&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Selection& s)
{
    return out << s.threshold << " between " << s.lowMean << " and " << s.highMean;
}

Selection select(ZBW8HistogramVector* hist, unsigned threshold, float relative = 0, unsigned min = 0,
                 unsigned max = 255)
{
    Selection selection{threshold};
    ImgHistogramThreshold(hist, selection.threshold, selection.lowMean, selection.highMean, relative, min, max);
    return selection;
}

class ThresholdSelectionTest : public OperationTest {};

// The modes as they are passed in the place of a threshold.
constexpr auto isodata = static_cast<unsigned>(IMG_THRESHOLD_ISODATA),
               maxEntropy = static_cast<unsigned>(IMG_THRESHOLD_MAX_ENTROPY),
               minResidue = static_cast<unsigned>(IMG_THRESHOLD_MIN_RESIDUE),
               relativeMode = static_cast<unsigned>(IMG_THRESHOLD_RELATIVE);
constexpr unsigned comparing[] = {isodata, maxEntropy, minResidue};

TEST_F(ThresholdSelectionTest, of_equal_splits_the_lowest_wins)
{
    Histogram twoLevels{{50, 100}, {200, 100}};
    EXPECT_EQ(select(&twoLevels, minResidue), (Selection{51, 50, 200}));
    EXPECT_EQ(select(&twoLevels, maxEntropy), (Selection{51, 50, 200}));
    EXPECT_EQ(select(&twoLevels, isodata), (Selection{125, 50, 200}));
    Selection direct;
    direct.threshold = ImgMinResidueThreshold(&twoLevels, direct.lowMean, direct.highMean);
    EXPECT_EQ(direct, (Selection{51, 50, 200}));

    // Two empty classes' worth of entropy: no split beats the single class, whose entropy is ln 2.
    direct = {};
    direct.threshold = ImgMaxEntropyThreshold(&twoLevels, direct.lowMean, direct.highMean);
    EXPECT_EQ(direct, Selection{});

    // The middle of 10 and 15 is as far from 12 as from 13.
    Histogram near{{10, 7}, {15, 7}};
    EXPECT_EQ(select(&near, isodata).threshold, 12U);
    // The split at 102 is better by 10^4 in 4 10^11, which does not show in a float.
    Histogram large{{100, 40000000}, {101, 1}, {250, 1}};
    EXPECT_EQ(select(&large, minResidue).threshold, 101U);
}

TEST_F(ThresholdSelectionTest, three_levels_and_a_part_of_the_range)
{
    Histogram hist{{10, 4}, {11, 4}, {200, 8}, {255, 1000}};
    for (const unsigned mode : comparing) {
        const Selection selection = select(&hist, mode, 0, 5, 201);
        EXPECT_EQ(selection, (Selection{mode == isodata ? 105U : 12U, 10.5F, 200}));
        // 1 / 2 of three bins of 4, 4, 8: by residue and entropy the last one stands alone.
        EXPECT_EQ(select(&hist, mode, 0, 11, 200).threshold, mode == isodata ? 105U : 12U);
    }
    Histogram upper{{10, 4}, {11, 4}, {200, 8}, {201, 1}};
    Selection direct;
    direct.threshold = ImgMinResidueThreshold(&upper, direct.lowMean, direct.highMean);
    EXPECT_EQ(direct, (Selection{12, 10.5F, 1801 / 9.0F}));
}

TEST_F(ThresholdSelectionTest, entropy_of_flat_and_peaked_classes)
{
    // Flat from 0 to 3 and 100 to 103: ln 4 on both sides beats every other split and ln 8 of all.
    Histogram flat{{0, 5}, {1, 5}, {2, 5}, {3, 5}, {100, 5}, {101, 5}, {102, 5}, {103, 5}};
    Selection direct;
    direct.threshold = ImgMaxEntropyThreshold(&flat, direct.lowMean, direct.highMean);
    EXPECT_EQ(direct, (Selection{4, 1.5F, 101.5F}));
    EXPECT_EQ(select(&flat, maxEntropy), direct);
    // A peak adds little: with it alone on the low side the high one keeps ln 4, with a flat level beside it less.
    Histogram peaked{{0, 1000}, {100, 5}, {101, 5}, {102, 5}, {103, 5}};
    EXPECT_EQ(select(&peaked, maxEntropy).threshold, 1U);
}

TEST_F(ThresholdSelectionTest, pixels_of_one_level_have_no_split)
{
    Histogram one{{77, 12}}, none{};
    for (const unsigned mode : comparing) {
        EXPECT_EQ(select(&one, mode, 0, 20, 200), (Selection{0, 20, 201}));
        EXPECT_EQ(select(&none, mode), (Selection{0, 0, 256}));
        EXPECT_EQ(select(&one, mode, 0, 80, 200), (Selection{0, 80, 201}));
    }
    for (const auto direct : {ImgMinResidueThreshold, ImgMaxEntropyThreshold})
        for (Histogram* hist : {&one, &none}) {
            float lowMean = -1, highMean = -1;
            EXPECT_EQ(direct(hist, lowMean, highMean), 0);
            EXPECT_EQ(lowMean, -1);
            EXPECT_EQ(highMean, -1);
        }
}

TEST_F(ThresholdSelectionTest, relative)
{
    Histogram hist{{20, 2}, {30, 3}, {40, 5}};
    EXPECT_EQ(select(&hist, relativeMode, 0), (Selection{20, 0, 33}));
    EXPECT_EQ(select(&hist, relativeMode, 0.2F), (Selection{30, 20, 36.25F}));
    EXPECT_EQ(select(&hist, relativeMode, 0.49F), (Selection{30, 20, 36.25F}));
    EXPECT_EQ(select(&hist, relativeMode, 0.5F), (Selection{40, 26, 40}));
    EXPECT_EQ(select(&hist, relativeMode, 1, 5, 100), (Selection{101, 33, 101}));
    EXPECT_EQ(select(&hist, relativeMode, 0, 21, 39), (Selection{30, 21, 30}));
    for (const float wrong : {-0.1F, 1.001F, std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(select(&hist, relativeMode, wrong), (Selection{relativeMode, -1, -1}));
        EXPECT_FAILURE(1015, "ImgHistogramThreshold");
    }
}

TEST_F(ThresholdSelectionTest, a_threshold_of_the_callers)
{
    Histogram hist{{20, 2}, {30, 3}, {40, 5}, {120, 4}};
    EXPECT_EQ(select(&hist, 30), (Selection{30, 20, (90 + 200 + 480) / 12.0F}));
    EXPECT_EQ(select(&hist, 0), (Selection{0, 0, (40 + 90 + 200 + 480) / 14.0F}));
    // From 10 on, 20 parts at 30, and the high class counts from 10.
    EXPECT_EQ(select(&hist, 20, 0, 10, 50), (Selection{20, 20, (3 * 20 + 5 * 30) / 8.0F}));
    // 100 + 100 is beyond the range, 100 + 200 beyond the histogram.
    EXPECT_EQ(select(&hist, 100, 0, 100, 110), (Selection{100, 120, 111}));
    EXPECT_EQ(select(&hist, 200, 0, 100, 255), (Selection{200, 120, 256}));
}

TEST_F(ThresholdSelectionTest, isodata)
{
    Histogram hist{{10, 4}, {11, 4}, {200, 8}}, none{};
    EXPECT_EQ(ImgIsodataThreshold(&hist, 0, 255), 105);
    EXPECT_EQ(ImgIsodataThreshold(&none, 0, 255), 128);
    EXPECT_EQ(ImgIsodataThreshold(&none, 10, 21), 16);  // (10 + 16) / 2 = 13 and (16 + 22) / 2 = 19
    // Level T itself is low: the means 100 and 200 of 100, 150 | 200 are 125 and 200, those of 100 | 150, 200 never
    // met.
    Histogram three{{100, 1}, {150, 1}, {200, 1}};
    EXPECT_EQ(ImgIsodataThreshold(&three, 100, 200), 162);
    // Fewer bins than levels; sums that wrap and lead beyond all levels, where all pixels are low.
    ZVector small;
    small.SetType(2, 1, 3);
    static_cast<unsigned*>(small.GetDataPtr())[2] = 9;
    EXPECT_EQ(ImgIsodataThreshold(&small, 0, 255), 86U);
    UntypedHistogram untyped{{0, 1}, {129, 4294967286U}, {255, 11}};
    Histogram typed{{0, 1}, {129, 4294967286U}, {255, 11}};
    EXPECT_EQ(ImgIsodataThreshold(&untyped, 0, 255), 590U);
    EXPECT_EQ(ImgIsodataThreshold(&typed, 0, 255), 590 - 512);
}

// The untyped form takes the bin at 100 for level 0. From T = 150 on: 75 and 200 give 137; 0 and 175 give 87, below all
// bins; there (100 + 87) / 2 = 93 and 350 / 3 = 116 give 104; 0 and 175 give 87 again, and so on to the 16th round.
TEST_F(ThresholdSelectionTest, untyped_isodata_takes_16_rounds_at_most)
{
    UntypedHistogram hist{{100, 1}, {150, 1}, {200, 1}};
    EXPECT_EQ(ImgIsodataThreshold(&hist, 100, 200), 87U);
    EXPECT_EQ(ImgIsodataThreshold(&hist, 99, 200), 162U);
}

TEST_F(ThresholdSelectionTest, errors_of_the_general_form)
{
    Histogram hist{{1, 1}}, wrong({}, 255);
    const struct {
        ZBW8HistogramVector* hist;
        unsigned threshold, min, max;
        short code;
    } cases[] = {{nullptr, 0, 256, 256, 1601},       {&wrong, 0, 256, 256, 1613}, {&hist, 300, 256, 256, 1015},
                 {&hist, 300, 255, 256, 1016},       {&hist, 300, 9, 9, 1007},    {&hist, 4294967295U, 0, 255, 1012},
                 {&hist, 4294967294U, 0, 255, 1012}, {&hist, 9, 10, 20, 1012},    {&hist, 21, 10, 20, 1012}};
    for (const auto& c : cases) {
        if (c.code != 1012)
            ZSetError(Z_ERROR_BAD_MODE);  // replaced
        EXPECT_EQ(select(c.hist, c.threshold, 0, c.min, c.max), (Selection{c.threshold, -1, -1}));
        EXPECT_FAILURE(c.code, "ImgHistogramThreshold");
    }
    ZSetError(Z_ERROR_BAD_MODE);
    EXPECT_EQ(select(&hist, 300), (Selection{300, -1, -1}));
    EXPECT_FAILURE(1009, "ImgHistogramThreshold");
}

TEST_F(ThresholdSelectionTest, errors_of_the_other_forms)
{
    Histogram hist{{1, 4}, {9, 4}}, wrong({}, 255);
    ZVector other(3), empty(2);
    empty.Reallocate(0);
    float lowMean = -1, highMean = -1;
    for (ZBW8HistogramVector* vector :
         {static_cast<ZBW8HistogramVector*>(nullptr), static_cast<ZBW8HistogramVector*>(&wrong)}) {
        const short code = vector ? 1613 : 1601;
        EXPECT_EQ(ImgIsodataThreshold(vector, 256, 256), 0);
        EXPECT_FAILURE(code, "ImgIsodataThreshold (ZBW8HistogramVector)");
        EXPECT_EQ(ImgMinResidueThreshold(vector, lowMean, highMean), 0);
        EXPECT_FAILURE(code, "ImgMinResidueThreshold");
        EXPECT_EQ(ImgMaxEntropyThreshold(vector, lowMean, highMean), 0);
        EXPECT_FAILURE(code, "ImgMaxEntropyThreshold");
    }
    const struct {
        unsigned min, max;
        short code;
    } ranges[] = {{256, 256, 1012}, {255, 256, 1013}, {9, 9, 1007}};
    for (const auto& c : ranges) {
        ImgIsodataThreshold(&hist, c.min, c.max);
        EXPECT_FAILURE(c.code, "ImgIsodataThreshold (ZBW8HistogramVector)");
        ImgIsodataThreshold(&other, c.min, c.max);
        EXPECT_FAILURE(c.code, "ImgIsodataThreshold (ZVector)");
    }
    for (const auto& [vector, code] : {std::pair<ZVector*, short>{nullptr, 1601}, {&other, 1607}, {&empty, 1601}}) {
        EXPECT_EQ(ImgIsodataThreshold(vector, 10, 21), 16U);
        EXPECT_FAILURE(code, "ImgIsodataThreshold (ZVector)");
    }
    EXPECT_EQ(lowMean, -1);
}

}  // namespace
