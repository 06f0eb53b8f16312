#include "analysis/focusing_workers.h"
#include "analysis/moments_workers.h"
#include "analysis/noise_workers.h"
#include "analysis/pixel_compare_workers.h"
#include "analysis/pixel_count_workers.h"
#include "analysis/pixel_stat_workers.h"
#include "analysis/pixel_variance_workers.h"
#include "support/workers.h"

#include <bit>
#include <tuple>

using namespace zkit;

namespace {

std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

TEST(AnalysisWorkers, pixel_stat)
{
    for (const auto& set : packedSets<PixelStatWorkers>())
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            const Pixels pixels(random, kind, width, random(0, 4));
            const Source src = pixels.source();
            SCOPED_TRACE(testing::Message() << set.name << ' ' << kind << ' ' << src.width << 'x' << src.height);
            EXPECT_EQ(set.workers->minimum(src), PixelStatWorkers::plain.minimum(src));
            EXPECT_EQ(set.workers->maximum(src), PixelStatWorkers::plain.maximum(src));
            EXPECT_EQ(set.workers->sum(src), PixelStatWorkers::plain.sum(src));
            const std::uint8_t first = src.width > 0 && src.height > 0 ? *src.data : 0;
            const PixelStat packed = set.workers->stat(src, first), plain = PixelStatWorkers::plain.stat(src, first);
            EXPECT_EQ(packed.min, plain.min);
            EXPECT_EQ(packed.max, plain.max);
            if (width > 0) {
                EXPECT_EQ(bits(packed.rowMeans), bits(plain.rowMeans));
            }
        });
}

TEST(AnalysisWorkers, pixel_compare)
{
    for (const auto& set : packedSets<PixelCompareWorkers>())
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            const int height = random(0, 3);
            for (const int pixelSize : {1, 3}) {
                const Pixels first(random, kind, width, height, pixelSize);
                Pixels second(first);
                for (int i = random(0, 20); i > 0 && width > 0 && height > 0; --i)
                    second.row(random(0, height - 1))[random(0, pixelSize * width - 1)] ^= 1;
                const Pixels other(random, kind, width, height, pixelSize);
                SCOPED_TRACE(testing::Message() << set.name << ' ' << kind << ' ' << width << 'x' << height);
                const auto packed = pixelSize == 1 ? set.workers->grey : set.workers->colour;
                const auto plain = pixelSize == 1 ? PixelCompareWorkers::plain.grey : PixelCompareWorkers::plain.colour;
                EXPECT_EQ(packed(first.source(), second.source()), plain(first.source(), second.source()));
                EXPECT_EQ(packed(first.source(), other.source()), plain(first.source(), other.source()));
            }
        });
}

TEST(AnalysisWorkers, pixel_count)
{
    for (const auto& set : packedSets<PixelCountWorkers>())
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            const Pixels pixels(random, kind, width, random(0, 3));
            for (const auto& [low, high] : {std::pair(0, 255), std::pair(random(0, 255), random(0, 255)),
                                            std::pair(255, 0), std::pair(0, 0), std::pair(255, 255)}) {
                SCOPED_TRACE(testing::Message()
                             << set.name << ' ' << kind << ' ' << width << ' ' << low << ' ' << high);
                const auto l = static_cast<std::uint8_t>(low), h = static_cast<std::uint8_t>(high);
                const PixelCounts packed = set.workers->count(pixels.source(), l, h);
                const PixelCounts plain = PixelCountWorkers::plain.count(pixels.source(), l, h);
                EXPECT_EQ(std::tie(packed.below, packed.above), std::tie(plain.below, plain.above));
            }
        });
}

