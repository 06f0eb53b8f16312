#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/temporal.h"

#include <cmath>
#include <limits>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr float infinity = std::numeric_limits<float>::infinity(), notANumber = std::numeric_limits<float>::quiet_NaN();

class RecursiveAverageTest : public OperationTest {
protected:
    int entry(int difference) { return static_cast<std::int16_t>(lut_[static_cast<unsigned>(4095 + difference)]); }

    ZBW16Vector lut_;
};

TEST_F(RecursiveAverageTest, a_table_follows_its_formula)
{
    for (const float reduction : {0.5F, 1.0F, 2.0F, 7.3F})
        for (const float width : {0.0F, 0.01F, 1.0F, 10.0F, -10.0F, 300.0F}) {
            ImgSetRecursiveAverageLUT(&lut_, reduction, width);
            ASSERT_EQ(lut_.GetNumElements(), 8191U);
            const double q = static_cast<double>(reduction) * reduction, c = std::abs(16 * width);
            int different = 0;
            for (int i = 0; i <= 4095; ++i) {
                const double t = width == 0 ? 0.5 + i * 2 / (q + 1) : i + c * (1 - q) / (1 + q) * std::tanh(i / c);
                different += std::abs(entry(i) - static_cast<int>(t)) > (std::abs(t - std::round(t)) < 1e-6 ? 1 : 0);
                different += entry(-i) != -entry(i);
            }
            EXPECT_EQ(different, 0) << reduction << ' ' << width;
        }
    EXPECT_EQ(entry(0), 0);
}

// The same entries on every machine.
TEST_F(RecursiveAverageTest, tables_are_reproducible)
{
    std::uint32_t all = 0;
    for (int i = 0; i < 60; ++i) {
        ImgSetRecursiveAverageLUT(&lut_, 0.3F + 0.17F * static_cast<float>(i), 0.37F * static_cast<float>(i * i));
        for (unsigned int k = 0; k < 8191; ++k)
            all = 31 * all + lut_[k];
    }
    EXPECT_EQ(all, 4008130176U);
    ImgSetRecursiveAverageLUT(&lut_, 2, 10);  // q = 4, m = -96: large differences lag by 96
    EXPECT_EQ(entry(4095), 4095 - 96);
    EXPECT_EQ(entry(1000), 1000 - 96);
}

TEST_F(RecursiveAverageTest, tables_of_hostile_arguments)
{
    for (const auto& [reduction, width] :
         {std::pair(notANumber, 0.F), {notANumber, 1.F}, {1.F, notANumber}, {2.F, infinity}, {infinity, 1.F}}) {
        ImgSetRecursiveAverageLUT(&lut_, reduction, width);
        EXPECT_EQ(entry(0), 0);
        EXPECT_EQ(entry(4095), 0);
    }
    for (const auto& [reduction, width, last] :
         {std::tuple(0.F, 0.F, 8190), {1.F, 0.F, 4095}, {1.F, 1e30F, 4095}, {3e38F, 0.F, 0}, {2.F, 1e-44F, 4095}}) {
        ImgSetRecursiveAverageLUT(&lut_, reduction, width);
        EXPECT_EQ(entry(4095), last) << reduction << ' ' << width;
        EXPECT_EQ(entry(-4095), -last);
    }
}

TEST_F(RecursiveAverageTest, states_follow)
{
    lut_.SetNumElements(8191);
    for (unsigned int i = 0; i < 8191; ++i)
        lut_[i] = 0;
    const auto set = [&](int difference, int correction) {
        lut_[static_cast<unsigned>(4095 + difference)] = static_cast<ZBW16>(correction);
    };
    set(1600, 320);
    set(-40, -17);
    set(-4095, -65);
    set(8, -32768);
    set(0, 32767);
    // src, state before and after, dst
    const int cases[][4] = {{100, 0, 320, 20}, {10, 200, 183, 11},      {0, 65535, 65470, 255},   {0, 4095, 4030, 251},
                            {1, 8, 32776, 0},  {200, 3200, 35967, 255}, {255, 65000, 64935, 255}, {7, 100, 100, 6}};
    withBothWorkers([&] {
        ZImage<ZBW8> src(8, 9), dst(8, 9);
        ZImage<ZBW16> state(8, 9);
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x < 8; ++x) {
                src.SetPixel(static_cast<ZBW8>(cases[x][0]), x, y);
                state.SetPixel(static_cast<ZBW16>(cases[x][1]), x, y);
            }
        ImgRecursiveAverage(&src, &state, &dst, &lut_);
        for (int x = 0; x < 8; ++x) {
            EXPECT_EQ(state.GetPixel(x, 8), cases[x][2]) << x;
            EXPECT_EQ(dst.GetPixel(x, 8), cases[x][3]) << x;
        }
    });
}

