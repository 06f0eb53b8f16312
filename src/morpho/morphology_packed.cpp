// A pass of 3 x 3 whose outside pixels have one value takes the extreme of the square around a pixel, those outside
// counted with their value: to reach a pixel outside by steps to neighbours, only the last one leaves the region. n
// passes therefore give the extreme of the square of 2 n + 1 pixels a side, first of its columns, then of the row that
// these make, and both take a time that does not depend on n:
//
// - Columns are cut into blocks as high as the square. The extreme of any square's column is that of the end of one
//   block and the beginning of the next: the ends are kept in rows for one block, the beginning grows as rows come.
// - Rows get the outside value before and behind them. Extremes of 4 pixels from each pixel on make those of 16, and
//   those of wider squares are made of two to four of them, or by blocks again.
#include "morpho/morphology_workers.h"
#include "simd/map.h"
#include "simd/neighbourhood.h"

namespace zkit::ZKIT_SET {
namespace {

struct Least {
    static Bytes of(Bytes a, Bytes b) { return min(a, b); }
};

struct Greatest {
    static Bytes of(Bytes a, Bytes b) { return max(a, b); }
};

// The reach beyond which nothing changes in rows or columns of so many pixels: every square has come to hold all of
// them and something outside.
inline std::ptrdiff_t reachWithin(std::ptrdiff_t pixels, const Squares& squares)
{
    return squares.reach < pixels ? squares.reach : pixels;
}

// Fills with outside pixels, doubling what is there.
inline void fillOutside(std::uint8_t* out, std::ptrdiff_t bytes, const Squares& squares)
{
    for (std::ptrdiff_t i = 0; i < squares.step && i < bytes; ++i)
        out[i] = squares.outside[i];
    for (std::ptrdiff_t filled = squares.step; filled < bytes; filled *= 2) {
        const std::ptrdiff_t left = bytes - filled;
        __builtin_memcpy(out + filled, out, static_cast<std::size_t>(filled < left ? filled : left));
    }
}

constexpr std::int64_t alignment = 64;

// Bytes beyond the end of a line of working memory that may be written and read in vain.
constexpr std::ptrdiff_t slack = 8 * Bytes::lanes;

// What the rows of a block may take, so that they stay in the second-level cache.
constexpr std::int64_t blockBytes = 1 << 18;

// What rows that are filtered together take at least, so that what one step has stored has arrived in the cache before
// the next one loads it at other places, for which it would have to wait.
constexpr std::int64_t lineBytes = 1 << 12;

inline std::int64_t aligned(std::int64_t bytes) { return (bytes + alignment - 1) / alignment * alignment; }

// The working memory.
struct Layout {
    std::int64_t margin, pitch, rows, line;  // of rows, several in a line
    std::int64_t side, panel, blockPitch;    // of blocks of columns
    std::int64_t row, total;
};

Layout layoutOf(const Target& dst, const Squares& squares)
{
    Layout layout{};
    const std::int64_t reach = reachWithin(dst.width / squares.step, squares) * std::int64_t{squares.step};
    layout.margin = aligned(reach);
    layout.pitch = aligned(dst.width + 2 * reach);
    layout.rows = layout.pitch < lineBytes ? (lineBytes + layout.pitch - 1) / layout.pitch : 1;
    layout.line = layout.margin + layout.rows * layout.pitch + slack;

    layout.side = 2 * std::int64_t{reachWithin(dst.height, squares)} + 1;
    layout.panel = dst.width;
    if (layout.panel * layout.side > blockBytes) {
        const std::int64_t cut = blockBytes / layout.side / alignment * alignment;
        layout.panel = cut < alignment ? alignment : cut;
        layout.panel = layout.panel < dst.width ? layout.panel : dst.width;
    }
    layout.blockPitch = aligned(layout.panel + slack);
    layout.row = aligned(dst.width + slack);
    layout.total = alignment + 3 * layout.line + 2 * layout.row + layout.side * layout.blockPitch;
    return layout;
}

std::int64_t memory(const Target& dst, const Squares& squares)
{
    return squares.reach == 1 ? 3 * std::int64_t{dst.width} : layoutOf(dst, squares).total;
}

// out[i] = the extreme of in[i], in[i + distance], ... `count` of them, the last one being in[i + last].
template <class Extreme, int count>
[[gnu::flatten]] void ofSeveral(const std::uint8_t* in, std::ptrdiff_t distance, std::ptrdiff_t last, std::uint8_t* out,
                                std::ptrdiff_t width, Stores stores)
{
    mapRow(out, width, stores, [=](auto at) {
        Bytes extreme = Extreme::of(at.bytes(in), at.bytes(in + last));
        for (int i = 1; i + 1 < count; ++i)
            extreme = Extreme::of(extreme, at.bytes(in + i * distance));
        return extreme;
    });
}

// Filters rows, several at once.
template <class Extreme>
class RowFilter {
public:
    RowFilter(const Target& dst, const Squares& squares, const Layout& layout, std::uint8_t* lines, Stores stores)
        : dst_(dst),
          squares_(squares),
          step_(squares.step),
          reach_(reachWithin(dst.width / squares.step, squares)),
          side_(2 * reach_ + 1),
          stores_(stores),
          pitch_(static_cast<std::ptrdiff_t>(layout.pitch)),
          rows_(static_cast<std::ptrdiff_t>(layout.rows)),
          whole_(lines + layout.margin - reach_ * step_),
          fours_(lines + layout.line),
          sixteens_(lines + 2 * layout.line)
    {
        for (std::ptrdiff_t i = 0; i < rows_; ++i)
            surround(i);
    }

