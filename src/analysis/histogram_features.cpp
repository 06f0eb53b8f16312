// ImgAnalyseHistogram.
#include "analysis/bins.h"
#include "frame/call_frame.h"
#include "zkit/img/analysis.h"

#include <algorithm>
#include <cmath>

using namespace zkit;

namespace {

// The bins that a feature is asked of, both ends included. Several features scan bins 0 to `to - from` instead and give
// their positions plus `from`; all of that is intended.
struct Range {
    std::int64_t from, to;

    // How many bins such a scan takes. One bin that is missing stands for all that follow it.
    std::int64_t scanned(const Bins& bins) const
    {
        return std::min<std::int64_t>(to - from + 1, static_cast<std::int64_t>(bins.size) + 1);
    }
};

struct Extreme {
    std::int64_t value;
    std::uint32_t count;
};

Extreme mostFrequent(const Bins& bins, Range range)
{
    Extreme most{0, 0};
    for (std::int64_t k = 0; k < range.scanned(bins); ++k)
        if (bins[k] > most.count)
            most = {range.from + k, bins[k]};
    return most;
}

Extreme leastFrequent(const Bins& bins, Range range)
{
    Extreme least{0, UINT32_MAX};
    for (std::int64_t k = 0; k < range.scanned(bins); ++k)
        if (bins[k] < least.count)
            least = {range.from + k, bins[k]};
    return least;
}

std::int64_t smallestValue(const Bins& bins, Range range)
{
    if (range.from > range.to)
        return range.from;
    for (std::int64_t k = 0; k < range.scanned(bins); ++k)
        if (bins[k] != 0)
            return range.from + k;
    return range.to + 1;
}

// Looks at bins only where the range is a single one or turned round, unlike the smallest value: intended.
std::int64_t greatestValue(const Bins& bins, Range range)
{
    if (range.to > range.from)
        return range.to;
    std::int64_t value = std::min<std::int64_t>(range.to, bins.size);
    while (value >= 0 && bins[value] == 0)
        --value;
    return value;
}

// The number of pixels in the bins of the range, and the sum of their values.
struct Sums {
    std::uint32_t count = 0, values = 0;
};

Sums sumsOf(const Bins& bins, Range range)
{
    Sums sums;
    const std::int64_t end = std::min<std::int64_t>(range.to + 1, bins.size);
    for (std::int64_t bin = std::max<std::int64_t>(range.from, 0); bin < end; ++bin) {
        sums.count += bins[bin];
        sums.values += static_cast<std::uint32_t>(bin) * bins[bin];
    }
    return sums;
}

// As a divisor the number of pixels is signed.
double divisor(std::uint32_t count) { return static_cast<std::int32_t>(count); }

float averageValue(const Bins& bins, Range range)
{
    const Sums sums = sumsOf(bins, range);
    return sums.count == 0 ? 0.0F : static_cast<float>(sums.values / divisor(sums.count));
}

// Of bins 0 to `to - from`, bin k standing for the value `to - k`. The sum of these values is that of the cumulative
// counts of all bins but the last, formed in a float, and of the number of pixels times `from`, in 32 bits.
float standardDeviation(const Bins& bins, Range range)
{
    const std::int64_t scanned = std::min<std::int64_t>(range.to - range.from + 1, bins.size);
    std::uint32_t count = 0;
    float cumulative = 0;
    double squares = 0;
    for (std::int64_t k = 0; k < scanned; ++k) {
        if (k > 0)
            cumulative = static_cast<float>(static_cast<double>(cumulative) + count);
        count += bins[k];
        const auto value = static_cast<double>(range.to - k);
        squares += value * value * bins[k];
    }
    if (count == 0)
        return 0;
    const auto missing = static_cast<double>(range.to - range.from + 1 - scanned);
    if (missing > 0)
        cumulative = static_cast<float>(static_cast<double>(cumulative) + missing * count);
    const auto timesFrom = static_cast<std::int32_t>(count * static_cast<std::uint32_t>(range.from));
    const double values = static_cast<double>(cumulative) + timesFrom;
    const double mean = values / divisor(count);
    return static_cast<float>(std::sqrt(std::abs(squares / divisor(count) - mean * static_cast<float>(mean))));
}

// Stores a feature that is an integer, of 32 bits. Returns false, and stores nothing, for any other.
bool findFeature(const Bins& bins, Range range, int feature, int& result)
{
    const auto found = [&result](std::int64_t value) {
        result = static_cast<int>(static_cast<std::uint32_t>(value));
        return true;
    };
    switch (feature) {
    case IMG_HISTOGRAM_MOST_FREQUENT_VALUE: return found(mostFrequent(bins, range).value);
    case IMG_HISTOGRAM_MOST_FREQUENT_COUNT: return found(mostFrequent(bins, range).count);
    case IMG_HISTOGRAM_LEAST_FREQUENT_VALUE: return found(leastFrequent(bins, range).value);
    case IMG_HISTOGRAM_LEAST_FREQUENT_COUNT: return found(leastFrequent(bins, range).count);
    case IMG_HISTOGRAM_SMALLEST_VALUE: return found(smallestValue(bins, range));
    case IMG_HISTOGRAM_GREATEST_VALUE: return found(greatestValue(bins, range));
    case IMG_HISTOGRAM_PIXEL_COUNT: return found(sumsOf(bins, range).count);
    default: return false;
    }
}

// The same for a feature that is a fraction.
bool findFeature(const Bins& bins, Range range, int feature, float& result)
{
    switch (feature) {
    case IMG_HISTOGRAM_AVERAGE_VALUE: result = averageValue(bins, range); return true;
    case IMG_HISTOGRAM_STANDARD_DEVIATION: result = standardDeviation(bins, range); return true;
    default: return false;
    }
}

template <class Result>
short analyse(const ZVector* hist, Range range, int feature, Result& result)
{
    const CallFrame frame("ImgAnalyseHistogram");
    if (!(frame.clear() && isHistogram(hist, Z_ERROR_VECTOR_STRUCTURE) && hasData(hist)))
        return frame.trace();
    findFeature(Bins(hist), range, feature, result);
    return frame.finish();
}

}  // namespace

float ImgAnalyseHistogram(ZBW8HistogramVector* hist, IMG_HISTOGRAM_FEATURE feature, int from, int to)
{
    const CallFrame frame("ImgAnalyseHistogram");
    if (!(frame.clear() && isHistogram(hist)))
        return frame.trace(0.0F);
    const Bins bins(hist);
    float fraction = 0;
    if (findFeature(bins, {from, to}, feature, fraction))
        return frame.finish(fraction);
    int whole = 0;
    if (findFeature(bins, {from, to}, feature, whole))
        return frame.finish(static_cast<float>(whole));
    return frame.trace(0.0F);
}

short ImgAnalyseHistogram(ZVector* hist, int from, int to, int feature, int& result)
{
    return analyse(hist, {from, to}, feature, result);
}

short ImgAnalyseHistogram(ZVector* hist, int from, int to, int feature, float& result)
{
    return analyse(hist, {from, to}, feature, result);
}
