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

// What is at column x of a row, when that may be one beyond its ends.
std::uint8_t pixelAt(const std::uint8_t* row, std::ptrdiff_t x, std::ptrdiff_t width, const Border& border)
{
    if (x >= 0 && x < width)
        return row[x];
    const std::ptrdiff_t nearest = x < 0 ? x + border.step : x - border.step;
    return border.repeated ? row[nearest] : border.pixel[nearest % border.step];
}

void filter(const std::uint8_t* const* rows, const Target& out, const Border& border)
{
    for (std::ptrdiff_t y = 0; y < out.height; ++y)
        for (std::ptrdiff_t x = 0; x < out.width; ++x) {
            const auto column = [&](std::ptrdiff_t at) {
                const auto pixel = [&](std::ptrdiff_t row) { return pixelAt(rows[row], at, out.width, border); };
                return Column{pixel(y), pixel(y + 1), pixel(y + 2)};
            };
            out.data[y * out.pitch + x] = median(column(x - border.step), column(x), column(x + border.step));
        }
}

}  // namespace
}  // namespace zkit::plain

const zkit::MedianWorkers zkit::MedianWorkers::plain = {plain::filter};
