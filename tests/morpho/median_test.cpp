#include "support/colours.h"
#include "support/errors.h"
#include "zkit/img/morpho.h"

#include <algorithm>
#include <array>

namespace {

class MedianTest : public OperationTest {};

using Bytes = std::vector<std::uint8_t>;

// The median of every 3 x 3 neighbourhood, with the border value or, where that is negative, the nearest pixel. With
// `above` pixels in the row above are those of the result.
Bytes medians(ZImage<ZBW8>& src, int border, bool above = false)
{
    Bytes dst;
    const int width = src.GetWidth(), height = src.GetHeight();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            std::array<int, 9> nine{};
            for (int i = 0; i < 9; ++i) {
                const int u = x + i % 3 - 1, v = y + i / 3 - 1;
                const int column = std::clamp(u, 0, width - 1), row = std::clamp(v, 0, height - 1);
                const bool outside = (u != column || v != row) && border >= 0;
                const int pixel = above && v < y && !outside ? dst[static_cast<std::size_t>(row * width + column)]
                                                             : src.GetPixel(column, row);
                nine[static_cast<std::size_t>(i)] = outside ? border : pixel;
            }
            std::sort(nine.begin(), nine.end());
            dst.push_back(static_cast<std::uint8_t>(nine[4]));
        }
    return dst;
}

TEST_F(MedianTest, is_the_fifth_of_nine_values)
{
    Random random(9);
    for (int round = 0; round < 300; ++round) {
        ZImage<ZBW8> src(random(1, round % 4 ? 6 : 150), random(1, 6)), dst(src.GetWidth(), src.GetHeight());
        fill(src, random);
        const int border = random(0, 255);
        const Bytes constant = medians(src, border), replicated = medians(src, -1), swept = medians(src, border, true);
        withBothWorkers([&] {
            EXPECT_EQ(ImgMedian(&src, &dst, border - 256), 0);  // the lower 8 bits count
            EXPECT_EQ(bytesOf(dst), constant);
            ImgMedian(&src, &dst);
            EXPECT_EQ(bytesOf(dst), replicated);
            copyPixels<ZBW8>(src, dst);
            EXPECT_EQ(ImgMedian(&dst, &dst, border), 0);  // in place the row above is filtered
            EXPECT_EQ(bytesOf(dst), swept);
        });
    }
}

TEST_F(MedianTest, colour_has_a_border_for_every_byte)
{
    ZImage<ZC24> src(1, 1), dst(1, 1);
    src.SetPixel({9, 9, 9}, 0, 0);
    withBothWorkers([&] {
        ImgMedian(&src, &dst, {1, 2, 3});
        EXPECT_EQ(bytesOf(dst), (Bytes{1, 2, 3}));
    });
    expectByteByByte(
        {50, 7}, {50, 7},
        [](auto from, auto to) {
            ImgMedian(from, to, {70, 60, 50});
        },
        [](auto from, auto to, int byte) { ImgMedian(from, to, 70 - 10 * byte); });
}

TEST_F(MedianTest, regions_of_different_sizes_are_refused)
{
    ZImage<ZBW8> grey(4, 4), smallGrey(3, 4);
    ZImage<ZC24> colour(4, 4), smallColour(3, 4);
    EXPECT_EQ(ImgMedian(&grey, &smallGrey, 0), 1402);
    EXPECT_FAILURE(1402, "ImgMedian");
    ImgMedian(&grey, &smallGrey);
    EXPECT_FAILURE(1402, "ImgMedian");
    ImgMedian(&colour, &smallColour, {});
    EXPECT_FAILURE(1402, "ImgMedian", "ImgMedian (C24)");
}

}  // namespace
