#include "support/colours.h"
#include "support/errors.h"
#include "zkit/img/filter.h"

#include <cstdlib>

namespace {

class PredefinedFilterTest : public OperationTest {};

// The two forms of a filter (the trail name of the colour form is followed by its marker) and what it is: the
// magnitudes of the sums with both kernels, divided after adding what rounds.
struct Filter {
    std::string name;
    short (*grey)(ZROI<ZBW8>*, ZROI<ZBW8>*);
    void (*colour)(ZROI<ZC24>*, ZROI<ZC24>*);
    int first[9], second[9];
    int rounding = 0, divisor = 1;
};

const Filter filters[] = {
    {"ImgConvolHighpass1", ImgConvolHighpass1, ImgConvolHighpass1, {0, -1, 0, -1, 5, -1, 0, -1, 0}, {}},
    {"ImgConvolHighpass2", ImgConvolHighpass2, ImgConvolHighpass2, {-1, -1, -1, -1, 9, -1, -1, -1, -1}, {}},
    {"ImgConvolLowpass1", ImgConvolLowpass1, ImgConvolLowpass1, {1, 2, 1, 2, 4, 2, 1, 2, 1}, {}, 8, 16},
    {"ImgConvolLowpass2", ImgConvolLowpass2, ImgConvolLowpass2, {1, 1, 1, 1, 0, 1, 1, 1, 1}, {}, 0, 8},
    {"ImgConvolLowpass3", ImgConvolLowpass3, ImgConvolLowpass3, {1, 1, 1, 1, 1, 1, 1, 1, 1}, {}, 0, 9},
    {"ImgConvolSobelX", ImgConvolSobelX, ImgConvolSobelX, {-1, 0, 1, -2, 0, 2, -1, 0, 1}, {}},
    {"ImgConvolSobelY", ImgConvolSobelY, ImgConvolSobelY, {-1, -2, -1, 0, 0, 0, 1, 2, 1}, {}},
    {"ImgConvolSobelXY",
     ImgConvolSobelXY,
     ImgConvolSobelXY,
     {-1, 0, 1, -2, 0, 2, -1, 0, 1},
     {-1, -2, -1, 0, 0, 0, 1, 2, 1}},
    {"ImgConvolPrewittX", ImgConvolPrewittX, ImgConvolPrewittX, {-1, 0, 1, -1, 0, 1, -1, 0, 1}, {}},
    {"ImgConvolPrewittY", ImgConvolPrewittY, ImgConvolPrewittY, {-1, -1, -1, 0, 0, 0, 1, 1, 1}, {}},
    {"ImgConvolPrewittXY",
     ImgConvolPrewittXY,
     ImgConvolPrewittXY,
     {-1, 0, 1, -1, 0, 1, -1, 0, 1},
     {-1, -1, -1, 0, 0, 0, 1, 1, 1}},
    {"ImgConvolLaplacian4", ImgConvolLaplacian4, ImgConvolLaplacian4, {0, 1, 0, 1, -4, 1, 0, 1, 0}, {}},
    {"ImgConvolLaplacian8", ImgConvolLaplacian8, ImgConvolLaplacian8, {1, 1, 1, 1, -8, 1, 1, 1, 1}, {}},
};

// A pixel of a region; outside it 0, or the nearest one.
int pixelAt(const ZROI<ZBW8>& region, int x, int y, bool nearest)
{
    const int right = region.GetWidth() - 1, bottom = region.GetHeight() - 1;
    if (!nearest && (x < 0 || y < 0 || x > right || y > bottom))
        return 0;
    return *static_cast<const ZBW8*>(region.GetPixelPtr(std::clamp(x, 0, right), std::clamp(y, 0, bottom)));
}

int expectedOf(const Filter& filter, const ZROI<ZBW8>& src, int x, int y)
{
    int first = filter.rounding, second = 0;
    for (int i = 0; i < 9; ++i) {
        const int pixel = pixelAt(src, x + i % 3 - 1, y + i / 3 - 1, false);
        first += filter.first[i] * pixel;
        second += filter.second[i] * pixel;
    }
    return std::min((std::abs(first) + std::abs(second)) / filter.divisor, 255);
}

// Calls check(src, dst) for regions of random pixels, from the smallest sizes on, of dark, bright and mixed levels.
template <class Check>
void forSmallImages(Check check)
{
    Random random(23);
    for (int round = 0; round < 60; ++round) {
        const int width = round < 36 ? round % 6 + 1 : random(30, 100),
                  height = round < 36 ? round / 6 + 1 : random(1, 20);
        ZImage<ZBW8> src(width, height), dst(width, height);
        fill(src, random);
        for (int y = 0; y < height && round % 3; ++y)
            for (int x = 0; x < width; ++x)
                src.SetPixel(static_cast<ZBW8>(round % 3 == 1 ? src.GetPixel(x, y) / 16 : src.GetPixel(x, y) | 0xE0), x,
                             y);
        SCOPED_TRACE(testing::Message() << width << 'x' << height);
        withBothWorkers([&] { check(src, dst); });
    }
}

TEST_F(PredefinedFilterTest, every_pixel_follows_the_formula)
{
    forSmallImages([](ZImage<ZBW8>& src, ZImage<ZBW8>& dst) {
        for (const Filter& filter : filters) {
            EXPECT_EQ(filter.grey(&src, &dst), 0);
            for (int y = 0; y < src.GetHeight(); ++y)
                for (int x = 0; x < src.GetWidth(); ++x)
                    ASSERT_EQ(dst.GetPixel(x, y), expectedOf(filter, src, x, y)) << filter.name << ' ' << x << ' ' << y;
        }
    });
}

TEST_F(PredefinedFilterTest, some_repeat_the_pixels_at_the_ends)
{
    forSmallImages([](ZImage<ZBW8>& src, ZImage<ZBW8>& dst) {
        const auto expectEach = [&](void (*filter)(ZROI<ZBW8>*, ZROI<ZBW8>*), auto formula) {
            filter(&src, &dst);
            for (int y = 0; y < src.GetHeight(); ++y)
                for (int x = 0; x < src.GetWidth(); ++x)
                    ASSERT_EQ(dst.GetPixel(x, y),
                              formula([&, x, y](int dx, int dy) { return pixelAt(src, x + dx, y + dy, true); }))
                        << x << ' ' << y;
        };
        expectEach(ImgConvolLowpass1X, [](auto a) { return (a(-1, 0) + 2 * a(0, 0) + a(1, 0)) / 4; });
        EXPECT_FAILURE(0, "ImgConvolLowpass1X");  // its name is recorded after success, too
        expectEach(ImgConvolLowpass1Y, [](auto a) { return (a(0, -1) + 2 * a(0, 0) + a(0, 1)) / 4; });
        EXPECT_FAILURE(0, "ImgConvolLowpass1Y");
        expectEach(ImgConvolRoberts,
                   [](auto a) { return std::min(std::abs(a(0, 0) - a(1, 1)) + std::abs(a(1, 0) - a(0, 1)), 255); });
    });
}

TEST_F(PredefinedFilterTest, worked_out_by_hand)
{
    ZImage<ZBW8> src, dst(4, 3);
    draw(src, "1234 2305 9919");
    withBothWorkers([&] {
        ImgConvolSobelX(&src, &dst);
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{7, 2, 6, 6, 17, 10, 6, 4, 21, 18, 2, 2}));
        ImgConvolRoberts(&src, &dst);
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{2, 2, 6, 2, 13, 11, 13, 8, 0, 16, 16, 0}));
    });
}

