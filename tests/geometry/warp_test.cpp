#include "support/errors.h"
#include "support/images.h"
#include "zkit/core/angle.h"
#include "zkit/img/warp.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

using Bytes = std::vector<std::uint8_t>;

class WarpTest : public OperationTest {};

// Maps whose elements are anything from `low` to `high`.
template <class T>
void fillMap(ZROI<T>& map, Random& random, int lowX, int highX, int lowY, int highY)
{
    for (int y = 0; y < map.GetHeight(); ++y)
        for (int x = 0; x < map.GetWidth(); ++x)
            map.SetPixel(static_cast<T>((static_cast<unsigned>(random(lowX, highX)) & 0xFFFFU) |
                                        static_cast<unsigned>(random(lowY, highY)) << 16),
                         x, y);
}

TEST_F(WarpTest, maps_name_pixels)
{
    ZImage<ZBW8> src, dst(3, 2);
    draw(src, "123 456");
    ZImage<ZBW16> mapX(3, 2), mapY(3, 2);
    ZImage<ZBW32> map(3, 2);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) {
            mapX.SetPixel(static_cast<ZBW16>(x), x, y);
            mapY.SetPixel(static_cast<ZBW16>(y), x, y);
            map.SetPixel(static_cast<ZBW32>(2 - x) | static_cast<ZBW32>(1 - y) << 16, x, y);
        }
    withBothWorkers([&] {
        EXPECT_EQ(ImgWarp(&src, &dst, &mapX, &mapY, 0, 0), 0);
        EXPECT_EQ(bytesOf(dst), bytesOf(src));
        ImgWarp(&src, &dst, &mapX, &mapY, -1, 1);
        EXPECT_EQ(bytesOf(dst), (Bytes{0, 4, 5, 0, 0, 0}));
        ImgWarp(&src, &dst, &mapX, &mapY, INT_MIN, INT_MAX);
        EXPECT_EQ(bytesOf(dst), Bytes(6, 0));
        mapX.SetPixel(0x8000, 0, 0);  // -32768
        ImgWarp(&src, &dst, &mapX, &mapY, 32768, -1);
        EXPECT_EQ(bytesOf(dst), (Bytes{0, 0, 0, 0, 0, 0}));
        ImgWarp(&src, &dst, &mapX, &mapY, 32768, 1);
        EXPECT_EQ(bytesOf(dst), (Bytes{4, 0, 0, 0, 0, 0}));
        mapX.SetPixel(0, 0, 0);
        EXPECT_EQ(ImgWarp(&src, &dst, &map), 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{6, 5, 4, 3, 2, 1}));
    });
}

// Sources of all sizes, also those whose coordinates do not fit signed words, against the definition.
TEST_F(WarpTest, any_map)
{
    Random random(11);
    for (const auto& [width, height, pitch] :
         {std::tuple(1, 1, 1), {60, 40, 70}, {40000, 2, 40000}, {3, 40000, 3}, {100, 60, 40000}, {100, 60, 20000}}) {
        std::vector<std::uint8_t> buffer(static_cast<std::size_t>(pitch * height));
        for (std::uint8_t& byte : buffer)
            byte = static_cast<std::uint8_t>(random(1, 255));
        for (const int over : {0, 0, 9})
            for (const int offset : {0, 20, -40000}) {
                ZImage<ZBW8> src, dst(2100, 3);
                src.Attach(buffer.data() + (offset ? pitch * (height - 1) : 0), width, height, offset ? -pitch : pitch);
                ZImage<ZBW16> mapX(2100, 3), mapY(2100, 3);
                fillMap(mapX, random, -over - offset, width - 1 + over - offset, 0, 0);
                fillMap(mapY, random, -over + offset, height - 1 + over + offset, 0, 0);
                Bytes expected;
                for (int y = 0; y < 3; ++y)
                    for (int x = 0; x < 2100; ++x)
                        expected.push_back(src.GetPixel(offset + static_cast<std::int16_t>(mapX.GetPixel(x, y)),
                                                        static_cast<std::int16_t>(mapY.GetPixel(x, y)) - offset));
                SCOPED_TRACE(testing::Message() << width << 'x' << height << " + " << offset);
                withBothWorkers([&] {
                    ImgWarp(&src, &dst, &mapX, &mapY, offset, -offset);
                    EXPECT_EQ(bytesOf(dst), expected);
                });
            }
    }
}

