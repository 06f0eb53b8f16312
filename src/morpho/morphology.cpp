// ImgErode, ImgDilate, ImgOpen, ImgClose, ImgWhiteTopHat and ImgBlackTopHat, grey and colour.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/overlap.h"
#include "frame/planes.h"
#include "morpho/morphology_workers.h"
#include "simd/choice.h"
#include "zkit/img/morpho.h"

#include <memory>
#include <new>

using namespace zkit;

namespace {

// An operation: its member of the workers, and the outside values of its one or two steps.
struct Operation {
    MorphologyWorkers::Worker MorphologyWorkers::*worker;
    std::uint8_t outside[3], outsideNext[3];
};

using Worker = decltype(Operation::worker);

// Border values count modulo 256.
Operation withBorders(Worker worker, int first, int second)
{
    return {worker, {static_cast<std::uint8_t>(first)}, {static_cast<std::uint8_t>(second)}};
}

Operation withBorders(Worker worker, ZC24 first, ZC24 second)
{
    return {worker, {first.c0, first.c1, first.c2}, {second.c0, second.c1, second.c2}};
}

// Whether a worker may have source and destination at the same place.
enum class InPlace { allowed, none };

// Runs the worker; widths count bytes. Raises 1303 and returns false when there is no memory to keep regions that
// overlap apart. Without memory for the worker columns are left out, which is intended.
bool filter(Source src, const Target& dst, const Operation& operation, int n, int pixelSize, InPlace where)
{
    if (dst.width == 0 || dst.height == 0)
        return true;
    SeparateSource separate;
    if (!(where == InPlace::allowed && inPlace(src, dst)) && !separate.forNeighbours(src, dst))
        return false;
    const auto& [worker, first, second] = operation;
    const Squares squares{n, pixelSize, {first[0], first[1], first[2]}, {second[0], second[1], second[2]}};
    const auto& chosen = workers<MorphologyWorkers>().*worker;
    const std::int64_t bytes = chosen.memory(src, dst, squares);
    const std::unique_ptr<std::uint8_t[]> memory(
        bytes <= PTRDIFF_MAX ? new (std::nothrow) std::uint8_t[static_cast<std::size_t>(bytes)] : nullptr);
    const Stores stores = inPlace(src, dst) ? Stores::cached : storesFor(2 * dst.width * dst.height);
    const auto& usable = memory ? chosen : MorphologyWorkers::plain.*worker;
    usable.filter(src, dst, squares, stores, memory.get());
    if (stores == Stores::streamed)
        endStreaming();
    return true;
}

bool filter(ZGenericROI* src, ZGenericROI* dst, const Operation& operation, int n, InPlace where)
{
    const int pixelSize = src->GetPixelSize();
    return filter(bytes(source(src), pixelSize), bytes(target(dst), pixelSize), operation, n, pixelSize, where);
}

bool usable(ZGenericROI* src, ZGenericROI* dst)
{
    return filterSizes(src, dst) && hasPixels(src) && hasPixels(dst) && placed(src) && placed(dst);
}

// n passes of 3 x 3 in every step. No pass leaves the destination untouched, and asks nothing of the regions.
bool erodeDilate(ZGenericROI* src, ZGenericROI* dst, const Operation& operation, int n)
{
    const CallFrame frame("ImgErodeDilate");
    if (n <= 0 || (usable(src, dst) && filter(src, dst, operation, n, InPlace::allowed)))
        return true;
    frame.trace();
    return false;
}

short grey(const char* name, ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, Worker worker, int first, int second = 0)
{
    const CallFrame frame(name);
    if (!(frame.clear() && erodeDilate(src, dst, withBorders(worker, first, second), n)))
        return frame.trace();
    return frame.finish();
}

// All components at once, with the errors of one component after the other.
void colour(const char* name, const char* greyName, ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, Worker worker, ZC24 first,
            ZC24 second = {})
{
    const CallFrame frame(name);
    if (frame.clear() && placed(src) && placed(dst) && !erodeDilate(src, dst, withBorders(worker, first, second), n))
        ZTraceError(greyName);
    frame.finish();
}

// The images are told apart before their pixels are looked for, which is intended.
bool onImagesOfTheirOwn(ZGenericROI* src, ZGenericROI* dst)
{
    return require(src && dst, Z_ERROR_NO_PIXELS) &&
           require(src->GetImagePtr() != dst->GetImagePtr(), Z_ERROR_SAME_IMAGE) && hasPixels(src) && hasPixels(dst) &&
           placed(src) && placed(dst);
}

// The size check inside the opening or closing.
bool sizesInside(ZGenericROI* src, ZGenericROI* dst, const char* filterName)
{
    if (filterSizes(src, dst))
        return true;
    ZTraceError("ImgErodeDilate");
    ZTraceError(filterName);
    return false;
}

short greyTopHat(const char* name, const char* filterName, ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, Worker worker,
                 int first, int second)
{
    const CallFrame frame(name);
    if (!(frame.clear() && onImagesOfTheirOwn(src, dst)))
        return frame.trace();
    if (n > 0 && sizesInside(src, dst, filterName))
        filter(src, dst, withBorders(worker, first, second), n, InPlace::none);
    return frame.finish();
}

void colourTopHat(const char* name, const char* filterName, const char* greyName, ZROI<ZC24>* src, ZROI<ZC24>* dst,
                  int n, Worker worker, ZC24 first, ZC24 second)
{
    const CallFrame frame(name);
    if (frame.clear() && placed(src) && placed(dst) && n > 0) {
        if (!sizesInside(src, dst, filterName))
            ZTraceError(greyName);
        else
            filter(src, dst, withBorders(worker, first, second), n, InPlace::none);
    }
    frame.finish();
}

}  // namespace

