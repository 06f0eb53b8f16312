// ImgErode, ImgDilate, ImgOpen and ImgClose, grey and colour.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/overlap.h"
#include "frame/planes.h"
#include "morpho/morphology_workers.h"
#include "simd/choice.h"
#include "zkit/img/morpho.h"

#include <initializer_list>
#include <memory>
#include <new>

using namespace zkit;

namespace {

// One step of an operation: the member of the workers that does it, and the outside value of every byte of a pixel.
struct Step {
    MorphologyWorkers::Filter MorphologyWorkers::*filter;
    std::uint8_t outside[3];
};

// Border values count modulo 256.
Step erosion(int border) { return {&MorphologyWorkers::erode, {static_cast<std::uint8_t>(border)}}; }
Step dilation(int border) { return {&MorphologyWorkers::dilate, {static_cast<std::uint8_t>(border)}}; }
Step erosion(ZC24 border) { return {&MorphologyWorkers::erode, {border.c0, border.c1, border.c2}}; }
Step dilation(ZC24 border) { return {&MorphologyWorkers::dilate, {border.c0, border.c1, border.c2}}; }

// Runs the workers, the destination being read no more when it is the last step; widths count bytes. Raises 1303 and
// returns false when there is no memory to keep regions that overlap apart. Without memory for the workers columns are
// left out, which is intended.
bool filter(Source src, const Target& dst, const Step& step, int n, int pixelSize, bool last)
{
    if (dst.width == 0 || dst.height == 0)
        return true;
    SeparateSource separate;
    if (!inPlace(src, dst) && !separate.forNeighbours(src, dst))
        return false;
    const Squares squares{n, pixelSize, {step.outside[0], step.outside[1], step.outside[2]}};
    const auto& chosen = workers<MorphologyWorkers>();
    const std::int64_t bytes = chosen.memory(src, dst, squares);
    const std::unique_ptr<std::uint8_t[]> memory(
        bytes <= PTRDIFF_MAX ? new (std::nothrow) std::uint8_t[static_cast<std::size_t>(bytes)] : nullptr);
    const Stores stores = last && !inPlace(src, dst) ? storesFor(2 * dst.width * dst.height) : Stores::cached;
    const auto& usable = memory ? chosen : MorphologyWorkers::plain;
    (usable.*step.filter)(src, dst, squares, stores, memory.get());
    if (stores == Stores::streamed)
        endStreaming();
    return true;
}

bool usable(ZGenericROI* src, ZGenericROI* dst)
{
    return filterSizes(src, dst) && hasPixels(src) && hasPixels(dst) && placed(src) && placed(dst);
}

// n passes of 3 x 3. No pass leaves the destination untouched, and asks nothing of the regions.
bool erodeDilate(ZGenericROI* src, ZGenericROI* dst, const Step& step, int n, bool last)
{
    const CallFrame frame("ImgErodeDilate");
    if (n <= 0)
        return true;
    const auto rows = [](const ZGenericROI* region, auto plane) { return bytes(plane, region->GetPixelSize()); };
    if (usable(src, dst) && filter(rows(src, source(src)), rows(dst, target(dst)), step, n, src->GetPixelSize(), last))
        return true;
    frame.trace();
    return false;
}

using Steps = std::initializer_list<Step>;

// The first step from the source to the destination, the others on that.
bool inTurn(ZGenericROI* src, ZGenericROI* dst, int n, Steps steps)
{
    for (const Step& step : steps) {
        if (!erodeDilate(src, dst, step, n, &step + 1 == steps.end()))
            return false;
        src = dst;
    }
    return true;
}

short grey(const char* name, ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, Steps steps)
{
    const CallFrame frame(name);
    if (!(frame.clear() && inTurn(src, dst, n, steps)))
        return frame.trace();
    return frame.finish();
}

// All components at once, with the errors of one component after the other.
void colour(const char* name, const char* greyName, ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, Steps steps)
{
    const CallFrame frame(name);
    if (frame.clear() && placed(src) && placed(dst) && !inTurn(src, dst, n, steps))
        ZTraceError(greyName);
    frame.finish();
}

}  // namespace

short ImgErode(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int border)
{
    return grey("ImgErode", src, dst, n, {erosion(border)});
}

short ImgDilate(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int border)
{
    return grey("ImgDilate", src, dst, n, {dilation(border)});
}

short ImgOpen(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderErode, int borderDilate)
{
    return grey("ImgOpen", src, dst, n, {erosion(borderErode), dilation(borderDilate)});
}

short ImgClose(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderDilate, int borderErode)
{
    return grey("ImgClose", src, dst, n, {dilation(borderDilate), erosion(borderErode)});
}

void ImgErode(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 border)
{
    colour("ImgErode (C24)", "ImgErode", src, dst, n, {erosion(border)});
}

void ImgDilate(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 border)
{
    colour("ImgDilate (C24)", "ImgDilate", src, dst, n, {dilation(border)});
}

void ImgOpen(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderErode, ZC24 borderDilate)
{
    colour("ImgOpen (C24)", "ImgOpen", src, dst, n, {erosion(borderErode), dilation(borderDilate)});
}

void ImgClose(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderDilate, ZC24 borderErode)
{
    colour("ImgClose (C24)", "ImgClose", src, dst, n, {dilation(borderDilate), erosion(borderErode)});
}
