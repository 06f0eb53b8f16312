// ImgThreshold from grey pixels to bits and from bits to grey pixels.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/overlap.h"
#include "frame/planes.h"
#include "point/threshold_workers.h"
#include "simd/choice.h"
#include "zkit/img/threshold.h"

#include <algorithm>

using namespace zkit;

namespace {

// The bytes that the bits of a plane lie in, from bit `position` of the first one on.
template <class Plane>
Plane bytesOfBits(Plane plane, int position)
{
    plane.width = plane.width > 0 ? (position + plane.width + 7) / 8 : 0;
    return plane;
}

// Rows without gaps as one long row, where their bits fill whole bytes.
template <class Bits, class Grey>
void joinBitRows(Bits& bits, Grey& grey, int position)
{
    if (position == 0 && grey.width % 8 == 0)
        joinRows(1, bits, grey);
}

// The address of the source is not asked for until its placement is checked, which is intended.
bool bitRegions(ZGenericROI* src, ZGenericROI* dst)
{
    return hasPixels(dst) && sameSize(src, dst) && placed(src) && placed(dst);
}

}  // namespace

void ImgThreshold(ZROI<ZBW8>* src, ZROI<ZBW1>* dst, unsigned int threshold)
{
    const CallFrame frame("ImgThreshold (BW8 to BW1)");
    SeparateSource separate;
    if (frame.clear() && bitRegions(src, dst)) {
        const int position = dst->GetBitPosition(0, 0), least = static_cast<int>(std::min(threshold, 256U));
        Source grey = source(src);
        Target bits = bytesOfBits(target(dst), position);
        if (separate.forNeighbours(grey, bits)) {
            joinBitRows(bits, grey, position);
            const auto worker = workers<ThresholdWorkers>().greyToBits;
            for (std::ptrdiff_t y = 0; y < grey.height; ++y)
                worker(grey.data + y * grey.pitch, bits.data + y * bits.pitch, position, grey.width, least);
        }
    }
    frame.finish();
}

void ImgThreshold(ZROI<ZBW1>* src, ZROI<ZBW8>* dst, unsigned char zeroValue, unsigned char oneValue)
{
    const CallFrame frame("ImgThreshold (BW1 to BW8)");
    SeparateSource separate;
    if (frame.clear() && bitRegions(src, dst)) {
        const int position = src->GetBitPosition(0, 0);
        Source bits = bytesOfBits(source(src), position);
        Target grey = target(dst);
        if (separate.forNeighbours(bits, grey)) {
            const Stores stores = storesFor((bits.width + grey.width) * grey.height);
            joinBitRows(bits, grey, position);
            const auto worker = workers<ThresholdWorkers>().bitsToGrey;
            for (std::ptrdiff_t y = 0; y < grey.height; ++y)
                worker(bits.data + y * bits.pitch, position, grey.data + y * grey.pitch, grey.width, zeroValue,
                       oneValue, stores);
            if (stores == Stores::streamed)
                endStreaming();
        }
    }
    frame.finish();
}