TEST_F(PredefinedFilterTest, roberts_writes_what_both_regions_have)
{
    Random random(8);
    ZImage<ZC24> image(50, 9), whole(50, 9), colours(50, 9);
    ZImage<ZBW8> grey(50, 9), wholeGrey(50, 9), greys(50, 9);
    fill(image, random);
    fill(grey, random);
    ImgConvolRoberts(&image, &whole);
    ImgConvolRoberts(&grey, &wholeGrey);
    withBothWorkers([&] {
        for (const auto& [width, height] : {std::pair(49, 9), {50, 8}, {3, 2}, {0, 5}, {50, 9}}) {
            // The destination is the smaller one, of which nothing but the place matters.
            ZROI<ZBW8> smallGrey(&greys, 0, 0, width, height), partGrey(&wholeGrey, 0, 0, width, height);
            ZROI<ZC24> small(&colours, 0, 0, width, height), part(&whole, 0, 0, width, height);
            ImgConvolRoberts(&grey, &smallGrey);
            ImgConvolRoberts(&image, &small);
            EXPECT_EQ(bytesOf(smallGrey), bytesOf(partGrey));
            EXPECT_EQ(bytesOf(small), bytesOf(part));

            // The source is the smaller one: what else the destination has is left alone.
            ZROI<ZBW8> fewGrey(&grey, 0, 0, width, height);
            ZROI<ZC24> few(&image, 0, 0, width, height);
            ImgConvolRoberts(&fewGrey, &smallGrey);
            ImgConvolRoberts(&few, &small);
            const auto expectedGrey = bytesOf(smallGrey), expected = bytesOf(small);
            std::memset(greys.GetPixelPtr(0, 8), 77, 50);
            std::memset(colours.GetPixelPtr(0, 8), 77, 150);
            ImgConvolRoberts(&fewGrey, &greys);
            ImgConvolRoberts(&few, &colours);
            EXPECT_EQ(bytesOf(smallGrey), expectedGrey);
            EXPECT_EQ(bytesOf(small), expected);
            if (height < 9) {
                EXPECT_EQ(greys.GetPixel(49, 8), 77);
                EXPECT_EQ(colours.GetPixel(49, 8).c1, 77);
            }
        }
    });
    EXPECT_FAILURE(0);
}

