#include "filter/predefined_workers.h"
#include "simd/neighbourhood.h"

// The formulas, on words: no value on the way to a result is above 2295.
namespace zkit::ZKIT_SET {
namespace {

// The sum of three neighbours in a row or a column, and with the one in the middle twice.
inline Columns sum(const Columns& a, const Columns& b, const Columns& c) { return a + b + c; }
inline Columns smoothed(const Columns& a, const Columns& b, const Columns& c) { return (a + b) + (b + c); }

// A row of pixels, seen with its neighbours to the left and right. What no formula of a filter asks for is never made.
struct Row {
    Columns centre, slope;
    Columns withLeft, withRight, three, smooth;
    Columns peak4, peak5;  // what the pixels stand out, so many times themselves
    Columns nineTimes, tenTimes;

    template <int step>
    explicit Row(const Neighbours<step>& n)
        : centre(n.here),
          slope(n.rightColumns() - n.leftColumns()),
          withLeft(n.leftColumns() + centre),
          withRight(centre + n.rightColumns()),
          three(n.template sum<1, 1>()),
          smooth(n.template sum<1, 2>()),
          peak4(n.template sum<-1, 4>()),
          peak5(n.template sum<-1, 5>()),
          nineTimes(weighted(9, n.here)),
          tenTimes(weighted(10, n.here))
    {
    }
};

// Signed values as bytes: their magnitude, at most 255.
inline Bytes asMagnitudes(const Columns& a) { return saturated(magnitude(a)); }

// Values divided by 2^count, truncated, as bytes, which they must fit.
inline Bytes asQuotients(const Columns& a, int count)
{
    return Bytes{(shiftRight(a.even, count) | (shiftLeft(a.odd, 8 - count) & broadcastWord(0xFF00))).r};
}

inline Bytes highpass1(const Row& above, const Row& here, const Row& below)
{
    return asMagnitudes(here.peak5 - above.centre - below.centre);
}

inline Bytes highpass2(const Row& above, const Row& here, const Row& below)
{
    return asMagnitudes(here.tenTimes - sum(above.three, here.three, below.three));
}

inline Bytes laplacian4(const Row& above, const Row& here, const Row& below)
{
    return asMagnitudes(here.peak4 - above.centre - below.centre);
}

inline Bytes laplacian8(const Row& above, const Row& here, const Row& below)
{
    return asMagnitudes(here.nineTimes - sum(above.three, here.three, below.three));
}

inline Bytes lowpass1(const Row& above, const Row& here, const Row& below)
{
    const Columns half(broadcastWord(8), broadcastWord(8));
    return asQuotients(smoothed(above.smooth, here.smooth, below.smooth) + half, 4);
}

inline Bytes lowpass2(const Row& above, const Row& here, const Row& below)
{
    return asQuotients(sum(above.three, here.three, below.three) - here.centre, 3);
}

inline Bytes lowpass3(const Row& above, const Row& here, const Row& below)
{
    const Columns nine = sum(above.three, here.three, below.three);
    const Words ninth = broadcastWord(65536 / 9 + 1);  // truncates sums of nine bytes
    return interleave(multiplyHigh(nine.even, ninth), multiplyHigh(nine.odd, ninth));
}

inline Bytes sobelX(const Row& above, const Row& here, const Row& below)
{
    return asMagnitudes(smoothed(above.slope, here.slope, below.slope));
}

inline Bytes sobelY(const Row& above, const Row&, const Row& below)
{
    return asMagnitudes(below.smooth - above.smooth);
}

// |x| + |y| is the larger one of |x + y| and |x - y|, in which the pixels of two corners cancel out: half of it will
// do.
inline Bytes sobelXY(const Row& above, const Row& here, const Row& below)
{
    const Columns falling = here.slope + below.withRight - above.withLeft;
    const Columns rising = here.slope + above.withRight - below.withLeft;
    const Bytes half = saturated(max(magnitude(falling), magnitude(rising)));
    return addSaturated(half, half);
}

inline Bytes prewittX(const Row& above, const Row& here, const Row& below)
{
    return asMagnitudes(sum(above.slope, here.slope, below.slope));
}

inline Bytes prewittY(const Row& above, const Row&, const Row& below)
{
    return asMagnitudes(below.three - above.three);
}

inline Bytes prewittXY(const Row& above, const Row& here, const Row& below)
{
    return saturated(magnitude(sum(above.slope, here.slope, below.slope)) + magnitude(below.three - above.three));
}

// The other ones need no words.
struct ByteRow {
    Bytes left, here, right;

    template <int step>
    explicit ByteRow(const Neighbours<step>& n) : left(n.left), here(n.here), right(n.right)
    {
    }
};

// (a + 2 b + c) / 4, truncated: the truncated half of b and the truncated half of a + c.
inline Bytes smoothed(Bytes a, Bytes b, Bytes c)
{
    const auto average = [](Bytes p, Bytes q) { return averageUp(p, q) - ((p ^ q) & broadcast(1)); };
    return average(average(a, c), b);
}

inline Bytes distance(Bytes a, Bytes b) { return subtractSaturated(a, b) | subtractSaturated(b, a); }

inline Bytes lowpass1X(const ByteRow&, const ByteRow& row, const ByteRow&)
{
    return smoothed(row.left, row.here, row.right);
}

inline Bytes lowpass1Y(const ByteRow& above, const ByteRow& row, const ByteRow& below)
{
    return smoothed(above.here, row.here, below.here);
}

inline Bytes roberts(const ByteRow&, const ByteRow& row, const ByteRow& below)
{
    return addSaturated(distance(row.here, below.right), distance(row.right, below.here));
}

constexpr PredefinedWorkers table = {
    .highpass1 = filterBand<highpass1>,
    .highpass2 = filterBand<highpass2>,
    .lowpass1 = filterBand<lowpass1>,
    .lowpass2 = filterBand<lowpass2>,
    .lowpass3 = filterBand<lowpass3>,
    .sobelX = filterBand<sobelX>,
    .sobelY = filterBand<sobelY>,
    .sobelXY = filterBand<sobelXY>,
    .prewittX = filterBand<prewittX>,
    .prewittY = filterBand<prewittY>,
    .prewittXY = filterBand<prewittXY>,
    .laplacian4 = filterBand<laplacian4>,
    .laplacian8 = filterBand<laplacian8>,
    .lowpass1X = filterBand<lowpass1X>,
    .lowpass1Y = filterBand<lowpass1Y>,
    .roberts = filterBand<roberts>,
};

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::PredefinedWorkers zkit::PredefinedWorkers::ZKIT_SET = ZKIT_SET::table;
