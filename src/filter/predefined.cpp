// The predefined 3 x 3 filters: ImgConvolLowpass3, grey and colour.
#include "filter/predefined_workers.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "simd/choice.h"
#include "zkit/img/filter.h"

using namespace zkit;

namespace {

const PredefinedWorkers& workers()
{
    return choose(plain::predefined, sse2::predefined, avx2::predefined);
}

// A grey filter. It does not ask for a pending error, which is intended.
short filterGrey(const char* name, ZROI<ZBW8>* src, ZROI<ZBW8>* dst, FilterRow row)
{
    const CallFrame frame(name);
    if (!(filterSizes(src, dst) && hasPixels(src) && hasPixels(dst) && placed(src) && placed(dst) &&
          filterRows(source(src), target(dst), 1, row)))
        return frame.trace();
    return frame.finish();
}

// A filter on all components at once, with the errors of one component after the other: the sizes are checked inside
// the grey filter, after the source and before the destination.
void filterColour(const char* name, const char* greyName, ZROI<ZC24>* src, ZROI<ZC24>* dst, FilterRow row)
{
    const CallFrame frame(name), grey(greyName);
    if (!(frame.clear() && require(src && dst, Z_ERROR_NO_PIXELS) && placed(src))) {
        frame.trace();
    } else if (!filterSizes(src, dst)) {
        grey.trace();
        frame.trace();
    } else if (!(placed(dst) && filterRows(bytes(source(src), 3), bytes(target(dst), 3), 3, row))) {
        frame.trace();
    } else {
        frame.finish();
    }
}

}  // namespace

short ImgConvolLowpass3(ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    return filterGrey("ImgConvolLowpass3", src, dst, workers().lowpass3);
}

void ImgConvolLowpass3(ZROI<ZC24>* src, ZROI<ZC24>* dst)
{
    filterColour("ImgConvolLowpass3 (C24)", "ImgConvolLowpass3", src, dst, workers().lowpass3);
}
