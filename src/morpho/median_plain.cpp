#include "morpho/median_workers.h"

namespace zkit::plain {
namespace {

struct Column {
    std::uint8_t above, here, below;
};

std::uint8_t median(const Column& a, const Column& b, const Column& c)
{
    std::uint8_t values[9] = {a.above, a.here, a.below, b.above, b.here, b.below, c.above, c.here, c.below};
    for (int i = 0; i < 8; ++i)
        for (int j = i + 1; j < 9; ++j)
            if (values[i] < values[j]) {
                const std::uint8_t kept = values[i];
                values[i] = values[j];
                values[j] = kept;
            }
    return values[4];
}

template <class ColumnAt>
void filterRow(std::uint8_t* out, std::ptrdiff_t count, int step, ColumnAt columnAt)
{
    for (std::ptrdiff_t first = 0; first < step; ++first) {
        Column left = columnAt(first - step), here = columnAt(first);
        for (std::ptrdiff_t x = first; x < count; x += step) {
            const Column right = columnAt(x + step);
            out[x] = median(left, here, right);
            left = here;
            here = right;
        }
    }
}

void constant(const MedianRows& rows, std::uint8_t* out, std::ptrdiff_t count, int step, const std::uint8_t* outside)
{
    filterRow(out, count, step, [&](std::ptrdiff_t x) {
        const std::uint8_t border = outside[(x + step) % step];
        const auto pixel = [&](const std::uint8_t* row) { return x >= 0 && x < count ? row[x] : border; };
        return Column{pixel(rows.above), pixel(rows.here), pixel(rows.below)};
    });
}

void replicated(const MedianRows& rows, std::uint8_t* out, std::ptrdiff_t count)
{
    filterRow(out, count, 1, [&](std::ptrdiff_t x) {
        const std::ptrdiff_t nearest = x < 0 ? 0 : x < count ? x : count - 1;
        return Column{rows.above[nearest], rows.here[nearest], rows.below[nearest]};
    });
}

}  // namespace
}  // namespace zkit::plain

const zkit::MedianWorkers zkit::MedianWorkers::plain = {plain::constant, plain::replicated};
