// ImgWhiteTopHat and ImgBlackTopHat, grey and colour.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/separate_region.h"
#include "zkit/img/arithmetic.h"
#include "zkit/img/morpho.h"

using namespace zkit;

namespace {

// The first region is tested before its pixels, which is intended.
bool onImagesOfTheirOwn(ZGenericROI* src, ZGenericROI* dst)
{
    return require(src && dst, Z_ERROR_NO_PIXELS) &&
           require(src->GetImagePtr() != dst->GetImagePtr(), Z_ERROR_SAME_IMAGE) && hasPixels(src) && hasPixels(dst) &&
           placed(src) && placed(dst);
}

// work(source) makes dst of the source, which is kept apart from it.
template <class Work>
short grey(const char* name, ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, Work work)
{
    const CallFrame frame(name);
    SeparateRegion<ZBW8> from;
    if (!(frame.clear() && onImagesOfTheirOwn(src, dst)))
        return frame.trace();
    if (n > 0 && from.forNeighbours(src, dst))
        work(from.get());
    return frame.finish();
}

// The size check inside the grey form.
bool sizesInside(ZROI<ZC24>* src, ZROI<ZC24>* dst, const char* filterName, const char* greyName)
{
    if (filterSizes(src, dst))
        return true;
    for (const char* name : {"ImgErodeDilate", filterName, greyName})
        ZTraceError(name);
    return false;
}

template <class Work>
void colour(const char* name, const char* filterName, const char* greyName, ZROI<ZC24>* src, ZROI<ZC24>* dst, int n,
            Work work)
{
    const CallFrame frame(name);
    SeparateRegion<ZC24> from;
    if (frame.clear() && placed(src) && placed(dst) && n > 0 && sizesInside(src, dst, filterName, greyName) &&
        from.forNeighbours(src, dst))
        work(from.get());
    frame.finish();
}

}  // namespace

short ImgWhiteTopHat(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderErode, int borderDilate)
{
    return grey("ImgWhiteTopHat", src, dst, n, [=](ZROI<ZBW8>* from) {
        if (ImgOpen(from, dst, n, borderErode, borderDilate) == Z_OK)
            ImgOper123(ARITH_LOGIC_SUBTRACT, from, dst, dst);
    });
}

short ImgBlackTopHat(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderDilate, int borderErode)
{
    return grey("ImgBlackTopHat", src, dst, n, [=](ZROI<ZBW8>* from) {
        if (ImgClose(from, dst, n, borderDilate, borderErode) == Z_OK)
            ImgOper123(ARITH_LOGIC_SUBTRACT, dst, from, dst);
    });
}

void ImgWhiteTopHat(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderErode, ZC24 borderDilate)
{
    colour("ImgWhiteTopHat (C24)", "ImgOpen", "ImgWhiteTopHat", src, dst, n, [=](ZROI<ZC24>* from) {
        ImgOpen(from, dst, n, borderErode, borderDilate);
        ImgOper(ARITH_LOGIC_SUBTRACT, from, dst, dst);
    });
}

void ImgBlackTopHat(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderDilate, ZC24 borderErode)
{
    colour("ImgBlackTopHat (C24)", "ImgClose", "ImgBlackTopHat", src, dst, n, [=](ZROI<ZC24>* from) {
        ImgClose(from, dst, n, borderDilate, borderErode);
        ImgOper(ARITH_LOGIC_SUBTRACT, dst, from, dst);
    });
}
