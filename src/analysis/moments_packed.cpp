#include "analysis/moments_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

// A row is summed in stretches so short that the square of a column within one fits a signed word.
constexpr int stretch = 128;

// The columns of a stretch and their squares, as words in the order in which `widen` puts its pixels.
struct Columns {
    alignas(Register) std::uint16_t x[2][stretch / Bytes::lanes][Words::lanes];
    alignas(Register) std::uint16_t xx[2][stretch / Bytes::lanes][Words::lanes];
};

constexpr Columns makeColumns()
{
    Columns columns{};
    for (int half = 0; half < 2; ++half)
        for (int vector = 0; vector < stretch / Bytes::lanes; ++vector)
            for (int lane = 0; lane < Words::lanes; ++lane) {
                const int x = vector * Bytes::lanes + lane / 8 * 16 + half * 8 + lane % 8;
                columns.x[half][vector][lane] = static_cast<std::uint16_t>(x);
                columns.xx[half][vector][lane] = static_cast<std::uint16_t>(x * x);
            }
    return columns;
}

constexpr Columns columns = makeColumns();

Ints weighed(TwoWords weights, const std::uint16_t* low, const std::uint16_t* high)
{
    return multiplyAddPairs(weights.low, loadWords(low)) + multiplyAddPairs(weights.high, loadWords(high));
}

// weightsOf(bytes) and weightOf(byte) turn pixels into weights.
template <class Vector, class Single>
RowMoments rowMoments(const std::uint8_t* row, std::ptrdiff_t width, Vector weightsOf, Single weightOf)
{
    Ints w = broadcastInt(0), wx = w, wxx = w;
    const std::ptrdiff_t whole = width - width % Bytes::lanes;
    for (std::ptrdiff_t base = 0; base < whole; base += stretch) {
        Longs sum = zeroLongs();
        Ints sumX = broadcastInt(0), sumXX = sumX;
        const std::ptrdiff_t left = (whole - base) / Bytes::lanes;
        const int vectors = left < stretch / Bytes::lanes ? static_cast<int>(left) : stretch / Bytes::lanes;
        for (int i = 0; i < vectors; ++i) {
            const Bytes weights = weightsOf(load(row + base + i * Bytes::lanes));
            const TwoWords words = widen(weights);
            sum = sum + sumsOfEight(weights);
            sumX = sumX + weighed(words, columns.x[0][i], columns.x[1][i]);
            sumXX = sumXX + weighed(words, columns.xx[0][i], columns.xx[1][i]);
        }
        // With x = base + i: x^2 = base^2 + 2 base i + i^2.
        const auto start = static_cast<std::uint32_t>(base);
        w = w + asInts(sum);
        wx = wx + broadcastInt(start) * asInts(sum) + sumX;
        wxx = wxx + broadcastInt(start * start) * asInts(sum) + broadcastInt(2 * start) * sumX + sumXX;
    }
    RowMoments sums{total(w), total(wx), total(wxx)};
    for (std::ptrdiff_t x = whole; x < width; ++x) {
        const std::uint32_t weight = weightOf(row[x]), column = static_cast<std::uint32_t>(x);
        sums.w += weight;
        sums.wx += weight * column;
        sums.wxx += weight * column * column;
    }
    return sums;
}

RowMoments binary(const std::uint8_t* row, std::ptrdiff_t width, std::uint8_t threshold)
{
    const Bytes least = broadcast(threshold), one = broadcast(1);
    return rowMoments(
        row, width, [=](Bytes pixels) { return equal(max(pixels, least), pixels) & one; },
        [=](std::uint8_t pixel) { return pixel >= threshold ? 1U : 0U; });
}

RowMoments weighed(const std::uint8_t* row, std::ptrdiff_t width)
{
    return rowMoments(
        row, width, [](Bytes pixels) { return pixels; }, [](std::uint8_t pixel) { return pixel; });
}

}  // namespace

const MomentsWorkers moments = {binary, weighed};

}  // namespace zkit::ZKIT_SET
