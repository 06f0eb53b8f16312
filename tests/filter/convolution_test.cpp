#include "support/colours.h"
#include "support/errors.h"
#include "zkit/img/convolution.h"

#include <cmath>

namespace {

class ConvolutionTest : public OperationTest {};

using Pixels = std::vector<std::uint8_t>;

// A kernel of any sizes with coefficients of a kind: 0 whole numbers, 1 fractions, 2 large ones, 3 symmetric ones.
std::unique_ptr<ZKernel> someKernel(Random& random, int sizeX, int sizeY, int kind, int rectifier, unsigned offset)
{
    auto kernel = std::make_unique<ZKernel>(static_cast<short>(sizeX), static_cast<short>(sizeY),
                                            static_cast<float>(random(-8, 8)) / 4, offset,
                                            static_cast<short>(rectifier), static_cast<unsigned>(random(0, 300)));
    for (int y = 0; y < sizeY; ++y)
        for (int x = 0; x < sizeX; ++x) {
            const int dx = std::abs(x - sizeX / 2), dy = std::abs(y - sizeY / 2);
            const float values[] = {static_cast<float>(random(-3, 4)), static_cast<float>(random(-999, 2000)) / 977,
                                    static_cast<float>(random(-99, 100)) * 1e7F,
                                    static_cast<float>(1 + dx * dy + 2 * (dx + dy)) / 7};
            kernel->GetDataPtr()[y * sizeX + x] = values[kind];
        }
    return kernel;
}

std::int32_t toInt(double value)
{
    return std::isnan(value) ? 0 : static_cast<std::int32_t>(std::min(std::max(value, -2147483648.0), 2147483647.0));
}

std::int32_t wrapped(std::int64_t value) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(value)); }

std::uint8_t clip(std::int64_t value)
{
    return static_cast<std::uint8_t>(std::min<std::int64_t>(std::max<std::int64_t>(value, 0), 255));
}

// Every position of a row or column that an offset reaches from `at`, all on the nearest one when it lies outside:
// the coefficients of those are added together first.
std::uint8_t fixedPixel(const ZROI<ZBW8>& src, int x, int y, const ZKernel& kernel)
{
    const int size = kernel.GetSizeX();
    double sum = 0;
    for (int i = 0; i < size * size; ++i)
        sum += static_cast<double>(kernel.GetDataPtr()[i]);
    const double sign = kernel.GetRectifier() == 1 ? -1 : 1, gain = static_cast<double>(kernel.GetGain());
    const double scale = sign * (sum != 0 ? gain / sum : gain);
    std::vector<std::int64_t> merged(static_cast<std::size_t>(src.GetWidth() * src.GetHeight()));
    for (int r = 0; r < size; ++r)
        for (int k = 0; k < size; ++k) {
            const int sx = std::clamp(x + k - size / 2, 0, src.GetWidth() - 1);
            const int sy = std::clamp(y + r - size / 2, 0, src.GetHeight() - 1);
            merged[static_cast<std::size_t>(sy * src.GetWidth() + sx)] +=
                toInt(static_cast<double>(kernel.GetDataPtr()[r * size + k]) * scale * 32768);
        }
    std::int64_t total = static_cast<std::int64_t>(sign) * static_cast<std::int32_t>(kernel.GetOffset()) * 32768;
    for (int sy = 0; sy < src.GetHeight(); ++sy)
        for (int sx = 0; sx < src.GetWidth(); ++sx)
            total += merged[static_cast<std::size_t>(sy * src.GetWidth() + sx)] * src.GetPixel(sx, sy);
    const std::int32_t shifted = wrapped(total) >> 15;
    return clip(kernel.GetRectifier() == 3 ? std::abs(shifted) : shifted);
}

