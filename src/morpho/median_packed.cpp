#include "morpho/median_workers.h"
#include "simd/neighbourhood.h"

namespace zkit::ZKIT_SET {
namespace {

inline Bytes median(Bytes a, Bytes b, Bytes c) { return max(min(a, b), min(max(a, b), c)); }

// Three neighbours in order, which three rows share.
struct Sorted {
    Bytes least, middle, greatest;

    template <int step>
    explicit Sorted(const Neighbours<step>& n)
    {
        const Bytes low = min(n.left, n.here), high = max(n.left, n.here);
        least = min(low, n.right);
        middle = max(low, min(high, n.right));
        greatest = max(high, n.right);
    }
};

// The median of nine is that of the largest of the three minima, the median of the middles and the smallest of the
// three maxima.
inline Bytes medianOfNine(const Sorted& above, const Sorted& here, const Sorted& below)
{
    return median(max(max(above.least, here.least), below.least), median(above.middle, here.middle, below.middle),
                  min(min(above.greatest, here.greatest), below.greatest));
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::MedianWorkers zkit::MedianWorkers::ZKIT_SET = {ZKIT_SET::filterBand<ZKIT_SET::medianOfNine>};
