// ImgMedian: grey with a constant border and with replicated edges, and colour.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "morpho/median_workers.h"
#include "simd/choice.h"
#include "zkit/img/morpho.h"

using namespace zkit;

namespace {

constexpr const char* name = "ImgMedian";

FilterBand median() { return workers<MedianWorkers>().median; }

}  // namespace

short ImgMedian(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int border)
{
    const CallFrame frame(name);
    const Border outside{1, false, {static_cast<std::uint8_t>(border)}};
    if (!(frame.clear() && filterSizes(src, dst) && hasPixels(src) && hasPixels(dst) && placed(src) && placed(dst) &&
          filterRows(source(src), target(dst), outside, median(), Above::filtered)))
        return frame.trace();
    return frame.finish();
}

void ImgMedian(ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    const CallFrame frame(name);
    if (frame.clear() && placed(src) && placed(dst) && sameSize(dst, src))
        filterRows(source(src), target(dst), {1, true, {}}, median());
    frame.finish();
}

// All components at once, with the errors of one component after the other.
void ImgMedian(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZC24 border)
{
    const CallFrame frame("ImgMedian (C24)");
    const Border outside{3, false, {border.c0, border.c1, border.c2}};
    if (frame.clear() && placed(src) && placed(dst) &&
        !(filterSizes(src, dst) && filterRows(bytes(source(src), 3), bytes(target(dst), 3), outside, median())))
        ZTraceError(name);
    frame.finish();
}
