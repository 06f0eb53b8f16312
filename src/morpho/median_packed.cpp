#include "morpho/median_workers.h"
#include "simd/neighbourhood.h"

namespace zkit::ZKIT_SET {
namespace {

inline Bytes median(Bytes a, Bytes b, Bytes c) { return max(min(a, b), min(max(a, b), c)); }

// The values of every column in order, which three neighbours share. The median of nine is that of the largest of the
// three minima, the median of the middles and the smallest of the three maxima.
struct Median {
    Bytes least, middle, greatest;

    Median(Bytes above, Bytes here, Bytes below)
    {
        const Bytes low = min(above, here), high = max(above, here);
        least = min(low, below);
        middle = max(low, min(high, below));
        greatest = max(high, below);
    }

    template <int step>
    static Bytes filtered(const Median& previous, const Median& here, const Median& next)
    {
        const auto left = [](Bytes before_, Bytes here_) { return before<step>(before_, here_); };
        const auto right = [](Bytes here_, Bytes after_) { return after<step>(here_, after_); };
        const Bytes largest = max(max(left(previous.least, here.least), here.least), right(here.least, next.least));
        const Bytes middle =
            ZKIT_SET::median(left(previous.middle, here.middle), here.middle, right(here.middle, next.middle));
        const Bytes smallest =
            min(min(left(previous.greatest, here.greatest), here.greatest), right(here.greatest, next.greatest));
        return ZKIT_SET::median(largest, middle, smallest);
    }
};

void constant(const MedianRows& rows, std::uint8_t* out, std::ptrdiff_t count, int step, const std::uint8_t* outside)
{
    filterRow<Median>(rows.above, rows.here, rows.below, out, count, step, Constant(outside, step));
}

void replicated(const MedianRows& rows, std::uint8_t* out, std::ptrdiff_t count)
{
    filterAnyRow<Median, 1>(rows.above, rows.here, rows.below, out, count, Replicated());
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::MedianWorkers zkit::MedianWorkers::ZKIT_SET = {ZKIT_SET::constant, ZKIT_SET::replicated};