    // Where the next row of column extremes is to be put.
    std::uint8_t* row() { return whole_ + count_ * pitch_ + reach_ * step_; }

    // Says that it is there. Writes all rows that are there as soon as they are enough.
    void add()
    {
        ++count_;
        ++rowsAdded_;
        if (count_ < rows_ && rowsAdded_ < dst_.height)
            return;
        for (std::ptrdiff_t i = 0; dst_.width < Bytes::lanes && i < count_; ++i)
            surround(i);  // whole vectors have been put there
        filter(dst_.data + (rowsAdded_ - count_) * dst_.pitch);
        count_ = 0;
    }

private:
    // The border rule of rows: the outside value before and behind them.
    void surround(std::ptrdiff_t i)
    {
        fillOutside(whole_ + i * pitch_, reach_ * step_, squares_);
        fillOutside(whole_ + i * pitch_ + reach_ * step_ + dst_.width, reach_ * step_, squares_);
    }

    void filter(std::uint8_t* out)
    {
        const std::ptrdiff_t bytes = count_ * pitch_;
        const auto each = [&](auto write) {
            for (std::ptrdiff_t i = 0; i < count_; ++i)
                write(i * pitch_, out + i * dst_.pitch);
        };
        if (side_ <= 4)
            return each([this](std::ptrdiff_t at, std::uint8_t* to) { cover(whole_ + at, 1, to); });
        ofSeveral<Extreme, 4>(whole_, step_, 3 * step_, fours_, bytes, Stores::cached);
        if (side_ <= 16)
            return each([this](std::ptrdiff_t at, std::uint8_t* to) { cover(fours_ + at, 4, to); });
        ofSeveral<Extreme, 4>(fours_, 4 * step_, 12 * step_, sixteens_, bytes, Stores::cached);
        if (side_ <= 64)
            return each([this](std::ptrdiff_t at, std::uint8_t* to) { cover(sixteens_ + at, 16, to); });
        each([this](std::ptrdiff_t at, std::uint8_t* to) { coverByBlocks(sixteens_ + at, fours_ + at, to); });
    }

    // The extremes of squares made of at most four of `size` pixels, which lie side by side but for the last one.
    void cover(const std::uint8_t* in, std::ptrdiff_t size, std::uint8_t* out)
    {
        const std::ptrdiff_t distance = size * step_, last = (side_ - size) * step_;
        if (side_ <= 2 * size)
            ofSeveral<Extreme, 2>(in, distance, last, out, dst_.width, stores_);
        else if (side_ <= 3 * size)
            ofSeveral<Extreme, 3>(in, distance, last, out, dst_.width, stores_);
        else
            ofSeveral<Extreme, 4>(in, distance, last, out, dst_.width, stores_);
    }

    // The extreme of as many pixels as a vector has, made of sixteen.
    Bytes ofVector(const std::uint8_t* sixteens) const
    {
        return Extreme::of(load(sixteens), load(sixteens + (Bytes::lanes - 16) * step_));
    }