short ImgErode(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int border)
{
    return grey("ImgErode", src, dst, n, &MorphologyWorkers::erode, border);
}

short ImgDilate(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int border)
{
    return grey("ImgDilate", src, dst, n, &MorphologyWorkers::dilate, border);
}

short ImgOpen(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderErode, int borderDilate)
{
    return grey("ImgOpen", src, dst, n, &MorphologyWorkers::open, borderErode, borderDilate);
}

short ImgClose(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderDilate, int borderErode)
{
    return grey("ImgClose", src, dst, n, &MorphologyWorkers::close, borderDilate, borderErode);
}

void ImgErode(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 border)
{
    colour("ImgErode (C24)", "ImgErode", src, dst, n, &MorphologyWorkers::erode, border);
}

void ImgDilate(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 border)
{
    colour("ImgDilate (C24)", "ImgDilate", src, dst, n, &MorphologyWorkers::dilate, border);
}

void ImgOpen(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderErode, ZC24 borderDilate)
{
    colour("ImgOpen (C24)", "ImgOpen", src, dst, n, &MorphologyWorkers::open, borderErode, borderDilate);
}

void ImgClose(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderDilate, ZC24 borderErode)
{
    colour("ImgClose (C24)", "ImgClose", src, dst, n, &MorphologyWorkers::close, borderDilate, borderErode);
}

short ImgWhiteTopHat(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderErode, int borderDilate)
{
    return greyTopHat("ImgWhiteTopHat", "ImgOpen", src, dst, n, &MorphologyWorkers::whiteTopHat, borderErode,
                      borderDilate);
}

short ImgBlackTopHat(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderDilate, int borderErode)
{
    return greyTopHat("ImgBlackTopHat", "ImgClose", src, dst, n, &MorphologyWorkers::blackTopHat, borderDilate,
                      borderErode);
}

void ImgWhiteTopHat(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderErode, ZC24 borderDilate)
{
    colourTopHat("ImgWhiteTopHat (C24)", "ImgOpen", "ImgWhiteTopHat", src, dst, n, &MorphologyWorkers::whiteTopHat,
                 borderErode, borderDilate);
}

void ImgBlackTopHat(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderDilate, ZC24 borderErode)
{
    colourTopHat("ImgBlackTopHat (C24)", "ImgClose", "ImgBlackTopHat", src, dst, n, &MorphologyWorkers::blackTopHat,
                 borderDilate, borderErode);
}
