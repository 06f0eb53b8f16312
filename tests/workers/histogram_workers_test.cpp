#include "analysis/histogram_workers.h"
#include "analysis/projection_workers.h"
#include "support/workers.h"

using namespace zkit;

namespace {

using Counts = std::vector<std::uint32_t>;

// What a worker adds to numbers that stand there already.
template <class Work>
Counts added(std::ptrdiff_t size, Work work)
{
    Counts numbers(static_cast<std::size_t>(size), 5);
    work(numbers.data());
    return numbers;
}

TEST(HistogramWorkers, grey)
{
    forAwkwardRowsOfSets<HistogramWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const Pixels pixels(random, kind, width, random(0, 3));
        const auto counts = [&](const HistogramWorkers& workers) {
            return added(256, [&](std::uint32_t* to) { workers.grey(pixels.source(), to); });
        };
        EXPECT_EQ(counts(*set.workers), counts(HistogramWorkers::plain));
    });
}

TEST(HistogramWorkers, wide)
{
    forAwkwardRowsOfSets<HistogramWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const Pixels pixels(random, kind, width, random(0, 2), 2);
        for (const auto& [shift, bits] : {std::pair{8, 8}, {0, 16}, {4, 8}, {0, 10}, {3, 11}, {16, 0}, {5, 0}})
            for (const bool saturates : {false, true}) {
                SCOPED_TRACE(testing::Message() << shift << ' ' << bits << ' ' << saturates);
                const WideBins bins{shift, (1U << bits) - 1, saturates};
                const auto counts = [&](const HistogramWorkers& workers) {
                    return added(static_cast<std::ptrdiff_t>(bins.last) + 1,
                                 [&](std::uint32_t* to) { workers.wide(pixels.source(), bins, to); });
                };
                EXPECT_EQ(counts(*set.workers), counts(HistogramWorkers::plain));
            }
    });
}

TEST(ProjectionWorkers, sums)
{
    const auto compare = [](const auto& set, const Pixels& pixels) {
        const Source src = pixels.source();
        SCOPED_TRACE(testing::Message() << set.name << ' ' << src.width << 'x' << src.height);
        const auto columns = [&](const ProjectionWorkers& workers) {
            return added(src.width, [&](std::uint32_t* to) { workers.onRow(src, to); });
        };
        const auto rows = [&](const ProjectionWorkers& workers) {
            return added(src.height, [&](std::uint32_t* to) { workers.onColumn(src, to); });
        };
        EXPECT_EQ(columns(*set.workers), columns(ProjectionWorkers::plain));
        EXPECT_EQ(rows(*set.workers), rows(ProjectionWorkers::plain));
    };
    forAwkwardRowsOfSets<ProjectionWorkers>([&](const auto& set, Random& random, Pixels::Kind kind, int width) {
        compare(set, Pixels(random, kind, width, random(0, 19)));
    });
    // White columns around the number of rows after which 16 bits are full.
    Random random(4);
    for (const auto& set : packedSets<ProjectionWorkers>())
        for (const int height : {255, 256, 257, 258, 512, 600})
            for (const int width : {3, 33, 100})
                compare(set, Pixels(random, Pixels::white, width, height));
}

}  // namespace
