// Pictures of every format and kind arrive with the pixels that were written.
#include "writers.h"

#include <gtest/gtest.h>
#include <png.h>
#include <tiff.h>

#include <algorithm>
#include <array>
#include <functional>

namespace {

const int widths[] = {1, 7, 8, 17, 33};
constexpr int height = 19;

Values mapped(Values values, const std::function<int(int)>& map)
{
    std::transform(values.begin(), values.end(), values.begin(), map);
    return values;
}

// The first `kept` of every `channels` samples.
Values withoutAlpha(const Values& samples, int channels, int kept)
{
    Values result;
    for (std::size_t i = 0; i < samples.size(); ++i)
        if (static_cast<int>(i) % channels < kept)
            result.push_back(samples[i]);
    return result;
}

Drawing withPalette(int width, int bits, std::vector<std::array<unsigned char, 3>> palette)
{
    Drawing result = drawing(width, height, bits, 1, static_cast<int>(palette.size()) - 1);
    result.palette = std::move(palette);
    return result;
}

Values lookUp(const Drawing& drawing, bool grey)
{
    Values result;
    for (const int index : pattern(drawing.width * drawing.height, static_cast<int>(drawing.palette.size()) - 1)) {
        const auto& entry = drawing.palette[static_cast<std::size_t>(index)];
        result.insert(result.end(), entry.begin(), grey ? entry.begin() + 1 : entry.end());
    }
    return result;
}

void expectPicture(const FileBytes& file, const char* type, int width, const Values& expected)
{
    const auto picture = readBytes(file);
    EXPECT_EQ(typeOf(picture), type);
    std::visit([&](const auto& image) { EXPECT_EQ(image->GetWidth(), width); }, picture);
    EXPECT_EQ(valuesOf(picture), expected);
}

const std::vector<std::array<unsigned char, 3>> colours = {{255, 0, 1}, {9, 200, 30}, {2, 3, 250}},
                                                greys = {{7, 7, 7}, {200, 200, 200}, {90, 90, 90}},
                                                blackAndWhite = {{0, 0, 0}, {255, 255, 255}},
                                                whiteAndBlack = {{255, 255, 255}, {0, 0, 0}};

}  // namespace

TEST(Formats, Png)
{
    for (const int width : widths)
        for (const bool interlaced : {false, true}) {
            SCOPED_TRACE(width);
            const auto grey = [&](int bits) {
                return writePng(drawing(width, height, bits, 1), PNG_COLOR_TYPE_GRAY, interlaced);
            };
            const int pixels = width * height;
            expectPicture(grey(1), "1", width, pattern(pixels, 1));
            expectPicture(grey(2), "8", width, mapped(pattern(pixels, 3), [](int v) { return 85 * v; }));
            expectPicture(grey(4), "8", width, mapped(pattern(pixels, 15), [](int v) { return 17 * v; }));
            expectPicture(grey(8), "8", width, pattern(pixels, 255));
            expectPicture(grey(16), "16", width, pattern(pixels, 65535));
            const auto twelve = writePng(drawing(width, height, 16, 1, 4095), PNG_COLOR_TYPE_GRAY, interlaced);
            expectPicture(twelve, "16", width, pattern(pixels, 4095));
            const auto colour = writePng(drawing(width, height, 8, 3), PNG_COLOR_TYPE_RGB, interlaced);
            expectPicture(colour, "24", width, pattern(3 * pixels, 255));
        }
}

TEST(Formats, PngDropsAlpha)
{
    const auto kept = [](int channels, int greatest, int count) {
        return withoutAlpha(pattern(9 * height * channels, greatest), channels, count);
    };
    expectPicture(writePng(drawing(9, height, 8, 2), PNG_COLOR_TYPE_GRAY_ALPHA), "8", 9, kept(2, 255, 1));
    expectPicture(writePng(drawing(9, height, 16, 2), PNG_COLOR_TYPE_GRAY_ALPHA), "16", 9, kept(2, 65535, 1));
    expectPicture(writePng(drawing(9, height, 8, 4), PNG_COLOR_TYPE_RGB_ALPHA), "24", 9, kept(4, 255, 3));
}

TEST(Formats, Palettes)
{
    const auto png = [](const Drawing& drawing) { return writePng(drawing, PNG_COLOR_TYPE_PALETTE); };
    const auto tiff = [](const Drawing& drawing) { return writeTiff(drawing, {.photometric = PHOTOMETRIC_PALETTE}); };
    const auto bmp = [](const Drawing& drawing) { return makeBmp(drawing); };
    const std::function<FileBytes(const Drawing&)> writers[] = {png, tiff, bmp};
    for (const int width : widths)
        for (const auto& write : writers) {
            SCOPED_TRACE(width);
            for (const int bits : {4, 8}) {
                const Drawing coloured = withPalette(width, bits, colours), grey = withPalette(width, bits, greys);
                expectPicture(write(coloured), "24", width, lookUp(coloured, false));
                expectPicture(write(grey), "8", width, lookUp(grey, true));
            }
            const Values bits = pattern(width * height, 1);
            expectPicture(write(withPalette(width, 1, blackAndWhite)), "1", width, bits);
            expectPicture(write(withPalette(width, 1, whiteAndBlack)), "1", width,
                          mapped(bits, [](int v) { return 1 - v; }));
        }
}