    // The extremes of as many whole vectors of pixels as the square has, then those of the square. Pixels a vector
    // apart are a column of their own, cut into blocks.
    void coverByBlocks(const std::uint8_t* sixteens, std::uint8_t* vectors, std::uint8_t* out)
    {
        const std::ptrdiff_t width = dst_.width, stride = Bytes::lanes * step_, block = side_ / Bytes::lanes * stride;
        for (std::ptrdiff_t start = 0; start < width; start += block)
            for (std::ptrdiff_t x = start; x < start + stride; x += Bytes::lanes) {
                Bytes extreme = ofVector(sixteens + x + block - stride);
                store(vectors + x + block - stride, extreme);
                for (std::ptrdiff_t i = block - 2 * stride; i >= 0; i -= stride) {
                    extreme = Extreme::of(extreme, ofVector(sixteens + x + i));
                    store(vectors + x + i, extreme);
                }
                extreme = load(vectors + x + block - stride);
                for (std::ptrdiff_t i = stride; i < block && x + i < width; i += stride) {
                    const Bytes next = ofVector(sixteens + x + i + block - stride);
                    extreme = i == stride ? next : Extreme::of(extreme, next);
                    store(vectors + x + i, Extreme::of(extreme, load(vectors + x + i)));
                }
            }
        const std::ptrdiff_t last = (side_ - 16) * step_, before = last - (Bytes::lanes - 16) * step_;
        mapRow(out, width, stores_, [=](auto at) {
            return Extreme::of(at.bytes(vectors), Extreme::of(at.bytes(sixteens + before), at.bytes(sixteens + last)));
        });
    }

    Target dst_;
    Squares squares_;
    std::ptrdiff_t step_, reach_, side_;
    Stores stores_;
    std::ptrdiff_t pitch_, rows_, count_ = 0, rowsAdded_ = 0;
    std::uint8_t *whole_, *fours_, *sixteens_;
};

// step(at, x) for every vector `at` of a row, x being its first lane's column. The last one ends with the row and does
// some bytes twice.
template <class Step>
[[gnu::flatten]] void eachVector(std::ptrdiff_t width, Step step)
{
    std::ptrdiff_t x = 0;
    for (; x + Bytes::lanes <= width; x += Bytes::lanes)
        step(WholeVector{x}, x);
    if (x < width) {
        const LastVector last(width);
        step(last, last.start());
    }
}

// Columns, row by row: all of them, or a panel.
struct ColumnBlocks {
    std::ptrdiff_t reach, width;
    const std::uint8_t* outside;  // the border rule of columns: a row of the outside value
    std::uint8_t* sofar;          // extremes of the block up to the newest row
    std::uint8_t* ends;           // of the block before, extremes of each row and those below it
    std::ptrdiff_t pitch;
};

// Takes in the row below all others, the first of its block or not. With the end of the block before it makes a row of
// results, `rest` being the extremes of that. In place it is kept.
template <class Extreme>
[[gnu::flatten]] void addRow(const ColumnBlocks& columns, const std::uint8_t* in, bool first, const std::uint8_t* rest,
                             std::uint8_t* kept, std::uint8_t* out)
{
    const auto add = [=, sofar = columns.sofar, before = first ? in : columns.sofar](auto at, std::ptrdiff_t x) {
        const Bytes row = at.bytes(in), extreme = Extreme::of(row, at.bytes(before));
        store(sofar + x, extreme);
        store(out + x, Extreme::of(extreme, load(rest + x)));
        return row;
    };
    if (kept)
        eachVector(columns.width, [=](auto at, std::ptrdiff_t x) { store(kept + x, add(at, x)); });
    else
        eachVector(columns.width, [=](auto at, std::ptrdiff_t x) { add(at, x); });
}

// The ends of a block of these rows, the first of them highest, with what is below them.
template <class Extreme>
[[gnu::flatten]] void endBlock(const ColumnBlocks& columns, const Source& rows, const std::uint8_t* below)
{
    for (std::ptrdiff_t y = rows.height - 1; y >= 0; --y) {
        std::uint8_t* const end = columns.ends + y * columns.pitch;
        const std::uint8_t* const row = rows.data + y * rows.pitch;
        mapRow(end, columns.width, Stores::cached,
               [=](auto at) { return Extreme::of(at.bytes(row), at.bytes(below)); });
        below = end;
    }
}

// Calls done(y) when the extremes of the columns around row y are where result(y) says. When the source is overwritten
// then, row y is not read again, nor any above it.
template <class Extreme, class Result, class Done>
void filterColumns(const Source& src, bool overwritten, const ColumnBlocks& columns, Result result, Done done)
{
    const std::ptrdiff_t reach = columns.reach, side = 2 * reach + 1;
    for (std::ptrdiff_t newest = 0, place = 0; newest < src.height + reach; ++newest) {
        const bool inside = newest < src.height, complete = place + 1 == side;
        std::uint8_t* const kept = columns.ends + place * columns.pitch;
        const std::uint8_t* rest = complete ? columns.sofar : newest < side ? columns.outside : kept + columns.pitch;
        addRow<Extreme>(columns, inside ? src.data + newest * src.pitch : columns.outside, place == 0, rest,
                        overwritten ? kept : nullptr, result(newest - reach));
        if (complete) {
            const std::ptrdiff_t first = newest + 1 - side, rows = inside ? side : src.height - first;
            const Source block = overwritten ? Source{columns.ends, columns.pitch, columns.width, rows}
                                             : Source{src.data + first * src.pitch, src.pitch, columns.width, rows};
            endBlock<Extreme>(columns, block, inside ? block.data + (rows - 1) * block.pitch : columns.outside);
        }
        if (newest >= reach)
            done(newest - reach);
        place = complete ? 0 : place + 1;
    }
}

// Squares of any size. Those that are too high for it have their columns done first, in panels, a narrow rest together
// with the last one.
template <class Extreme>
void filterSquares(const Source& src, const Target& dst, const Squares& squares, Stores stores, std::uint8_t* memory)
{
    const Layout layout = layoutOf(dst, squares);
    const auto misaligned = static_cast<std::ptrdiff_t>(reinterpret_cast<std::uintptr_t>(memory) % alignment);
    std::uint8_t* const lines = memory + (alignment - misaligned) % alignment;
    std::uint8_t *const outside = lines + 3 * layout.line, *const sofar = outside + layout.row;
    const bool overwritten = src.data == dst.data;
    const bool inPanels = layout.panel < dst.width;
    RowFilter<Extreme> rows(dst, squares, layout, lines, inPanels ? Stores::cached : stores);
    fillOutside(outside, dst.width, squares);
    ColumnBlocks columns{reachWithin(dst.height, squares),
                         dst.width,
                         outside,
                         sofar,
                         sofar + layout.row,
                         static_cast<std::ptrdiff_t>(layout.blockPitch)};
    if (!inPanels) {
        filterColumns<Extreme>(
            src, overwritten, columns, [&](std::ptrdiff_t) { return rows.row(); }, [&](std::ptrdiff_t) { rows.add(); });
        return;
    }
    for (std::ptrdiff_t x = 0; x < dst.width; x += columns.width) {
        columns.width = static_cast<std::ptrdiff_t>(layout.panel);
        if (dst.width - x < columns.width + Bytes::lanes)
            columns.width = dst.width - x;
        filterColumns<Extreme>(
            {src.data + x, src.pitch, columns.width, src.height}, overwritten, columns,
            [&](std::ptrdiff_t y) { return y < 0 ? rows.row() : dst.data + y * dst.pitch + x; }, [](std::ptrdiff_t) {});
    }
    for (std::ptrdiff_t y = 0; y < dst.height; ++y) {
        __builtin_memcpy(rows.row(), dst.data + y * dst.pitch, static_cast<std::size_t>(dst.width));
        rows.add();
    }
}

// 3 x 3 pixels.
template <class Extreme>
struct Nine {
    Bytes column;

