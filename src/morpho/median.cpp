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

// Filters bytes with a pixel around the region.
bool filterWithin(std::span<const std::uint8_t> pixel, const Source& src, const Target& dst, Above given)
{
    OutsideRow outside;
    const int step = static_cast<int>(pixel.size());
    const auto row = [&, median = workers<MedianWorkers>().constant](auto above, auto here, auto below, auto out) {
        median({above ? above : outside.get(), here, below ? below : outside.get()}, out, dst.width, step,
               pixel.data());
    };
    return outside.fill(dst.width, pixel) && neighbourRows(src, dst, row, given);
}

}  // namespace

short ImgMedian(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int border)
{
    const CallFrame frame(name);
    const std::uint8_t outside[] = {static_cast<std::uint8_t>(border)};
    if (!(frame.clear() && filterSizes(src, dst) && hasPixels(src) && hasPixels(dst) && placed(src) && placed(dst) &&
          filterWithin(outside, source(src), target(dst), Above::filtered)))
        return frame.trace();
    return frame.finish();
}

void ImgMedian(ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    const CallFrame frame(name);
    const auto row = [&, median = workers<MedianWorkers>().replicated](auto above, auto here, auto below, auto out) {
        median({above ? above : here, here, below ? below : here}, out, dst->GetWidth());
    };
    if (frame.clear() && placed(src) && placed(dst) && sameSize(dst, src))
        neighbourRows(source(src), target(dst), row);
    frame.finish();
}

// All components at once, with the errors of one component after the other.
void ImgMedian(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZC24 border)
{
    const CallFrame frame("ImgMedian (C24)");
    const std::uint8_t outside[3] = {border.c0, border.c1, border.c2};
    if (frame.clear() && placed(src) && placed(dst) &&
        !(filterSizes(src, dst) &&
          filterWithin(outside, bytes(source(src), 3), bytes(target(dst), 3), Above::unfiltered)))
        ZTraceError(name);
    frame.finish();
}