std::uint8_t floatingPixel(const ZROI<ZBW8>& src, int x, int y, const ZKernel& kernel)
{
    const int columns = kernel.GetSizeX(), rows = kernel.GetSizeY();
    double total = 0;
    for (int i = 0; i < columns * rows; ++i)
        total += static_cast<double>(kernel.GetDataPtr()[i]);
    const double quotient = static_cast<double>(kernel.GetGain()) / total;
    const float gain = total != 0 ? static_cast<float>(quotient) : kernel.GetGain();
    const bool border =
        columns == 3 && rows == 3 && (x == 0 || y == 0 || x == src.GetWidth() - 1 || y == src.GetHeight() - 1);
    double sum = 0;
    for (int r = 0; r < rows; ++r)
        for (int k = 0; k < columns; ++k) {
            const int sx = x - columns / 2 + k, sy = y - rows / 2 + r;
            const bool inside = sx >= 0 && sy >= 0 && sx < src.GetWidth() && sy < src.GetHeight();
            const double value = inside ? src.GetPixel(sx, sy) : kernel.GetOutsideValue();
            const int index = border && r == 2 && k == 1 ? 5 : r * columns + k;
            sum += value * static_cast<double>(kernel.GetDataPtr()[index] * gain);
        }
    const std::int32_t offset = static_cast<std::int32_t>(kernel.GetOffset());
    const std::int32_t mode = border ? offset : kernel.GetRectifier(), added = border ? 0 : offset;
    std::int64_t v = toInt(sum);
    if (mode == 1)
        v = v <= 0 ? -v : 0;
    else if (mode == 2)
        v = v >= 0 ? v : 0;
    else if (mode == 3)
        v = v >= 0 ? v : -v;
    return clip(wrapped(wrapped(v) + std::int64_t{added}));
}

template <class Pixel>
void expectModel(const ZROI<ZBW8>& src, const ZROI<ZBW8>& dst, const ZKernel& kernel, Pixel pixel)
{
    for (int y = 0; y < src.GetHeight(); ++y)
        for (int x = 0; x < src.GetWidth(); ++x)
            ASSERT_EQ(dst.GetPixel(x, y), pixel(src, x, y, kernel))
                << "at " << x << ',' << y << " of " << src.GetWidth() << 'x' << src.GetHeight() << ", kernel "
                << kernel.GetSizeX() << 'x' << kernel.GetSizeY() << ", rectifier " << kernel.GetRectifier();
}

unsigned someOffset(Random& random)
{
    const int offsets[] = {0, 1, 2, 3, 40, -40, random(INT32_MIN, INT32_MAX)};
    return static_cast<unsigned>(offsets[random(0, 6)]);
}

TEST_F(ConvolutionTest, fixed_point_follows_the_model)
{
    Random random(1);
    for (int round = 0; round < 240; ++round) {
        const int size = 3 + round % 3 * 2, kind = round / 3 % 4;
        const auto kernel = someKernel(random, size, size, kind, random(1, 3), someOffset(random));
        ZImage<ZBW8> src(random(1, 9) * (round % 5 ? 1 : 9), random(1, 9)), dst(src.GetWidth(), src.GetHeight());
        fill(src, random);
        ZSetMMX(round % 2);
        EXPECT_EQ(ImgConvolKernel(&src, &dst, kernel.get()), 0);
        expectModel(src, dst, *kernel, fixedPixel);
        if (kind == 3) {
            ImgConvolSymmetricKernel(&src, &dst, kernel.get());
            expectModel(src, dst, *kernel, fixedPixel);
        }
    }
}

TEST_F(ConvolutionTest, floating_point_follows_the_model)
{
    Random random(2);
    for (int round = 0; round < 400; ++round) {
        const bool three = round % 4 == 0;
        const int sizeX = three ? 3 : random(1, 10), sizeY = three ? 3 : random(1, 10);
        const bool square = sizeX == sizeY && sizeX % 2 == 1;
        const auto kernel =
            someKernel(random, sizeX, sizeY, random(0, 2), square ? 0 : random(-1, 4), someOffset(random));
        if (round % 50 == 1)
            kernel->SetGain(round % 100 == 1 ? INFINITY : NAN);
        ZImage<ZBW8> src(random(1, 9) * (round % 5 ? 1 : 9), random(1, 9)), dst(src.GetWidth(), src.GetHeight());
        fill(src, random);
        ZSetMMX(round / 4 % 2);
        EXPECT_EQ(ImgConvolKernel(&src, &dst, kernel.get()), 0);
        expectModel(src, dst, *kernel, floatingPixel);
    }
}

