#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/geometry.h"

namespace {

class MirrorTest : public OperationTest {};

TEST_F(MirrorTest, vertical_exchanges_rows)
{
    ZImage<ZBW8> image;
    withBothWorkers([&] {
        draw(image, "123 456 789");
        ImgVerticalMirror(&image);
        EXPECT_EQ(bytesOf(image), (std::vector<std::uint8_t>{7, 8, 9, 4, 5, 6, 1, 2, 3}));
        ZROI<ZBW8> part(&image, 1, 0, 1, 2);
        ImgVerticalMirror(&part);
        EXPECT_EQ(bytesOf(image), (std::vector<std::uint8_t>{7, 5, 9, 4, 8, 6, 1, 2, 3}));
    });
    Random random(1);
    ZImage<ZC24> colour(50, 4);
    fill(colour, random);
    const std::vector<std::uint8_t> before = bytesOf(colour);
    ImgVerticalMirror(&colour);
    const std::vector<std::uint8_t> after = bytesOf(colour);
    for (std::ptrdiff_t y = 0; y < 4; ++y)
        EXPECT_TRUE(std::equal(after.begin() + 150 * y, after.begin() + 150 * (y + 1), before.begin() + 150 * (3 - y)));
}

TEST_F(MirrorTest, horizontal_takes_the_height_for_the_width)
{
    ZImage<ZBW8> image;
    const auto expectMirrored = [&](const char* rows, int x, int y, int width, int height, const char* expected) {
        ZImage<ZBW8> wanted;
        draw(wanted, expected);
        withBothWorkers([&] {
            draw(image, rows);
            ZROI<ZBW8> region(&image, x, y, width, height);
            ImgHorizontalMirror(&region);
            EXPECT_EQ(bytesOf(image), bytesOf(wanted)) << x << ',' << y << ' ' << width << 'x' << height;
        });
    };
    expectMirrored("123 456 789", 0, 0, 3, 3, "321 654 987");
    expectMirrored("1234 5678", 0, 0, 4, 2, "2134 6578");
    // A high region reaches beyond itself, but not beyond the image.
    expectMirrored("12345 12345 12345 12345", 0, 0, 2, 4, "43215 43215 43215 43215");
    expectMirrored("12345 12345 12345 12345", 1, 0, 1, 4, "15432 15432 15432 15432");
    expectMirrored("12345 12345 12345 12345", 2, 0, 1, 4, "12354 12354 12354 12354");
    expectMirrored("12345 12345 12345 12345", 3, 0, 2, 4, "12345 12345 12345 12345");
    expectMirrored("12345 12345 12345 12345", 2, 1, 3, 3, "12345 12543 12543 12543");
    expectMirrored("12 12 12", 2, 0, 0, 3, "12 12 12");
    expectMirrored("12 12 12", 0, 0, 0, 3, "12 12 12");
}

// Where the rows of the image end is found out from its storage, which may run backwards.
TEST_F(MirrorTest, horizontal_stays_within_the_rows_of_any_image)
{
    for (const int gap : {0, 3})
        for (const bool bottomUp : {false, true}) {
            const int pitch = 5 + gap;
            std::vector<std::uint8_t> buffer(static_cast<std::size_t>(5 * pitch + 5), 77);
            ZImage<ZBW8> image;
            image.Attach(buffer.data() + (bottomUp ? 5 * pitch : 0), 5, 6, bottomUp ? -pitch : pitch);
            for (int y = 0; y < 6; ++y)
                for (int x = 0; x < 5; ++x)
                    image.SetPixel(static_cast<ZBW8>(x), x, y);
            ZROI<ZBW8> high(&image, 1, 0, 2, 6);  // columns 1 to 6, of which there are 4
            ImgHorizontalMirror(&high);
            for (int y = 0; y < 6; ++y)
                for (int x = 0; x < 5; ++x)
                    EXPECT_EQ(image.GetPixel(x, y), x < 3 ? x : 7 - x);
            for (int y = 0; y < 5; ++y)
                for (int i = 0; i < gap; ++i)
                    EXPECT_EQ(buffer[static_cast<std::size_t>(y * pitch + 5 + i)], 77);
        }
}

}  // namespace
