#include "filter/predefined_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

constexpr int maxStep = 3;

// The sums of the columns from `from` to `to`, which a filter needs three times each; columns outside the row are 0.
// sums[0] is column `from`.
void columnSums(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::ptrdiff_t count,
                std::ptrdiff_t from, std::ptrdiff_t to, std::uint16_t* sums)
{
    std::ptrdiff_t x = from;
    for (; x < 0; ++x)
        sums[x - from] = 0;
    const std::ptrdiff_t end = to < count ? to : count;
    for (; x + Words::lanes <= end; x += Words::lanes)
        store(sums + (x - from), widen(above + x) + widen(here + x) + widen(below + x));
    for (; x < end; ++x)
        sums[x - from] = static_cast<std::uint16_t>(above[x] + here[x] + below[x]);
    for (; x < to; ++x)
        sums[x - from] = 0;
}

// Sums of nine bytes divided by 9, truncated: exact up to 65535 / 2.
Words ninth(Words sum)
{
    return multiplyHigh(sum, broadcastWord(65536 / 9 + 1));
}

void lowpass3(const std::uint8_t* above, const std::uint8_t* here, const std::uint8_t* below, std::uint8_t* out,
              std::ptrdiff_t count, int step)
{
    constexpr std::ptrdiff_t stretch = 1024;
    std::uint16_t sums[stretch + 2 * maxStep];
    for (std::ptrdiff_t start = 0; start < count; start += stretch) {
        const std::ptrdiff_t length = count - start < stretch ? count - start : stretch;
        columnSums(above, here, below, count, start - step, start + length + step, sums);
        const std::uint16_t* left = sums;
        const std::uint16_t* middle = sums + step;
        const std::uint16_t* right = sums + 2 * step;
        const auto sum = [=](std::ptrdiff_t x) { return loadWords(left + x) + loadWords(middle + x) + loadWords(right + x); };
        std::ptrdiff_t x = 0;
        for (; x + Bytes::lanes <= length; x += Bytes::lanes)
            store(out + start + x, narrow(ninth(sum(x)), ninth(sum(x + Words::lanes))));
        for (; x < length; ++x)
            out[start + x] = static_cast<std::uint8_t>((left[x] + middle[x] + right[x]) / 9);
    }
}

}  // namespace

const PredefinedWorkers predefined = {lowpass3};

}  // namespace zkit::ZKIT_SET
