// Making every byte of a row from the byte at its place.
#pragma once

#include "simd/row_end.h"

namespace zkit::ZKIT_SET {
namespace {

// dst[i] = step(src[i]) in every lane; dst is src or apart from it.
template <class Step>
void mapRow(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Step step)
{
    std::ptrdiff_t x = 0;
    for (; x + Bytes::lanes <= count; x += Bytes::lanes)
        store(dst + x, step(load(src + x)));
    if (x < count) {
        const LastVector last(count);
        last.storeBytes(dst, step(last.bytes(src)));
    }
}

}  // namespace
}  // namespace zkit::ZKIT_SET
