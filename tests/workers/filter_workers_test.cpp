#include "filter/predefined_workers.h"
#include "frame/walk.h"
#include "support/workers.h"

using namespace zkit;

namespace {

void expectSame(const char* set, FilterRow packed, FilterRow plain)
{
    forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
        for (const int step : {1, 3}) {
            SCOPED_TRACE(testing::Message() << set << ' ' << kind << ' ' << width << ' ' << step);
            const Pixels above(random, kind, width, 1), here(random, kind, width, 1), below(random, kind, width, 1);
            Pixels expected(random, Pixels::noise, width + 9, 1), out(expected);
            plain(above.row(), here.row(), below.row(), expected.row() + 5, width, step);
            packed(above.row(), here.row(), below.row(), out.row() + 5, width, step);
            EXPECT_EQ(out.all(), expected.all());
        }
    });
}

TEST(FilterWorkers, predefined)
{
    for (const auto& set : packedSets<PredefinedWorkers>())
        expectSame(set.name, set.workers->lowpass3, PredefinedWorkers::plain.lowpass3);
}

}  // namespace
