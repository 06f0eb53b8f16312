// ImgPixelCount, ImgArea, ImgAreaDoubleThreshold, ImgCount.
#include "analysis/pixel_count_workers.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

using namespace zkit;

namespace {

template <class Pixel>
unsigned int countPixels(const char* name, ZROI<Pixel>* src, int (*predicate)(Pixel&))
{
    const CallFrame frame(name);
    if (!(frame.clear() && placed(src) && require(predicate, Z_ERROR_ARGUMENT_2_OUT_OF_RANGE)))
        return frame.trace(0U);
    unsigned int count = 0;
    for (int y = 0; y < src->GetHeight(); ++y) {
        auto* row = static_cast<Pixel*>(src->GetPixelPtr(0, y));
        for (int x = 0; x < src->GetWidth(); ++x)
            count += predicate(row[x]) != 0;
    }
    return frame.finish(count);
}

}  // namespace

short ImgPixelCount(ZROI<ZBW8>* src, unsigned char low, unsigned char high, int& below, int& between, int& above)
{
    const CallFrame frame("ImgPixelCount");
    if (!(frame.clear() && placed(src)))
        return frame.trace();
    Source plane = source(src);
    joinRows(1, plane);
    const PixelCounts counts = workers<PixelCountWorkers>().count(plane, low, high);
    const auto all = static_cast<std::uint32_t>(plane.width * plane.height);
    below = static_cast<int>(counts.below);
    between = static_cast<int>(all - counts.below - counts.above);
    above = static_cast<int>(counts.above);
    return frame.finish();
}

short ImgArea(ZROI<ZBW8>* src, unsigned char threshold, int& area)
{
    const CallFrame frame("ImgArea");
    int below = 0, between = 0, above = 0;
    if (!frame.clear() || ImgPixelCount(src, 0, threshold, below, between, above) != Z_OK)
        return frame.trace();
    area = above;
    return frame.finish();
}

short ImgAreaDoubleThreshold(ZROI<ZBW8>* src, unsigned char low, unsigned char high, int& area)
{
    const CallFrame frame("ImgAreaDoubleThreshold");
    int below = 0, between = 0, above = 0;
    if (!frame.clear() || ImgPixelCount(src, low, high, below, between, above) != Z_OK)
        return frame.trace();
    area = between;
    return frame.finish();
}

unsigned int ImgCount(ZROI<ZBW8>* src, int (*predicate)(ZBW8&))
{
    return countPixels("ImgCount (BW8)", src, predicate);
}

unsigned int ImgCount(ZROI<ZC24>* src, int (*predicate)(ZC24&))
{
    return countPixels("ImgCount (C24)", src, predicate);
}
