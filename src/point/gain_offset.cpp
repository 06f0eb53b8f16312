// ImgGainOffset of grey and of colour regions.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/numbers.h"
#include "frame/walk.h"
#include "point/gain_offset_workers.h"
#include "point/table.h"
#include "simd/choice.h"
#include "zkit/img/point.h"

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
        // Component i is byte 2 - i of a pixel.
        const Table tables[] = {tableOf(gain.c[2], offset.c[2]), tableOf(gain.c[1], offset.c[1]),
                                tableOf(gain.c[0], offset.c[0])};
        const auto row = [&tables, worker = workers<GainOffsetWorkers>().colour](auto in, auto out, auto count,
                                                                                 Stores stores) {
            worker(in, out, count, tables[0].data(), stores);
        };
        pointRows(dst, row, src);
    }
    frame.finish();
}
