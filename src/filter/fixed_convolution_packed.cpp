#include "filter/fixed_convolution_workers.h"
#include "simd/neighbourhood.h"

namespace zkit::ZKIT_SET {
namespace {

void pair(const std::uint8_t* above, const std::uint8_t* below, std::uint32_t* out, std::ptrdiff_t count)
{
    std::ptrdiff_t x = 0;
    for (; x + Ints::lanes <= count; x += Ints::lanes)
        store(out + x, widenToInts(above + x) | shiftLeft(widenToInts(below + x), 16));
    for (; x < count; ++x)
        out[x] = static_cast<std::uint32_t>(above[x] | below[x] << 16);
}

// Whether the columns of a kernel on either side of the middle are the same. The pixels of both are then added first.
enum class Sides { different, alike };

// Adds the products of column k and those after it of one pair of rows, `step` entries apart, to sums for so many
// vectors of pixels, each of which is loaded once for all sets of coefficients. Where sides are alike `opposite` is the
// column's counterpart, and the last one is the middle.
template <int k, int columns, Sides sides, int sets, int vectors>
[[gnu::always_inline]] inline void addColumns(Ints (&sums)[sets][vectors], const std::uint32_t* at,
                                              const std::uint32_t* opposite, int step,
                                              const std::uint32_t* const (&coefficients)[sets])
{
    if constexpr (k < columns) {
        Words factors[sets];
        unrolled<sets>([&](int set) { factors[set] = {broadcastInt(coefficients[set][k]).r}; });
        unrolled<vectors>([&](int i) {
            Words pixels = {loadOnce(at + i * Ints::lanes).r};
            if constexpr (sides == Sides::alike && k + 1 < columns)
                pixels = pixels + Words{loadOnce(opposite + i * Ints::lanes).r};
            unrolled<sets>([&](int set) { addTo(sums[set][i], multiplyAddPairs(pixels, factors[set])); });
        });
        addColumns<k + 1, columns, sides>(sums, at + step, opposite - step, step, coefficients);
    }
}

// coefficientsOf(p) are the coefficients of pair p for each set.
template <int size, Sides sides, int sets, int vectors, class CoefficientsOf>
[[gnu::always_inline]] inline void addProducts(Ints (&sums)[sets][vectors], const std::uint32_t* const* pairs,
                                               std::ptrdiff_t x, int step, CoefficientsOf coefficientsOf)
{
    constexpr int columns = sides == Sides::alike ? size / 2 + 1 : size;
    for (int p = 0; p <= size / 2; ++p) {
        const std::uint32_t* coefficients[sets];
        unrolled<sets>([&](int set) { coefficients[set] = coefficientsOf(p, set); });
        addColumns<0, columns, sides>(sums, pairs[p] + x - size / 2 * step, pairs[p] + x + size / 2 * step, step,
                                      coefficients);
    }
}

// How many vectors of sums make one of results.
constexpr int vectorsOfResult = Bytes::lanes / Ints::lanes;

[[gnu::always_inline]] inline Bytes toPixels(const Ints (&sums)[vectorsOfResult], const FixedKernel& kernel)
{
    Ints values[vectorsOfResult];
    unrolled<vectorsOfResult>([&](int i) { values[i] = shiftRightSigned(sums[i], kernel.fraction); });
    if (kernel.absolute)
        unrolled<vectorsOfResult>([&](int i) { values[i] = magnitude(values[i]); });
    return narrowInOrder({values[0], values[1]}, {values[2], values[3]});
}

// Two rows of results: what is loaded serves both.
template <int size, Sides sides>
[[gnu::flatten]] void filterVector(const std::uint32_t* const* pairs, std::ptrdiff_t x, int step,
                                   const FixedKernel& kernel, std::uint8_t* upperOut, std::uint8_t* lowerOut)
{
    const auto add = [&](auto& sums, const FixedKernel::Pairs(&coefficients)[2]) {
        addProducts<size, sides>(sums, pairs, x, step, [&](int p, int row) { return coefficients[row][p]; });
    };
    const Ints offset = broadcastInt(static_cast<std::uint32_t>(kernel.offset));
    Ints sums[2][vectorsOfResult];
    unrolled<vectorsOfResult>([&](int i) { sums[0][i] = sums[1][i] = kernel.wide ? broadcastInt(0) : offset; });
    if (kernel.wide) {
        add(sums, kernel.high);
        unrolled<vectorsOfResult>([&](int i) {
            sums[0][i] = shiftLeft(sums[0][i], 16) + offset;
            sums[1][i] = shiftLeft(sums[1][i], 16) + offset;
        });
    }
    add(sums, kernel.low);
    store(upperOut, toPixels(sums[0], kernel));
    store(lowerOut, toPixels(sums[1], kernel));
}

// Sums in two parts, that of the coefficients' upper 16 bits and that of their lower ones, as quotients: negative ones
// are rounded up.
inline Ints quotient(Ints high, Ints low, const FixedKernel& kernel)
{
    const int shift = kernel.fraction - 16;
    if (!kernel.negative)
        return shiftRightSigned(high + shiftRightSigned(low, 16), shift);
    const Ints negative = shiftRightSigned(high + shiftRightSigned(low, 16), 31);
    const Ints carry = shiftRightSigned(low + (negative & broadcastInt(0xFFFF)), 16);
    return shiftRightSigned(high + carry + (negative & broadcastInt((1U << shift) - 1)), shift);
}

// The same with exact sums. What is loaded serves their two parts.
template <int size, Sides sides>
[[gnu::flatten]] void filterExactVector(const std::uint32_t* const* pairs, std::ptrdiff_t x, int step,
                                        const FixedKernel& kernel, std::uint8_t* upperOut, std::uint8_t* lowerOut)
{
    const Ints offset = broadcastInt(static_cast<std::uint32_t>(kernel.offset));
    for (int row = 0; row < 2; ++row) {
        const FixedKernel::Pairs* const parts[] = {&kernel.high[row], &kernel.low[row]};
        Ints sums[2][vectorsOfResult], values[vectorsOfResult];
        unrolled<vectorsOfResult>([&](int i) { sums[0][i] = sums[1][i] = broadcastInt(0); });
        addProducts<size, sides>(sums, pairs, x, step, [&](int p, int part) { return (*parts[part])[p]; });
        unrolled<vectorsOfResult>([&](int i) { values[i] = quotient(sums[0][i], sums[1][i], kernel) + offset; });
        store(row == 0 ? upperOut : lowerOut, narrowInOrder({values[0], values[1]}, {values[2], values[3]}));
    }
}

using FilterVector = void (*)(const std::uint32_t* const* pairs, std::ptrdiff_t x, int step, const FixedKernel& kernel,
                              std::uint8_t* upperOut, std::uint8_t* lowerOut);

template <FilterVector vector>
void filterRows(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count,
                int step, const FixedKernel& kernel)
{
    if (count < Bytes::lanes) {
        std::uint8_t pixels[2][Bytes::lanes];
        vector(pairs, 0, step, kernel, pixels[0], pixels[1]);
        __builtin_memcpy(upper, pixels[0], static_cast<std::size_t>(count));
        __builtin_memcpy(lower, pixels[1], static_cast<std::size_t>(count));
        return;
    }
    for (std::ptrdiff_t x = 0; x + Bytes::lanes <= count; x += Bytes::lanes)
        vector(pairs, x, step, kernel, upper + x, lower + x);
    const std::ptrdiff_t last = count - Bytes::lanes;  // ends with the row and repeats a few pixels
    if (count % Bytes::lanes != 0)
        vector(pairs, last, step, kernel, upper + last, lower + last);
}

using FilterRows = void (*)(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower,
                            std::ptrdiff_t count, int step, const FixedKernel& kernel);

// Of kernels whose sides are different and alike.
template <int size>
constexpr FilterRows ofSize[] = {filterRows<filterVector<size, Sides::different>>,
                                 filterRows<filterVector<size, Sides::alike>>};

template <int size>
constexpr FilterRows exactOfSize[] = {filterRows<filterExactVector<size, Sides::different>>,
                                      filterRows<filterExactVector<size, Sides::alike>>};

void rows(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count, int step,
          const FixedKernel& kernel)
{
    const auto& filter = kernel.size == 3 ? ofSize<3> : kernel.size == 5 ? ofSize<5> : ofSize<7>;
    filter[kernel.sidesAlike ? 1 : 0](pairs, upper, lower, count, step, kernel);
}

void exactRows(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count,
               int step, const FixedKernel& kernel)
{
    const auto& filter = kernel.size == 3   ? exactOfSize<3>
                         : kernel.size == 5 ? exactOfSize<5>
                         : kernel.size == 7 ? exactOfSize<7>
                                            : exactOfSize<9>;
    filter[kernel.sidesAlike ? 1 : 0](pairs, upper, lower, count, step, kernel);
}

// 3 x 3 kernels, straight from bytes.

// Two coefficients for pairs of words.
inline Words both(std::int32_t first, std::int32_t second)
{
    return {broadcastInt((static_cast<std::uint32_t>(first) & 0xFFFF) | static_cast<std::uint32_t>(second) << 16).r};
}

// How the sums for the words of a vector become words of results.
class Finish {
public:
    explicit Finish(const FixedKernel& kernel)
        : offset_(broadcastInt(static_cast<std::uint32_t>(kernel.offset))),
          fraction_(kernel.fraction),
          folded_(kernel.absolute),
          shiftedOnly_(kernel.offset == 0 && !kernel.absolute)
    {
    }

