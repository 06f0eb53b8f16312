#include "support/workers.h"
#include "temporal/division.h"
#include "temporal/interlace_workers.h"
#include "temporal/moving_average_workers.h"
#include "temporal/recursive_average_workers.h"

using namespace zkit;

namespace {

// A move that leaves some pixels, all or none, or that fills whole rows with one.
Shift someShift(Random& random, int width)
{
    const int size = width % 3 == 0 && random(0, 1) ? 3 : 1,
              free = random(0, 3) ? random(0, width / size) * size : size;
    return random(0, 1) && free < width ? Shift{0, free, width - free, size, size}
                                        : Shift{free, 0, width - free, random(0, 1) ? width - size : 0, size};
}

TEST(TemporalWorkers, interlaced_rows)
{
    forAwkwardRowsOfSets<InterlaceWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const int rows = random(0, 6);
        const Pixels a(random, kind, width, rows + 1), before(random, Pixels::noise, width, rows + 1);
        const Shift by = width > 0 ? someShift(random, width) : Shift{};
        const auto expectSame = [&](auto operation) {
            Pixels plain(before), packed(before);
            operation(InterlaceWorkers::plain, Target{plain.row(), before.source().pitch, width, rows});
            operation(*set.workers, Target{packed.row(), before.source().pitch, width, rows});
            EXPECT_EQ(packed.all(), plain.all()) << rows << " rows, " << by.count << " bytes from " << by.from << " to "
                                                 << by.to << ", pixels of " << by.pixelSize;
        };
        for (const Stores stores : {Stores::cached, Stores::streamed}) {
            expectSame([&](auto& workers, Target dst) { workers.mean(a.source(), dst, stores); });
            expectSame([&](auto& workers, Target dst) { workers.copy(a.row(), a.row(), dst.data, width, stores); });
            if (width > 0)
                expectSame([&](auto& workers, Target dst) { workers.shift(a.source(), dst, by, stores); });
        }
        if (width > 0)
            expectSame([&](auto& workers, Target dst) {
                workers.shift({dst.data, dst.pitch, width, rows}, dst, by, Stores::cached);
            });
        const Pixels row(random, kind, width, 1);
        const int step = random(0, 2) ? 1 : 3, candidates = random(1, 40), more = (candidates - 1) * step;
        const Pixels other(random, kind, width + more, 1);
        EXPECT_EQ(set.workers->match(row.row(), other.row() + more, width, step, candidates),
                  InterlaceWorkers::plain.match(row.row(), other.row() + more, width, step, candidates))
            << candidates << " candidates by " << step;
    });
}

// Candidates are rows of their own here. The first ones' sums are the largest, and the smallest once they have wrapped.
TEST(TemporalWorkers, sums_of_long_rows_wrap)
{
    constexpr std::ptrdiff_t count = 66400, candidates = 16;
    const std::vector<std::uint8_t> black(count);
    std::vector<std::uint8_t> others(count * candidates / 2, 20);
    others.resize(count * candidates, 255);
    for (const auto& set : packedSets<InterlaceWorkers>())
        EXPECT_EQ(set.workers->match(black.data(), &others[count * (candidates - 1)], count, count, candidates), 0);
}

TEST(TemporalWorkers, moving_average)
{
    forAwkwardRowsOfSets<MovingAverageWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const Division division =
            divisionBy(static_cast<std::uint32_t>(random(0, 1) ? 1 << random(0, 16) : random(1, 70000)));
        for (int inPlace = 0; inPlace < 6; ++inPlace) {
            const Pixels src(random, kind, width, 1), sums(random, kind, width, 1, 2), old(random, kind, width, 1),
                dst(random, Pixels::noise, width, 1);
            const auto run = [&](const MovingAverageWorkers& workers, bool isFirst) {
                Pixels from(src), sum(sums), oldest(old), kept(dst), to(dst);
                std::uint8_t* const slot = inPlace < 2 ? nullptr : inPlace < 4 ? kept.row() : oldest.row();
                const AverageRows rows{from.row(), oldest.row(), sum.row(), slot, inPlace % 2 ? from.row() : to.row()};
                if (isFirst)
                    workers.first(rows, width, division.by - 1);
                else
                    workers.later(rows, width, division, inPlace % 2 ? Stores::cached : Stores::streamed);
                return std::vector{from.all(), sum.all(), oldest.all(), kept.all(), to.all()};
            };
            for (const bool isFirst : {false, true})
                ASSERT_EQ(run(*set.workers, isFirst), run(MovingAverageWorkers::plain, isFirst))
                    << division.by << ' ' << inPlace;
        }
    });
}

// Every 16-bit number by every period that matters; by the others every multiple and the number before it.
TEST(TemporalWorkers, division_is_exact)
{
    std::uint32_t wrong = 0;
    for (std::uint32_t by = 1; by <= 65540; ++by) {
        const Division division = divisionBy(by);
        const auto check = [&](std::uint32_t n) {
            const std::uint32_t high = n * division.factor >> 16;
            wrong += (high + ((n - high) >> division.before)) >> division.after != n / by;
        };
        for (std::uint32_t n = by <= 300 ? 1 : by; n <= 65535; n += by <= 300 ? 1 : by) {
            check(n - 1);
            check(n);
        }
        check(65535);
        EXPECT_EQ(division.shift != 0, by > 1 && (by & (by - 1)) == 0);
    }
    EXPECT_EQ(wrong, 0U);
    for (const std::uint32_t by : {100000U, 1U << 20, 0x80000000U, 0xFFFFFFFFU})
        EXPECT_EQ(divisionBy(by).factor, divisionBy(65536).factor);
}

TEST(TemporalWorkers, recursive_average)
{
    forAwkwardRowsOfSets<RecursiveAverageWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        std::vector<std::uint16_t> table(8191);
        const int range = random(0, 1) ? 32767 : 3000;
        for (std::uint16_t& entry : table)
            entry = static_cast<std::uint16_t>(random(-range - 1, range));
        for (const bool inPlace : {false, true}) {
            const Pixels src(random, kind, width, 1), states(random, kind, width, 1, 2),
                dst(random, Pixels::noise, width, 1);
            const auto run = [&](const RecursiveAverageWorkers& workers) {
                Pixels from(src), state(states), to(dst);
                workers.row(from.row(), state.row(), inPlace ? from.row() : to.row(), width, table.data(),
                            inPlace ? Stores::cached : Stores::streamed);
                return std::vector{from.all(), state.all(), to.all()};
            };
            ASSERT_EQ(run(*set.workers), run(RecursiveAverageWorkers::plain));
        }
    });
}

}  // namespace
