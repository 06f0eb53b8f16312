#include "analysis/projection_workers.h"
#include "simd/fold.h"

namespace zkit::ZKIT_SET {
namespace {

// Sums of a vector's columns. A word holds two neighbouring columns, the second one 256 times as heavy; the first is
// what is left without the second, modulo 2^16, which up to 257 bytes add up to.
struct ColumnSums {
    Words both, second;

    void add(Bytes pixels)
    {
        both = both + Words{pixels.r};
        second = second + oddBytes(pixels);
    }

    void addTo(std::uint32_t* sums, std::ptrdiff_t count) const
    {
        std::uint16_t columns[2][Words::lanes];
        store(columns[0], both - shiftLeft(second, 8));
        store(columns[1], second);
        for (std::ptrdiff_t i = 0; i < count; ++i)
            sums[i] += columns[i % 2][i / 2];
    }
};

// Stretches of columns whose sums the first-level cache holds, and rows that are added at once.
constexpr std::ptrdiff_t stretch = 4096, together = 8, rowsOfWords = 256;

// Adds rows to the sums of `count` columns.
template <int rows>
void addRows(const std::uint8_t* first, std::ptrdiff_t pitch, std::ptrdiff_t count, ColumnSums* sums)
{
    const std::ptrdiff_t whole = count / Bytes::lanes * Bytes::lanes;
    for (std::ptrdiff_t x = 0; x < whole; x += Bytes::lanes) {
        ColumnSums columns = sums[x / Bytes::lanes];
        for (int y = 0; y < rows; ++y)
            columns.add(load(first + y * pitch + x));
        sums[x / Bytes::lanes] = columns;
    }
    if (whole < count) {
        const LastVector last(count);
        for (int y = 0; y < rows; ++y)
            sums[whole / Bytes::lanes].add(last.bytes(first + y * pitch) & last.counting());
    }
}

void onRow(Source src, std::uint32_t* sums)
{
    ColumnSums words[stretch / Bytes::lanes];
    for (std::ptrdiff_t start = 0; start < src.width; start += stretch) {
        const std::ptrdiff_t count = src.width - start < stretch ? src.width - start : stretch;
        const std::ptrdiff_t vectors = (count + Bytes::lanes - 1) / Bytes::lanes;
        for (std::ptrdiff_t y = 0; y < src.height;) {
            const std::ptrdiff_t end = src.height - y < rowsOfWords ? src.height : y + rowsOfWords;
            for (std::ptrdiff_t i = 0; i < vectors; ++i)
                words[i] = {broadcastWord(0), broadcastWord(0)};
            for (; y + together <= end; y += together)
                addRows<together>(src.data + y * src.pitch + start, src.pitch, count, words);
            for (; y < end; ++y)
                addRows<1>(src.data + y * src.pitch + start, src.pitch, count, words);
            for (std::ptrdiff_t x = 0; x + Bytes::lanes <= count; x += Bytes::lanes)
                words[x / Bytes::lanes].addTo(sums + start + x, Bytes::lanes);
            if (count % Bytes::lanes > 0) {
                const LastVector last(count);
                words[vectors - 1].addTo(sums + start + last.start(), count - last.start());
            }
        }
    }
}

void onColumn(Source src, std::uint32_t* sums)
{
    const auto step = [](Longs partial, auto lanes) { return partial + sumsOfEight(lanes.orElse(0)); };
    const auto join = [](Longs a, Longs b) { return a + b; };
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        sums[y] += total(foldRow(src.data + y * src.pitch, src.width, zeroLongs(), step, join));
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::ProjectionWorkers zkit::ProjectionWorkers::ZKIT_SET = {ZKIT_SET::onRow, ZKIT_SET::onColumn};
