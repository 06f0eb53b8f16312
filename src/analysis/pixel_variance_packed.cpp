#include "analysis/pixel_variance_workers.h"
#include "simd/fold.h"

namespace zkit::ZKIT_SET {
namespace {

struct Sums {
    Longs values;
    Ints squares;
};

Ints squares(TwoWords a) { return multiplyAddPairs(a.low, a.low) + multiplyAddPairs(a.high, a.high); }

Ints squaredDifferences(TwoWords a, TwoWords b) { return squares({a.low - b.low, a.high - b.high}); }

GreySums grey(Source src)
{
    const Sums zero{zeroLongs(), broadcastInt(0)};
    const auto step = [](Sums sums, auto lanes) {
        const Bytes pixels = lanes.orElse(0);
        return Sums{sums.values + sumsOfEight(pixels), sums.squares + squares(widen(pixels))};
    };
    const auto join = [](Sums a, Sums b) { return Sums{a.values + b.values, a.squares + b.squares}; };

    // Where the squares of a row cannot wrap, all sums are exact and may be formed of any pieces instead of rows.
    constexpr std::ptrdiff_t exact = 65536;  // times 255^2 is below 2^32
    const bool pieces = src.width <= exact;
    if (pieces && src.pitch == src.width) {
        src.width *= src.height;
        src.height = 1;
    }
    GreySums result{0, 0.0};
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width;) {
            const std::ptrdiff_t count = pieces && src.width - x > exact ? exact : src.width - x;
            const Sums sums = foldRow(src.data + y * src.pitch + x, count, zero, step, join);
            result.values += total(sums.values);
            result.squares += total(sums.squares);
            x += count;
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
    if (x < width)
        step(takeApart(loadFirstInterleaved(row + 3 * x, width - x)));
}

// Adds the sums of the bytes at even and odd places of a vector whose byte 0 is byte `first` of a pixel.
void addPlaces(ColourSums& sums, Words even, Words odd, int first)
{
    std::uint16_t evenLanes[Words::lanes], oddLanes[Words::lanes];
    store(evenLanes, even);
    store(oddLanes, odd);
    for (int lane = 0; lane < Words::lanes; ++lane) {
        sums.values[(first + 2 * lane) % 3] += evenLanes[lane];
        sums.values[(first + 2 * lane + 1) % 3] += oddLanes[lane];
    }
}

// Every place of the three vectors that hold Bytes::lanes pixels is summed by itself, as long as words can hold that;
// only then it matters which component it is of.
ColourSums colour(Source src)
{
    constexpr int most = 65535 / 255;
    const Words zero = broadcastWord(0);
    ColourSums sums{};
    Words even0 = zero, odd0 = zero, even1 = zero, odd1 = zero, even2 = zero, odd2 = zero;
    int left = most;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; x += Bytes::lanes) {
            const std::uint8_t* pixels = src.data + y * src.pitch + 3 * x;
            std::uint8_t padded[3 * Bytes::lanes];
            if (x + Bytes::lanes > src.width)
                pixels = padFirst(padded, pixels, src.width - x);
            const Bytes a = load(pixels), b = load(pixels + Bytes::lanes), c = load(pixels + 2 * Bytes::lanes);
            even0 = even0 + evenBytes(a);
            odd0 = odd0 + oddBytes(a);
            even1 = even1 + evenBytes(b);
            odd1 = odd1 + oddBytes(b);
            even2 = even2 + evenBytes(c);
            odd2 = odd2 + oddBytes(c);
            const bool last = y + 1 == src.height && x + Bytes::lanes >= src.width;
            if (--left > 0 && !last)
                continue;
            addPlaces(sums, even0, odd0, 0);
            addPlaces(sums, even1, odd1, Bytes::lanes % 3);
            addPlaces(sums, even2, odd2, 2 * Bytes::lanes % 3);
            even0 = odd0 = even1 = odd1 = even2 = odd2 = zero;
            left = most;
        }
    return sums;
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
}  // namespace zkit::ZKIT_SET

const zkit::PixelVarianceWorkers zkit::PixelVarianceWorkers::ZKIT_SET = {ZKIT_SET::grey, ZKIT_SET::colour,
                                                                         ZKIT_SET::colourRow};