TEST_F(ConvolutionTest, by_hand)
{
    ZImage<ZBW8> src, dst(3, 3);
    draw(src, "123 456 789");
    ZKernel kernel;
    kernel.SetKernelData(0, 0, 0, 0, 0, 1, 0, 100, 0);  // the right neighbour, 100 times the one below
    kernel.SetGain(101);
    kernel.SetRectifier(0);
    kernel.SetOutsideValue(3);
    withBothWorkers([&] {
        ImgConvolKernel(&src, &dst, &kernel);  // on the border the one below counts like the right one
        EXPECT_EQ(bytesOf(dst), (Pixels{2 + 4, 3 + 5, 3 + 6, 5 + 7, 255, 3 + 9, 8 + 3, 9 + 3, 3 + 3}));
    });
    ZKernel lowpass(KERNEL_LOWPASS_3);
    withBothWorkers([&] {
        ImgConvolKernel(&src, &dst, &lowpass);  // the corner: 4 ones, 2 twos, 2 fours, a five; 7/9 - 1 is truncated
        EXPECT_EQ(dst.GetPixel(0, 0), 2);
        EXPECT_EQ(dst.GetPixel(1, 1), 4);  // 45 times a ninth rounded down
    });
    ZKernel sobel(KERNEL_SOBEL_X);
    const auto centre = [&](short rectifier, unsigned offset) {
        sobel.SetRectifier(rectifier);
        sobel.SetOffset(offset);
        ImgConvolKernel(&src, &dst, &sobel);
        return dst.GetPixel(1, 1);
    };
    EXPECT_EQ(centre(2, 10), 18);
    EXPECT_EQ(centre(1, 10), 0);
    EXPECT_EQ(centre(1, static_cast<unsigned>(-20)), 12);
    EXPECT_EQ(centre(3, static_cast<unsigned>(-20)), 12);
    EXPECT_EQ(centre(0, 10), 18);
}

TEST_F(ConvolutionTest, colour_convolves_every_component_by_itself)
{
    Random random(4);
    for (const int rectifier : {0, 2})
        for (const int size : {3, 4, 7}) {
            const auto kernel = someKernel(random, size, size, 1, rectifier, 3);
            const auto convolve = [&](auto src, auto dst, auto...) { ImgConvolKernel(src, dst, kernel.get()); };
            expectByteByByte({41, 6}, {41, 6}, convolve, convolve);
        }
}

// In place, and with a destination a little beside its source.
template <class T>
void expectSameBetweenNeighbours(Random& random, ZKernel& kernel)
{
    for (const auto& [dx, dy] : {std::pair(0, 0), {1, 0}, {0, 1}, {0, -1}, {-2, 1}, {3, -2}}) {
        ZImage<T> image(50, 25), apart(40, 13);
        fill(image, random);
        ZROI<T> src(&image, 5, 5, 40, 13), dst(&image, 5 + dx, 5 + dy, 40, 13);
        ImgConvolKernel(&src, &apart, &kernel);
        ImgConvolKernel(&src, &dst, &kernel);
        EXPECT_EQ(bytesOf(dst), bytesOf(apart)) << dx << ',' << dy;
    }
}

TEST_F(ConvolutionTest, regions_may_overlap)
{
    withBothWorkers([] {
        Random random(5);
        for (const int size : {3, 5, 6, 7})
            for (const int rectifier : {0, 2})
                for (const int kind : {0, 1}) {
                    SCOPED_TRACE(testing::Message() << size << ", rectifier " << rectifier << ", kind " << kind);
                    const auto kernel = someKernel(random, size, size, kind, rectifier, 3);
                    expectSameBetweenNeighbours<ZBW8>(random, *kernel);
                    expectSameBetweenNeighbours<ZC24>(random, *kernel);
                }
    });
}

