#include "support/errors.h"
#include "support/images.h"
#include "zkit/core/roi.h"

#include <climits>
#include <cstdint>
#include <memory>

namespace {

class RoiTest : public OperationTest {};

short placement(ZGenericROI& region)
{
    region.CheckPlacement();
    return takeFailure().code;
}

TEST_F(RoiTest, placement_is_checked_without_overflow)
{
    ZImage<ZBW8> image(10, 8);
    ZROI<ZBW8> region(&image, 0, 0, 0, 0);
    struct {
        int x, y, width, height;
        short code;
    } const cases[] = {
        {0, 0, 10, 8, 0},         {9, 7, 1, 1, 0},          {10, 8, 0, 0, 0},
        {0, 0, 11, 8, 1401},      {0, 0, 10, 9, 1401},      {-1, 0, 2, 2, 1401},
        {0, -1, 2, 2, 1401},      {2, 2, -1, 2, 1401},      {2, 2, 2, -1, 1401},
        {1, 1, INT_MAX, 1, 1401}, {INT_MAX, 0, 1, 1, 1401}, {1, INT_MAX, 1, INT_MAX, 1401},
        {11, 0, 0, 0, 1401},      {INT_MIN, 0, 1, 1, 1401}, {0, 0, INT_MIN, INT_MIN, 1401},
    };
    for (const auto& c : cases) {
        region.SetPlacement(c.x, c.y, c.width, c.height);
        EXPECT_EQ(placement(region), c.code) << c.x << ' ' << c.y << ' ' << c.width << ' ' << c.height;
    }

    ZImage<ZBW8> empty;
    ZROI<ZBW8> unplaced, orphan(nullptr, 0, 0, 1, 1);
    EXPECT_EQ(placement(empty), 1400);
    EXPECT_EQ(placement(unplaced), 1400);
    EXPECT_EQ(placement(orphan), 1400);
    EXPECT_EQ(unplaced.GetPixelPtr(0, 0), nullptr);

    region.SetPlacement(2, 2, 8, 6);
    EXPECT_EQ(placement(region), 0);
    image.SetSize(9, 8);  // the region no longer fits
    EXPECT_EQ(placement(region), 1401);
}

TEST_F(RoiTest, size_checks)
{
    ZImage<ZBW8> a(3, 4), same(3, 4);
    ZImage<ZC24> wider(4, 4);
    a.CheckSameSize(&same);
    a.CheckSizes(&same, 2, 1);
    a.CheckMinimum(3);
    EXPECT_EQ(ZGetError(), 0);
    a.CheckSameSizeOther(&wider);
    EXPECT_EQ(takeFailure().code, 1402);
    a.CheckSizes(&wider, 2, 1);
    EXPECT_EQ(takeFailure().code, 1402);
    a.CheckSameSize(nullptr);
    EXPECT_EQ(takeFailure().code, 1400);
    a.CheckMinimum(4);
    EXPECT_EQ(takeFailure().code, 1403);
    a.CheckMinimumOther(4);
    EXPECT_EQ(takeFailure().code, 1403);
}

TEST_F(RoiTest, owned_rows_are_aligned_and_do_not_collide)
{
    for (const int width : {1, 63, 64, 65, 512, 4096, 8192, 12288}) {
        ZImage<ZBW8> image(width, 3);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(image.GetPixelPtr(0, 0)) % 64, 0U);
        EXPECT_EQ(image.GetRowPitch() % 64, 0);
        EXPECT_NE(image.GetRowPitch() % 4096, 0);
        EXPECT_EQ(image.GetRowGap(), image.GetRowPitch() - width);
        EXPECT_EQ(image.GetPixel(width - 1, 2), 0);
    }
    ZImage<ZC24> colour(20, 2);
    ZROI<ZC24> region(&colour, 5, 1, 3, 1);
    EXPECT_EQ(region.GetRowGap(), colour.GetRowPitch() - 9);
    EXPECT_EQ(region.GetPixelSize(), 3);
    EXPECT_EQ(static_cast<char*>(region.GetPixelPtr(1, 0)) - static_cast<char*>(colour.GetPixelPtr(0, 0)),
              colour.GetRowPitch() + 18);
    EXPECT_EQ(region.GetImagePtr(), colour.GetImagePtr());
    ZImage<ZC24> other(20, 2);
    EXPECT_NE(region.GetImagePtr(), other.GetImagePtr());
}

