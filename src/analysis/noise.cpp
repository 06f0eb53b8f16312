// ImgSignalNoiseRatio and ImgRmsNoise, with 8-bit and 16-bit references.
#include "analysis/noise_workers.h"
#include "frame/accumulate.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

#include <bit>
#include <cmath>
#include <functional>

using namespace zkit;

namespace {

bool comparable(ZGenericROI* src, ZGenericROI* ref) { return sameSize(src, ref) && placed(src) && placed(ref); }

bool countOfImages(unsigned int count)
{
    return require(std::has_single_bit(count) && count <= 256, Z_ERROR_ARGUMENT_3_OUT_OF_RANGE);
}

// A single image cannot be a mean that includes the source.
bool possibleForOneImage(IMG_REFERENCE_NOISE reference)
{
    return require(reference != IMG_REFERENCE_INCLUDES_SOURCE, Z_ERROR_ARGUMENT_3_OUT_OF_RANGE);
}

// What the noise of the reference, a mean of `count` images, does to the squared differences.
double correction(IMG_REFERENCE_NOISE reference, unsigned int count)
{
    if (reference == IMG_REFERENCE_INDEPENDENT_NOISE)
        return 1.0 + 1.0 / count;
    if (reference == IMG_REFERENCE_INCLUDES_SOURCE)
        return 1.0 - 1.0 / count;
    return 1.0;
}

// Calls use(sums) for the sums of every row.
template <class Use>
void greyRows(ZROI<ZBW8>* src, ZROI<ZBW8>* ref, Use use)
{
    const Source a = source(src), b = source(ref);
    const auto row = workers<NoiseWorkers>().grey;
    for (std::ptrdiff_t y = 0; y < a.height; ++y)
        use(row(a.data + y * a.pitch, b.data + y * b.pitch, a.width));
}

template <class Use>
void wideRows(ZROI<ZBW8>* src, ZROI<ZBW16>* ref, unsigned int count, Use use)
{
    const Source a = source(src), b = source(ref);
    const auto row = workers<NoiseWorkers>().wide;
    const int shift = std::countr_zero(count);
    for (std::ptrdiff_t y = 0; y < a.height; ++y)
        use(row(a.data + y * a.pitch, b.data + y * b.pitch, a.width, shift));
}

struct Noise {
    double signal = 0.0, noise = 0.0;

    void operator()(RowNoise row)
    {
        signal += row.signal;
        noise += row.noise;
    }

    float decibels(double correction) const
    {
        return static_cast<float>(10.0 * std::log10(signal / noise) + 10.0 * std::log10(correction));
    }
};

float rms(double noise, double correction, const ZGenericROI* src)
{
    return static_cast<float>(std::sqrt(noise / correction / pixelsOf(src)));
}

}  // namespace

float ImgSignalNoiseRatio(ZROI<ZBW8>* src, ZROI<ZBW8>* ref, IMG_REFERENCE_NOISE reference)
{
    const CallFrame frame("ImgSignalNoiseRatio (BW8 source and BW8 reference)");
    if (!(frame.clear() && comparable(src, ref)))
        return frame.trace(0.0F);
    Noise sums;
    greyRows(src, ref, std::ref(sums));
    if (sums.noise == 0)
        return frame.finish(0.0F);
    if (!possibleForOneImage(reference))
        return frame.trace(0.0F);
    return frame.finish(sums.decibels(correction(reference, 1)));
}

float ImgSignalNoiseRatio(ZROI<ZBW8>* src, ZROI<ZBW16>* ref, unsigned int count, IMG_REFERENCE_NOISE reference)
{
    const CallFrame frame("ImgSignalNoiseRatio (BW8 source and BW16 reference)");
    if (!(frame.clear() && countOfImages(count) && comparable(src, ref)))
        return frame.trace(0.0F);
    Noise sums;
    wideRows(src, ref, count, std::ref(sums));
    return frame.finish(sums.noise == 0 ? 0.0F : sums.decibels(correction(reference, count)));
}

float ImgRmsNoise(ZROI<ZBW8>* src, ZROI<ZBW8>* ref, IMG_REFERENCE_NOISE reference)
{
    const CallFrame frame("ImgRmsNoise (BW8 source and BW8 reference)");
    if (!(frame.clear() && comparable(src, ref) && possibleForOneImage(reference)))
        return frame.trace(0.0F);
    float noise = 0;  // a float, unlike the other sums, which is intended
    greyRows(src, ref, [&noise](RowNoise row) { accumulate(noise, row.noise); });
    return frame.finish(rms(noise, correction(reference, 1), src));
}

float ImgRmsNoise(ZROI<ZBW8>* src, ZROI<ZBW16>* ref, unsigned int count, IMG_REFERENCE_NOISE reference)
{
    const CallFrame frame("ImgRmsNoise (BW8 source and BW16 reference)");
    if (!(frame.clear() && countOfImages(count) && comparable(src, ref)))
        return frame.trace(0.0F);
    Noise sums;
    wideRows(src, ref, count, std::ref(sums));
    return frame.finish(rms(sums.noise, correction(reference, count), src));
}
