#include "filter/predefined_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

// The sums of the three pixels of as many columns as a vector has lanes: the even and the odd columns apart.
struct ColumnSums {
    Words even = broadcastWord(0), odd = broadcastWord(0);

    ColumnSums() = default;
    ColumnSums(Bytes above, Bytes here, Bytes below)
        : even(evenBytes(above) + evenBytes(here) + evenBytes(below)),
          odd(oddBytes(above) + oddBytes(here) + oddBytes(below))
    {
    }
};

// Sums of nine bytes divided by 9, truncated.
Words ninth(Words sum) { return multiplyHigh(sum, broadcastWord(65536 / 9 + 1)); }

// The filter on the columns of `here`. Neighbours are an odd number of columns away, so that those of an even column
// are odd ones and the other way round.
template <int step>
Bytes lowpass3(const ColumnSums& previous, const ColumnSums& here, const ColumnSums& next)
{
    constexpr int far = (step + 1) / 2, near = step / 2;
    const Words rightOfEven = near == 0 ? here.odd : after<near>(here.odd, next.odd);
    const Words leftOfOdd = near == 0 ? here.even : before<near>(previous.even, here.even);
    const Words evenSum = before<far>(previous.odd, here.odd) + here.even + rightOfEven;
    const Words oddSum = leftOfOdd + here.odd + after<far>(here.even, next.even);
    return interleave(ninth(evenSum), ninth(oddSum));
}

// A row, given the sums of the whole vectors of columns from x on, columns(x).
template <int step, class Columns>
void longRow(std::uint8_t* out, std::ptrdiff_t count, Columns columns)
{
    ColumnSums previous, here = columns(0), next;
    std::ptrdiff_t x = 0;
    for (; x + 2 * Bytes::lanes <= count; x += Bytes::lanes) {
        next = columns(x + Bytes::lanes);
        store(out + x, lowpass3<step>(previous, here, next));
        previous = here;
        here = next;
    }
    const std::ptrdiff_t last = count - Bytes::lanes;
    if (x < last) {  // the last two vectors end with the row and repeat a few columns
        previous = columns(last - 2 * Bytes::lanes);
        here = columns(last - Bytes::lanes);
        next = columns(last);
        store(out + last - Bytes::lanes, lowpass3<step>(previous, here, next));
        previous = here;
        here = next;
    }
    store(out + last, lowpass3<step>(previous, here, ColumnSums()));
}

template <int step>
void lowpass3(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
              std::ptrdiff_t count)
{
    constexpr std::ptrdiff_t most = 3 * Bytes::lanes;
    const auto columns = [=](std::ptrdiff_t x) { return ColumnSums(load(above + x), load(here + x), load(below + x)); };
    if (count >= most) {
        longRow<step>(out, count, columns);
        return;
    }
    // A short row is filtered with zeros behind it.
    std::uint8_t rows[3][most] = {}, filtered[most];
    const auto bytes = static_cast<std::size_t>(count);
    __builtin_memcpy(rows[0], above, bytes);
    __builtin_memcpy(rows[1], here, bytes);
    __builtin_memcpy(rows[2], below, bytes);
    longRow<step>(filtered, most, [&](std::ptrdiff_t x) {
        return ColumnSums(load(rows[0] + x), load(rows[1] + x), load(rows[2] + x));
    });
    __builtin_memcpy(out, filtered, bytes);
}

void lowpass3(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
              std::ptrdiff_t count, int step)
{
    if (step == 1)
        lowpass3<1>(above, here, below, out, count);
    else
        lowpass3<3>(above, here, below, out, count);
}

}  // namespace

const PredefinedWorkers predefined = {lowpass3};

}  // namespace zkit::ZKIT_SET
