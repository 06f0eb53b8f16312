#include "geometry/mirror_workers.h"

namespace zkit::plain {
namespace {

void exchange(std::uint8_t& a, std::uint8_t& b)
{
    const std::uint8_t kept = a;
    a = b;
    b = kept;
}

void swap(std::uint8_t* a, std::uint8_t* b, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        exchange(a[i], b[i]);
}

void reverse(std::uint8_t* row, std::ptrdiff_t count)
{
    for (std::ptrdiff_t left = 0, right = count - 1; left < right; ++left, --right)
        exchange(row[left], row[right]);
}

}  // namespace
}  // namespace zkit::plain

const zkit::MirrorWorkers zkit::MirrorWorkers::plain = {plain::swap, plain::reverse};
