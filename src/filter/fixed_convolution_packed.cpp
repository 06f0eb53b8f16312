#include "filter/fixed_convolution_workers.h"
#include "simd/vector.h"

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

// Sums for as many pixels as a vector has bytes, in two rows: what is loaded serves both.
constexpr int vectors = Bytes::lanes / Ints::lanes;
using Sums = Ints[vectors];

// Adds the products of so many columns of one pair of rows, `step` entries apart.
template <int columns>
[[gnu::always_inline]] inline void addColumns(Sums& upper, Sums& lower, const std::uint32_t* at, int step,
                                              const std::uint32_t* forUpper, const std::uint32_t* forLower)
{
    if constexpr (columns > 0) {
        const Words ofUpper = {broadcastInt(*forUpper).r}, ofLower = {broadcastInt(*forLower).r};
        unrolled<vectors>([&](int i) {
            const Words pixels = {loadOnce(at + i * Ints::lanes).r};
            addTo(upper[i], multiplyAddPairs(pixels, ofUpper));
            addTo(lower[i], multiplyAddPairs(pixels, ofLower));
        });
        addColumns<columns - 1>(upper, lower, at + step, step, forUpper + 1, forLower + 1);
    }
}

template <int size>
[[gnu::always_inline]] inline void addProducts(Sums& upper, Sums& lower, const std::uint32_t* const* pairs,
                                               std::ptrdiff_t x, int step, const FixedKernel::Pairs (&coefficients)[2])
{
    for (int p = 0; p <= size / 2; ++p)
        addColumns<size>(upper, lower, pairs[p] + x - size / 2 * step, step, coefficients[0][p], coefficients[1][p]);
}

inline Ints absolute(Ints a)
{
    const Ints sign = shiftRightSigned(a, 31);
    return (a ^ sign) - sign;
}

[[gnu::always_inline]] inline Bytes toPixels(const Sums& sums, bool folded)
{
    Ints values[vectors];
    unrolled<vectors>([&](int i) { values[i] = shiftRightSigned(sums[i], 15); });
    if (folded)
        unrolled<vectors>([&](int i) { values[i] = absolute(values[i]); });
    return narrowInOrder({values[0], values[1]}, {values[2], values[3]});
}

template <int size>
[[gnu::flatten]] void filterVector(const std::uint32_t* const* pairs, std::ptrdiff_t x, int step,
                                   const FixedKernel& kernel, std::uint8_t* upperOut, std::uint8_t* lowerOut)
{
    const Ints offset = broadcastInt(static_cast<std::uint32_t>(kernel.offset));
    Sums upper, lower;
    unrolled<vectors>([&](int i) { upper[i] = lower[i] = kernel.wide ? broadcastInt(0) : offset; });
    if (kernel.wide) {
        addProducts<size>(upper, lower, pairs, x, step, kernel.high);
        unrolled<vectors>([&](int i) {
            upper[i] = shiftLeft(upper[i], 16) + offset;
            lower[i] = shiftLeft(lower[i], 16) + offset;
        });
    }
    addProducts<size>(upper, lower, pairs, x, step, kernel.low);
    store(upperOut, toPixels(upper, kernel.absolute));
    store(lowerOut, toPixels(lower, kernel.absolute));
}

template <int size>
void filterRows(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count,
                int step, const FixedKernel& kernel)
{
    if (count < Bytes::lanes) {
        std::uint8_t pixels[2][Bytes::lanes];
        filterVector<size>(pairs, 0, step, kernel, pixels[0], pixels[1]);
        __builtin_memcpy(upper, pixels[0], static_cast<std::size_t>(count));
        __builtin_memcpy(lower, pixels[1], static_cast<std::size_t>(count));
        return;
    }
    for (std::ptrdiff_t x = 0; x + Bytes::lanes <= count; x += Bytes::lanes)
        filterVector<size>(pairs, x, step, kernel, upper + x, lower + x);
    const std::ptrdiff_t last = count - Bytes::lanes;  // ends with the row and repeats a few pixels
    if (count % Bytes::lanes != 0)
        filterVector<size>(pairs, last, step, kernel, upper + last, lower + last);
}

void rows(const std::uint32_t* const* pairs, std::uint8_t* upper, std::uint8_t* lower, std::ptrdiff_t count, int step,
          const FixedKernel& kernel)
{
    const auto filter = kernel.size == 3 ? filterRows<3> : kernel.size == 5 ? filterRows<5> : filterRows<7>;
    filter(pairs, upper, lower, count, step, kernel);
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::FixedConvolutionWorkers zkit::FixedConvolutionWorkers::ZKIT_SET = {ZKIT_SET::pair, ZKIT_SET::rows};
