#include "support/destination.h"
#include "support/errors.h"
#include "zkit/img/filter.h"

namespace {

class PredefinedFilterTest : public OperationTest {};

// The two forms of a filter; the trail name of the colour form is followed by its marker.
struct Filter {
    std::string name;
    short (*grey)(ZROI<ZBW8>*, ZROI<ZBW8>*);
    void (*colour)(ZROI<ZC24>*, ZROI<ZC24>*);
};

const Filter filters[] = {
    {"ImgConvolLowpass3", ImgConvolLowpass3, ImgConvolLowpass3},
};

TEST_F(PredefinedFilterTest, borders_are_darkened_by_zeros_outside)
{
    ZImage<ZBW8> src(6, 4), dst(6, 4);
    for (int y = 0; y < 4; ++y)
        std::memset(src.GetPixelPtr(0, y), 100, 6);
    withBothWorkers([&] {
        EXPECT_EQ(ImgConvolLowpass3(&src, &dst), 0);
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{44, 66,  66,  66,  66,  44,  //
                                                           66, 100, 100, 100, 100, 66,  //
                                                           66, 100, 100, 100, 100, 66,  //
                                                           44, 66,  66,  66,  66,  44}));
    });
    ZROI<ZBW8> pixel(&src, 2, 2, 1, 1), result(&dst, 0, 0, 1, 1);
    ImgConvolLowpass3(&pixel, &result);
    EXPECT_EQ(dst.GetPixel(0, 0), 100 / 9);
}

TEST_F(PredefinedFilterTest, colour_filters_every_component_by_itself)
{
    for (const Filter& filter : filters) {
        SCOPED_TRACE(filter.name);
        Random random(4);
        ZImage<ZC24> colour(37, 5), filtered(37, 5);
        fill(colour, random);
        filter.colour(&colour, &filtered);
        for (int byte = 0; byte < 3; ++byte) {
            ZImage<ZBW8> plane(37, 5);
            const auto at = [byte](ZImage<ZC24>& image, int x, int y) {
                return static_cast<ZBW8*>(image.GetPixelPtr(x, y))[byte];
            };
            for (int y = 0; y < 5; ++y)
                for (int x = 0; x < 37; ++x)
                    plane.SetPixel(at(colour, x, y), x, y);
            filter.grey(&plane, &plane);
            for (int y = 0; y < 5; ++y)
                for (int x = 0; x < 37; ++x)
                    EXPECT_EQ(at(filtered, x, y), plane.GetPixel(x, y));
        }
    }
}

TEST_F(PredefinedFilterTest, the_place_of_the_regions_does_not_matter)
{
    for (const Filter& filter : filters) {
        SCOPED_TRACE(filter.name);
        expectSameEverywhere<ZBW8>(filter.grey, 120);
        expectSameEverywhere<ZC24>(filter.colour, 60);
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
