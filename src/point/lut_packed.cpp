#include "point/lut_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

#ifdef __AVX2__  // SSE2 cannot look up bytes

// The table as 16 tables of 16 entries in registers. The lower half of a pixel looks up an entry in each of them, the
// four bits above choose among the 16 answers.
class Table {
public:
    explicit Table(const std::uint8_t* entries)
    {
        for (int i = 0; i < 16; ++i)
            tables_[i] = loadTable(entries + 16 * i);
    }

    Bytes operator()(Bytes pixels) const
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

#endif

void row(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const std::uint8_t* table)
{
    std::ptrdiff_t i = 0;
#ifdef __AVX2__
    const Table lookUpAll(table);
    for (; i + Bytes::lanes <= count; i += Bytes::lanes)
        store(dst + i, lookUpAll(load(src + i)));
#endif
    for (; i + 4 <= count; i += 4) {
        const std::uint8_t a = table[src[i]], b = table[src[i + 1]], c = table[src[i + 2]], d = table[src[i + 3]];
        dst[i] = a;
        dst[i + 1] = b;
        dst[i + 2] = c;
        dst[i + 3] = d;
    }
    for (; i < count; ++i)
        dst[i] = table[src[i]];
}

}  // namespace

const LutWorkers lut = {row};

}  // namespace zkit::ZKIT_SET
