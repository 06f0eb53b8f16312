#include "analysis/histogram_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

// Neighbouring pixels are counted in tables of their own, since equal ones would wait for each other's count. A table
// is longer than it need be, so that the counts of a bin do not lie a multiple of 4096 bytes apart.
template <int tables, int bins>
struct Tables {
    std::uint32_t counts[tables][bins + 16] = {};

    void addTo(std::uint32_t* sums, std::uint32_t count) const
    {
        for (std::uint32_t bin = 0; bin < count; ++bin)
            for (int i = 0; i < tables; ++i)
                sums[bin] += counts[i][bin];
    }
};

// Four pixels by a single load.
template <std::size_t bins>
[[gnu::always_inline]] inline void countFour(const std::uint8_t* row, std::uint32_t (*counts)[bins])
{
    std::uint32_t pixels;
    __builtin_memcpy(&pixels, row, sizeof pixels);
    ++counts[0][pixels & 255];
    ++counts[1][pixels >> 8 & 255];
    ++counts[2][pixels >> 16 & 255];
    ++counts[3][pixels >> 24];
}

void grey(Source src, std::uint32_t* counts)
{
    Tables<8, 256> tables;
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* row = src.data + y * src.pitch;
        std::ptrdiff_t x = 0;
        for (; x + 8 <= src.width; x += 8) {
            countFour(row + x, tables.counts);
            countFour(row + x + 4, tables.counts + 4);
        }
        for (; x < src.width; ++x)
            ++tables.counts[x % 8][row[x]];
    }
    tables.addTo(counts, 256);
}

// A pixel of 16 bits at any address.
inline std::uint32_t wideAt(const std::uint8_t* pixel) { return static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8); }

// Calls count(0, bin), count(1, bin)... for neighbouring pixels, at most four, with bins beyond the limit moved to it.
template <class Count>
[[gnu::always_inline]] inline void countWide(Source src, int shift, std::uint32_t limit, Count count)
{
    const Words most = broadcastWord(static_cast<int>(limit));
    for (std::ptrdiff_t y = 0; y < src.height; ++y) {
        const std::uint8_t* row = src.data + y * src.pitch;
        std::ptrdiff_t x = 0;
        for (; x + Words::lanes <= src.width; x += Words::lanes) {
            const Words bins = shiftRight(Words{load(row + 2 * x).r}, shift);
            std::uint16_t all[Words::lanes];
            store(all, bins - subtractSaturated(bins, most));
            for (int i = 0; i < Words::lanes; i += 4) {
                count(0, all[i]);
                count(1, all[i + 1]);
                count(2, all[i + 2]);
                count(3, all[i + 3]);
            }
        }
        for (; x < src.width; ++x) {
            const std::uint32_t bin = wideAt(row + 2 * x) >> shift;
            count(static_cast<int>(x % 4), bin < limit ? bin : limit);
        }
    }
}

void wide(Source src, WideBins bins, std::uint32_t* counts)
{
    constexpr std::uint32_t most = 1024;  // that many fit the first-level cache four times
    const std::uint32_t limit = bins.saturates || bins.last == 65535 ? bins.last : bins.last + 1;
    if (limit <= most) {  // with a bin for what counts nowhere
        Tables<4, most + 1> tables;
        countWide(src, bins.shift, limit, [&tables](int i, std::uint32_t bin) { ++tables.counts[i][bin]; });
        tables.addTo(counts, bins.last + 1);
    } else {
        countWide(src, bins.shift, limit, [counts, last = bins.last](int, std::uint32_t bin) {
            if (bin <= last)
                ++counts[bin];
        });
    }
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::HistogramWorkers zkit::HistogramWorkers::ZKIT_SET = {ZKIT_SET::grey, ZKIT_SET::wide};
