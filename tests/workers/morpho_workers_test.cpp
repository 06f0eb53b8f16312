#include "morpho/median_workers.h"
#include "morpho/morphology_workers.h"
#include "support/workers.h"

#include <algorithm>

using namespace zkit;

namespace {

using Memory = std::unique_ptr<std::uint8_t[]>;

// What a filter makes of pixels, elsewhere or in place.
template <class Filter>
std::vector<std::uint8_t> filtered(const MorphologyWorkers& workers, Filter filter, Pixels src, Pixels dst,
                                   const Squares& squares, bool inPlace)
{
    Pixels& out = inPlace ? src : dst;
    const Source from = src.source();
    const Target to{out.row(), out.source().pitch, from.width, from.height};
    const Memory memory(new std::uint8_t[static_cast<std::size_t>((workers.*filter).memory(from, to, squares))]);
    const Stores stores = inPlace || from.width % 2 == 0 ? Stores::cached : Stores::streamed;
    (workers.*filter).filter(from, to, squares, stores, memory.get());
    return out.all();
}

void expectSame(const PackedSet<MorphologyWorkers>& set, Random& random, Pixels::Kind kind, int width, int height,
                const Squares& squares)
{
    const Pixels src(random, kind, width, height), dst(random, Pixels::noise, width, height);
    const auto expect = [&](auto filter, bool inPlace) {
        ASSERT_EQ(filtered(*set.workers, filter, src, dst, squares, inPlace),
                  filtered(MorphologyWorkers::plain, filter, src, dst, squares, inPlace))
            << width << 'x' << height << " reach " << squares.reach << " step " << squares.step;
    };
    for (const auto filter :
         {&MorphologyWorkers::erode, &MorphologyWorkers::dilate, &MorphologyWorkers::open, &MorphologyWorkers::close}) {
        expect(filter, false);
        expect(filter, true);
    }
    expect(&MorphologyWorkers::whiteTopHat, false);
    expect(&MorphologyWorkers::blackTopHat, false);
}

TEST(MorphoWorkers, morphology)
{
    forAwkwardRowsOfSets<MorphologyWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        for (const int step : {1, 3}) {
            if (width == 0 || width > 600 || width % step != 0)
                continue;
            const int height = random(1, 9), reach = random(0, 2) ? random(1, 12) : random(1, width + 5);
            const auto some = [&] { return static_cast<std::uint8_t>(random(0, 255)); };
            expectSame(set, random, kind, width, height,
                       {reach, step, {some(), some(), some()}, {some(), some(), some()}});
        }
    });
}

// Every reach in regions of every small size, so that squares end everywhere, up to those that hold all of a region.
TEST(MorphoWorkers, morphology_of_small_regions)
{
    for (const auto& set : packedSets<MorphologyWorkers>()) {
        Random random(31);
        for (int width = 1; width <= 7; ++width)
            for (int height = 1; height <= 7; ++height)
                for (int reach = 1; reach <= 9; ++reach) {
                    expectSame(set, random, Pixels::noise, width, height, {reach, 1, {100}, {50}});
                    expectSame(set, random, Pixels::noise, 3 * width, height, {reach, 3, {100, 200, 5}, {1, 90, 180}});
                }
    }
}

// Squares of several blocks, and more rows than these are made of at a time; the last ones go in panels in place.
TEST(MorphoWorkers, morphology_of_high_squares)
{
    const int sizesAndReaches[][3] = {{9000, 70, 17}, {9000, 70, 30}, {19500, 120, 27}};
    for (const auto& [width, height, reach] : sizesAndReaches) {
        Random random(32);
        const Pixels src(random, Pixels::noise, width, height);
        const Squares squares{reach, 3, {30, 255, 90}, {}};
        const auto eroded = filtered(MorphologyWorkers::plain, &MorphologyWorkers::erode, src, src, squares, true);
        for (const auto& set : packedSets<MorphologyWorkers>())
            for (const bool inPlace : {false, true})
                EXPECT_EQ(filtered(*set.workers, &MorphologyWorkers::erode, src, src, squares, inPlace), eroded)
                    << width << ' ' << inPlace;
    }
}

TEST(MorphoWorkers, median)
{
    constexpr FilterBand MedianWorkers::*filters[] = {&MedianWorkers::median};
    expectSameBands<MedianWorkers>(filters);
}

}  // namespace
