#include "filter/predefined_workers.h"
#include "simd/neighbourhood.h"

// The formulas, on words: no value on the way to a result is above 2295.
namespace zkit::ZKIT_SET {
namespace {

// The sum of three neighbours in a row or a column, and with the one in the middle twice.
template <class Values>
Values sum(const Values& a, const Values& b, const Values& c)
{
    return a + b + c;
}

template <class Values>
Values smoothed(const Values& a, const Values& b, const Values& c)
{
    return (a + b) + (b + c);
}

// A row of pixels, seen with its neighbours to the left and right. What no formula of a filter asks for is never made.
template <int step>
struct Row {
    using Values = typename Neighbours<step>::Values;

    Values centre, slope;
    Values withLeft, withRight, three, smooth;
    Values peak4, peak5;  // what the pixels stand out, so many times themselves
    Values nineTimes, tenTimes;

    explicit Row(const Neighbours<step>& n)
        : centre(n.centre()),
          slope(n.slope()),
          withLeft(n.withLeft()),
          withRight(n.withRight()),
          three(n.template sum<1, 1>()),
          smooth(n.template sum<1, 2>()),
          peak4(n.template sum<-1, 4>()),
          peak5(n.template sum<-1, 5>()),
          nineTimes(n.times(9)),
          tenTimes(n.times(10))
    {
    }
};

// Signed values as bytes: their magnitude, at most 255.
template <class Values>
Bytes asMagnitudes(const Values& a)
{
    return saturated(magnitude(a));
}

// Values divided by 2^count, truncated, as bytes, which they must fit.
inline Bytes asQuotients(const Columns& a, int count)
{
    return Bytes{(shiftRight(a.even, count) | (shiftLeft(a.odd, 8 - count) & broadcastWord(0xFF00))).r};
}

inline Bytes asQuotients(TwoWords a, int count)
{
    return narrow({shiftRight(a.low, count), shiftRight(a.high, count)});
}

// Sums of nine bytes divided by 9, truncated.
inline Bytes asNinths(const Columns& a)
{
    const Words ninth = broadcastWord(65536 / 9 + 1);
    return interleave(multiplyHigh(a.even, ninth), multiplyHigh(a.odd, ninth));
}

inline Bytes asNinths(TwoWords a)
{
    const Words ninth = broadcastWord(65536 / 9 + 1);
    return narrow({multiplyHigh(a.low, ninth), multiplyHigh(a.high, ninth)});
}

template <int step>
Bytes highpass1(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    return asMagnitudes(here.peak5 - above.centre - below.centre);
}

template <int step>
Bytes highpass2(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    return asMagnitudes(here.tenTimes - sum(above.three, here.three, below.three));
}

template <int step>
Bytes laplacian4(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    return asMagnitudes(here.peak4 - above.centre - below.centre);
}

template <int step>
Bytes laplacian8(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    return asMagnitudes(here.nineTimes - sum(above.three, here.three, below.three));
}

template <int step>
Bytes lowpass1(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    const typename Row<step>::Values half{broadcastWord(8), broadcastWord(8)};
    return asQuotients(smoothed(above.smooth, here.smooth, below.smooth) + half, 4);
}

template <int step>
Bytes lowpass2(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    return asQuotients(sum(above.three, here.three, below.three) - here.centre, 3);
}

template <int step>
Bytes lowpass3(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    return asNinths(sum(above.three, here.three, below.three));
}

template <int step>
Bytes sobelX(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    return asMagnitudes(smoothed(above.slope, here.slope, below.slope));
}

template <int step>
Bytes sobelY(const Row<step>& above, const Row<step>&, const Row<step>& below)
{
    return asMagnitudes(below.smooth - above.smooth);
}

// |x| + |y| is the larger one of |x + y| and |x - y|, in which the pixels of two corners cancel out: half of it will
// do.
template <int step>
Bytes sobelXY(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    const auto falling = here.slope + below.withRight - above.withLeft;
    const auto rising = here.slope + above.withRight - below.withLeft;
    const Bytes half = saturated(max(magnitude(falling), magnitude(rising)));
    return addSaturated(half, half);
}

template <int step>
Bytes prewittX(const Row<step>& above, const Row<step>& here, const Row<step>& below)
{
    return asMagnitudes(sum(above.slope, here.slope, below.slope));
}

template <int step>
Bytes prewittY(const Row<step>& above, const Row<step>&, const Row<step>& below)
{
    return asMagnitudes(below.three - above.three);
}

template <int step>
Bytes prewittXY(const Row<step>& above, const Row<step>& here, const Row<step>& below)
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
inline Bytes smoothed(Bytes a, Bytes b, Bytes c) { return average(average(a, c), b); }

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
    .highpass1 = filterBand<highpass1<1>, highpass1<3>>,
    .highpass2 = filterBand<highpass2<1>, highpass2<3>>,
    .lowpass1 = filterBand<lowpass1<1>, lowpass1<3>>,
    .lowpass2 = filterBand<lowpass2<1>, lowpass2<3>>,
    .lowpass3 = filterBand<lowpass3<1>, lowpass3<3>>,
    .sobelX = filterBand<sobelX<1>, sobelX<3>>,
    .sobelY = filterBand<sobelY<1>, sobelY<3>>,
    .sobelXY = filterBand<sobelXY<1>, sobelXY<3>>,
    .prewittX = filterBand<prewittX<1>, prewittX<3>>,
    .prewittY = filterBand<prewittY<1>, prewittY<3>>,
    .prewittXY = filterBand<prewittXY<1>, prewittXY<3>>,
    .laplacian4 = filterBand<laplacian4<1>, laplacian4<3>>,
    .laplacian8 = filterBand<laplacian8<1>, laplacian8<3>>,
    .lowpass1X = filterBand<lowpass1X>,
    .lowpass1Y = filterBand<lowpass1Y>,
    .roberts = filterBand<roberts>,
};

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::PredefinedWorkers zkit::PredefinedWorkers::ZKIT_SET = ZKIT_SET::table;
