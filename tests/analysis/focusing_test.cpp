#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"

#include <cmath>

namespace {

class FocusingTest : public OperationTest {};

TEST_F(FocusingTest, uniform_and_narrow_regions_are_not_sharp)
{
    ZImage<ZBW8> grey(64, 9), column;
    ZImage<ZC24> colour(64, 9), colourColumn(1, 9);
    std::memset(grey.GetPixelPtr(0, 0), 50, static_cast<std::size_t>(grey.GetRowPitch() * 9));
    draw(column, "1 9 3 7");
    Random random(1);
    fill(colourColumn, random);
    ZROI<ZBW8> region(&grey, 8, 2, 50, 4);
    EXPECT_EQ(ImgFocusing(&region), 0);
    EXPECT_EQ(ImgFocusing(&colour), 0);
    EXPECT_EQ(ImgFocusing(&column), 0);
    EXPECT_EQ(ImgFocusing(&colourColumn), 0);
}

// Each row walked starts a pixel further to the left, so that one row more than expected is taken and the rows read
// beyond the left edge of the region; below the last row of the image everything is 0.
TEST_F(FocusingTest, the_walk_is_slanted)
{
    std::vector<std::uint8_t> pixels{1, 2, 4, 7,  //
                                     3, 3, 9, 1,  //
                                     5, 8, 2, 6};
    ZImage<ZBW8> image;
    image.Attach(pixels.data(), 4, 3, 4);
    ZROI<ZBW8> region(&image, 2, 0, 2, 3);
    // Offsets 2, 5 and 8 of the buffer, one pixel each: (4-7)^2+(4-9)^2, (3-9)^2+(3-8)^2, (5-8)^2+(5-0)^2.
    const double total = 34 + 61 + 34;
    withBothWorkers([&] { EXPECT_EQ(ImgFocusing(&region), static_cast<float>(std::sqrt(total / 6))); });

    // The same pixels stored from the bottom up: the rows go the other way in memory, the walk still leans to the left.
    image.Attach(pixels.data() + 8, 4, 3, -4);
    // Offsets 10, 5 and, as the walk has not reached the last row at offset 2 before, no more.
    const double upwards = (2 - 6) * (2 - 6) + (2 - 9) * (2 - 9) + (3 - 9) * (3 - 9) + (3 - 2) * (3 - 2);
    EXPECT_EQ(ImgFocusing(&region), static_cast<float>(std::sqrt(upwards / 6)));
}

TEST_F(FocusingTest, a_narrow_tall_image_is_walked_in_more_rows_than_it_has)
{
    // Rows of two pixels: the walk moves on by one pixel a row, until the last row.
    std::vector<std::uint8_t> pixels{10, 20, 50, 90, 30, 70};
    ZImage<ZBW8> image;
    image.Attach(pixels.data(), 2, 3, 2);
    double total = 0;
    for (std::size_t i = 0; i < 4; ++i)
        total += std::pow(pixels[i] - pixels[i + 1], 2) + std::pow(pixels[i] - pixels[i + 2], 2);
    withBothWorkers([&] { EXPECT_EQ(ImgFocusing(&image), static_cast<float>(std::sqrt(total / 6))); });
}

TEST_F(FocusingTest, colour_compares_equal_components)
{
    std::vector<std::uint8_t> pixels{1, 2, 3, 5, 7, 9,  //
                                     0, 0, 0, 4, 4, 4};
    ZImage<ZC24> image;
    image.Attach(pixels.data(), 2, 2, 6);
    // Offset 0, then offset 3, which lies before the last row at 6 and reads the last row's second pixel below.
    const double total = 16 + 25 + 36 + 1 + 4 + 9 + (25 + 49 + 81) + (1 + 9 + 25);
    withBothWorkers([&] { EXPECT_EQ(ImgFocusing(&image), static_cast<float>(std::sqrt(total / 12))); });
}

}  // namespace
