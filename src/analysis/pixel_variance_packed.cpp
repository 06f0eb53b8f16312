#include "analysis/pixel_variance_workers.h"
#include "simd/fold.h"

namespace zkit::ZKIT_SET {
namespace {

struct Sums {
    Longs values;
    Ints squares;
};

Ints squares(TwoWords a)
{
    return multiplyAddPairs(a.low, a.low) + multiplyAddPairs(a.high, a.high);
}

Ints squaredDifferences(TwoWords a, TwoWords b)
{
    return squares({a.low - b.low, a.high - b.high});
}

GreySums grey(Source src)
{
    const Sums zero{zeroLongs(), broadcastInt(0)};
    const auto step = [](Sums sums, Bytes pixels) {
        return Sums{sums.values + sumsOfEight(pixels), sums.squares + squares(widen(pixels))};
    };
    const auto join = [](Sums a, Sums b) { return Sums{a.values + b.values, a.squares + b.squares}; };
    GreySums result{0, 0.0};
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const Sums row = foldRow(src.data + y * src.pitch, src.width, zero, 0, step, join);
        result.values += total(row.values);
        result.squares += total(row.squares);
    }
    return result;
}

// Calls step(components) for all pixels of a row; what is missing at its end is black.
template <class Step>
void forComponents(const std::uint8_t* row, std::ptrdiff_t width, Step step)
{
    std::ptrdiff_t x = 0;
    for (; x + Bytes::lanes <= width; x += Bytes::lanes)
        step(loadComponents(row + 3 * x));
    if (x < width) {
        std::uint8_t padded[3 * Bytes::lanes] = {};
        for (std::ptrdiff_t i = 3 * x; i < 3 * width; ++i)
            padded[i - 3 * x] = row[i];
        step(loadComponents(padded));
    }
}

ColourSums colour(Source src)
{
    Longs sum0 = zeroLongs(), sum1 = sum0, sum2 = sum0;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        forComponents(src.data + y * src.pitch, src.width, [&](Components pixels) {
            sum0 = sum0 + sumsOfEight(pixels.c0);
            sum1 = sum1 + sumsOfEight(pixels.c1);
            sum2 = sum2 + sumsOfEight(pixels.c2);
        });
    return {{total(sum0), total(sum1), total(sum2)}};
}

ColourRowSums colourRow(const std::uint8_t* row, std::ptrdiff_t width)
{
    Longs sum0 = zeroLongs(), sum1 = sum0, sum2 = sum0;
    Ints squares0 = broadcastInt(0), squares1 = squares0, squares2 = squares0;
    Ints difference0 = squares0, difference1 = squares0, difference2 = squares0;
    forComponents(row, width, [&](Components pixels) {
        sum0 = sum0 + sumsOfEight(pixels.c0);
        sum1 = sum1 + sumsOfEight(pixels.c1);
        sum2 = sum2 + sumsOfEight(pixels.c2);
        const TwoWords c0 = widen(pixels.c0), c1 = widen(pixels.c1), c2 = widen(pixels.c2);
        squares0 = squares0 + squares(c0);
        squares1 = squares1 + squares(c1);
        squares2 = squares2 + squares(c2);
        difference0 = difference0 + squaredDifferences(c1, c0);
        difference1 = difference1 + squaredDifferences(c2, c1);
        difference2 = difference2 + squaredDifferences(c0, c2);
    });
    return {{total(sum0), total(sum1), total(sum2)},
            {total(squares0), total(squares1), total(squares2)},
            {total(difference0), total(difference1), total(difference2)}};
}

}  // namespace

const PixelVarianceWorkers pixelVariance = {grey, colour, colourRow};

}  // namespace zkit::ZKIT_SET
