#include "support/errors.h"
#include "support/recording_device.h"
#include "zkit/img/vectors.h"

#include <cmath>
#include <limits>

namespace {

using Calls = std::vector<std::string>;

class VectorDrawingTest : public OperationTest {};

template <class Vector>
Calls drawn(Vector& vector, float a, float b, float c, float d)
{
    RecordingDevice device;
    vector.Draw(&device, a, b, c, d);
    return device.calls;
}

TEST_F(VectorDrawingTest, a_path_is_panned_and_then_zoomed)
{
    ZPathVector path;
    EXPECT_EQ(drawn(path, 1, 1, 0, 0), Calls{});
    path.AddElement({-3, 5});
    EXPECT_EQ(drawn(path, 1, 1, 0, 0), Calls{"M -3 5"});
    path.AddElement({32767, -32768});
    path.AddElement({0, 1});
    EXPECT_EQ(drawn(path, 2, 0.5F, 0.75F, -0.5F), (Calls{"M -4 2", "L 65535 -16384", "L 1 0"}));
    EXPECT_EQ(drawn(path, 3, 0, 0, 0), drawn(path, 3, 3, 0, 0));
    path.Draw(nullptr, 1, 1, 0, 0);

    ZBW8PathVector grey;
    grey.AddElement({1, 2, 200});
    grey.AddElement({3, 4, 0});
    EXPECT_EQ(drawn(grey, 10, 0, 1, 1), (Calls{"M 20 30", "L 40 50"}));
    ZC24PathVector colour;
    colour.AddElement({1, 2, {7, 8, 9}});
    colour.AddElement({3, 4, {0, 0, 0}});
    EXPECT_EQ(drawn(colour, -1, 0, 0, 0), (Calls{"M -1 -2", "L -3 -4"}));
}

TEST_F(VectorDrawingTest, coordinates_beyond_the_device_are_clamped)
{
    const float infinite = std::numeric_limits<float>::infinity();
    ZPathVector path;
    path.AddElement({1, -1});
    EXPECT_EQ(drawn(path, 1e30F, 1e30F, 0, 0), Calls{"M 2147483647 -2147483648"});
    EXPECT_EQ(drawn(path, infinite, std::nanf(""), 0, 0), Calls{"M 2147483647 0"});
    EXPECT_EQ(drawn(path, 1, infinite, -infinite, 1), Calls{"M -2147483648 0"});
}

// The bars alone; the annotations must be those of the plot itself with these ranges.
Calls bars(ZBW8HistogramVector& histogram, double lastValue, double largest, int x, int y, int width, int height)
{
    RecordingDevice annotations, all;
    ZPlot plot;
    plot.SetXRange(0, lastValue);
    plot.SetYRange(0, largest);
    plot.DrawAnnotations(&annotations, x, y, width, height, "Value", "Count");
    const auto real = [](int number) { return static_cast<float>(number); };
    histogram.Draw(&all, real(x) + (x < 0 ? -0.5F : 0.5F), real(y), real(width), real(height));
    const auto count = static_cast<std::ptrdiff_t>(annotations.calls.size());
    EXPECT_EQ(Calls(all.calls.begin(), all.calls.begin() + count), annotations.calls);
    return {all.calls.begin() + count, all.calls.end()};
}

TEST_F(VectorDrawingTest, every_element_of_a_histogram_is_a_bar)
{
    // Axes of 20 columns, 10 to 29, and 20 rows, 29 up to 10.
    ZBW8HistogramVector histogram;
    for (const unsigned count : {0U, 2U, 4U})
        histogram.AddElement(count);
    Calls expected;
    const auto expectBar = [&](int from, int to, int top) {
        for (int x = from; x < to; ++x) {
            expected.push_back("M " + std::to_string(x) + " 29");
            expected.push_back("L " + std::to_string(x) + ' ' + std::to_string(top));
        }
    };
    expectBar(10, 20, 29);
    expectBar(20, 29, 20);
    expectBar(29, 39, 10);
    EXPECT_EQ(bars(histogram, 2, 4, 0, 0, 40, 40), expected);

    histogram.SetNumElements(2);  // 0 and 2, from 0 to 1
    expected.clear();
    expectBar(10, 29, 29);
    expectBar(29, 48, 10);
    EXPECT_EQ(bars(histogram, 1, 2, 0, 0, 40, 40), expected);

    histogram.SetNumElements(1);  // 0 alone: counts from 0 to 1
    expected.clear();
    expectBar(10, 29, 29);
    EXPECT_EQ(bars(histogram, 1, 1, 0, 0, 40, 40), expected);
    histogram.Empty();
    EXPECT_EQ(bars(histogram, 1, 1, -7, 3, 40, 40), Calls{});
}

TEST_F(VectorDrawingTest, bars_are_at_least_one_column_and_end_at_the_greatest_coordinate)
{
    ZBW8HistogramVector histogram;
    for (unsigned i = 0; i < 256; ++i)
        histogram.AddElement(i == 7 ? 0xFFFFFFFF : i);
    EXPECT_EQ(bars(histogram, 255, 4294967295.0, 0, 0, 100, 100).size(), 2 * 256U);

    RecordingDevice device;
    histogram.Draw(&device, 2147483520, -3e9F, 200, 1e10F);
    EXPECT_EQ(device.right, INT_MAX);
    EXPECT_EQ(device.calls.back().substr(0, 12), "L 2147483647");
    histogram.Draw(&device, std::nanf(""), std::nanf(""), std::nanf(""), std::nanf(""));
    EXPECT_EQ(device.calls.back().substr(0, 4), "L 0 ");
    histogram.Draw(nullptr, 0, 0, 2e9F, 100);
}

}  // namespace
