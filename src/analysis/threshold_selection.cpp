// ImgHistogramThreshold, ImgIsodataThreshold, ImgMinResidueThreshold, ImgMaxEntropyThreshold.
#include "zkit/img/threshold_selection.h"

#include "analysis/bins.h"
#include "frame/call_frame.h"
#include "frame/checks.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>

using namespace zkit;

namespace {

constexpr unsigned int levels = 256;

// Some pixels of a histogram.
struct Class {
    std::uint32_t count = 0, sum = 0;  // how many, the sum of their levels
    double logs = 0;                   // the sum of h ln h over the counts h of the bins, where it is asked for

    Class& operator+=(const Class& other)
    {
        count += other.count;
        sum += other.sum;
        logs += other.logs;
        return *this;
    }

    Class& operator-=(const Class& other)
    {
        count -= other.count;
        sum -= other.sum;
        logs -= other.logs;
        return *this;
    }
};

// Two classes and the first level of the high one.
struct Split {
    unsigned int threshold = 0;
    Class low, high;
};

enum class Logs { none, summed };

// The bins of a histogram from min to max, each a class of its own, and all of them together.
struct Range {
    Range(const Bins& bins, unsigned int first, unsigned int last, Logs wanted) : min(first), max(last)
    {
        for (unsigned int level = max + 1; level-- > min;) {
            const std::uint32_t count = bins[level];
            const bool logged = wanted == Logs::summed && count > 0;
            bin[level] = {count, level * count, logged ? count * std::log(static_cast<double>(count)) : 0};
            all += bin[level];
        }
    }

    unsigned int min, max;
    std::array<Class, levels> bin;
    Class all;
};

// The split with the least criterion(threshold, low, high) below `limit`; none, with empty classes, when there is none.
template <class Criterion>
Split best(const Range& range, float limit, Criterion criterion)
{
    Split found;
    Class low, high = range.all;
    for (unsigned int t = range.min; t <= range.max; ++t) {
        if (low.count != 0 && high.count != 0) {
            const auto value = static_cast<float>(criterion(t, low, high));
            if (value < limit) {
                limit = value;
                found = {t, low, high};
            }
        }
        low += range.bin[t];
        high -= range.bin[t];
    }
    return found;
}

double mean(const Class& pixels) { return static_cast<double>(pixels.sum) / pixels.count; }

double residue(const Class& pixels) { return -(static_cast<double>(pixels.sum) * pixels.sum / pixels.count); }

double disorder(const Class& pixels)
{
    return pixels.logs / pixels.count - std::log(static_cast<double>(pixels.count));
}

double distanceToMiddle(unsigned int threshold, const Class& low, const Class& high)
{
    return std::abs(0.5 * low.sum / low.count + 0.5 * high.sum / high.count - threshold);
}

// A measure of a split that is the sum of the same measure of both classes.
template <double (*measure)(const Class&)>
double ofBoth(unsigned int, const Class& low, const Class& high)
{
    return measure(low) + measure(high);
}

// As few bins from the top as hold all pixels but the given part.
Split atPart(const Range& range, float part)
{
    const auto below = static_cast<std::uint32_t>(static_cast<double>(range.all.count) * static_cast<double>(part));
    Split split{range.max + 1, range.all, {}};
    while (split.high.count < range.all.count - below) {
        --split.threshold;
        split.high += range.bin[split.threshold];
        split.low -= range.bin[split.threshold];
    }
    return split;
}

// Parts the histogram `threshold` bins above min, and counts the levels of the high class from min on: both intended.
Split atThreshold(const Bins& bins, unsigned int threshold, unsigned int min, unsigned int max)
{
    Split split{threshold, {}, {}};
    const unsigned int first = std::min(min + threshold, levels);
    for (unsigned int level = min; level < first; ++level)
        split.low += {bins[level], level * bins[level]};
    for (unsigned int level = first; level <= max; ++level)
        split.high += {bins[level], (level - min) * bins[level]};
    return split;
}

Split select(const Bins& bins, unsigned int threshold, float relative, unsigned int min, unsigned int max)
{
    switch (static_cast<int>(threshold)) {
    case IMG_THRESHOLD_ISODATA: return best(Range(bins, min, max, Logs::none), FLT_MAX, distanceToMiddle);
    case IMG_THRESHOLD_MIN_RESIDUE: return best(Range(bins, min, max, Logs::none), FLT_MAX, ofBoth<residue>);
    case IMG_THRESHOLD_MAX_ENTROPY: return best(Range(bins, min, max, Logs::summed), FLT_MAX, ofBoth<disorder>);
    case IMG_THRESHOLD_RELATIVE: return atPart(Range(bins, min, max, Logs::none), relative);
    default: return atThreshold(bins, threshold, min, max);
    }
}

bool selectable(unsigned int threshold, float relative, unsigned int min, unsigned int max)
{
    switch (static_cast<int>(threshold)) {
    case IMG_THRESHOLD_ISODATA:
    case IMG_THRESHOLD_MIN_RESIDUE:
    case IMG_THRESHOLD_MAX_ENTROPY: return true;
    case IMG_THRESHOLD_RELATIVE: return require(relative >= 0 && relative <= 1, Z_ERROR_ARGUMENT_5_OUT_OF_RANGE);
    default: return require(threshold >= min && threshold <= max, Z_ERROR_ARGUMENT_2_OUT_OF_RANGE);
    }
}

// The mean of a class in a result: the number of pixels is signed here, which is intended.
float resultMean(const Class& pixels, unsigned int ofNone)
{
    if (pixels.count == 0)
        return static_cast<float>(ofNone);
    return static_cast<float>(static_cast<double>(pixels.sum) / static_cast<std::int32_t>(pixels.count));
}

// The better of all splits of the whole histogram, if it is better than none.
template <double (*measure)(const Class&)>
unsigned char bestOfAll(const char* name, ZBW8HistogramVector* hist, Logs logs, float& lowMean, float& highMean)
{
    const CallFrame frame(name);
    if (!isHistogram(hist))
        return frame.trace<unsigned char>(0);
    const Range range(Bins(hist), 0, levels - 1, logs);
    const Split split = best(range, static_cast<float>(measure(range.all)), ofBoth<measure>);
    if (split.low.count != 0) {
        lowMean = static_cast<float>(mean(split.low));
        highMean = static_cast<float>(mean(split.high));
    }
    return static_cast<unsigned char>(split.threshold);
}

bool isodataRange(unsigned int min, unsigned int max)
{
    return require(min < levels, Z_ERROR_ARGUMENT_2_OUT_OF_RANGE) &&
           require(max < levels, Z_ERROR_ARGUMENT_3_OUT_OF_RANGE) && require(min < max, Z_ERROR_INCONSISTENT_ARGUMENTS);
}

unsigned int middle(unsigned int min, unsigned int max) { return (max + 1 + min) / 2; }

// `levelOfMin` is what the pixels of bin min count for.
unsigned int isodata(const Bins& bins, unsigned int min, unsigned int max, unsigned int levelOfMin)
{
    // The class of the bins up to every level: none below min, all from max on.
    std::array<Class, levels> upTo{};
    for (unsigned int level = min; level < levels; ++level) {
        if (level > min)
            upTo[level] = upTo[level - 1];
        if (level <= max)
            upTo[level] += {bins[level], (level == min ? levelOfMin : level) * bins[level]};
    }
    const Class& all = upTo[max];
    unsigned int threshold = middle(min, max);
    for (int round = 0; round < 16; ++round) {
        const Class& low = upTo[std::min(threshold, levels - 1)];  // sums that wrap may lead beyond
        const unsigned int lowMean = low.count == 0 ? (min + threshold) / 2 : low.sum / low.count;
        const unsigned int highMean =
            all.count == low.count ? (threshold + max + 1) / 2 : (all.sum - low.sum) / (all.count - low.count);
        const unsigned int next = (lowMean + highMean) / 2;
        if (next == threshold)
            break;
        threshold = next;
    }
    return threshold;
}

}  // namespace

