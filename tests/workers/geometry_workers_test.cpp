#include "geometry/mirror_workers.h"
#include "geometry/scale_rotate_workers.h"
#include "geometry/shrink_workers.h"
#include "geometry/warp_workers.h"
#include "support/workers.h"

using namespace zkit;

namespace {

TEST(GeometryWorkers, mirrors)
{
    forAwkwardRowsOfSets<MirrorWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        Pixels a(random, kind, width, 1), b(random, Pixels::noise, width, 1), plainA(a), plainB(b);
        set.workers->swap(a.row(), b.row(), width);
        set.workers->reverse(a.row(), width);
        MirrorWorkers::plain.swap(plainA.row(), plainB.row(), width);
        MirrorWorkers::plain.reverse(plainA.row(), width);
        EXPECT_EQ(a.all(), plainA.all());
        EXPECT_EQ(b.all(), plainB.all());
    });
}

// Coordinates that run through the source, past it or, with long steps, around the end of their range.
std::uint32_t someStart(Random& random, int size)
{
    return static_cast<std::uint32_t>(random(0, 2) ? random(-20 * 65536, (size + 20) * 65536)
                                                   : random(INT32_MIN, INT32_MAX));
}

std::uint32_t someStep(Random& random)
{
    const int steps[] = {0, 65536, -65536, 70000, -15000, 3, random(-200000, 200000), random(INT32_MIN, INT32_MAX)};
    return static_cast<std::uint32_t>(steps[random(0, 7)]);
}

TEST(GeometryWorkers, pixels_from_anywhere)
{
    forAwkwardRowsOfSets<ScaleRotateWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        for (int round = 0; round < 6; ++round) {
            const int height = random(1, 60), columns = random(1, 2) == 1 ? random(1, 90) : random(1, 2000);
            const Pixels source(random, kind, columns, height);
            Source src = source.source();
            if (random(0, 1)) {  // bottom up
                src.data += (src.height - 1) * src.pitch;
                src.pitch = -src.pitch;
            }
            const Coordinates at{someStart(random, columns), someStart(random, height), someStep(random),
                                 someStep(random)};
            Pixels packed(random, Pixels::noise, width, 1), plain(packed);
            const int bits = 4 * round % 12;
            const auto fill = [&](const ScaleRotateWorkers& workers, Pixels& dst) {
                if (bits == 0)
                    workers.nearest(src, dst.row(), width, at);
                else
                    workers.bilinear(src, dst.row(), width, at, bits);
            };
            fill(*set.workers, packed);
            fill(ScaleRotateWorkers::plain, plain);
            ASSERT_EQ(packed.all(), plain.all()) << bits << " bits from " << columns << 'x' << height << " at " << at.x
                                                 << ',' << at.y << " by " << at.dx << ',' << at.dy;
        }
    });
}

TEST(GeometryWorkers, shrink)
{
    forAwkwardRowsOfSets<ShrinkWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const int height = random(0, 9) ? random(1, 12) : random(250, 1100);
        if (width == 0 || width * height > 1000000)
            return;
        const int factor = random(0, 2) ? random(1, 8) : random(1, width), count = (width + factor - 1) / factor;
        const Pixels src(random, kind, width, height);
        std::vector<std::int32_t> edges;
        for (int i = 0; i <= count; ++i)
            edges.push_back(i * width / count);
        std::vector<std::uint16_t> columns(static_cast<std::size_t>(width) + 64);
        std::vector<std::uint32_t> totals(static_cast<std::size_t>(count));
        const ShrinkMemory memory{columns.data(), totals.data()};
        Pixels packed(random, Pixels::noise, count, 1), plain(packed);
        set.workers->row(src.source(), packed.row(), edges.data(), count, memory);
        ShrinkWorkers::plain.row(src.source(), plain.row(), edges.data(), count, memory);
        EXPECT_EQ(packed.all(), plain.all()) << width << 'x' << height << " to " << count;
    });
}

TEST(GeometryWorkers, warp)
{
    forAwkwardRowsOfSets<WarpWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const int columns = random(1, 200), height = random(1, 60), over = random(0, 2) ? 0 : random(0, 40);
        const int offsetX = random(-300, 300), offsetY = random(0, 2) ? random(-300, 300) : 32767;
        const Pixels grey(random, kind, columns, height), colour(random, kind, columns, height, 3);
        std::vector<std::uint16_t> x, y, both;
        for (int i = 0; i <= width; ++i) {  // one more, so that there is an address
            both.push_back(static_cast<std::uint16_t>(random(-over, columns - 1 + over)));
            x.push_back(static_cast<std::uint16_t>(both.back() - offsetX));
            both.push_back(static_cast<std::uint16_t>(random(-over, height - 1 + over)));
            y.push_back(static_cast<std::uint16_t>(both.back() - offsetY));
        }
        const auto bytes = [](const auto& map) { return reinterpret_cast<const std::uint8_t*>(map.data()); };
        const Pixels before(random, Pixels::noise, width, 1, 3);
        const auto run = [&](const WarpWorkers& workers) {
            Pixels first(before), second(before), third(before);
            const SeparateMaps maps{bytes(x), bytes(y), offsetX, offsetY};
            workers.grey(grey.source(), maps, first.row(), width);
            workers.colour(colour.source(), maps, second.row(), width);
            const std::ptrdiff_t done = workers.packedMap(grey.source(), bytes(both), third.row(), width, bytes(both));
            EXPECT_EQ(workers.inside(grey.source(), bytes(both), width), done == width);
            return std::tuple(first.all(), second.all(), third.all(), done);
        };
        ASSERT_EQ(run(*set.workers), run(WarpWorkers::plain)) << columns << 'x' << height << " over " << over;
    });
}

}  // namespace