TEST_F(PredefinedFilterTest, colour_filters_every_component_by_itself)
{
    for (const Filter& filter : filters) {
        SCOPED_TRACE(filter.name);
        expectByteByByte({37, 5}, {37, 5}, filter.colour, [&](auto src, auto dst, int) { filter.grey(src, dst); });
    }
}

TEST_F(PredefinedFilterTest, a_pending_error_stops_the_colour_form_only)
{
    for (const Filter& filter : filters) {
        SCOPED_TRACE(filter.name);
        ZImage<ZBW8> grey(3, 3);
        ZImage<ZC24> colour(3, 3);
        grey.SetPixel(90, 1, 1);
        colour.SetPixel({90, 90, 90}, 1, 1);
        ZSetError(Z_ERROR_BAD_MODE);
        EXPECT_EQ(filter.grey(&grey, &grey), 1009);
        EXPECT_NE(grey.GetPixel(1, 1), 90);
        filter.colour(&colour, &colour);
        EXPECT_EQ(colour.GetPixel(0, 0).c0, 0);
        EXPECT_FAILURE(1009, filter.name, filter.name + " (C24)");
    }
}

TEST_F(PredefinedFilterTest, failures_of_the_colour_form_come_from_inside)
{
    for (const Filter& filter : filters) {
        SCOPED_TRACE(filter.name);
        ZImage<ZC24> colour(3, 3), small(2, 3), empty;
        ZROI<ZC24> outside(&colour, 1, 1, 3, 3), alsoOutside(&colour, 1, 1, 2, 3);
        filter.colour(&colour, &small);
        EXPECT_FAILURE(1402, filter.name, filter.name + " (C24)");
        filter.colour(&outside, &small);
        EXPECT_FAILURE(1401, filter.name + " (C24)");
        filter.colour(&small, &alsoOutside);
        EXPECT_FAILURE(1401, filter.name + " (C24)");
        filter.colour(&colour, &empty);
        EXPECT_FAILURE(1402, filter.name, filter.name + " (C24)");
        filter.colour(&outside, nullptr);
        EXPECT_FAILURE(1400, filter.name + " (C24)");
    }
}

}  // namespace
