#include "point/lut_workers.h"
#include "simd/map.h"
#include "simd/table.h"

namespace zkit::ZKIT_SET {
namespace {

#ifdef __AVX2__

void row(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* table, Stores stores)
{
    mapRow(dst, count, stores, [=, table = Table(table)](auto at) { return table(at.bytes(src)); });
}

#else

void row(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* table, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = table[src[i]];
}

#endif

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::LutWorkers zkit::LutWorkers::ZKIT_SET = {ZKIT_SET::row};