    Words operator()(TwoInts sums) const
    {
        if (!shiftedOnly_)
            return narrowSigned({value(sums.low), value(sums.high)});
        return narrowSigned({shiftRightSigned(sums.low, fraction_), shiftRightSigned(sums.high, fraction_)});
    }

private:
    Ints value(Ints sum) const
    {
        const Ints shifted = shiftRightSigned(sum + offset_, fraction_);
        return folded_ ? magnitude(shifted) : shifted;
    }

    Ints offset_;
    int fraction_;
    bool folded_, shiftedOnly_;
};

inline TwoInts operator+(TwoInts a, TwoInts b) { return {a.low + b.low, a.high + b.high}; }
inline TwoInts products(TwoWords pairs, Words coefficients)
{
    return {multiplyAddPairs(pairs.low, coefficients), multiplyAddPairs(pairs.high, coefficients)};
}

// In symmetric kernels, the pixels of the corners and those of the sides are added before they are multiplied.
class SymmetricFilter {
public:
    struct Row {
        Columns centre, sides;
        TwoWords evenAndOdd;

        template <int step>
        explicit Row(const Neighbours<step>& n)
            : centre(n.here), sides(n.leftColumns() + n.rightColumns()), evenAndOdd(widen(n.here))
        {
        }
    };

