// The predefined 3 x 3 filters: ImgConvolLowpass3, grey and colour.
#include "filter/predefined_workers.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "simd/choice.h"
#include "zkit/img/filter.h"

using namespace zkit;

namespace {

// A grey filter. It does not ask for a pending error, which is intended.
short filterGrey(const char* name, ZROI<ZBW8>* src, ZROI<ZBW8>* dst, FilterRow row)
{
    const CallFrame frame(name);
    if (!(filterSizes(src, dst) && hasPixels(src) && hasPixels(dst) && placed(src) && placed(dst) &&
          filterRows(source(src), target(dst), 1, row)))
        return frame.trace();
    return frame.finish();
}

// The size check of the grey filter that a colour form is made of.
bool sizesInside(const char* greyName, ZROI<ZC24>* src, ZROI<ZC24>* dst)
{
    if (filterSizes(src, dst))
        return true;
    ZTraceError(greyName);
    return false;
}

// A filter on all components at once, with the errors of one component after the other.
void filterColour(const char* name, const char* greyName, ZROI<ZC24>* src, ZROI<ZC24>* dst, FilterRow row)
{
    const CallFrame frame(name);
    if (frame.clear() && require(src && dst, Z_ERROR_NO_PIXELS) && placed(src) && sizesInside(greyName, src, dst) &&
        placed(dst) && filterRows(bytes(source(src), 3), bytes(target(dst), 3), 3, row))
        frame.finish();
    else
        frame.trace();
}

}  // namespace

short ImgConvolLowpass3(ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    return filterGrey("ImgConvolLowpass3", src, dst, workers<PredefinedWorkers>().lowpass3);
}

void ImgConvolLowpass3(ZROI<ZC24>* src, ZROI<ZC24>* dst)
{
    filterColour("ImgConvolLowpass3 (C24)", "ImgConvolLowpass3", src, dst, workers<PredefinedWorkers>().lowpass3);
}