    Nine(Bytes above, Bytes here, Bytes below) : column(Extreme::of(Extreme::of(above, here), below)) {}

    template <int step>
    static Bytes filtered(const Nine& previous, const Nine& here, const Nine& next)
    {
        return Extreme::of(Extreme::of(before<step>(previous.column, here.column), here.column),
                           after<step>(here.column, next.column));
    }
};

// A single pass. In place it keeps the last two rows as they were.
template <class Extreme>
void filterNine(const Source& src, const Target& dst, const Squares& squares, std::uint8_t* memory)
{
    std::uint8_t *const outside = memory, *const kept = memory + dst.width;
    fillOutside(outside, dst.width, squares);
    const Constant border(squares.outside, squares.step);
    const std::uint8_t* above = outside;
    for (std::ptrdiff_t y = 0; y < dst.height; ++y) {
        const std::uint8_t* here = src.data + y * src.pitch;
        const std::uint8_t* const below = y + 1 < dst.height ? here + src.pitch : outside;
        if (src.data == dst.data)
            here = static_cast<const std::uint8_t*>(
                __builtin_memcpy(kept + y % 2 * dst.width, here, static_cast<std::size_t>(dst.width)));
        filterRow<Nine<Extreme>>(above, here, below, dst.data + y * dst.pitch, dst.width, squares.step, border);
        above = here;
    }
}

template <class Extreme>
void filter(const Source& src, const Target& dst, const Squares& squares, Stores stores, std::uint8_t* memory)
{
    if (squares.reach == 1)
        filterNine<Extreme>(src, dst, squares, memory);
    else
        filterSquares<Extreme>(src, dst, squares, stores, memory);
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::MorphologyWorkers zkit::MorphologyWorkers::ZKIT_SET = {
    ZKIT_SET::filter<ZKIT_SET::Least>, ZKIT_SET::filter<ZKIT_SET::Greatest>, ZKIT_SET::memory};