    explicit SymmetricFilter(const FixedKernel& kernel)
        : finish_(kernel),
          around_(both(kernel.coefficients[0], kernel.coefficients[1])),
          even_(both(kernel.coefficients[4], 0)),
          odd_(both(0, kernel.coefficients[4]))
    {
    }

    Bytes operator()(const Row& above, const Row& here, const Row& below) const
    {
        const Columns corners = above.sides + below.sides, sides = above.centre + below.centre + here.sides;
        return interleaveSaturated(
            finish_(products(pairs(corners.even, sides.even), around_) + products(here.evenAndOdd, even_)),
            finish_(products(pairs(corners.odd, sides.odd), around_) + products(here.evenAndOdd, odd_)));
    }

private:
    Finish finish_;
    Words around_, even_, odd_;
};

// In all others every pixel has its own coefficient. For the pixels of the even lanes, each and its right neighbour
// make a pair, for those of the odd lanes each and its left neighbour, which are the same pairs when neighbours are 1
// byte away. Of the third ones those of the upper two rows make a pair, and those of the lower row one for both, in
// which either multiplies the other's by 0.
class GeneralFilter {
public:
    struct Row {
        TwoWords even, odd;
        Words left, right;

        template <int step>
        explicit Row(const Neighbours<step>& n)
            : even(step == 1 ? widen(n.here) : pairs(evenBytes(n.here), evenBytes(n.right))),
              odd(step == 1 ? widen(n.here) : pairs(oddBytes(n.left), oddBytes(n.here))),
              left(evenBytes(n.left)),
              right(oddBytes(n.right))
        {
        }
    };

    explicit GeneralFilter(const FixedKernel& kernel)
        : finish_(kernel), even_(kernel.coefficients, 1, 2, 0), odd_(kernel.coefficients, 0, 1, 2)
    {
    }

    Bytes operator()(const Row& above, const Row& here, const Row& below) const
    {
        const TwoWords last = pairs(below.left, below.right);
        return interleaveSaturated(
            finish_(even_.sum(above.even, here.even, below.even, pairs(above.left, here.left), last)),
            finish_(odd_.sum(above.odd, here.odd, below.odd, pairs(above.right, here.right), last)));
    }

private:
    struct Factors {
        Words above, here, below, outer, last;

