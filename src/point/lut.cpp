// ImgLut with untyped and typed tables.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "point/lut_workers.h"
#include "point/table.h"
#include "simd/choice.h"
#include "zkit/img/point.h"

#include <cstring>

using namespace zkit;

namespace {

bool holdsTable(const ZVector* lut)
{
    return require(lut, Z_ERROR_VECTOR_EMPTY) &&
           require(lut->GetNbGroup() >= 1 && lut->GetGroupLength() >= 256 && lut->GetDataSize() >= 2 &&
                       lut->GetDataType() == 1,
                   Z_ERROR_VECTOR_STRUCTURE) &&
           require(lut->GetDataPtr(), Z_ERROR_VECTOR_EMPTY);
}

bool holdsTable(const ZBW8Vector* lut)
{
    return require(lut, Z_ERROR_VECTOR_EMPTY) && require(lut->GetNumElements() == 256, Z_ERROR_VECTOR_ELEMENT_COUNT);
}

template <class Vector>
short lutOfVector(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, const Vector* lut)
{
    const CallFrame frame("ImgLut");
    if (!(frame.clear() && sameSize(src, dst) && holdsTable(lut)))
        return frame.trace();
    Table table;  // a copy: the destination may lie in the vector
    std::memcpy(table.data(), lut->GetDataPtr(), table.size());
    lutOfTable(src, dst, table);
    return frame.finish();
}

}  // namespace

namespace zkit {

bool applyTable(const ZROI<ZBW8>* src, const ZROI<ZBW8>* dst, const Table& table)
{
    const auto row = [table = table.data(), lut = workers<LutWorkers>().row](
                         auto in, auto out, auto count, Stores stores) { lut(in, out, count, table, stores); };
    return pointRows(dst, row, src);
}

short lutOfTable(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, const Table& table)
{
    const CallFrame frame("ImgLut");
    if (!(sameSize(src, dst) && hasPixels(dst) && hasPixels(src) && placed(src) && placed(dst) &&
          applyTable(src, dst, table)))
        return frame.trace();
    return ZOk();
}

}  // namespace zkit

short ImgLut(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZVector* lut) { return lutOfVector(src, dst, lut); }

void ImgLut(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZBW8Vector* lut) { lutOfVector(src, dst, lut); }
