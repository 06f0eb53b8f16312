// Looking up bytes in a table of 256, which SSE2 cannot.
#pragma once

#include "simd/vector.h"

#ifdef __AVX2__

namespace zkit::ZKIT_SET {
namespace {

// The table as 16 tables of 16 entries in registers. The lower half of a pixel looks up an entry in each of them, the
// four bits above choose among the 16 answers.
class Table {
public:
    explicit Table(const std::uint8_t* entries)
    {
        for (int i = 0; i < 16; ++i)
            tables_[i] = loadTable(entries + 16 * i);
    }

    [[gnu::always_inline]] Bytes operator()(Bytes pixels) const
    {
        const Bytes index = pixels & broadcast(15);
        const Bytes bit4 = bitToTop<4>(pixels), bit5 = bitToTop<5>(pixels), bit6 = bitToTop<6>(pixels);
        const auto of2 = [&](int i) {
            return selectByTop(bit4, lookUp(tables_[i], index), lookUp(tables_[i + 1], index));
        };
        const auto of4 = [&](int i) { return selectByTop(bit5, of2(i), of2(i + 2)); };
        const auto of8 = [&](int i) { return selectByTop(bit6, of4(i), of4(i + 4)); };
        return selectByTop(pixels, of8(0), of8(8));
    }

private:
    Bytes tables_[16];
};

}  // namespace
}  // namespace zkit::ZKIT_SET

#endif