TEST_F(WarpTest, a_packed_map_stops_at_a_pixel_outside)
{
    Random random(12);
    ZImage<ZBW8> src(1600, 20), dst(1600, 20);
    fill(src, random);
    ZImage<ZBW32> map(1611, 21);
    fillMap(map, random, 0, 1599, 0, 19);
    for (const auto& [column, row, element] :
         {std::tuple(7, 3, 0xFFFF0000U), {1540, 9, 1600U}, {1599, 19, 20U << 16}, {0, 20, 0U}}) {
        const ZBW32 good = map.GetPixel(column, row);
        map.SetPixel(element, column, row);
        withBothWorkers([&, column = column, row = row] {
            for (int y = 0; y < 20; ++y)
                std::memset(dst.GetPixelPtr(0, y), 77, 1600);
            EXPECT_EQ(ImgWarp(&src, &dst, &map), row < 20 ? 1405 : 0);
            if (row < 20) {
                EXPECT_FAILURE(1405, "ImgWarp");
            }
            int wrong = 0;
            for (int y = 0; y < 20; ++y)
                for (int x = 0; x < 1600; ++x) {
                    const auto at = map.GetPixel(x, y);
                    const bool before = y < row || (y == row && x < column);
                    wrong += dst.GetPixel(x, y) !=
                             (before ? src.GetPixel(static_cast<int>(at & 0xFFFF), static_cast<int>(at >> 16)) : 77);
                }
            EXPECT_EQ(wrong, 0);
        });
        map.SetPixel(good, column, row);
    }
}

TEST_F(WarpTest, a_destination_may_lie_over_its_own_map)
{
    Random random(15);
    ZImage<ZBW8> src(60, 60), apart(50, 4), over;
    fill(src, random);
    ZImage<ZBW16> mapX(50, 4), mapY(50, 4);
    fillMap(mapX, random, -1, 50, 0, 0);
    fillMap(mapY, random, -1, 4, 0, 0);
    ImgWarp(&src, &apart, &mapX, &mapY, 0, 0);
    over.Attach(mapY.GetPixelPtr(0, 0), 50, 4, 50);
    ImgWarp(&src, &over, &mapX, &mapY, 0, 0);
    EXPECT_EQ(bytesOf(over), bytesOf(apart));
}

TEST_F(WarpTest, unusable_regions_and_maps)
{
    ZImage<ZBW8> image(4, 4), other(4, 5), empty;
    ZImage<ZC24> colour(4, 4);
    ZImage<ZBW16> map(4, 4), wide(5, 4), none;
    ZImage<ZBW32> packed(4, 4), narrow(3, 4), low(4, 3);
    const auto expectCode = [](short code, short returned) {
        EXPECT_EQ(returned, code);
        EXPECT_FAILURE(code, "ImgWarp");
    };
    expectCode(1400, ImgWarp(&image, &image, nullptr, &wide, 0, 0));
    expectCode(1400, ImgWarp(&image, &image, &wide, &none, 0, 0));
    expectCode(1402, ImgWarp(&image, &image, &wide, &map, 0, 0));
    expectCode(1402, ImgWarp(&image, &image, &map, &wide, 0, 0));
    expectCode(1402, ImgWarp(&other, &image, &narrow));
    expectCode(1402, ImgWarp(&empty, &image, &packed));
    expectCode(1400, ImgWarp(&image, &image, nullptr));
    expectCode(2200, ImgWarp(&image, &image, &narrow));
    expectCode(2200, ImgWarp(&image, &image, &low));
    map.SetPlacement(1, 0, 4, 4);
    packed.SetPlacement(0, 1, 4, 4);
    expectCode(1401, ImgWarp(&image, &image, &map, &map, 0, 0));
    expectCode(1401, ImgWarp(&image, &image, &packed));
    ImgWarp(&colour, &colour, &wide, &wide, 0, 0);
    EXPECT_FAILURE(1402, "ImgWarp", "ImgWarp (C24)");
    ImgWarp(&colour, nullptr, &wide, &wide, 0, 0);
    EXPECT_FAILURE(1400, "ImgWarp (C24)");
    ZROI<ZBW8> nothing(&image, 4, 0, 0, 4);
    image.SetPixel(9, 0, 0);
    map.SetPlacement(0, 0, 4, 4);
    EXPECT_EQ(ImgWarp(&nothing, &image, &map, &map, 0, 0), 0);
    EXPECT_EQ(bytesOf(image), Bytes(16, 0));
}

