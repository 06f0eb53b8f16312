// Files that are no pictures, or damaged ones, are refused with a reason; nothing is printed and nothing hangs.
#include "writers.h"

#include <gtest/gtest.h>
#include <png.h>
#include <tiff.h>

#include <algorithm>
#include <fstream>
#include <map>

namespace {

using Tags = std::vector<std::pair<std::uint16_t, std::uint32_t>>;

// The reason for which a file is refused; empty when it is not.
template <class Read>
std::string refusal(Read read)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    std::string reason;
    try {
        read();
    } catch (const zkit::tool::PictureError& error) {
        reason = error.what();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(reason.find('\n'), std::string::npos);
    return reason;
}

std::string refusalOf(const FileBytes& file)
{
    return refusal([&] { readBytes(file); });
}

std::string refusalOf(const std::string& text) { return refusalOf(bytesOf(text)); }

// A grey TIFF file of 4 x 2 pixels, as far as `changes` do not say otherwise.
FileBytes tiffWith(const Tags& changes, bool photometric = true)
{
    std::map<std::uint16_t, std::uint32_t> tags = {{TIFFTAG_IMAGEWIDTH, 4},    {TIFFTAG_IMAGELENGTH, 2},
                                                   {TIFFTAG_BITSPERSAMPLE, 8}, {TIFFTAG_COMPRESSION, 1},
                                                   {TIFFTAG_STRIPOFFSETS, 0},  {TIFFTAG_SAMPLESPERPIXEL, 1},
                                                   {TIFFTAG_ROWSPERSTRIP, 2},  {TIFFTAG_STRIPBYTECOUNTS, 8}};
    if (photometric)
        tags[TIFFTAG_PHOTOMETRIC] = PHOTOMETRIC_MINISBLACK;
    for (const auto& [tag, value] : changes)
        tags[tag] = value;
    return makeTiff({tags.begin(), tags.end()}, {1, 2, 3, 4, 5, 6, 7, 8});
}

void overwrite(FileBytes& file, std::size_t position, const FileBytes& bytes)
{
    std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(position));
}

}  // namespace

TEST(Damage, EveryTruncationIsNoticed)
{
    Drawing indexed = drawing(11, 5, 4, 1);
    indexed.palette.assign(16, {1, 2, 3});
    const std::map<std::string, FileBytes> files = {
        {"png", writePng(drawing(11, 5, 8, 3), PNG_COLOR_TYPE_RGB)},
        {"png interlaced", writePng(drawing(11, 5, 1, 1), PNG_COLOR_TYPE_GRAY, true)},
        {"png palette", writePng(indexed, PNG_COLOR_TYPE_PALETTE)},
        {"tiff", writeTiff(drawing(11, 5, 16, 1), {})},
        {"tiff lzw", writeTiff(drawing(11, 5, 8, 3), {.photometric = PHOTOMETRIC_RGB, .compression = COMPRESSION_LZW})},
        {"tiff tiles", writeTiff(drawing(11, 5, 8, 1), {.tiled = true})},
        {"tiff, pixels last", tiffWith({})},
        {"jpeg", writeJpeg(drawing(11, 5, 8, 3))},
        {"jpeg progressive", writeJpeg(drawing(11, 5, 8, 1), true)},
        {"bmp", makeBmp(drawing(11, 5, 8, 3))},
        {"bmp palette", makeBmp(indexed)},
        {"pnm bits", bytesOf("P4 11 2\nabcd")},
        {"pnm grey", bytesOf("P5 # why\n3 2\n65535\nabcdabcdabcd")},
        {"pnm text", bytesOf("P3 1 2 9\n1 2 3 4 5 6")},
    };
    for (const auto& [name, file] : files) {
        EXPECT_EQ(refusalOf(file), "") << name;
        for (std::size_t size = 0; size < file.size(); ++size)
            EXPECT_NE(refusalOf(FileBytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size))), "")
                << name << ": the first " << size << " of " << file.size() << " bytes";
    }
}

TEST(Damage, HugeSizesAreRefused)
{
    constexpr auto tooLarge = "the picture is too large: 65535 x 65535 pixels";
    const FileBytes side = {0xff, 0xff};
    FileBytes jpeg = writeJpeg(drawing(8, 8, 8, 1));
    const FileBytes frame = {0xff, 0xc0};
    const auto found = std::search(jpeg.begin(), jpeg.end(), frame.begin(), frame.end());
    overwrite(jpeg, static_cast<std::size_t>(found - jpeg.begin()) + 5, {0xff, 0, 0xff, 0});
    EXPECT_EQ(refusalOf(jpeg), "the picture is too large: 65280 x 65280 pixels");

    FileBytes bmp = makeBmp(drawing(8, 8, 8, 3));
    overwrite(bmp, 18, side);
    EXPECT_EQ(refusalOf(bmp), "BMP: the file is truncated");
    overwrite(bmp, 22, side);
    EXPECT_EQ(refusalOf(bmp), tooLarge);
    overwrite(bmp, 22, {0, 0, 0, 0x80});
    EXPECT_EQ(refusalOf(bmp), "the picture is too large: 65535 x 2147483648 pixels");

    EXPECT_EQ(refusalOf(tiffWith({{TIFFTAG_IMAGEWIDTH, 65535}, {TIFFTAG_IMAGELENGTH, 65535}})), tooLarge);
    EXPECT_NE(refusalOf(tiffWith({{TIFFTAG_IMAGEWIDTH, 16384}, {TIFFTAG_IMAGELENGTH, 16384}})), "");
    EXPECT_NE(
        refusalOf(tiffWith(
            {{TIFFTAG_ROWSPERSTRIP, 0xffffffff}, {TIFFTAG_STRIPBYTECOUNTS, 0xffffffff}, {TIFFTAG_IMAGELENGTH, 65535}})),
        "");
    for (const std::uint32_t length : {16U, 0x7ffffff0U, 0xfffffff0U})
        EXPECT_NE(refusalOf(tiffWith({{TIFFTAG_TILEWIDTH, 0x7ffffff0},
                                      {TIFFTAG_TILELENGTH, length},
                                      {TIFFTAG_TILEOFFSETS, 0},
                                      {TIFFTAG_TILEBYTECOUNTS, 8}})),
                  "");

    // A sound PNG header of 65535 x 65535 pixels with its check sum, and nothing behind it.
    FileBytes png = {0x89, 'P',  'N',  'G', '\r', '\n', 0x1a, '\n', 0, 0, 0, 13, 'I',  'H',  'D',  'R', 0,
                     0,    0xff, 0xff, 0,   0,    0xff, 0xff, 8,    0, 0, 0, 0,  0x2e, 0xf2, 0x97, 0xb7};
    EXPECT_NE(refusalOf(png), "");

    EXPECT_EQ(refusalOf("P5 65535 65535 255 x"), tooLarge);
    EXPECT_EQ(refusalOf("P5 16384 16384 255 x"), "PNM: the file is truncated");
    EXPECT_EQ(refusalOf("P6 99999999999999999999 1 255 x"), "PNM: a number is too large");
}

