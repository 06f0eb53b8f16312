#include "analysis/moments_workers.h"
#include "simd/row_end.h"

namespace zkit::ZKIT_SET {
namespace {

// A row is summed in stretches so short that the square of the distance from their middle fits a signed word.
constexpr int stretch = 256, vectorsOfStretch = stretch / Bytes::lanes;

// The columns of a stretch, counted from its middle, and their squares: as words in the order in which `widen` puts
// pixels.
struct Columns {
    alignas(Register) std::uint16_t x[vectorsOfStretch][2][Words::lanes];
    alignas(Register) std::uint16_t xx[vectorsOfStretch][2][Words::lanes];
};

constexpr Columns makeColumns()
{
    Columns columns{};
    for (int vector = 0; vector < vectorsOfStretch; ++vector)
        for (int half = 0; half < 2; ++half)
            for (int lane = 0; lane < Words::lanes; ++lane) {
                const int x = vector * Bytes::lanes + lane / 8 * 16 + half * 8 + lane % 8 - stretch / 2;
                columns.x[vector][half][lane] = static_cast<std::uint16_t>(x);
                columns.xx[vector][half][lane] = static_cast<std::uint16_t>(x * x);
            }
    return columns;
}

constexpr Columns columns = makeColumns();

Ints weighed(TwoWords weights, const std::uint16_t (&factors)[2][Words::lanes])
{
    return multiplyAddPairs(weights.low, loadWords(factors[0])) + multiplyAddPairs(weights.high, loadWords(factors[1]));
}

struct Sums {
    Ints w = broadcastInt(0), wx = w, wxx = w;

    // Adds `vectors` vectors of a stretch that begins at column `start`; weightsOf(i) gives the i-th.
    template <class Weights>
    void add(std::ptrdiff_t start, int vectors, Weights weightsOf)
    {
        Longs sum = zeroLongs();
        Ints sumX = broadcastInt(0), sumXX = sumX;
        for (int i = 0; i < vectors; ++i) {
            const Bytes weights = weightsOf(i);
            const TwoWords words = widen(weights);
            sum = sum + sumsOfEight(weights);
            sumX = sumX + weighed(words, columns.x[i]);
            sumXX = sumXX + weighed(words, columns.xx[i]);
        }
        // With x = middle + i: x^2 = middle^2 + 2 middle i + i^2.
        const auto middle = static_cast<std::uint32_t>(start + stretch / 2);
        w = w + asInts(sum);
        wx = wx + broadcastInt(middle) * asInts(sum) + sumX;
        wxx = wxx + broadcastInt(middle * middle) * asInts(sum) + broadcastInt(2 * middle) * sumX + sumXX;
    }
};

// weightsOf(bytes) turns pixels into weights.
template <class WeightsOf>
RowMoments rowMoments(const std::uint8_t* row, std::ptrdiff_t width, WeightsOf weightsOf)
{
    Sums sums;
    std::ptrdiff_t start = 0;
    for (; start + stretch <= width; start += stretch)
        sums.add(start, vectorsOfStretch, [=](int i) { return weightsOf(load(row + start + i * Bytes::lanes)); });
    const auto vectors = static_cast<int>((width - start) / Bytes::lanes);
    if (vectors > 0)
        sums.add(start, vectors, [=](int i) { return weightsOf(load(row + start + i * Bytes::lanes)); });
    if (width % Bytes::lanes > 0) {
        const LastVector last(width);
        sums.add(last.start(), 1, [=](int) { return weightsOf(last.bytes(row)) & last.counting(); });
    }
    return {total(sums.w), total(sums.wx), total(sums.wxx)};
}

RowMoments binary(const std::uint8_t* row, std::ptrdiff_t width, std::uint8_t threshold)
{
    const Bytes one = broadcast(1), below = broadcast(static_cast<std::uint8_t>(threshold - 1));
    if (threshold == 0)
        return rowMoments(row, width, [=](Bytes) { return one; });
    return rowMoments(row, width, [=](Bytes pixels) { return min(subtractSaturated(pixels, below), one); });
}

RowMoments weighed(const std::uint8_t* row, std::ptrdiff_t width)
{
    return rowMoments(row, width, [](Bytes pixels) { return pixels; });
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::MomentsWorkers zkit::MomentsWorkers::ZKIT_SET = {ZKIT_SET::binary, ZKIT_SET::weighed};
