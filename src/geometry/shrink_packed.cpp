#include "geometry/shrink_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

constexpr std::ptrdiff_t mostRows = 257;  // whose columns have sums of 16 bits

// Sums of Words::lanes columns.
inline Words columnSums(const Source& rows, std::ptrdiff_t x)
{
    Words sums = widen(rows.data + x);
    for (std::ptrdiff_t y = 1; y < rows.height; ++y)
        sums = sums + widen(rows.data + y * rows.pitch + x);
    return sums;
}

void sumColumns(const Source& rows, std::uint16_t* columns)
{
    if (rows.width < Words::lanes) {
        for (std::ptrdiff_t x = 0; x < rows.width; ++x) {
            columns[x] = 0;
            for (std::ptrdiff_t y = 0; y < rows.height; ++y)
                columns[x] = static_cast<std::uint16_t>(columns[x] + rows.data[y * rows.pitch + x]);
        }
        return;
    }
    for (std::ptrdiff_t x = 0; x + Words::lanes <= rows.width; x += Words::lanes)
        store(columns + x, columnSums(rows, x));
    store(columns + rows.width - Words::lanes, columnSums(rows, rows.width - Words::lanes));
}

// The sum of four columns at most, less than 2^16: the product adds up the words, after the last ones are shifted out.
inline std::uint32_t sumOfFew(const std::uint16_t* columns, std::int32_t width)
{
    std::uint64_t words = 0;
    __builtin_memcpy(&words, columns, sizeof words);
    return static_cast<std::uint32_t>((words << (64 - 16 * width)) * 0x0001000100010001 >> 48);
}

inline std::uint32_t sumOfMany(const std::uint16_t* columns, std::int32_t width)
{
    std::uint32_t sum = 0;
    for (std::int32_t x = 0; x < width; ++x)
        sum += columns[x];
    return sum;
}

// Adds the sums of the columns of every block to its total.
template <class Sum>
void addBlocks(const std::uint16_t* columns, const std::int32_t* edges, std::ptrdiff_t count, std::uint32_t* totals,
               Sum sum)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        totals[i] += sum(columns + edges[i], edges[i + 1] - edges[i]);
}

// Truncated means of blocks of a number of pixels. A product with the reciprocal rounded up is too large by less than
// 255 pixels^2 / 2^32 of the distance to the next whole number, which will do for small blocks.
class Mean {
public:
    explicit Mean(std::int64_t pixels)
        : pixels_(static_cast<std::uint64_t>(pixels)),
          factor_(pixels < 4096 ? (std::uint64_t{1} << 32) / pixels_ + 1 : 0)
    {
    }

    std::uint8_t operator()(std::uint32_t sum) const
    {
        return static_cast<std::uint8_t>(factor_ ? sum * factor_ >> 32 : sum / pixels_);
    }

private:
    std::uint64_t pixels_, factor_;
};

void row(const Source& rows, std::uint8_t* dst, const std::int32_t* edges, std::ptrdiff_t count,
         const ShrinkMemory& memory)
{
    const std::int64_t width = edges[1] - edges[0];  // of the narrow blocks, of which the first is one
    __builtin_memset(memory.totals, 0, static_cast<std::size_t>(count) * sizeof *memory.totals);
    for (std::ptrdiff_t top = 0; top < rows.height; top += mostRows) {
        const std::ptrdiff_t left = rows.height - top;
        sumColumns({rows.data + top * rows.pitch, rows.pitch, rows.width, left < mostRows ? left : mostRows},
                   memory.columns);
        if (width < 4 && rows.height <= 64)
            addBlocks(memory.columns, edges, count, memory.totals, sumOfFew);
        else
            addBlocks(memory.columns, edges, count, memory.totals, sumOfMany);
    }
    const Mean means[2] = {Mean(width * rows.height), Mean((width + 1) * rows.height)};
    for (std::ptrdiff_t i = 0; i < count; ++i)
        dst[i] = means[edges[i + 1] - edges[i] - width](memory.totals[i]);
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::ShrinkWorkers zkit::ShrinkWorkers::ZKIT_SET = {ZKIT_SET::row};