TEST(Formats, TiffGrey)
{
    for (const int width : widths)
        for (const TiffLayout& layout : {TiffLayout{}, TiffLayout{.compression = COMPRESSION_LZW},
                                         TiffLayout{.tiled = true}, TiffLayout{.photometric = PHOTOMETRIC_MINISWHITE},
                                         TiffLayout{.photometric = PHOTOMETRIC_MINISWHITE, .tiled = true},
                                         TiffLayout{.mode = "wb"}, TiffLayout{.mode = "w8"}})
            for (const int bits : {1, 2, 4, 8, 16}) {
                SCOPED_TRACE(width);
                const int greatest = (1 << bits) - 1, scale = bits == 2 ? 85 : bits == 4 ? 17 : 1;
                const bool inverted = layout.photometric == PHOTOMETRIC_MINISWHITE;
                expectPicture(writeTiff(drawing(width, height, bits, 1), layout),
                              bits == 1    ? "1"
                              : bits == 16 ? "16"
                                           : "8",
                              width, mapped(pattern(width * height, greatest), [&](int v) {
                                  return scale * (inverted ? greatest - v : v);
                              }));
            }
}

TEST(Formats, TiffColour)
{
    for (const int width : widths)
        for (const int channels : {3, 4})
            for (const bool tiled : {false, true})
                for (const bool separate : {false, true}) {
                    SCOPED_TRACE(width);
                    const TiffLayout layout{.photometric = PHOTOMETRIC_RGB,
                                            .compression = COMPRESSION_ADOBE_DEFLATE,
                                            .tiled = tiled,
                                            .separate = separate};
                    expectPicture(writeTiff(drawing(width, height, 8, channels), layout), "24", width,
                                  withoutAlpha(pattern(width * height * channels, 255), channels, 3));
                }
}

// Blocks of 8 x 8 equal pixels survive JPEG unchanged; colour changes by its conversion only.
TEST(Formats, Jpeg)
{
    for (const bool progressive : {false, true}) {
        Drawing grey{16, 8, 8, 1, {}};
        Drawing colour{16, 16, 8, 3, {}};
        for (int i = 0; i < 16 * 8; ++i)
            grey.samples.push_back(i % 16 < 8 ? 3 : 251);
        for (int i = 0; i < 16 * 16; ++i)
            colour.samples.insert(colour.samples.end(), {200, 120, 40});
        expectPicture(writeJpeg(grey, progressive), "8", 16, Values(grey.samples.begin(), grey.samples.end()));
        const auto picture = readBytes(writeJpeg(colour, progressive));
        EXPECT_EQ(typeOf(picture), "24");
        const Values pixels = valuesOf(picture);
        ASSERT_EQ(pixels.size(), colour.samples.size());
        for (std::size_t i = 0; i < pixels.size(); ++i)
            EXPECT_NEAR(pixels[i], colour.samples[i], 2);
    }
}

TEST(Formats, BmpColour)
{
    for (const int width : widths)
        for (const int channels : {3, 4})
            for (const bool topDown : {false, true}) {
                SCOPED_TRACE(width);
                Values expected = withoutAlpha(pattern(width * height * channels, 255), channels, 3);
                for (std::size_t i = 0; i < expected.size(); i += 3)
                    std::swap(expected[i], expected[i + 2]);
                expectPicture(makeBmp(drawing(width, height, 8, channels), topDown), "24", width, expected);
            }
}

TEST(Formats, Pnm)
{
    const auto read = [](const std::string& text) { return readBytes(bytesOf(text)); };
    EXPECT_EQ(valuesOf(read("P1\n# a comment\n5 2\n01001 1 0 1\n#another\n1 0")),
              (Values{1, 0, 1, 1, 0, 0, 1, 0, 0, 1}));
    EXPECT_EQ(valuesOf(read("P4 9 2\n\x80\xff\x7f\x7f")),
              (Values{0, 1, 1, 1, 1, 1, 1, 1, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(valuesOf(read("P2 3 1 100\n0 99 100\n")), (Values{0, 99, 100}));
    EXPECT_EQ(valuesOf(read("P5 3 1 #c\n100\n\1\x20\x64")), (Values{1, 32, 100}));
    EXPECT_EQ(valuesOf(read("P5 2 1 4095 \x0f\xff\1\2")), (Values{4095, 258}));
    EXPECT_EQ(valuesOf(read("P2 2 1 65535 65535 256")), (Values{65535, 256}));
    EXPECT_EQ(valuesOf(read("P3 1 2 255 1 2 3 4 5 6")), (Values{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(valuesOf(read("P6\t2 1\r200\n\1\2\3\4\5\6")), (Values{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(typeOf(read("P5 2 1 4095 \x0f\xff\1\2")), "16");
    EXPECT_EQ(typeOf(read("P2 1 1 255 7")), "8");
}
