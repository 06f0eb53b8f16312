// ImgGainOffset of grey and of colour regions.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/numbers.h"
#include "frame/walk.h"
#include "point/gain_offset_workers.h"
#include "point/table.h"
#include "simd/choice.h"
#include "zkit/img/point.h"

#include <algorithm>
#include <cmath>

using namespace zkit;

namespace {

// The product counts as unsigned, so that a negative gain leaves only level 0 dark, which is intended.
Table tableOf(std::int32_t gain, std::int32_t offset)
{
    Table table;
    for (std::uint32_t level = 0; level < table.size(); ++level) {
        const std::uint32_t product = level * static_cast<std::uint32_t>(gain);
        table[level] = clipped(static_cast<std::int32_t>((product >> 5) + static_cast<std::uint32_t>(offset)));
    }
    return table;
}

Table tableOf(float gain, float offset)
{
    Table table;
    for (std::uint32_t level = 0; level < table.size(); ++level)
        table[level] = clipped(truncated(level * static_cast<double>(gain) + offset));
    return table;
}

bool isWithin(std::int32_t value, std::int32_t least, std::int32_t most) { return value >= least && value <= most; }

// Finds the integers that give component c without a table: a float of 24 bits times a byte has 32 bits, and a whole
// offset may be added to the product truncated, since negative sums are clipped. Returns whether there are any.
bool findIntegers(float gain, float offset, int c, ColourGainOffset& how)
{
    constexpr float mostGain = 1 << 20, mostOffset = 32767;
    if (!(gain >= 0 && std::isfinite(gain) && std::abs(offset) <= mostOffset && offset == std::trunc(offset)))
        return false;
    // Larger gains give 0 and 255 like the largest one here, smaller ones than 1 / 256 like none.
    int exponent = 0;
    const float fraction = std::frexp(std::min(gain, mostGain), &exponent);
    const bool tiny = gain < 1.0F / 256;
    how.factor[c] = tiny ? 0 : static_cast<std::uint32_t>(std::ldexp(fraction, 24));
    how.shift[c] = tiny ? 1 : static_cast<std::uint32_t>(24 - exponent);
    how.offset[c] = static_cast<std::int32_t>(offset);
    return true;
}

}  // namespace

void ImgGainOffset(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, float gain, float offset)
{
    const std::int32_t wholeGain = truncated(gain * 32.0), wholeOffset = truncated(offset);
    const CallFrame frame("ImgGainOffset");
    if (frame.clear() && pointRegions(dst, src)) {
        const Table table = tableOf(wholeGain, wholeOffset);
        const bool narrow = isWithin(wholeGain, 0, 128) && isWithin(wholeOffset, -32768, 32767);
        const GainOffset how{wholeGain, wholeOffset, table.data(), narrow};
        const auto row = [how, worker = workers<GainOffsetWorkers>().grey](
                             auto in, auto out, auto count, Stores stores) { worker(in, out, count, how, stores); };
        pointRows(narrow ? Joining::allowed : Joining::none, dst, row, src);
    }
    frame.finish();
}

void ImgGainOffset(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZColor gain, ZColor offset)
{
    const CallFrame frame("ImgGainOffset");
    if (frame.clear() && pointRegions(dst, src)) {
        Table tables[3];
        ColourGainOffset how{tables[0].data(), true, {}, {}, {}};
        for (int c = 0; c < 3; ++c) {
            const float by = gain.c[2 - c], plus = offset.c[2 - c];  // component i is byte 2 - i of a pixel
            tables[c] = tableOf(by, plus);
            how.whole = findIntegers(by, plus, c, how) && how.whole;
        }
        const auto row = [&how, worker = workers<GainOffsetWorkers>().colour](
                             auto in, auto out, auto count, Stores stores) { worker(in, out, count, how, stores); };
        pointRows(dst, row, src);
    }
    frame.finish();
}
