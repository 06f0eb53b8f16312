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
            const Sums sums = foldRow(src.data + y * src.pitch + x, count, zero, 0, step, join);
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

// Sums of bytes at every third place. The places are summed by themselves, in words, as long as those cannot overflow;
// which component a place belongs to matters only then.
class ThirdSums {
public:
    void add(const std::uint8_t* pixels)
    {
        for (int i = 0; i < 3; ++i) {
            const Bytes bytes = load(pixels + i * Bytes::lanes);
            even_[i] = even_[i] + evenBytes(bytes);
            odd_[i] = odd_[i] + oddBytes(bytes);
        }
        if (++added_ == 257)  // times 255 is 65535
            flush();
    }

    ColourSums result()
    {
        flush();
        return sums_;
    }

private:
    void flush()
    {
        for (int i = 0; i < 3; ++i) {
            std::uint16_t even[Words::lanes], odd[Words::lanes];
            store(even, even_[i]);
            store(odd, odd_[i]);
            for (int lane = 0; lane < Words::lanes; ++lane) {
                const int place = i * Bytes::lanes + 2 * lane;
                sums_.values[place % 3] += even[lane];
                sums_.values[(place + 1) % 3] += odd[lane];
            }
            even_[i] = odd_[i] = broadcastWord(0);
        }
        added_ = 0;
    }

    Words even_[3] = {broadcastWord(0), broadcastWord(0), broadcastWord(0)};
    Words odd_[3] = {broadcastWord(0), broadcastWord(0), broadcastWord(0)};
    int added_ = 0;
    ColourSums sums_ = {};
};

ColourSums colour(Source src)
{
    ThirdSums sums;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* row = src.data + y * src.pitch;
        std::ptrdiff_t x = 0;
        for (; x + Bytes::lanes <= src.width; x += Bytes::lanes)
            sums.add(row + 3 * x);
        if (x < src.width) {
            std::uint8_t padded[3 * Bytes::lanes] = {};
            __builtin_memcpy(padded, row + 3 * x, static_cast<std::size_t>(3 * (src.width - x)));
            sums.add(padded);
        }
    }
    return sums.result();
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
