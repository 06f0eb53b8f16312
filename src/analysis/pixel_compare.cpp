// ImgPixelCompare, grey and colour.
#include "analysis/pixel_compare_workers.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

using namespace zkit;

namespace {

bool comparable(ZGenericROI* first, ZGenericROI* second)
{
    return sameSize(second, first) && placed(first) && placed(second);
}

}  // namespace

unsigned int ImgPixelCompare(ZROI<ZBW8>* first, ZROI<ZBW8>* second)
{
    const CallFrame frame("ImgPixelCompare (BW8)");
    if (!(frame.clear() && comparable(first, second)))
        return frame.trace(0U);
    Source a = source(first), b = source(second);
    joinRows(1, a, b);
    return frame.finish(workers<PixelCompareWorkers>().grey(a, b));
}

unsigned int ImgPixelCompare(ZROI<ZC24>* first, ZROI<ZC24>* second)
{
    const CallFrame frame("ImgPixelCompare (C24)");
    if (!(frame.clear() && comparable(first, second)))
        return frame.trace(0U);
    Source a = source(first), b = source(second);
    joinRows(3, a, b);
    return frame.finish(workers<PixelCompareWorkers>().colour(a, b));
}
