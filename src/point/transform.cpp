// ImgTransform and ImgNormalize: tables made from a function.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/numbers.h"
#include "frame/walk.h"
#include "point/table.h"
#include "zkit/img/analysis.h"
#include "zkit/img/point.h"

#include <algorithm>

using namespace zkit;

namespace {

// What becomes of the 256 levels when mean m and standard deviation s become others. Without deviation the factor is
// not finite, and the comparisons decide.
Table normalizing(float m, float s, float mean, float stdDev)
{
    Table table;
    const double k = static_cast<double>(stdDev) / s;
    for (std::size_t level = 0; level < table.size(); ++level)
        table[level] = clipped(truncated(static_cast<float>(static_cast<double>(level) * k + mean - k * m)));
    return table;
}

}  // namespace

void ImgTransform(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, unsigned char (*function)(unsigned char), int useTable)
{
    const CallFrame frame("ImgTransform");
    if (frame.clear() && pointRegions(dst, src) && require(function, Z_ERROR_ARGUMENT_3_OUT_OF_RANGE)) {
        if (useTable) {
            Table table;
            for (std::size_t level = 0; level < table.size(); ++level)
                table[level] = function(static_cast<unsigned char>(level));
            applyTable(src, dst, table);
        } else {
            const auto row = [function](auto in, auto out, auto count, Stores) {
                std::transform(in, in + count, out, function);
            };
            pointRows(dst, row, src);
        }
    }
    frame.finish();
}

short ImgNormalize(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, float mean, float stdDev)
{
    const CallFrame frame("ImgNormalize");
    float s = 0, m = 0;
    if (!(frame.clear() && sameSize(src, dst) && ImgPixelStdDev(src, s, m) == Z_OK &&
          lutOfTable(src, dst, normalizing(m, s, mean, stdDev)) == Z_OK))
        return frame.trace();
    return ZOk();
}