TEST_F(WarpTest, a_ring_is_unwrapped)
{
    ZImage<ZBW16> mapX, mapY;
    const auto at = [&](int column, int row) {
        return std::pair(int(mapX.GetPixel(column, row)), int(mapY.GetPixel(column, row)));
    };
    ImgSetCircleWarp(100, 80, 3, 50, 20, 5, 0, 360, &mapX, &mapY);
    ASSERT_EQ(mapX.GetWidth(), 5);
    ASSERT_EQ(mapY.GetHeight(), 3);
    EXPECT_EQ(at(0, 0), std::pair(120, 80));  // row 0 on radiusB
    EXPECT_EQ(at(0, 2), std::pair(150, 80));
    EXPECT_EQ(at(1, 1), std::pair(100, 115));  // a quarter turn down the screen
    EXPECT_EQ(at(2, 2), std::pair(50, 79));    // the sine of half a turn in single precision is not quite 0
    EXPECT_EQ(at(4, 0), std::pair(120, 80));

    ImgSetCircleWarp(50, 50, 101, 30, 30, 77, 10, 350, &mapX, &mapY);
    for (int column = 0; column < 77; ++column)
        for (int row = 1; row < 101; ++row)
            ASSERT_EQ(at(column, row), at(column, 0));

    ZSetAngleUnit(Z_ANGLE_RADIANS);
    ImgSetCircleWarp(100, 80, 7, 50, 20, 1, 1.5707964F, 9, &mapX, &mapY);  // the only column at the start
    EXPECT_EQ(at(0, 6), std::pair(100, 130));
    ZSetAngleUnit(Z_ANGLE_DEGREES);
    ImgSetCircleWarp(100, 80, 1, 50, 20, 2, 0, 90, &mapX, &mapY);  // the only row on radiusB
    EXPECT_EQ(at(1, 0), std::pair(100, 100));
    ImgSetCircleWarp(-3.5F, 70000, 1, 0, 0, 1, 0, 0, &mapX, &mapY);  // the low 16 bits
    EXPECT_EQ(at(0, 0), std::pair(65533, 4464));
}

TEST_F(WarpTest, circles_of_hostile_arguments)
{
    const float infinity = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    ZImage<ZBW16> mapX, mapY;
    ImgSetCircleWarp(0, 0, 0, 1, 1, 0, 0, 0, &mapX, &mapY);
    EXPECT_FAILURE(1013, "ImgSetCircleWarp");
    ImgSetCircleWarp(0, 0, 1, 1, 1, INT_MIN, 0, 0, &mapX, &mapY);
    EXPECT_FAILURE(1016, "ImgSetCircleWarp");
    ImgSetCircleWarp(0, 0, 0, 1, 1, 0, 0, 0, &mapX, nullptr);
    EXPECT_FAILURE(1400, "ImgSetCircleWarp");
    ImgSetCircleWarp(0, 0, INT_MAX, 1, 1, INT_MAX, 0, 0, &mapX, &mapY);
    EXPECT_FAILURE(1303, "ImgSetCircleWarp");
    for (const float strange : {nan, infinity}) {
        ImgSetCircleWarp(5, 5, 4, 3, 2, 4, strange, 90, &mapX, &mapY);
        EXPECT_EQ(mapX.GetPixel(0, 0), 0);
    }
    ImgSetCircleWarp(1e30F, -1e30F, 4, 3, 2, 4, 0, 90, &mapX, &mapY);
    EXPECT_EQ(mapX.GetPixel(0, 0), 0xFFFF);
    EXPECT_EQ(mapY.GetPixel(0, 0), 0);
    ImgSetCircleWarp(0, 0, 4, infinity, 2, 4, 0, 90, &mapX, &mapY);
    EXPECT_EQ(mapX.GetPixel(0, 0), 0) << "no part of infinity is no number";
}

}  // namespace
