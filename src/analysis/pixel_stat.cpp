// ImgPixelMin, ImgPixelMax, ImgPixelAverage (grey), ImgPixelStat.
#include "analysis/pixel_stat_workers.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

using namespace zkit;

namespace {

Source joined(ZROI<ZBW8>* region)
{
    Source plane = source(region);
    joinRows(1, plane);
    return plane;
}

}  // namespace

short ImgPixelMin(ZROI<ZBW8>* src, unsigned char& min)
{
    const CallFrame frame("ImgPixelMin");
    if (!(frame.clear() && placed(src)))
        return frame.trace();
    min = workers<PixelStatWorkers>().minimum(joined(src));
    return frame.finish();
}

short ImgPixelMax(ZROI<ZBW8>* src, unsigned char& max)
{
    const CallFrame frame("ImgPixelMax");
    if (!(frame.clear() && placed(src)))
        return frame.trace();
    max = workers<PixelStatWorkers>().maximum(joined(src));
    return frame.finish();
}

short ImgPixelAverage(ZROI<ZBW8>* src, float& average)
{
    const CallFrame frame("ImgPixelAverage (BW8)");
    if (!(frame.clear() && placed(src)))
        return frame.trace();
    const double sum = workers<PixelStatWorkers>().sum(joined(src));
    average = static_cast<float>(sum / pixelsOf(src));
    return frame.finish();
}

short ImgPixelStat(ZROI<ZBW8>* src, unsigned char& min, unsigned char& max, float& average)
{
    const CallFrame frame("ImgPixelStat");
    if (!(frame.clear() && placed(src)))
        return frame.trace();
    const PixelStat stat = workers<PixelStatWorkers>().stat(source(src), src->GetPixel(0, 0));
    min = stat.min;
    max = stat.max;
    average = static_cast<float>(stat.rowMeans / src->GetHeight());
    return frame.finish();
}
