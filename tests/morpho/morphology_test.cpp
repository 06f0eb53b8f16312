#include "support/colours.h"
#include "support/errors.h"
#include "zkit/img/arithmetic.h"
#include "zkit/img/morpho.h"

namespace {

class MorphologyTest : public OperationTest {};

using Byte = std::uint8_t;
using Bytes = std::vector<Byte>;

// The extreme of every square, pixel by pixel, outside pixels counted with their value.
Bytes squares(const Bytes& src, int width, int height, int n, int border, bool dilate)
{
    Bytes dst;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            int extreme = dilate ? 0 : 255;
            for (int v = y - n; v <= y + n; ++v)
                for (int u = x - n; u <= x + n; ++u) {
                    const bool inside = u >= 0 && v >= 0 && u < width && v < height;
                    const int pixel = inside ? src[static_cast<std::size_t>(v * width + u)] : border & 255;
                    extreme = dilate ? std::max(extreme, pixel) : std::min(extreme, pixel);
                }
            dst.push_back(static_cast<Byte>(extreme));
        }
    return dst;
}

// As many passes as the count says, each of them with squares of 3 x 3.
Bytes passes(Bytes pixels, int width, int height, int n, int border, bool dilate)
{
    for (int pass = 0; pass < n; ++pass)
        pixels = squares(pixels, width, height, 1, border, dilate);
    return pixels;
}

TEST_F(MorphologyTest, worked_out_by_hand)
{
    ZImage<ZBW8> src, dst(5, 4);
    draw(src, "55555 59155 55555 55552");
    withBothWorkers([&] {
        EXPECT_EQ(ImgErode(&src, &dst, 1, 255), 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{5, 1, 1, 1, 5, 5, 1, 1, 1, 5, 5, 1, 1, 1, 2, 5, 5, 5, 2, 2}));
        EXPECT_EQ(ImgErode(&src, &dst, 1, 256), 0);  // counts as 0
        EXPECT_EQ(bytesOf(dst), (Bytes{0, 0, 0, 0, 0, 0, 1, 1, 1, 0, 0, 1, 1, 1, 0, 0, 0, 0, 0, 0}));
        EXPECT_EQ(ImgDilate(&src, &dst, 1, 0), 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{9, 9, 9, 5, 5, 9, 9, 9, 5, 5, 9, 9, 9, 5, 5, 5, 5, 5, 5, 5}));
        EXPECT_EQ(ImgWhiteTopHat(&src, &dst, 1, 255, 0), 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{0, 0, 4, 0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
        EXPECT_EQ(ImgBlackTopHat(&src, &dst, 1, 0, 255), 0);
        EXPECT_EQ(bytesOf(dst), (Bytes{4, 4, 0, 0, 0, 4, 0, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3}));
    });
}

TEST_F(MorphologyTest, passes_are_squares_in_regions_of_any_size)
{
    Random random(5);
    for (int round = 0; round < 400; ++round) {
        const int width = random(1, round % 10 == 0 ? 70 : 9), height = random(1, 9), border = random(-300, 300);
        const int n = random(1, round % 3 == 0 ? 80 : 4);
        SCOPED_TRACE(testing::Message() << width << 'x' << height << ' ' << n << " passes, border " << border);
        ZImage<ZBW8> src(width, height), dst(width, height);
        fill(src, random);
        const Bytes pixels = bytesOf(src);
        for (const bool dilate : {false, true}) {
            const Bytes expected = squares(pixels, width, height, n, border, dilate);
            if (n <= 4) {
                ASSERT_EQ(passes(pixels, width, height, n, border, dilate), expected);
            }
            withBothWorkers([&] {
                EXPECT_EQ(dilate ? ImgDilate(&src, &dst, n, border) : ImgErode(&src, &dst, n, border), 0);
                EXPECT_EQ(bytesOf(dst), expected);
            });
        }
    }
}