        // The columns of the pairs and the third one.
        Factors(const std::int32_t* c, int first, int second, int third)
            : above(both(c[first], c[second])),
              here(both(c[3 + first], c[3 + second])),
              below(both(c[6 + first], c[6 + second])),
              outer(both(c[third], c[3 + third])),
              last(third == 0 ? both(c[6], 0) : both(0, c[8]))
        {
        }

        TwoInts sum(TwoWords a, TwoWords h, TwoWords b, TwoWords o, TwoWords l) const
        {
            return products(a, above) + products(h, here) + products(b, below) + products(o, outer) + products(l, last);
        }
    };

    Finish finish_;
    Factors even_, odd_;
};

// Kernels with coefficients of signed bytes whose sums are signed words.
class SmallFilter {
public:
    struct Row {
        TwoWords leftAndHere;
        Bytes right;

        template <int step>
        explicit Row(const Neighbours<step>& n) : leftAndHere(pairs(n.left, n.here)), right(n.right)
        {
        }
    };

    static bool fits(const FixedKernel& kernel)
    {
        const auto absolute = [](std::int64_t value) { return value < 0 ? -value : value; };
        std::int64_t sum = 0;
        for (int i = 0; i < 9; ++i)
            sum += absolute(kernel.coefficients[i]);
        return sum <= 127 && 255 * sum + absolute(kernel.offset) <= 32767;
    }

    explicit SmallFilter(const FixedKernel& kernel)
        : above_(factors(kernel.coefficients[0], kernel.coefficients[1])),
          here_(factors(kernel.coefficients[3], kernel.coefficients[4])),
          below_(factors(kernel.coefficients[6], kernel.coefficients[7])),
          upperRight_(factors(kernel.coefficients[2], kernel.coefficients[5])),
          lowerRight_(factors(kernel.coefficients[8], 0)),
          offset_(broadcastWord(kernel.offset)),
          fraction_(kernel.fraction),
          absolute_(kernel.absolute)
    {
    }

    Bytes operator()(const Row& above, const Row& here, const Row& below) const
    {
        const TwoWords upper = pairs(above.right, here.right), lower = pairs(below.right, below.right);
        const auto value = [this](Words a, Words h, Words b, Words u, Words l) {
            const Words sum = multiplyAddBytes(a, above_) + multiplyAddBytes(h, here_) + multiplyAddBytes(b, below_) +
                              multiplyAddBytes(u, upperRight_) + multiplyAddBytes(l, lowerRight_);
            const Words shifted = shiftRightSigned(sum + offset_, fraction_);
            return absolute_ ? magnitude(shifted) : shifted;
        };
        const TwoWords &a = above.leftAndHere, &h = here.leftAndHere, &b = below.leftAndHere;
        return narrow(TwoWords{value(a.low, h.low, b.low, upper.low, lower.low),
                               value(a.high, h.high, b.high, upper.high, lower.high)});
    }

private:
    static Words factors(std::int32_t first, std::int32_t second)
    {
        return broadcastWord((first & 0xFF) | (second & 0xFF) << 8);
    }

    Words above_, here_, below_, upperRight_, lowerRight_, offset_;
    int fraction_;
    bool absolute_;
};

bool symmetric(const FixedKernel& kernel)
{
    const std::int32_t* const c = kernel.coefficients;
    return c[0] == c[2] && c[0] == c[6] && c[0] == c[8] && c[1] == c[3] && c[1] == c[5] && c[1] == c[7];
}

void band(const std::uint8_t* const* rows, const Target& out, int step, const FixedKernel& kernel)
{
    const Border border{step, true, {}};
    if (SmallFilter::fits(kernel))
        filterBandWith(SmallFilter(kernel), rows, out, border);
    else if (symmetric(kernel))
        filterBandWith(SymmetricFilter(kernel), rows, out, border);
    else
        filterBandWith(GeneralFilter(kernel), rows, out, border);
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::FixedConvolutionWorkers zkit::FixedConvolutionWorkers::ZKIT_SET = {ZKIT_SET::pair, ZKIT_SET::rows,
                                                                               ZKIT_SET::band, ZKIT_SET::exactRows};
