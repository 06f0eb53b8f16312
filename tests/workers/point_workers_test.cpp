#include "point/lut_workers.h"
#include "support/workers.h"

using namespace zkit;

namespace {

TEST(PointWorkers, lut)
{
    for (const auto& set : packedSets<LutWorkers>())
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            SCOPED_TRACE(testing::Message() << set.name << ' ' << kind << ' ' << width);
            const Pixels table(random, Pixels::noise, 256, 1), src(random, kind, width, 1);
            Pixels plain(random, Pixels::noise, width + 9, 1), packed(plain), inPlace(src);
            LutWorkers::plain.row(src.row(), plain.row() + 5, width, table.row(), Stores::cached);
            set.workers->row(src.row(), packed.row() + 5, width, table.row(), Stores::streamed);
            EXPECT_EQ(packed.all(), plain.all());
            set.workers->row(inPlace.row(), inPlace.row(), width, table.row(), Stores::cached);
            EXPECT_EQ(0, std::memcmp(inPlace.row(), plain.row() + 5, static_cast<std::size_t>(width)));
        });
}

}  // namespace