// A grey operation of two borders and its colour form.
struct Operations {
    std::string name, step;
    short (*grey)(ZROI<ZBW8>*, ZROI<ZBW8>*, int, int, int);
    void (*colour)(ZROI<ZC24>*, ZROI<ZC24>*, int, ZC24, ZC24);
};

const Operations all[] = {
    {"ImgErode", "", [](auto src, auto dst, int n, int border, int) { return ImgErode(src, dst, n, border); },
     [](auto src, auto dst, int n, ZC24 border, ZC24) { ImgErode(src, dst, n, border); }},
    {"ImgDilate", "", [](auto src, auto dst, int n, int border, int) { return ImgDilate(src, dst, n, border); },
     [](auto src, auto dst, int n, ZC24 border, ZC24) { ImgDilate(src, dst, n, border); }},
    {"ImgOpen", "", ImgOpen, ImgOpen},
    {"ImgClose", "", ImgClose, ImgClose},
    {"ImgWhiteTopHat", "ImgOpen", ImgWhiteTopHat, ImgWhiteTopHat},
    {"ImgBlackTopHat", "ImgClose", ImgBlackTopHat, ImgBlackTopHat},
};

bool isTopHat(const Operations& operations) { return !operations.step.empty(); }

TEST_F(MorphologyTest, two_steps_each_have_their_border)
{
    Random random(6);
    for (int round = 0; round < 60; ++round) {
        const int width = random(1, 40), height = random(1, 40), n = random(1, 6);
        const int first = random(0, 255), second = random(0, 255);
        ZImage<ZBW8> src(width, height), dst(width, height);
        fill(src, random);
        const Bytes pixels = bytesOf(src);
        const auto inTurn = [&](bool dilateFirst) {
            return squares(squares(pixels, width, height, n, first, dilateFirst), width, height, n, second,
                           !dilateFirst);
        };
        const auto expect = [&](short (*operation)(ZROI<ZBW8>*, ZROI<ZBW8>*, int, int, int), auto ofPixel) {
            withBothWorkers([&] {
                EXPECT_EQ(operation(&src, &dst, n, first, second), 0);
                const Bytes result = bytesOf(dst), opened = inTurn(false), closed = inTurn(true);
                for (std::size_t i = 0; i < pixels.size(); ++i)
                    ASSERT_EQ(result[i], ofPixel(pixels[i], opened[i], closed[i]));
            });
        };
        expect(ImgOpen, [](int, int opened, int) { return opened; });
        expect(ImgClose, [](int, int, int closed) { return closed; });
        expect(ImgWhiteTopHat, [](int pixel, int opened, int) { return std::max(pixel - opened, 0); });
        expect(ImgBlackTopHat, [](int pixel, int, int closed) { return std::max(closed - pixel, 0); });
    }
}

TEST_F(MorphologyTest, colour_has_a_border_for_every_byte)
{
    const Byte first[] = {10, 130, 250}, second[] = {200, 5, 90};
    for (const Operations& operations : all)
        for (const int n : {1, 4}) {
            SCOPED_TRACE(operations.name);
            expectByteByByte(
                {41, 9}, {41, 9},
                [&](auto src, auto dst) {
                    operations.colour(src, dst, n, {10, 130, 250}, {200, 5, 90});
                },
                [&](auto src, auto dst, int byte) { operations.grey(src, dst, n, first[byte], second[byte]); });
        }
}

// Large regions are filtered in bands.
TEST_F(MorphologyTest, large_top_hats)
{
    Random random(11);
    ZImage<ZC24> src(2000, 130), filtered(2000, 130), expected(2000, 130), dst(2000, 130);
    fill(src, random);
    for (const int n : {1, 3, 40}) {
        ImgClose(&src, &filtered, n, {9, 99, 200}, {20, 120, 220});
        ImgOper(ARITH_LOGIC_SUBTRACT, &filtered, &src, &expected);
        ImgBlackTopHat(&src, &dst, n, {9, 99, 200}, {20, 120, 220});
        EXPECT_EQ(bytesOf(dst), bytesOf(expected)) << n;
    }
    ZImage<ZBW8> one(8, 2000), other(8, 2000);
    ZROI<ZBW8> none(&one, 2, 0, 0, 2000), noneOther(&other, 2, 0, 0, 2000);
    EXPECT_EQ(ImgWhiteTopHat(&none, &noneOther, 1, 255, 0), 0);
}

