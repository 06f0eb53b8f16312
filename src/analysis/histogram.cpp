// ImgHistogram into typed and untyped vectors, of 8-bit and 16-bit regions.
#include "analysis/bins.h"
#include "analysis/histogram_workers.h"
#include "frame/call_frame.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

#include <algorithm>
#include <array>

using namespace zkit;

namespace {

using Counts = std::array<std::uint32_t, 256>;

Counts countsOf(const ZROI<ZBW8>* src)
{
    Counts counts{};
    Source plane = source(src);
    joinRows(1, plane);
    workers<HistogramWorkers>().grey(plane, counts.data());
    return counts;
}

bool becomesHistogram(ZVector* vector)
{
    return require(vector, Z_ERROR_VECTOR_EMPTY) && (vector->IsSameVectType(2) || vector->SetType(2, 0, 0) == Z_OK) &&
           hasData(vector);
}

}  // namespace

void ImgHistogram(ZROI<ZBW8>* src, ZBW8HistogramVector* hist)
{
    const CallFrame frame("ImgHistogram");
    if (frame.clear() && placed(src) && require(hist, Z_ERROR_VECTOR_EMPTY) && hold(hist, 256)) {
        const Counts counts = countsOf(src);
        std::copy(counts.begin(), counts.end(), hist->GetDataPtr());
    }
    frame.finish();
}

void ImgHistogram(ZROI<ZBW16>* src, ZBW8HistogramVector* hist, unsigned int highBit, unsigned int bits, int saturate)
{
    const CallFrame frame("ImgHistogram (ZBW16)");
    if (frame.clear() && placed(src) && require(highBit <= 15, Z_ERROR_ARGUMENT_3_OUT_OF_RANGE) &&
        require(bits <= highBit + 1, Z_ERROR_ARGUMENT_4_OUT_OF_RANGE) && require(hist, Z_ERROR_VECTOR_EMPTY)) {
        const std::uint32_t bins = 1U << bits;
        hist->SetNumElements(bins);
        if (hist->GetNumElements() == bins) {
            Source plane = source(src);
            joinRows(2, plane);
            std::fill_n(hist->GetDataPtr(), bins, 0U);
            const auto shift = static_cast<int>(highBit + 1 - bits);
            workers<HistogramWorkers>().wide(plane, {shift, bins - 1, saturate != 0}, hist->GetDataPtr());
        }
    }
    frame.finish();
}

short ImgHistogram(ZROI<ZBW8>* src, ZVector* hist)
{
    const CallFrame frame("ImgHistogram (ZVector)");
    if (!(frame.clear() && placed(src) && becomesHistogram(hist)))
        return frame.trace();
    const Counts counts = countsOf(src);
    const Bins bins(hist);
    std::copy_n(counts.begin(), std::min(bins.size, 256), bins.counts);
    return frame.finish();
}