// It asks for a pending error after its first checks, which is intended.
void ImgHistogramThreshold(ZBW8HistogramVector* hist, unsigned int& threshold, float& lowMean, float& highMean,
                           float relative, unsigned int min, unsigned int max)
{
    const CallFrame frame("ImgHistogramThreshold");
    if (isHistogram(hist) && require(min < levels, Z_ERROR_ARGUMENT_5_OUT_OF_RANGE) &&
        require(max < levels, Z_ERROR_ARGUMENT_6_OUT_OF_RANGE) && require(min < max, Z_ERROR_INCONSISTENT_ARGUMENTS) &&
        frame.clear() && selectable(threshold, relative, min, max)) {
        const Split split = select(Bins(hist), threshold, relative, min, max);
        threshold = split.threshold;
        lowMean = resultMean(split.low, min);
        highMean = resultMean(split.high, max + 1);
    }
    frame.finish();
}

unsigned char ImgIsodataThreshold(ZBW8HistogramVector* hist, unsigned int min, unsigned int max)
{
    const CallFrame frame("ImgIsodataThreshold (ZBW8HistogramVector)");
    if (!(isHistogram(hist) && isodataRange(min, max)))
        return frame.trace<unsigned char>(0);
    return static_cast<unsigned char>(isodata(Bins(hist), min, max, min));
}

unsigned int ImgIsodataThreshold(ZVector* hist, unsigned int min, unsigned int max)
{
    const CallFrame frame("ImgIsodataThreshold (ZVector)");
    if (!(frame.clear() && isodataRange(min, max)))
        return frame.trace(0U);
    if (!(require(hist, Z_ERROR_VECTOR_EMPTY) && require(hist->IsSameVectType(2), Z_ERROR_VECTOR_KIND) &&
          hasData(hist)))
        return frame.trace(middle(min, max));
    return isodata(Bins(hist), min, max, 0);  // the levels of the first bin are left out: intended
}

unsigned char ImgMinResidueThreshold(ZBW8HistogramVector* hist, float& lowMean, float& highMean)
{
    return bestOfAll<residue>("ImgMinResidueThreshold", hist, Logs::none, lowMean, highMean);
}

unsigned char ImgMaxEntropyThreshold(ZBW8HistogramVector* hist, float& lowMean, float& highMean)
{
    return bestOfAll<disorder>("ImgMaxEntropyThreshold", hist, Logs::summed, lowMean, highMean);
}