// Two images may share memory.
TEST_F(MorphologyTest, top_hats_of_overlapping_images)
{
    Random random(8);
    for (const Operations& operations : all) {
        if (!isTopHat(operations))
            continue;
        ZImage<ZBW8> memory(30, 30), src, dst, copy(20, 20), expected(20, 20);
        fill(memory, random);
        src.Attach(memory.GetPixelPtr(0, 0), 20, 20, memory.GetRowPitch());
        dst.Attach(memory.GetPixelPtr(3, 2), 20, 20, memory.GetRowPitch());
        copyPixels<ZBW8>(src, copy);
        operations.grey(&copy, &expected, 2, 7, 200);
        operations.grey(&src, &dst, 2, 7, 200);
        EXPECT_EQ(bytesOf(dst), bytesOf(expected)) << operations.name;
    }
}

TEST_F(MorphologyTest, no_pass_leaves_the_destination_untouched)
{
    ZImage<ZBW8> src(4, 4), dst(5, 5);
    ZImage<ZC24> colour(4, 4), result(5, 5);
    dst.SetPixel(77, 1, 1);
    result.SetPixel({1, 2, 3}, 1, 1);
    for (const Operations& operations : all)
        for (const int n : {0, -1, INT32_MIN}) {
            EXPECT_EQ(operations.grey(&src, &dst, n, 0, 0), 0);
            operations.colour(&colour, &result, n, {}, {});
            EXPECT_EQ(dst.GetPixel(1, 1), 77);
            EXPECT_EQ(result.GetPixel(1, 1).c1, 2);
        }
}

TEST_F(MorphologyTest, any_count_ends)
{
    ZImage<ZBW8> src(9, 5), dst(9, 5);
    src.SetPixel(60, 3, 3);
    withBothWorkers([&] {
        EXPECT_EQ(ImgDilate(&src, &dst, INT32_MAX, 40), 0);
        EXPECT_EQ(bytesOf(dst), Bytes(45, 60));
    });
}

TEST_F(MorphologyTest, failures_come_from_inside)
{
    ZImage<ZBW8> grey(4, 4), smallGrey(3, 4), empty;
    ZImage<ZC24> colour(4, 4), smallColour(3, 4);
    ZROI<ZBW8> outside(&grey, 1, 1, 4, 4);
    for (const Operations& operations : all) {
        SCOPED_TRACE(operations.name);
        Trail names{"ImgErodeDilate"};
        if (isTopHat(operations))
            names.push_back(operations.step);
        names.push_back(operations.name);
        const auto expect = [&](short code, const Trail& expected) {
            const Failure failure = takeFailure();
            EXPECT_EQ(failure.code, code);
            EXPECT_EQ(failure.trail, expected);
        };
        EXPECT_EQ(operations.grey(&grey, &smallGrey, 1, 0, 0), 1402);
        expect(1402, names);
        operations.grey(&smallGrey, &outside, 1, 0, 0);
        expect(isTopHat(operations) ? 1401 : 1402, isTopHat(operations) ? Trail{operations.name} : names);
        operations.grey(&empty, &empty, 1, 0, 0);
        expect(isTopHat(operations) ? 1413 : 1400, isTopHat(operations) ? Trail{operations.name} : names);
        operations.colour(&colour, &smallColour, 1, {}, {});
        names.push_back(operations.name + " (C24)");
        expect(1402, names);
        if (isTopHat(operations)) {
            ZROI<ZBW8> part(&grey, 0, 0, 2, 2);
            operations.grey(&grey, &part, 0, 0, 0);
            expect(1413, {operations.name});
            operations.grey(&smallGrey, &empty, 0, 0, 0);
            expect(1400, {operations.name});
        }
    }
}

}  // namespace
