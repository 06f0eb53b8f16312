#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/point.h"

namespace {

class ConvertTest : public OperationTest {};

TEST_F(ConvertTest, shifts_wrap_and_do_not_clip)
{
    ZImage<ZBW16> wide(1, 1), result(1, 1);
    ZImage<ZBW8> grey(1, 1);
    const struct {
        ZBW16 from;
        unsigned shift;
        int to;
    } narrowing[] = {
        {0xFFFF, 8, 255}, {0x00FF, 8, 0},  {0x0FFF, 4, 255}, {0x1000, 4, 0},     {300, 0, 44},
        {0xFFFF, 15, 1},  {0xFFFF, 16, 0}, {0xFFFF, 31, 0},  {0x1234, 32, 0x34}, {0x1234, 0xFFFFFFE4, 0x23}};
    const struct {
        ZBW8 from;
        unsigned shift;
        int to;
    } widening[] = {{255, 8, 0xFF00}, {255, 9, 0xFE00}, {255, 0, 255}, {1, 15, 0x8000},
                    {255, 16, 0},     {255, 31, 0},     {255, 33, 510}};
    withBothWorkers([&] {
        for (const auto& c : narrowing) {
            wide.SetPixel(c.from, 0, 0);
            ImgConvert(&wide, &grey, c.shift);
            EXPECT_EQ(grey.GetPixel(0, 0), c.to) << c.from << " by " << c.shift;
        }
        for (const auto& c : widening) {
            grey.SetPixel(c.from, 0, 0);
            ImgConvert(&grey, &result, c.shift);
            EXPECT_EQ(result.GetPixel(0, 0), c.to) << int(c.from) << " by " << c.shift;
        }
    });
}

TEST_F(ConvertTest, colour_and_packed_pixels)
{
    ZImage<ZBW8> grey(1, 1);
    ZImage<ZBW16> packed(1, 1);
    ZImage<ZC24> colour(1, 1);
    grey.SetPixel(7, 0, 0);
    ImgConvertTo422(&grey, &packed);
    EXPECT_EQ(packed.GetPixel(0, 0), 0x8007);
    ImgConvert(&grey, &colour);
    EXPECT_EQ(bytesOf(colour), (std::vector<std::uint8_t>{7, 7, 7}));
    for (const auto& [pixel, level] : {std::pair{ZC24{255, 0, 0}, 84},
                                       {ZC24{0, 0, 255}, 84},
                                       {ZC24{255, 255, 255}, 254},
                                       {ZC24{128, 128, 128}, 127}}) {
        colour.SetPixel(pixel, 0, 0);
        ImgConvert(&colour, &grey);
        EXPECT_EQ(grey.GetPixel(0, 0), level);
    }
}

TEST_F(ConvertTest, sizes_are_checked_before_the_pending_error)
{
    ZImage<ZBW8> grey(4, 4), empty;
    ZImage<ZBW16> wide(4, 4), small(3, 4), nothing;
    ZSetError(Z_ERROR_BAD_MODE);
    ImgConvert(&grey, &small, 0);
    EXPECT_FAILURE(1402, "ImgConvert (BW8 to BW16)");
    ZSetError(Z_ERROR_BAD_MODE);
    grey.SetPixel(5, 0, 0);
    ImgConvert(&grey, &wide, 0);
    EXPECT_FAILURE(1009, "ImgConvert (BW8 to BW16)");
    EXPECT_EQ(wide.GetPixel(0, 0), 0);
    ImgConvertTo422(&empty, &nothing);
    EXPECT_FAILURE(1400, "ImgConvertTo422 (BW8 to BW16)");
    ZROI<ZBW16> outside(&wide, 1, 1, 4, 4);
    ImgConvert(&outside, &grey, 0);
    EXPECT_FAILURE(1401, "ImgConvert (BW16 to BW8)");
}

}  // namespace
