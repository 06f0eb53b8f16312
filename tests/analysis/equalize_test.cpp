#include "support/errors.h"
#include "support/images.h"
#include "zkit/img/analysis.h"

namespace {

class EqualizeTest : public OperationTest {
protected:
    // The tables that typed and untyped histograms of these counts give, which must be the same.
    static std::vector<int> tableOf(const std::vector<std::pair<unsigned, unsigned>>& counts)
    {
        ZBW8HistogramVector typed;
        ZVector untyped(2), entries;
        typed.SetNumElements(256);
        std::fill_n(typed.GetDataPtr(), 256, 0U);
        for (const auto& [level, count] : counts)
            typed[level] = static_cast<unsigned*>(untyped.GetDataPtr())[level] = count;
        ZBW8Vector table(1000);
        ImgSetupEqualize(&typed, &table);
        ImgSetupEqualize(&untyped, &entries);
        EXPECT_EQ(table.GetNumElements(), 256U);
        EXPECT_EQ(table.GetMaxElements(), 256U);
        EXPECT_EQ(entries.GetVectType(), 3);
        EXPECT_EQ(std::memcmp(table.GetDataPtr(), entries.GetDataPtr(), 256), 0);
        return {table.GetDataPtr(), table.GetDataPtr() + 256};
    }
};

TEST_F(EqualizeTest, tables)
{
    EXPECT_EQ(tableOf({}), std::vector<int>(256));
    EXPECT_EQ(tableOf({{100, 5}}), std::vector<int>(256));  // 256 above it

    std::vector<int> expected(256);
    for (int level = 11; level < 256; ++level)
        expected[static_cast<std::size_t>(level)] = level <= 20 ? 85 : level <= 30 ? 170 : 0;
    EXPECT_EQ(tableOf({{10, 3}, {20, 3}, {30, 3}}), expected);

    // The product has 32 bits, and so has the total.
    EXPECT_EQ(tableOf({{0, 1U << 24}, {1, 1U << 24}})[1], 0);
    EXPECT_EQ(tableOf({{0, (1U << 24) + 4}, {1, 12}})[1], 0);
    EXPECT_EQ(tableOf({{0, (1U << 31) + 7}, {1, 1U << 31}})[1], (7 * 256 / 7) % 256);
    EXPECT_EQ(tableOf({{0, 1U << 31}, {1, 1U << 31}})[1], 0);
}

TEST_F(EqualizeTest, images)
{
    ZImage<ZBW8> image;
    draw(image, "1123 3333");
    withBothWorkers([&] {
        ZImage<ZBW8> result(4, 2);
        ImgEqualize(&image, &result);
        EXPECT_EQ(bytesOf(result), (std::vector<std::uint8_t>{0, 0, 64, 96, 96, 96, 96, 96}));
    });
    ZROI<ZBW8> none(&image, 0, 0, 0, 2);
    ImgEqualize(&none, &none);
}

TEST_F(EqualizeTest, trails_nest)
{
    ZImage<ZBW8> image(4, 4), small(3, 4), empty;
    ImgEqualize(&empty, &image);
    EXPECT_FAILURE(1400, "ImgHistogram", "ImgEqualize");
    ImgEqualize(&image, &small);
    EXPECT_FAILURE(1402, "ImgLut", "ImgEqualize");
}

TEST_F(EqualizeTest, vectors_are_checked_in_their_order)
{
    ZBW8HistogramVector typed(256);
    ZBW8Vector entries(3);
    entries.AddElement(9);
    ImgSetupEqualize(static_cast<ZBW8HistogramVector*>(nullptr), &entries);
    EXPECT_FAILURE(1601, "ImgSetupEqualize (ZBW8HistogramVector)");
    ImgSetupEqualize(&typed, static_cast<ZBW8Vector*>(nullptr));
    EXPECT_FAILURE(1613, "ImgSetupEqualize (ZBW8HistogramVector)");
    typed.SetNumElements(256);
    ImgSetupEqualize(&typed, static_cast<ZBW8Vector*>(nullptr));
    EXPECT_FAILURE(1601, "ImgSetupEqualize (ZBW8HistogramVector)");
    EXPECT_EQ(entries[0], 9);

    ZVector histogram(2), table(3), none, emptied(2), small, short3;
    ImgSetupEqualize(&table, nullptr);
    EXPECT_FAILURE(1603, "ImgSetupEqualize (ZVector)");
    ImgSetupEqualize(&none, &table);
    EXPECT_FAILURE(1601, "ImgSetupEqualize (ZVector)");
    ImgSetupEqualize(&histogram, nullptr);
    EXPECT_FAILURE(1601, "ImgSetupEqualize (ZVector)");
    emptied.Reallocate(0);
    ImgSetupEqualize(&emptied, &table);
    EXPECT_FAILURE(1601, "ImgSetupEqualize (ZVector)");

    // Vectors that are too small.
    small.SetType(2, 1, 3);
    static_cast<unsigned*>(small.GetDataPtr())[1] = 4;
    static_cast<unsigned*>(small.GetDataPtr())[2] = 4;
    short3.SetType(3, 1, 16);
    ImgSetupEqualize(&small, &table);
    ImgSetupEqualize(&small, &short3);
    EXPECT_EQ(static_cast<ZBW8*>(table.GetDataPtr())[2], 128);
    EXPECT_EQ(std::memcmp(table.GetDataPtr(), short3.GetDataPtr(), 32), 0);
    table.Reallocate(0);
    ImgSetupEqualize(&histogram, &table);
    EXPECT_FAILURE(1601, "ImgSetupEqualize (ZVector)");
}

}  // namespace
