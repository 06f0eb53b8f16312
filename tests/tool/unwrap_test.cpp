// Rings unwrapped: what lies on a circle comes to lie in a row, what lies on a ray in a column.
#include "command.h"
#include "unwrap/unwrap.h"

#include <cmath>

using namespace zkit::tool;

namespace {

// Levels that tell the distance from (60, 50), and components that tell the quarter.
Picture target()
{
    auto image = std::make_unique<ZImage<ZC24>>(121, 101);
    for (int y = 0; y < 101; ++y)
        for (int x = 0; x < 121; ++x) {
            const auto distance = static_cast<unsigned char>(std::lround(std::hypot(x - 60, y - 50)));
            image->SetPixel({distance, static_cast<unsigned char>(x > 60), static_cast<unsigned char>(y > 50)}, x, y);
        }
    return image;
}

}  // namespace

TEST(Unwrap, CirclesBecomeRows)
{
    const Ring ring = {60, 50, 20, 40, 0, 350, 36, 21};
    const Picture unwrapped = unwrap(target(), ring);
    const auto& image = *std::get<ImagePointer<ZC24>>(unwrapped);
    ASSERT_EQ(image.GetWidth(), 36);
    ASSERT_EQ(image.GetHeight(), 21);
    for (int y = 0; y < 21; ++y)
        for (int x = 0; x < 36; ++x) {
            const ZC24 pixel = image.GetPixel(x, y);
            EXPECT_NEAR(pixel.c0, 20 + y, 1) << x << ", " << y;
            if (x % 9 != 0) {
                EXPECT_EQ(pixel.c1, x < 9 || x > 27) << "right of the centre";
                EXPECT_EQ(pixel.c2, x < 18) << "below the centre: clockwise";
            }
        }
}

TEST_F(Command, Unwrap)
{
    writePicture(folder_ / "target.ppm", target());
    EXPECT_EQ(run("unwrap --center 60,50 --radii 20,40 target.ppm ring.png").status, 0);
    const Picture ring = readPicture(folder_ / "ring.png");
    EXPECT_EQ(valuesOf(ring).size(), 3U * 251 * 21) << "40 times 2 pi columns, 21 rows";
    EXPECT_EQ(
        run("unwrap --center 60,50 --radii 40,20 --angles=-90,90 --width 30 --height 4 target.ppm half.bmp").status, 0);
    const Values half = valuesOf(readPicture(folder_ / "half.bmp"));
    ASSERT_EQ(half.size(), 3U * 30 * 4);
    EXPECT_EQ(half[0], 0) << "begins above the centre";
    EXPECT_EQ(half[2], 40);
    EXPECT_EQ(run("unwrap --center 999,999 --radii 1,2 target.ppm dark.ppm").status, 0);

    folder_.write("wide.pgm", bytesOf("P2 1 1 999  500\n"));
    EXPECT_EQ(run("unwrap --center 0,0 --radii 1,2 wide.pgm x.png").status, 1);
    EXPECT_FALSE(exists("x.png"));
    for (const char* arguments : {"", "--center 1,2 a b", "--center 1 --radii 1,2 a b", "--center 1,2 --radii -1,2 a b",
                                  "--center 1,nan --radii 1,2 a b", "--center 1,2 --radii 1,99999 a b",
                                  "--center 1,2 --radii 1,2 --width 0 a b", "--center 1,2 --radii 1,2 a"})
        EXPECT_EQ(run(std::string("unwrap ") + arguments).status, 2) << arguments;
}
