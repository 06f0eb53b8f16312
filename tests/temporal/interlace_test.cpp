#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/temporal.h"

#include <climits>

namespace {

using Bytes = std::vector<std::uint8_t>;

class InterlaceTest : public OperationTest {};

TEST_F(InterlaceTest, fields_are_exchanged)
{
    ZImage<ZBW8> image;
    withBothWorkers([&] {
        draw(image, "123 456 789");
        ImgSwapFrames(&image, &image);
        EXPECT_EQ(bytesOf(image), (Bytes{4, 5, 6, 1, 2, 3, 7, 8, 9}));
    });
}

// Shifts of the row 1 2 3 4 5 in the field that is named; the other row keeps its zeros.
TEST_F(InterlaceTest, a_field_is_shifted_and_filled)
{
    const std::tuple<int, unsigned int, Bytes> cases[] = {
        {0, 0, {0, 0, 0, 0, 0, 1, 2, 3, 4, 5}},  {0, 3, {1, 2, 3, 4, 5, 0, 0, 0, 0, 0}},
        {2, 2, {0, 0, 0, 0, 0, 2, 2, 1, 2, 3}},  {-2, 0, {0, 0, 0, 0, 0, 3, 4, 5, 5, 5}},
        {1, 0, {0, 0, 0, 0, 0, 2, 1, 2, 3, 4}},  {4, 0, {0, 0, 0, 0, 0, 2, 2, 2, 2, 1}},
        {5, 0, {0, 0, 0, 0, 0, 2, 2, 2, 2, 2}},  {6, 0, {0, 0, 0, 0, 0, 1, 1, 1, 1, 1}},
        {-5, 0, {0, 0, 0, 0, 0, 5, 5, 5, 5, 5}}, {INT_MIN, 0, {0, 0, 0, 0, 0, 5, 5, 5, 5, 5}},
    };
    ZImage<ZBW8> src, dst;
    draw(src, "12345 12345");
    for (const auto& [shift, field, expected] : cases)
        withBothWorkers([&, shift = shift, field = field, expected = expected] {
            draw(dst, "00000 00000");
            ImgRealignFrame(&src, &dst, shift, field);
            EXPECT_EQ(bytesOf(dst), expected) << shift << ' ' << field;
        });
}

// The pixel W - shift + 1 of a region of columns 3 and 4 is column 6 - shift of the image.
TEST_F(InterlaceTest, what_fills_a_row_may_lie_beside_the_region)
{
    for (const bool bottomUp : {false, true}) {
        std::vector<std::uint8_t> buffer(40);
        ZImage<ZBW8> image;
        image.Attach(buffer.data() + (bottomUp ? 20 : 0), 6, 3, bottomUp ? -10 : 10);
        ZROI<ZBW8> src(&image, 3, 0, 2, 3);
        for (const auto& [shift, expected] :
             {std::pair(2, 4), {3, 3}, {4, 2}, {5, 1}, {6, 0}, {7, 0}, {99, 0}, {INT_MAX, 0}}) {
            for (int x = 0; x < 6; ++x)
                image.SetPixel(static_cast<ZBW8>(10 * x), x, 1);
            ImgRealignFrame(&src, &src, shift, 0);
            EXPECT_EQ(image.GetPixel(3, 1), 10 * expected) << shift;
            EXPECT_EQ(image.GetPixel(4, 1), 10 * expected) << shift;
        }
        ZROI<ZBW8> last(&image, 5, 1, 1, 1);
        image.SetPixel(77, 5, 1);
        image.SetPixel(66, 4, 1);
        ImgRealignFrame(&last, &last, 1, 1);  // pixel 1 of a region of one lies to the right of the image
        EXPECT_EQ(image.GetPixel(5, 1), 77);
        ImgRealignFrame(&last, &last, 3, 1);
        EXPECT_EQ(image.GetPixel(5, 1), 66);
    }
}

TEST_F(InterlaceTest, a_field_is_rebuilt)
{
    ZImage<ZBW8> image, dst;
    const auto rebuilt = [&](const char* rows, unsigned int field) {
        draw(image, rows);
        ImgRebuildFrame(&image, &image, field);
        return bytesOf(image);
    };
    withBothWorkers([&] {
        EXPECT_EQ(rebuilt("19 00 45 00", 0), (Bytes{1, 9, 2, 7, 4, 5, 4, 5}));
        EXPECT_EQ(rebuilt("19 20 45 67 88", 1), (Bytes{2, 0, 2, 0, 4, 3, 6, 7, 6, 7}));
        EXPECT_EQ(rebuilt("19 23", 1), (Bytes{2, 3, 2, 3}));
        EXPECT_EQ(rebuilt("19", 1), (Bytes{1, 9}));
    });
    draw(image, "19");
    draw(dst, "33");
    ImgRebuildFrame(&image, &dst, 1);
    EXPECT_EQ(bytesOf(dst), (Bytes{1, 9}));
}

template <class T>
int bestOf(ZImage<T>& image, int row, int minShift, int maxShift)
{
    std::uint32_t least = UINT32_MAX;
    int best = 12345;
    const int pixelSize = image.GetPixelSize();
    for (int s = minShift; s <= maxShift; ++s) {
        std::uint32_t sum = 0;
        for (int x = std::max(maxShift, 0); x < image.GetWidth() + std::min(minShift, 0); ++x)
            for (int c = 0; c < pixelSize; ++c) {
                const int d = static_cast<unsigned char*>(image.GetPixelPtr(x, row))[c] -
                              static_cast<unsigned char*>(image.GetPixelPtr(x - s, row + 1))[c];
                sum += static_cast<std::uint32_t>(d * d);
            }
        if (sum < least) {
            least = sum;
            best = s;
        }
    }
    return best;
}

TEST_F(InterlaceTest, shifts_are_found)
{
    Random random(8);
    const auto compare = [&](auto image) {
        for (int round = 0; round < 60; ++round) {
            const int width = random(1, 300);
            image->SetSize(width, 3);
            fill(*image, random);
            const int minShift = random(-width - 5, width + 5);
            const int maxShift = minShift + random(0, width) / random(1, 9), shift = random(minShift, maxShift);
            for (int x = std::max(0, -shift); x < width + std::min(0, -shift); ++x)
                if (x + shift < width)
                    image->SetPixel(image->GetPixel(x, 2), x + shift, 1);
            withBothWorkers([&] {
                int best = 12345;
                ImgMatchFrames(image.get(), 1, minShift, maxShift, best);
                EXPECT_EQ(best, bestOf(*image, 1, minShift, maxShift)) << minShift << ".." << maxShift;
            });
        }
    };
    compare(std::make_unique<ZImage<ZBW8>>());
    compare(std::make_unique<ZImage<ZC24>>());
}

TEST_F(InterlaceTest, shifts_that_cannot_be_looked_for)
{
    ZImage<ZBW8> image(4, 3);
    int best = 7;
    const std::tuple<int, int, int, short> cases[] = {
        {0, 1, 0, 1007},  {0, 0, 5, 1007}, {0, INT_MIN, INT_MAX, 1007}, {0, INT_MAX, INT_MIN, 1007}, {9, 1, 0, 1007},
        {-1, 0, 0, 1012}, {2, 0, 0, 1012}, {INT_MAX, 0, 4, 1012},       {INT_MIN, 0, 0, 1012}};
    for (const auto& [row, minShift, maxShift, code] : cases) {
        ImgMatchFrames(&image, row, minShift, maxShift, best);
        EXPECT_FAILURE(code, "ImgMatchFrames (ZBW8)");
        EXPECT_EQ(best, 7);
    }
    for (const int shift : {INT_MIN, -4, 0, 4, INT_MAX - 4}) {
        ImgMatchFrames(&image, 1, shift, shift + 4, best);
        EXPECT_EQ(best, shift) << "all are equal";
    }
    ImgMatchFrames(&image, 1, INT_MAX, INT_MAX, best);
    EXPECT_EQ(best, INT_MAX);
}

}  // namespace