TEST(AnalysisWorkers, pixel_variance)
{
    for (const auto& set : packedSets<PixelVarianceWorkers>())
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            SCOPED_TRACE(testing::Message() << set.name << ' ' << kind << ' ' << width);
            const Pixels grey(random, kind, width, random(0, 3));
            const GreySums packed = set.workers->grey(grey.source()),
                           plain = PixelVarianceWorkers::plain.grey(grey.source());
            EXPECT_EQ(packed.values, plain.values);
            EXPECT_EQ(bits(packed.squares), bits(plain.squares));
            const Pixels colour(random, kind, width, 2, 3);
            const ColourSums sums = set.workers->colour(colour.source());
            const ColourSums plainSums = PixelVarianceWorkers::plain.colour(colour.source());
            const ColourRowSums row = set.workers->colourRow(colour.row(), width);
            const ColourRowSums plainRow = PixelVarianceWorkers::plain.colourRow(colour.row(), width);
            for (int i = 0; i < 3; ++i) {
                EXPECT_EQ(sums.values[i], plainSums.values[i]);
                EXPECT_EQ(row.values[i], plainRow.values[i]);
                EXPECT_EQ(row.squares[i], plainRow.squares[i]);
                EXPECT_EQ(row.squaredDifferences[i], plainRow.squaredDifferences[i]);
            }
        });
}

void expectSame(const RowMoments& packed, const RowMoments& plain)
{
    EXPECT_EQ(std::tie(packed.w, packed.wx, packed.wxx), std::tie(plain.w, plain.wx, plain.wxx));
}

TEST(AnalysisWorkers, moments)
{
    for (const auto& set : packedSets<MomentsWorkers>()) {
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            SCOPED_TRACE(testing::Message() << set.name << ' ' << kind << ' ' << width);
            const Pixels pixels(random, kind, width, 1);
            for (const int threshold : {0, 1, 127, 128, 255, random(0, 255)}) {
                const auto t = static_cast<std::uint8_t>(threshold);
                expectSame(set.workers->binary(pixels.row(), width, t),
                           MomentsWorkers::plain.binary(pixels.row(), width, t));
            }
            expectSame(set.workers->weighed(pixels.row(), width), MomentsWorkers::plain.weighed(pixels.row(), width));
        });
        const std::vector<std::uint8_t> wide(100000, 255);  // the sums wrap
        expectSame(set.workers->weighed(wide.data(), 100000), MomentsWorkers::plain.weighed(wide.data(), 100000));
        expectSame(set.workers->binary(wide.data(), 100000, 9), MomentsWorkers::plain.binary(wide.data(), 100000, 9));
    }
}

TEST(AnalysisWorkers, focusing)
{
    for (const auto& set : packedSets<FocusingWorkers>())
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            for (const int step : {1, 3}) {
                const Pixels pixels(random, kind, width, 2);
                const std::ptrdiff_t count = width > step ? width - step : 0;
                SCOPED_TRACE(testing::Message() << set.name << ' ' << kind << ' ' << width << ' ' << step);
                EXPECT_EQ(set.workers->row(pixels.row(0), pixels.row(1), count, step),
                          FocusingWorkers::plain.row(pixels.row(0), pixels.row(1), count, step));
            }
        });
}

TEST(AnalysisWorkers, noise)
{
    for (const auto& set : packedSets<NoiseWorkers>())
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            SCOPED_TRACE(testing::Message() << set.name << ' ' << kind << ' ' << width);
            const Pixels src(random, kind, width, 1), ref(random, kind, width, 1);
            const RowNoise packed = set.workers->grey(src.row(), ref.row(), width);
            const RowNoise plain = NoiseWorkers::plain.grey(src.row(), ref.row(), width);
            EXPECT_EQ(std::tie(packed.signal, packed.noise), std::tie(plain.signal, plain.noise));
            const Pixels wide(random, kind, width, 1, 2);
            for (const int shift : {0, 1, 4, 8}) {
                const RowNoise packedWide = set.workers->wide(src.row(), wide.row(), width, shift);
                const RowNoise plainWide = NoiseWorkers::plain.wide(src.row(), wide.row(), width, shift);
                EXPECT_EQ(std::tie(packedWide.signal, packedWide.noise), std::tie(plainWide.signal, plainWide.noise));
            }
        });
}

}  // namespace
