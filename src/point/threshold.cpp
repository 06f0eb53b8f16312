// ImgThreshold, ImgDoubleThreshold and ImgAutoThreshold on grey and colour regions.
#include "zkit/img/threshold.h"

#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "point/threshold_workers.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

#include <algorithm>

using namespace zkit;

namespace {

// Makes a mode the threshold that it chooses for the region, 0 to 256. Does nothing further once there is an error.
void choose(ZROI<ZBW8>* src, unsigned int& threshold, float relative)
{
    ZBW8HistogramVector histogram(256);
    ImgHistogram(src, &histogram);
    float lowMean, highMean;
    if (ZGetError() == Z_OK)
        ImgHistogramThreshold(&histogram, threshold, lowMean, highMean, relative, 0, 255);
}

std::uint8_t byte(unsigned int level) { return static_cast<std::uint8_t>(std::min(level, 255U)); }

ColourRange rangeOf(ZC24 minimum, ZC24 maximum, unsigned char outside, unsigned char inside)
{
    return {{minimum.c0, minimum.c1, minimum.c2}, {maximum.c0, maximum.c1, maximum.c2}, outside, inside};
}

// A row of colours that are converted one by one.
void convertedRow(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, const ColourRange& range,
                  const ZColorLookup& lookup)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        ZC24 pixel{src[3 * i], src[3 * i + 1], src[3 * i + 2]};
        lookup.Transform(pixel, pixel);
        const std::uint8_t bytes[] = {pixel.c0, pixel.c1, pixel.c2};
        ThresholdWorkers::plain.colour(bytes, dst + i, 1, range, Stores::cached);
    }
}

}  // namespace

short ImgThreshold(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, unsigned int threshold, unsigned char low, unsigned char high,
                   float relative)
{
    const CallFrame frame("ImgThreshold");
    if (!(frame.clear() && pointRegions(dst, src)))
        return frame.trace();
    if (threshold > 255)
        choose(src, threshold, relative);
    if (!frame.clear())
        return frame.trace();
    if (threshold > 255)
        high = low;  // no pixel reaches 256
    const auto row = [=, worker = workers<ThresholdWorkers>().grey](auto in, auto out, auto count, Stores stores) {
        worker(in, out, count, byte(threshold), low, high, stores);
    };
    pointRows(dst, row, src);
    return frame.finish();
}

short ImgDoubleThreshold(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, unsigned int lowThreshold, unsigned int highThreshold,
                         unsigned char below, unsigned char between, unsigned char above)
{
    const CallFrame frame("ImgDoubleThreshold (BW8 to BW8)");
    if (!(frame.clear() && sameSize(src, dst) && hasPixels(dst) && hasPixels(src) && placed(src) && placed(dst)))
        return frame.trace();
    if (lowThreshold > 255)
        between = below;  // no pixel reaches it
    const DoubleThreshold levels{byte(lowThreshold), byte(highThreshold), below, between, above};
    const auto row = [&levels, worker = workers<ThresholdWorkers>().twice](
                         auto in, auto out, auto count, Stores stores) { worker(in, out, count, levels, stores); };
    pointRows(dst, row, src);
    return frame.finish();
}

void ImgThreshold(ZROI<ZC24>* src, ZROI<ZBW8>* dst, ZC24 minimum, ZC24 maximum, ZColorLookup* lookup,
                  unsigned char outside, unsigned char inside)
{
    const CallFrame frame("ImgThreshold (C24)");
    if (frame.clear() && hasPixels(src) && hasPixels(dst) && sameSize(src, dst) && placed(src) && placed(dst)) {
        const ColourRange range = rangeOf(minimum, maximum, outside, inside);
        const auto row = [&range, lookup, worker = workers<ThresholdWorkers>().colour](auto in, auto out, auto count,
                                                                                       Stores stores) {
            if (lookup)
                convertedRow(in, out, count, range, *lookup);
            else
                worker(in, out, count, range, stores);
        };
        pointRows(dst, row, src);
    }
    frame.finish();
}

unsigned char ImgAutoThreshold(ZROI<ZBW8>* src, IMG_THRESHOLD_MODES mode, float relative)
{
    auto threshold = static_cast<unsigned int>(mode);
    choose(src, threshold, relative);
    return ZGetError() == Z_OK ? static_cast<unsigned char>(threshold) : 0;
}
