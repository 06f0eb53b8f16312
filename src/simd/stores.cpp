#include "simd/stores.h"

#include <cpuid.h>
#include <xmmintrin.h>

namespace zkit {

namespace {

// The size of the largest cache that a leaf of the processor's description lists, 0 when it has no such leaf.
std::ptrdiff_t largestCache(unsigned leaf)
{
    std::ptrdiff_t largest = 0;
    unsigned a = 0, b = 0, c = 0, d = 0;
    for (unsigned index = 0; index < 8 && __get_cpuid_count(leaf, index, &a, &b, &c, &d) && (a & 31) != 0; ++index) {
        const std::ptrdiff_t ways = (b >> 22) + 1, partitions = (b >> 12 & 1023) + 1, line = (b & 4095) + 1;
        const std::ptrdiff_t size = ways * partitions * line * (static_cast<std::ptrdiff_t>(c) + 1);
        largest = size > largest ? size : largest;
    }
    return largest;
}

std::ptrdiff_t lastLevelCache()
{
    constexpr unsigned ofAmd = 0x8000001D, ofIntel = 4;
    std::ptrdiff_t size = largestCache(ofAmd);
    if (size == 0)
        size = largestCache(ofIntel);
    return size != 0 ? size : 8 << 20;
}

}  // namespace

Stores storesFor(std::ptrdiff_t bytes)
{
    static const std::ptrdiff_t most = lastLevelCache() / 2;
    return bytes > most ? Stores::streamed : Stores::cached;
}

void endStreaming() { _mm_sfence(); }

}  // namespace zkit