TEST_F(RoiTest, sizes_that_cannot_be_had_leave_the_image_as_it_was)
{
    ZImage<ZBW8> image(4, 4);
    image.SetPixel(7, 3, 3);
    image.SetSize(INT_MAX, INT_MAX);
    EXPECT_EQ(takeFailure().code, 1303);
    image.SetSize(-1, 4);
    EXPECT_EQ(takeFailure().code, 1011);
    image.SetSize(4, -1);
    EXPECT_EQ(takeFailure().code, 1012);
    EXPECT_EQ(image.Attach(nullptr, 4, 4, 4), 1011);
    unsigned char pixel = 0;
    EXPECT_EQ(image.Attach(&pixel, 0, 1, 1), 1012);
    EXPECT_EQ(image.Attach(&pixel, 1, 0, 1), 1013);
    EXPECT_EQ(image.Attach(&pixel, 2, 2, 1), 1014);
    EXPECT_EQ(image.Attach(&pixel, 2, 2, -1), 1014);
    ZClearError();
    EXPECT_EQ(image.GetPixel(3, 3), 7);
    ZImage<ZComplex64> huge(INT_MAX, 1);
    EXPECT_EQ(takeFailure().code, 1303);
    EXPECT_EQ(huge.GetPixelPtr(0, 0), nullptr);
}

TEST_F(RoiTest, attached_buffers_keep_their_rows)
{
    std::vector<std::uint8_t> buffer(1 + 7 * 3);
    for (std::size_t i = 0; i < buffer.size(); ++i)
        buffer[i] = static_cast<std::uint8_t>(i);
    ZImage<ZBW16> image;
    EXPECT_EQ(image.Attach(buffer.data() + 1, 2, 3, 7), 0);  // an odd address and an odd pitch
    EXPECT_EQ(image.GetPixel(1, 2), 17 + 256 * 18);
    EXPECT_EQ(image.GetRowGap(), 3);
    image.SetPixel(0xABCD, 0, 1);
    EXPECT_EQ(buffer[8], 0xCD);
    EXPECT_EQ(buffer[9], 0xAB);

    ZImage<ZBW8> bottomUp;
    EXPECT_EQ(bottomUp.Attach(buffer.data() + 14, 5, 3, -7), 0);
    EXPECT_EQ(bottomUp.GetPixel(4, 2), 4);
    EXPECT_EQ(bottomUp.GetStorageExtent().first, buffer.data());
    EXPECT_EQ(bottomUp.GetStorageExtent().end, buffer.data() + 19);
    bottomUp.SetSize(2, 2);  // takes storage of its own
    bottomUp.SetPixel(99, 0, 0);
    EXPECT_EQ(buffer[14], 14);
}

TEST_F(RoiTest, single_pixels_outside_the_storage_read_zero_and_are_not_written)
{
    std::unique_ptr<std::uint8_t[]> exact(new std::uint8_t[6]{1, 2, 3, 4, 5, 6});
    ZImage<ZBW8> image;
    image.Attach(exact.get(), 3, 2, 3);
    ZROI<ZBW8> region(&image, 1, 1, 1, 1);
    EXPECT_EQ(region.GetPixel(-1, -1), 1);  // outside the region but in the image
    for (const int x : {-2, 2, INT_MAX, INT_MIN}) {
        EXPECT_EQ(region.GetPixel(x, 0), 0);
        region.SetPixel(9, x, 0);
        region.SetPixel(9, 0, x);
    }
    EXPECT_EQ(bytesOf(image), (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6}));
}

TEST_F(RoiTest, bits_are_counted_from_the_most_significant_one)
{
    ZImage<ZBW1> image(30, 2);
    ZROI<ZBW1> region(&image, 3, 1, 20, 1);
    auto* row = static_cast<unsigned char*>(image.GetPixelPtr(0, 1));
    for (const int x : {0, 4, 5, 12}) {
        region.SetPixel({0xFF}, x, 0);
        EXPECT_EQ(region.GetBitPosition(x, 0), (x + 3) % 8);
        EXPECT_EQ(static_cast<unsigned char*>(region.GetPixelPtr(x, 0)) - row, (x + 3) / 8);
    }
    EXPECT_EQ(row[0], 0x11);
    EXPECT_EQ(row[1], 0x81);
    EXPECT_EQ(region.GetPixel(12, 0).bits, 1);
    EXPECT_EQ(region.GetPixel(11, 0).bits, 0);
    region.SetPixel({0}, 0, 0);
    EXPECT_EQ(row[0], 0x01);
    EXPECT_EQ(image.GetRowPitch(), 64);
    EXPECT_EQ(region.GetRowGap(), 61);  // the row touches bytes 0 to 2
    EXPECT_EQ(image.GetPixelSize(), 0);
    EXPECT_EQ(region.GetPixel(27, 0).bits, 0);
}

}  // namespace
