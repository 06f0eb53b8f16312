#include "support/errors.h"
#include "support/images.h"
#include "zkit/color.h"

// Found by the comparisons of tests.
bool operator==(ZC24 a, ZC24 b) { return a.c0 == b.c0 && a.c1 == b.c1 && a.c2 == b.c2; }

std::ostream& operator<<(std::ostream& out, ZC24 c) { return out << int(c.c2) << ',' << int(c.c1) << ',' << int(c.c0); }

namespace {

class ColorTest : public OperationTest {};

TEST_F(ColorTest, component_i_is_byte_2_minus_i)
{
    ZImage<ZC24> colour(3, 2);
    colour.SetPixel({1, 2, 3}, 2, 1);
    ZImage<ZBW8> grey(4, 4);
    ZROI<ZC24> region(&colour, 1, 0, 2, 2);
    ZROI<ZBW8> plane(&grey, 2, 1, 2, 2);
    for (unsigned component = 0; component < 3; ++component) {
        EXPECT_EQ(ClrGetComponent(&region, &plane, component, nullptr), 0);
        EXPECT_EQ(plane.GetPixel(1, 1), 3 - component);
        grey.SetPixel(static_cast<ZBW8>(40 + component), 2, 1);
        EXPECT_EQ(ClrSetComponent(&plane, &region, component), 0);
    }
    EXPECT_EQ(bytesOf(colour), (std::vector<std::uint8_t>{0, 0, 0, 42, 41, 40, 0, 0, 0,  //
                                                          0, 0, 0, 0, 0, 0, 1, 2, 3}));
    EXPECT_EQ(grey.GetPixel(1, 1), 0);

    EXPECT_EQ(ClrGetComponent(&region, &plane, 3, nullptr), 1013);
    EXPECT_FAILURE(1013, "ClrGetComponent");
    EXPECT_EQ(ClrSetComponent(&plane, &colour, 0), 1402);
    EXPECT_FAILURE(1402, "ClrSetComponent");
    ZROI<ZC24> outside(&colour, 1, 1, 3, 3);
    EXPECT_EQ(ClrGetComponent(&outside, nullptr, 0, nullptr), 1400);
    EXPECT_FAILURE(1400, "ClrGetComponent");
    EXPECT_EQ(ClrSetComponent(nullptr, &colour, 0), 1400);
    EXPECT_FAILURE(1400, "ClrSetComponent");
}

TEST_F(ColorTest, planes_that_overlap_the_colour_pixels)
{
    std::vector<std::uint8_t> bytes{1, 2, 3, 4, 5, 6, 7, 8, 9}, expected{3, 6, 9, 4, 5, 6, 7, 8, 9};
    ZImage<ZC24> colour;
    ZImage<ZBW8> plane;
    colour.Attach(bytes.data(), 3, 1, 9);
    plane.Attach(bytes.data(), 3, 1, 3);
    EXPECT_EQ(ClrGetComponent(&colour, &plane, 0, nullptr), 0);
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(ClrSetComponent(&plane, &colour, 2), 0);  // byte 0 of the pixels becomes 3, 6, 9
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{3, 6, 9, 6, 5, 6, 9, 8, 9}));
}

ZC24 converted(unsigned space, int inverse, ZC24 colour)
{
    ZColorLookup(space, inverse).Transform(colour, colour);
    return colour;
}

TEST_F(ColorTest, well_known_colours)
{
    struct {
        unsigned space;
        ZC24 rgb, expected;  // in memory order: blue, green, red and component 2, 1, 0
    } const cases[] = {
        {Z_COLOR_RGB, {1, 2, 3}, {1, 2, 3}},
        {Z_COLOR_YUV, {0, 0, 255}, {255, 85, 76}},
        {Z_COLOR_YUV, {128, 128, 128}, {128, 128, 128}},
        {Z_COLOR_HSV, {0, 0, 255}, {255, 255, 0}},
        {Z_COLOR_HSV, {0, 200, 0}, {200, 255, 85}},
        {Z_COLOR_HSV, {100, 100, 100}, {100, 0, 0}},
        {Z_COLOR_HSV, {1, 0, 255}, {255, 255, 0}},  // a hue that rounds to a full turn
        {Z_COLOR_LAB, {255, 255, 255}, {128, 128, 255}},
        {Z_COLOR_LAB, {0, 0, 0}, {128, 128, 0}},
        {Z_COLOR_LAB, {0, 0, 255}, {195, 208, 136}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(converted(c.space, 0, c.rgb), c.expected) << c.space << ": " << c.rgb;
    EXPECT_EQ(converted(4, 0, {1, 2, 3}), (ZC24{1, 2, 3}));
    EXPECT_EQ(takeFailure().code, 1011);
}

void expectNear(ZC24 a, ZC24 b, int tolerance)
{
    EXPECT_NEAR(a.c0, b.c0, tolerance) << a << " and " << b;
    EXPECT_NEAR(a.c1, b.c1, tolerance) << a << " and " << b;
    EXPECT_NEAR(a.c2, b.c2, tolerance) << a << " and " << b;
}

// There and back differs by rounding only: in L*a*b* itself, since a step of it is many steps of a dark red.
TEST_F(ColorTest, conversions_can_be_inverted)
{
    Random random(2);
    const auto any = [&random] { return static_cast<unsigned char>(random(0, 255)); };
    for (int i = 0; i < 4000; ++i) {
        const ZC24 colour{any(), any(), any()};
        EXPECT_EQ(converted(Z_COLOR_RGB, 1, converted(Z_COLOR_RGB, 0, colour)), colour);
        expectNear(converted(Z_COLOR_YUV, 1, converted(Z_COLOR_YUV, 0, colour)), colour, 2);
        expectNear(converted(Z_COLOR_HSV, 1, converted(Z_COLOR_HSV, 0, colour)), colour, 6);
        const ZC24 lab = converted(Z_COLOR_LAB, 0, colour);
        expectNear(converted(Z_COLOR_LAB, 0, converted(Z_COLOR_LAB, 1, lab)), lab, 2);
    }
    ZImage<ZC24> image(1, 1);
    image.SetPixel({0, 200, 0}, 0, 0);
    ZImage<ZBW8> hue(1, 1);
    ZColorLookup lookup(Z_COLOR_HSV);
    EXPECT_EQ(ClrGetComponent(&image, &hue, 0, &lookup), 0);
    EXPECT_EQ(hue.GetPixel(0, 0), 85);
}

TEST_F(ColorTest, colour_vectors)
{
    ZColorVector vector(2);
    vector.AddElement(ZColor(1, 2, 3));
    EXPECT_EQ(vector[0].c[2], 3);
    EXPECT_EQ(vector.GetMaxElements(), 2U);
}

}  // namespace