TEST(Damage, NoPictures)
{
    const TemporaryFolder folder;
    const auto refusalOfPath = [](const std::filesystem::path& path) {
        return refusal([&] { zkit::tool::readPicture(path); });
    };
    EXPECT_EQ(refusalOfPath(folder / "missing"), "there is no such file");
    EXPECT_EQ(refusalOfPath(folder / ""), "is a directory");
    EXPECT_EQ(refusalOfPath(folder.write("empty", {})), "the file is empty");
    EXPECT_EQ(refusalOfPath("/dev/zero"), "is not a regular file");
    EXPECT_EQ(refusalOf("a text"), "not a picture of a known format (PNG, TIFF, JPEG, BMP, PNM)");
    const auto sparse = folder.write("sparse", {'P', '5'});
    std::filesystem::resize_file(sparse, std::uintmax_t{1} << 33);
    EXPECT_EQ(refusalOfPath(sparse), "the file is larger than 2 GiB");
}

TEST(Damage, UnsupportedKindsAreNamed)
{
    constexpr auto wide = "colour of 16 bits a component is not supported: it would lose information";
    EXPECT_EQ(refusalOf(writePng(drawing(3, 3, 16, 3), PNG_COLOR_TYPE_RGB)), wide);
    EXPECT_EQ(refusalOf(writeTiff(drawing(3, 3, 16, 3), {.photometric = PHOTOMETRIC_RGB})), wide);
    EXPECT_EQ(refusalOf("P6 1 1 256 abcdef"), wide);
    EXPECT_EQ(refusalOf(writeJpeg(drawing(8, 8, 8, 4))), "CMYK colour is not supported");
    EXPECT_EQ(refusalOf(tiffWith({{TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_INT}})),
              "TIFF: signed and floating-point samples are not supported");
    EXPECT_EQ(refusalOf(tiffWith({{TIFFTAG_BITSPERSAMPLE, 12}})), "TIFF: 12 bits a sample are not supported");
    EXPECT_EQ(refusalOf(tiffWith({{TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_CIELAB}})),
              "TIFF: this colour space is not supported");
    FileBytes bmp = makeBmp(drawing(4, 4, 8, 4));
    bmp[30] = 1;
    EXPECT_EQ(refusalOf(bmp), "BMP: compressed pixels and unusual colour masks are not supported");
}

TEST(Damage, ContradictionsAreNoticed)
{
    EXPECT_EQ(refusalOf("P2 2 1 100 1 101"), "PNM: a level is above the greatest one");
    EXPECT_EQ(refusalOf("P5 2 1 100 \x01\x65"), "PNM: a level is above the greatest one");
    EXPECT_EQ(refusalOf("P5 2 1 0 ab"), "PNM: the greatest level is not within 1 to 65535");
    EXPECT_EQ(refusalOf("P1 2 1 0 2"), "PNM: a pixel is neither 0 nor 1");
    EXPECT_EQ(refusalOf("P4 0 1 a"), "the picture has no pixels");
    EXPECT_EQ(refusalOf(tiffWith({}, false)), "TIFF: the file does not say what its samples mean");
    EXPECT_NE(refusalOf(tiffWith({{TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE}})), "");
    EXPECT_NE(refusalOf(tiffWith({{TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4}, {TIFFTAG_BITSPERSAMPLE, 1}})), "");

    FileBytes png = writePng(drawing(9, 9, 8, 1), PNG_COLOR_TYPE_GRAY);
    png[png.size() - 20] ^= 1;
    EXPECT_NE(refusalOf(png), "");
    Drawing indexed = drawing(4, 4, 8, 1, 5);
    indexed.palette = {{0, 0, 0}, {1, 1, 1}};
    EXPECT_EQ(refusalOf(makeBmp(indexed)), "corrupt: a pixel has colour 5 of a palette of 2");
    FileBytes bmp = makeBmp(drawing(4, 4, 8, 3));
    bmp[10] = 20;
    EXPECT_EQ(refusalOf(bmp), "BMP: the pixels overlap the header");

    // Zeros in the middle of the coded pixels: the library only warns and makes pixels up.
    FileBytes jpeg = writeJpeg(drawing(64, 64, 8, 1));
    overwrite(jpeg, jpeg.size() - 200, {0xff, 0xd9});
    EXPECT_NE(refusalOf(jpeg), "");
}