TEST_F(ConvolutionTest, unknown_rectifiers_in_fixed_point_leave_the_destination)
{
    Random random(6);
    ZImage<ZBW8> grey(9, 9);
    ZImage<ZC24> colour(9, 9);
    fill(grey, random);
    fill(colour, random);
    const Pixels greyBefore = bytesOf(grey), colourBefore = bytesOf(colour);
    for (const int rectifier : {-1, 4, 5}) {
        const auto kernel = someKernel(random, 5, 5, 0, rectifier, 0);
        EXPECT_EQ(ImgConvolKernel(&grey, &grey, kernel.get()), 0);
        ImgConvolKernel(&colour, &colour, kernel.get());
        ImgConvolSymmetricKernel(&grey, &grey, kernel.get());
    }
    EXPECT_EQ(bytesOf(grey), greyBefore);
    EXPECT_EQ(bytesOf(colour), colourBefore);
}

TEST_F(ConvolutionTest, unusable_kernels_and_regions)
{
    ZImage<ZBW8> image(9, 9), small(8, 9);
    ZImage<ZC24> colour(9, 9), smallColour(8, 9);
    ZROI<ZBW8> outside(&image, 1, 0, 9, 9);
    ZROI<ZC24> outsideColour(&colour, 1, 0, 9, 9);
    ZKernel kernel(KERNEL_LOWPASS_1), none, negative(KERNEL_LOWPASS_1), plain(3, 3, 1, 0, 0, 0), even(4, 4, 1, 0, 2, 0);
    negative.SetSizeX(-3);
    for (ZKernel* const unusable : {static_cast<ZKernel*>(nullptr), &none, &negative}) {
        EXPECT_EQ(ImgConvolKernel(&image, &image, unusable), 1700);
        EXPECT_FAILURE(1700, "ImgConvolKernel");
        ImgConvolKernel(&colour, &outsideColour, unusable);
        EXPECT_FAILURE(1700, "ImgConvolKernel", "ImgConvolKernel (C24)");
        ImgConvolSymmetricKernel(nullptr, &image, unusable);
        EXPECT_FAILURE(1700, "ImgConvolSymmetricKernel");
    }
    ImgConvolKernel(&outside, &small, &none);
    EXPECT_FAILURE(1402, "ImgConvolKernel");
    ImgConvolKernel(&outside, &image, &kernel);
    EXPECT_FAILURE(1401, "ConvolKernel3x3", "ImgConvolKernel");
    ImgConvolKernel(&image, &outside, &plain);
    EXPECT_FAILURE(1401, "ImgConvolKernel");
    ImgConvolKernel(&colour, &outsideColour, &kernel);
    EXPECT_FAILURE(1401, "ImgConvolKernel (C24)");
    ImgConvolKernel(&colour, &smallColour, &kernel);
    EXPECT_FAILURE(1402, "ImgConvolKernel", "ImgConvolKernel (C24)");
    ImgConvolSymmetricKernel(nullptr, &image, &plain);
    EXPECT_FAILURE(1702, "ImgConvolSymmetricKernel");
    ImgConvolSymmetricKernel(nullptr, &image, &even);
    EXPECT_FAILURE(1703, "ImgConvolSymmetricKernel");
    ImgConvolSymmetricKernel(&outside, &small, &kernel);
    EXPECT_FAILURE(1401, "ConvolKernelS3xS3", "ImgConvolSymmetricKernel");
    ImgConvolSymmetricKernel(&image, &small, &kernel);
    EXPECT_FAILURE(1402, "ConvolKernelS3xS3", "ImgConvolSymmetricKernel");

    image.SetPixel(90, 4, 4);
    ZSetError(Z_ERROR_BAD_MODE);
    ImgConvolSymmetricKernel(&image, &image, &kernel);
    EXPECT_NE(image.GetPixel(4, 4), 90);
    EXPECT_FAILURE(1009, "ImgConvolSymmetricKernel");
}

}  // namespace
