#include "geometry/mirror_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

inline void exchange(std::uint8_t& a, std::uint8_t& b)
{
    const std::uint8_t kept = a;
    a = b;
    b = kept;
}

void swap(std::uint8_t* a, std::uint8_t* b, std::ptrdiff_t count)
{
    if (count < Bytes::lanes) {
        for (std::ptrdiff_t i = 0; i < count; ++i)
            exchange(a[i], b[i]);
        return;
    }
    // The last vectors end with the rows and repeat a few bytes: they are read before those are overwritten.
    const std::ptrdiff_t last = count - Bytes::lanes;
    const Bytes lastOfA = load(a + last), lastOfB = load(b + last);
    for (std::ptrdiff_t i = 0; i < last; i += Bytes::lanes) {
        const Bytes ofA = load(a + i), ofB = load(b + i);
        store(a + i, ofB);
        store(b + i, ofA);
    }
    store(a + last, lastOfB);
    store(b + last, lastOfA);
}

void reverse(std::uint8_t* row, std::ptrdiff_t count)
{
    std::ptrdiff_t left = 0, right = count;
    for (; right - left >= Bytes::lanes; left += Bytes::lanes, right -= Bytes::lanes) {
        // In the middle the two vectors overlap and hold the same bytes after they are turned round.
        const Bytes first = load(row + left), last = load(row + right - Bytes::lanes);
        store(row + left, reversed(last));
        store(row + right - Bytes::lanes, reversed(first));
    }
    for (--right; left < right; ++left, --right)
        exchange(row[left], row[right]);
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::MirrorWorkers zkit::MirrorWorkers::ZKIT_SET = {ZKIT_SET::swap, ZKIT_SET::reverse};
