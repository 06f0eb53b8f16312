// ImgSetupEqualize and ImgEqualize.
#include "analysis/bins.h"
#include "frame/call_frame.h"
#include "zkit/img/analysis.h"
#include "zkit/img/point.h"

#include <algorithm>
#include <array>

using namespace zkit;

namespace {

using Table = std::array<ZBW8, 256>;

// What level i becomes: the share, of 256, of the pixels below it. Levels above all pixels become 256, that is 0, and
// the product wraps from 2^24 pixels on; both are intended.
Table equalizing(const Bins& histogram)
{
    std::uint32_t total = 0;
    for (int level = 0; level < 256; ++level)
        total += histogram[level];
    Table table{};
    if (total == 0)
        return table;
    std::uint32_t below = 0;
    for (int level = 0; level < 256; ++level) {
        table[static_cast<std::size_t>(level)] = static_cast<ZBW8>(below * 256 / total);
        below += histogram[level];
    }
    return table;
}

bool becomesTable(ZVector* vector)
{
    return require(vector, Z_ERROR_VECTOR_EMPTY) && (vector->IsSameVectType(3) || vector->SetType(3, 1, 256) == Z_OK);
}

}  // namespace

void ImgSetupEqualize(ZBW8HistogramVector* hist, ZBW8Vector* lut)
{
    const CallFrame frame("ImgSetupEqualize (ZBW8HistogramVector)");
    if (frame.clear() && isHistogram(hist) && require(lut, Z_ERROR_VECTOR_EMPTY) && hold(lut, 256)) {
        const Table table = equalizing(Bins(hist));
        std::copy(table.begin(), table.end(), lut->GetDataPtr());
    }
    frame.finish();
}

void ImgSetupEqualize(ZVector* hist, ZVector* lut)
{
    const CallFrame frame("ImgSetupEqualize (ZVector)");
    if (frame.clear() && isHistogram(hist, Z_ERROR_VECTOR_MISMATCH) && becomesTable(lut) && hasData(hist) &&
        hasData(lut)) {
        const Table table = equalizing(Bins(hist));
        std::copy_n(table.begin(), std::min(lut->GetAllocatedSize(), 256), static_cast<ZBW8*>(lut->GetDataPtr()));
    }
    frame.finish();
}

void ImgEqualize(ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    const CallFrame frame("ImgEqualize");
    if (frame.clear()) {
        ZBW8HistogramVector histogram(256);
        ZBW8Vector table(256);
        if (frame.clear())
            ImgHistogram(src, &histogram);
        if (frame.clear())
            ImgSetupEqualize(&histogram, &table);
        if (frame.clear())
            ImgLut(src, dst, &table);
    }
    frame.finish();
}
