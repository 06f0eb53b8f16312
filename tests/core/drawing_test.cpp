#include "support/errors.h"
#include "support/recording_device.h"
#include "zkit/core/angle.h"
#include "zkit/core/plot.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

class DrawingTest : public OperationTest {};

TEST_F(DrawingTest, the_pen_is_where_it_was_put)
{
    RecordingDevice device;
    POINT previous{-1, -1};
    EXPECT_EQ(MoveToEx(&device, 3, 4, &previous), 1);
    EXPECT_EQ(previous.x, 0);
    EXPECT_EQ(LineTo(&device, 5, 6), 1);
    EXPECT_EQ(MoveToEx(&device, 0, 0, &previous), 1);
    EXPECT_EQ(previous.x, 5);
    EXPECT_EQ(previous.y, 6);
    EXPECT_EQ(ZDrawText(&device, 1, 2, "text"), 1);
    EXPECT_EQ(device.calls, (std::vector<std::string>{"M 3 4", "L 5 6", "M 0 0", "T 1 2 text"}));
    EXPECT_EQ(MoveToEx(nullptr, 1, 1, &previous), 0);
    EXPECT_EQ(LineTo(nullptr, 1, 1), 0);
    EXPECT_EQ(ZDrawText(&device, 1, 2, nullptr), 0);
}

TEST_F(DrawingTest, a_plot_maps_its_ranges_to_its_view)
{
    ZPlot plot;
    plot.SetXRange(0, 255);
    plot.SetYRange(0, 1000);
    plot.SetView(100, 50, 323 + 256, 452);  // margins 56, 12, 12, 40
    EXPECT_EQ(plot.XView(0), 156);
    EXPECT_EQ(plot.XView(255), 666);
    EXPECT_EQ(plot.XView(127.5), 411);
    EXPECT_EQ(plot.GetBaseLine(), 461);
    EXPECT_EQ(plot.YView(0), 461);
    EXPECT_EQ(plot.YView(1000), 62);
    EXPECT_EQ(plot.XView(1e300), INT_MAX);
    EXPECT_EQ(plot.YView(1e300), INT_MIN);
    EXPECT_EQ(plot.XView(std::nan("")), 156);

    plot.SetXRange(10, 0);  // turned round
    EXPECT_EQ(plot.XView(10), 156);
    EXPECT_EQ(plot.XView(0), 666);
    const double infinite = std::numeric_limits<double>::infinity(), huge = std::numeric_limits<double>::max();
    for (const auto& [from, to] : {std::pair(5.0, 5.0), std::pair(5.0, infinite), std::pair(5.0, std::nan(""))}) {
        plot.SetXRange(from, to);  // becomes [5, 6]
        EXPECT_EQ(plot.XView(5), 156);
        EXPECT_EQ(plot.XView(6), 666);
    }
    plot.SetXRange(-huge, huge);
    EXPECT_EQ(plot.XView(-huge), 156);
    EXPECT_EQ(plot.XView(0), 411);
    EXPECT_EQ(plot.XView(huge), 666);
    EXPECT_EQ(plot.XView(infinite), INT_MAX);
    plot.SetXRange(0, 137);  // halves go to the right, however the quotient is rounded
    plot.SetView(-7, 0, 199, 200);
    EXPECT_EQ(plot.XView(74.5), 117);
    plot.SetXRange(-huge, huge);
    plot.SetView(INT_MAX, INT_MIN, INT_MAX, INT_MAX);
    EXPECT_GT(plot.XView(-huge), INT_MAX - 300);
}

TEST_F(DrawingTest, annotations_stay_in_the_rectangle_and_name_round_values)
{
    RecordingDevice device;
    ZPlot plot;
    plot.SetXRange(0, 255);
    plot.SetYRange(0, 7);
    plot.DrawAnnotations(&device, 20, 10, 400, 300, "Value", "Count");
    const auto drawn = [&](const std::string& what) {
        for (const std::string& call : device.calls)
            if (call.size() >= what.size() && call.substr(call.size() - what.size()) == what)
                return true;
        return false;
    };
    for (const char* text : {" 0", " 50", " 100", " 250", " 2", " 6", " Value", " Count"})
        EXPECT_TRUE(drawn(text)) << text;
    EXPECT_FALSE(drawn(" 300"));
    EXPECT_GE(device.left, 20);
    EXPECT_GE(device.top, 10);
    EXPECT_LT(device.right, 420);
    EXPECT_LT(device.bottom, 310);

    // Numbers of every size end, also without a device.
    const double huge = std::numeric_limits<double>::max(), tiny = std::numeric_limits<double>::denorm_min();
    for (const double extent : {tiny, 1e-300, 1e-9, 1e18, 1e300, huge}) {
        device.calls.clear();
        plot.SetXRange(-extent / 2, extent / 2);
        plot.DrawAnnotations(&device, 0, 0, INT_MAX, INT_MAX, nullptr, nullptr);
        EXPECT_LT(device.calls.size(), 700U);
        plot.DrawAnnotations(nullptr, INT_MIN, INT_MIN, -5, 0, "a", "b");
    }
}

TEST_F(DrawingTest, angles)
{
    EXPECT_EQ(ZGetAngleUnit(), Z_ANGLE_DEGREES);
    EXPECT_EQ(ZToRadians(180), 3.14159274F);
    EXPECT_EQ(ZFromRadians(1.57079637F), 90);
    ZSetAngleUnit(Z_ANGLE_RADIANS);
    EXPECT_EQ(ZToRadians(1.5F), 1.5F);
    EXPECT_EQ(ZFromRadians(1.5F), 1.5F);
    ZSetAngleUnit(static_cast<ZAngleUnit>(9));
    EXPECT_EQ(takeFailure().code, 1011);
    EXPECT_EQ(ZGetAngleUnit(), Z_ANGLE_RADIANS);
    ZSetAngleUnit(Z_ANGLE_DEGREES);
}

}  // namespace