TEST_F(RecursiveAverageTest, a_table_without_reduction_passes_the_source_on)
{
    ImgSetRecursiveAverageLUT(&lut_, 1, 0);
    ZImage<ZBW8> src(70, 5), dst(70, 5);
    ZImage<ZBW16> state(70, 5);
    Random random(6);
    for (int i = 0; i < 3; ++i) {
        fill(src, random);
        ImgRecursiveAverage(&src, &state, &dst, &lut_);
        EXPECT_EQ(bytesOf(dst), bytesOf(src));
    }
}

// Source, state and destination in one buffer: separate results, dst written last.
TEST_F(RecursiveAverageTest, states_may_share_memory)
{
    ImgSetRecursiveAverageLUT(&lut_, 2, 5);
    Random random(7);
    for (int round = 0; round < 60; ++round) {
        const int width = random(1, 90), height = random(1, 4);
        std::vector<std::uint8_t> buffer(2000);
        for (std::uint8_t& byte : buffer)
            byte = static_cast<std::uint8_t>(random(0, 255) & random(0, 255));
        const std::vector<std::uint8_t> before = buffer;
        ZImage<ZBW8> src, dst, srcApart(width, height), dstApart(width, height);
        ZImage<ZBW16> state, stateApart(width, height);
        src.Attach(buffer.data() + random(0, 300), width, height, width);
        dst.Attach(buffer.data() + random(0, 300), width, height, width);
        state.Attach(buffer.data() + random(0, 300), width, height, 2 * width);
        copyPixels<ZBW8>(src, srcApart);
        copyPixels<ZBW16>(state, stateApart);
        ZSetMMX(0);
        ImgRecursiveAverage(&srcApart, &stateApart, &dstApart, &lut_);
        ZSetMMX(round % 2);
        ImgRecursiveAverage(&src, &state, &dst, &lut_);
        EXPECT_EQ(bytesOf(dst), bytesOf(dstApart)) << round;
        std::copy(before.begin(), before.end(), buffer.begin());
        copyPixels<ZBW16>(stateApart, state);
        copyPixels<ZBW8>(dstApart, dst);
        const std::vector<std::uint8_t> expected = buffer;
        std::copy(before.begin(), before.end(), buffer.begin());
        ImgRecursiveAverage(&src, &state, &dst, &lut_);
        EXPECT_EQ(buffer, expected) << round;
    }
    ZSetMMX(1);
}

TEST_F(RecursiveAverageTest, unusable_arguments)
{
    ImgSetRecursiveAverageLUT(nullptr, 1, 0);
    EXPECT_FAILURE(1601, "ImgSetRecursiveAverageLUT");
    ZImage<ZBW8> image(4, 4), small(3, 4);
    ZImage<ZBW16> state(4, 4), low(4, 3);
    ImgRecursiveAverage(&image, &state, &image, &lut_);
    EXPECT_FAILURE(1613, "ImgRecursiveAverage");
    ImgRecursiveAverage(&image, &state, &image, nullptr);
    EXPECT_FAILURE(1601, "ImgRecursiveAverage");
    ImgRecursiveAverage(&image, nullptr, &small, nullptr);
    EXPECT_FAILURE(1400, "ImgRecursiveAverage");
    ImgRecursiveAverage(&image, &low, &image, nullptr);
    EXPECT_FAILURE(1403, "ImgRecursiveAverage");
    ImgRecursiveAverage(&image, &state, &small, nullptr);
    EXPECT_FAILURE(1403, "ImgRecursiveAverage");
    state.SetPlacement(1, 0, 4, 4);
    ImgRecursiveAverage(&image, &state, &image, nullptr);
    EXPECT_FAILURE(1401, "ImgRecursiveAverage");
}

}  // namespace
