#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/point.h"

#include <cmath>
#include <limits>

namespace {

class GainOffsetTest : public OperationTest {};

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

// The two arithmetics, from their description alone.
struct Model {
    Model(float gain, float offset) : gain_(whole(gain * 32.0)), offset_(whole(offset)) {}

    static std::int64_t whole(double value)
    {
        if (std::isnan(value))
            return 0;
        return static_cast<std::int64_t>(std::trunc(std::max(-2147483648.0, std::min(2147483647.0, value))));
    }

    static int clip(std::int64_t value) { return value < 0 ? 0 : value > 255 ? 255 : static_cast<int>(value); }

    int byTable(int level) const
    {
        const std::uint64_t product = static_cast<std::uint64_t>(level * gain_) & 0xFFFFFFFFU;
        const std::uint64_t sum = (product / 32 + static_cast<std::uint64_t>(offset_)) & 0xFFFFFFFFU;
        return clip(sum >= 0x80000000U ? -1 : static_cast<std::int64_t>(sum));
    }

    int inBlock(int level) const
    {
        std::int64_t product = (level * gain_) & 0xFFFF;
        product -= product >= 0x8000 ? 0x10000 : 0;
        const std::int64_t offset = std::max<std::int64_t>(-32768, std::min<std::int64_t>(32767, offset_));
        const std::int64_t shifted = (product - (product % 32 + 32) % 32) / 32;
        return clip(shifted + offset);
    }

    // Pixel x of a row of `width` pixels whose first byte lies at `address`.
    int packed(int level, std::uintptr_t address, int x, int width) const
    {
        const std::uintptr_t first = (address + 7) / 8 * 8, last = (address + static_cast<unsigned>(width)) / 8 * 8;
        const std::uintptr_t here = address + static_cast<unsigned>(x);
        return here >= first && here < last ? inBlock(level) : byTable(level);
    }

    std::int64_t gain_, offset_;
};

constexpr std::pair<float, float> arguments[] = {{1, 0},          {0.5F, 0},          {4, 0},
                                                 {4.031F, 0},     {4.04F, 3},         {5.5F, -7},
                                                 {-1, 0},         {-0.01F, 100},      {-300, 40000},
                                                 {1, 32767},      {1, 32768},         {1, -32768},
                                                 {1, -32769},     {2, -100000},       {1000, -70000},
                                                 {2047.9F, 1},    {3e9F, 0},          {1, 3e9F},
                                                 {1, -3e9F},      {infinite, 0},      {-infinite, 255},
                                                 {nan, 12},       {1.3F, nan},        {0, 128.9F},
                                                 {0.999F, -0.9F}, {1, 2147483520.0F}, {67108864, -2147483648.0F},
                                                 {8.0F, -32000}};

TEST_F(GainOffsetTest, both_arithmetics_at_every_alignment)
{
    Random random(3);
    for (const auto& argument : arguments) {
        const float gain = argument.first, offset = argument.second;
        const Model model(gain, offset);
        for (int alignment = 0; alignment < 8; ++alignment)
            for (const int width : {1, 2, 3, 5, 7, 8, 9, 15, 16, 17, 23, 31, 40, 71, 256, 300}) {
                SCOPED_TRACE(testing::Message() << "gain " << gain << ", offset " << offset << ", alignment "
                                                << alignment << ", width " << width);
                // Rows without gaps: blocks are those of each row, not of all of them together.
                std::vector<std::uint8_t> from(static_cast<std::size_t>(2 * width)), to(from.size() + 16, 99);
                ZImage<ZBW8> src, dst;
                src.Attach(from.data(), width, 2, width);
                fill(src, random);
                dst.Attach(to.data() + alignment, width, 2, width);
                withBothWorkers([&] {
                    ImgGainOffset(&src, &dst, gain, offset);
                    for (int y = 0; y < 2; ++y)
                        for (int x = 0; x < width; ++x) {
                            const int level = src.GetPixel(x, y);
                            const auto address = reinterpret_cast<std::uintptr_t>(dst.GetPixelPtr(0, y));
                            ASSERT_EQ(dst.GetPixel(x, y),
                                      ZGetMMX() ? model.packed(level, address, x, width) : model.byTable(level))
                                << "level " << level << " at " << x << ',' << y;
                        }
                });
            }
    }
}

TEST_F(GainOffsetTest, worked_cases)
{
    ZImage<ZBW8> src(3, 1), dst(3, 1);
    draw(src, "012");
    src.SetPixel(255, 2, 0);
    withBothWorkers([&] {
        ImgGainOffset(&src, &dst, 0.5F, 0);
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{0, 0, 127}));
        ImgGainOffset(&src, &dst, -1, 0);  // shorter than a block: the table, whose products are unsigned
        EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{0, 255, 255}));
    });
}

TEST_F(GainOffsetTest, colour_takes_its_components_from_the_last_byte_on)
{
    ZImage<ZC24> src(40, 2), dst(40, 2);
    Random random(4);
    fill(src, random);
    src.SetPixel({0, 0, 0}, 3, 1);
    const std::pair<ZColor, ZColor> cases[] = {
        {{1, 0.5F, 2.25F}, {10, -20, -300.5F}}, {{1.1F, 0.7F, 1.3F}, {0, 0.999F, -0.999F}},
        {{1.1F, 0.7F, 1.3F}, {0, -20, 9}},      {{0.001F, 2.9999998F, 4e9F}, {32767, -300, -32767}},
        {{-1, infinite, nan}, {255.5F, -1, 5}}, {{infinite, infinite, infinite}, {10, 20, 30}},
        {{0, 1e9F, -1e9F}, {3e9F, 0, 128}}};
    withBothWorkers([&] {
        for (const auto& [gain, offset] : cases) {
            ImgGainOffset(&src, &dst, gain, offset);
            for (int x = 0; x < 40; ++x) {
                const ZC24 in = src.GetPixel(x, 1), out = dst.GetPixel(x, 1);
                const auto expected = [&, &by = gain, &plus = offset](int level, int component) {
                    return Model::clip(Model::whole(level * double(by.c[component]) + double(plus.c[component])));
                };
                ASSERT_EQ(out.c0, expected(in.c0, 2)) << "level " << int(in.c0);
                ASSERT_EQ(out.c1, expected(in.c1, 1)) << "level " << int(in.c1);
                ASSERT_EQ(out.c2, expected(in.c2, 0)) << "level " << int(in.c2);
            }
        }
    });
}

}  // namespace
