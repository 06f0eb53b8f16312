// Pictures of every type through every format, and conversions that say what they lose.
#include "command.h"
#include "convert/convert.h"

#include <algorithm>

using namespace zkit::tool;

namespace {

// make(value) gives the pixel of a value of pattern().
template <class T, class Make>
ImagePointer<T> imageOf(int width, int height, int greatest, Make make)
{
    auto image = std::make_unique<ZImage<T>>(width, height);
    const Values values = pattern(width * height, greatest);
    for (int i = 0; i < width * height; ++i)
        image->SetPixel(make(values[static_cast<std::size_t>(i)]), i % width, i / width);
    return image;
}

unsigned char byte(int value) { return static_cast<unsigned char>(value); }

ImagePointer<ZBW16> wideImage(int width, int height, int greatest)
{
    return imageOf<ZBW16>(width, height, greatest, [](int value) { return static_cast<ZBW16>(value); });
}

Picture pictureOf(std::size_t type, int width, int height)
{
    switch (type) {
    case 0: return imageOf<ZBW1>(width, height, 1, [](int value) { return ZBW1{byte(value)}; });
    case 1: return imageOf<ZBW8>(width, height, 255, byte);
    case 2: return wideImage(width, height, 65535);
    default:
        return imageOf<ZC24>(width, height, 0xffffff, [](int value) {
            return ZC24{byte(value), byte(value >> 8), byte(value >> 16)};
        });
    }
}

}  // namespace

TEST(WritePicture, ComesBackAsItWas)
{
    const TemporaryFolder folder;
    const std::pair<const char*, std::vector<std::size_t>> formats[] = {
        {"x.png", {0, 1, 2, 3}}, {"x.TIF", {0, 1, 2, 3}}, {"x.bmp", {0, 1, 3}},
        {"x.pnm", {0, 1, 2, 3}}, {"x.pbm", {0}},          {"x.pgm", {1, 2}},
        {"x.ppm", {3}},          {"x.gif", {}},           {"x", {}}};
    for (const auto& [name, types] : formats)
        for (std::size_t type = 0; type < 4; ++type)
            for (const auto& [width, height] : {std::pair{1, 1}, {13, 7}, {300, 41}}) {
                SCOPED_TRACE(testing::Message() << name << ", type " << type << ", width " << width);
                const Picture picture = pictureOf(type, width, height);
                if (std::ranges::find(types, type) == types.end()) {
                    EXPECT_THROW(writePicture(folder / name, picture), PictureError);
                    continue;
                }
                writePicture(folder / name, picture);
                const Picture again = readPicture(folder / name);
                EXPECT_EQ(typeOf(again), typeOf(picture));
                EXPECT_EQ(valuesOf(again), valuesOf(picture));
            }
}

TEST(WritePicture, JpegIsClose)
{
    const TemporaryFolder folder;
    auto image = std::make_unique<ZImage<ZC24>>(64, 32);
    for (int i = 0; i < 64 * 32; ++i)
        image->SetPixel({10, static_cast<unsigned char>(i % 64 * 2), 200}, i % 64, i / 64);
    const Picture picture = std::move(image);
    writePicture(folder / "x.jpeg", picture);
    const Values before = valuesOf(picture), after = valuesOf(readPicture(folder / "x.jpeg"));
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_NEAR(before[i], after[i], 12);
}

// From every type to every other one and back: a loss is named exactly when the way back gives other pixels.
TEST(Convert, KnowsWhatItLoses)
{
    for (std::size_t from = 0; from < 4; ++from)
        for (std::size_t to = 0; to < 4; ++to) {
            if (from == to)
                continue;
            const Picture picture = pictureOf(from, 21, 9);
            const Picture converted = convert(picture, static_cast<PixelType>(to), {});
            EXPECT_EQ(converted.index(), to);
            const bool lossless = from == 0 || (from == 1 && to != 0);
            EXPECT_EQ(lossOf(picture, converted, {}) == nullptr, lossless) << from << " to " << to;
        }
    const Picture narrow = wideImage(5, 5, 255), wide = wideImage(5, 5, 4095);
    EXPECT_EQ(lossOf(narrow, convert(narrow, PixelType::grey, {}), {}), nullptr);
    EXPECT_STREQ(lossOf(wide, convert(wide, PixelType::grey, {}), {}), "bits of its levels");
    EXPECT_EQ(valuesOf(convert(wide, PixelType::grey, {}))[0], 255) << "4095 without the lower 4 bits";
    EXPECT_EQ(valuesOf(convert(wide, PixelType::grey, 8))[0], 15);
    const Picture grey = pictureOf(1, 5, 5);
    EXPECT_EQ(valuesOf(convert(grey, PixelType::wide, 4))[0], 255 * 16);
    const Picture colours = convert(grey, PixelType::colour, {});
    EXPECT_EQ(lossOf(colours, convert(colours, PixelType::grey, {}), {}), nullptr) << "colours that are all grey";
}

TEST_F(Command, ConvertRefusesToLoseInformation)
{
    folder_.write("grey.pgm", bytesOf("P2 3 1 255  0 100 255\n"));
    folder_.write("two.pgm", bytesOf("P2 3 1 255  0 0 255\n"));
    folder_.write("colour.ppm", bytesOf("P3 1 1 255  10 20 30\n"));
    EXPECT_EQ(run("convert grey.pgm grey.png").status, 0);
    EXPECT_EQ(run("convert --type 1 two.pgm two.pbm").status, 0);
    EXPECT_EQ(run("convert --type 24 grey.pgm out.ppm").output, "");

    const CommandResult refused = run("convert --type 1 grey.pgm bits.png");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.complaints, "grey.pgm to bits.png: this would lose levels between black and white (8-bit grey to "
                                  "1-bit); --lossy converts all the same\n");
    EXPECT_FALSE(exists("bits.png"));
    EXPECT_EQ(run("convert --type 1 --lossy grey.pgm bits.png").status, 0);
    EXPECT_EQ(run("convert grey.pgm grey.jpg").status, 1);
    EXPECT_EQ(run("convert --lossy grey.pgm grey.jpg").complaints,
              "zkit: this loses the pixels' exact values (JPEG)\n");
    EXPECT_EQ(run("convert --type 8 colour.ppm x.png").status, 1);

    for (const char* arguments : {"missing.png x.png", "grey.pgm x.gif", "grey.pgm missing/x.png", "colour.ppm x.pgm"})
        EXPECT_EQ(run(std::string("convert ") + arguments).status, 1) << arguments;
    EXPECT_FALSE(exists("x.pgm") || exists("x.pgm.part"));
    for (const char* arguments : {"", "a", "a b c", "--type 12 a b", "--shift 9 a b"})
        EXPECT_EQ(run(std::string("convert ") + arguments).status, 2) << arguments;
}
