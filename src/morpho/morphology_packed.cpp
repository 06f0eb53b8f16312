// A pass of 3 x 3 whose outside pixels have one value takes the extreme of the square around a pixel, those outside
// counted with their value: to reach a pixel outside by steps to neighbours, only the last one leaves the region. n
// passes therefore give the extreme of the square of 2 n + 1 pixels a side, first of its columns, then of the row that
// these make, and both take a time that does not depend on n:
//
// - Columns are cut into blocks. The extreme of a square's column is that of the end of one block, of what lies
// between,
//   and of the beginning of what comes below. The ends of one block are kept in rows, what lies between belongs to each
//   of them, and the beginning grows as rows come. Blocks are as high as the squares, or lower and followed by segments
//   of which only the extremes are kept, so that the memory does not grow with n. In place, where rows cannot be looked
//   at again, they are high and narrow instead.
// - Rows get the outside value before and behind them. Extremes of 4 pixels from each pixel on make those of 16, and
//   those of wider squares are made of two to four of them, or by blocks again.
#include "morpho/extreme_rows.h"
#include "morpho/nine.h"

namespace zkit::ZKIT_SET {
namespace {

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
    std::ptrdiff_t reach, width, height;
    const std::uint8_t* outside;  // the border rule of columns: a row of the outside value
    std::uint8_t* sofar;          // extremes of the rows that have come since the block was made
    std::uint8_t* ends;           // of the block, extremes of each row and those below it
    std::uint8_t* segments;       // extremes of rows below the block, as many as it has, in turn; behind them of all
    std::ptrdiff_t pitch;

    std::ptrdiff_t side() const { return 2 * reach + 1; }
    std::ptrdiff_t segmentCount() const { return side() / height - 1; }
    const std::uint8_t* row(const Source& src, std::ptrdiff_t y) const
    {
        return y < src.height ? src.data + y * src.pitch : outside;
    }
};

// Takes in the row below all others, which begins a new count or not. With the ends of the block it makes a row of
// results, `rest` being the end. In place it is kept.
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

// out = the extremes of rows row(0) to row(count - 1), of stretches that stay in registers.
template <class Extreme, class RowAt>
[[gnu::flatten]] void ofRows(std::ptrdiff_t count, RowAt row, std::uint8_t* out, std::ptrdiff_t width)
{
    constexpr int vectors = 8;
    std::ptrdiff_t x = 0;
    for (; x + vectors * Bytes::lanes <= width; x += vectors * Bytes::lanes) {
        Bytes extremes[vectors];
        const std::uint8_t* in = row(0) + x;
        unrolled<vectors>([&](int k) { extremes[k] = load(in + k * Bytes::lanes); });
        for (std::ptrdiff_t i = 1; i < count; ++i) {
            in = row(i) + x;
            unrolled<vectors>([&](int k) { extremes[k] = Extreme::of(extremes[k], load(in + k * Bytes::lanes)); });
        }
        unrolled<vectors>([&](int k) { store(out + x + k * Bytes::lanes, extremes[k]); });
    }
    mapRow(out + x, width - x, Stores::cached, [&](auto at) {
        Bytes extreme = at.bytes(row(0) + x);
        for (std::ptrdiff_t i = 1; i < count; ++i)
            extreme = Extreme::of(extreme, at.bytes(row(i) + x));
        return extreme;
    });
}

// The extremes of the rows below the block that begins at row `top`, as far as its first square reaches: those that
// make no whole segment, and the segments. The last one is what has come since the block before, if there was one.
template <class Extreme>
const std::uint8_t* belowBlock(const ColumnBlocks& columns, const Source& src, std::ptrdiff_t top)
{
    const std::ptrdiff_t height = columns.height, count = columns.segmentCount(), few = columns.side() % height;
    const std::uint8_t* const last = columns.row(src, top + columns.side() - 1);
    if (columns.side() == height)
        return last;
    const auto segment = [&](std::ptrdiff_t i) { return columns.segments + i * columns.pitch; };
    std::uint8_t* const all = segment(count);
    if (top == 0)
        for (std::ptrdiff_t i = 0; i < count; ++i)
            ofRows<Extreme>(
                height, [&](std::ptrdiff_t y) { return columns.row(src, (i + 1) * height + few + y); }, segment(i),
                columns.width);
    else if (count > 0)
        ofTwo<Extreme>(columns.sofar, columns.sofar, segment((top / height - 1) % count), columns.width);
    const auto row = [&](std::ptrdiff_t i) -> const std::uint8_t* {
        return i < few ? columns.row(src, top + height + i) : i < few + count ? segment(i - few) : last;
    };
    ofRows<Extreme>(few + count + 1, row, all, columns.width);
    return all;
}

// The ends of the block of these rows, with what is below them.
template <class Extreme>
void endBlock(const ColumnBlocks& columns, const Source& rows, const std::uint8_t* below)
{
    for (std::ptrdiff_t y = rows.height - 1; y >= 0; --y) {
        std::uint8_t* const end = columns.ends + y * columns.pitch;
        ofTwo<Extreme>(rows.data + y * rows.pitch, below, end, columns.width);
        below = end;
    }
}

// Calls done(y) when the extremes of the columns around row y are where result(y) says. When the source is overwritten
// then, blocks are as high as the squares, and row y is not read again, nor any above it.
template <class Extreme, class Result, class Done>
void filterColumns(const Source& src, bool overwritten, const ColumnBlocks& columns, Result result, Done done)
{
    const std::ptrdiff_t reach = columns.reach;
    std::ptrdiff_t place = -2 * reach;  // in its block, of the highest row of the squares
    for (std::ptrdiff_t newest = 0; newest < src.height + reach; ++newest) {
        const std::ptrdiff_t top = newest - 2 * reach;
        const std::uint8_t* rest = place < 0    ? columns.outside
                                   : place == 0 ? columns.sofar
                                                : columns.ends + place * columns.pitch;
        std::uint8_t* const kept = columns.ends + (place > 0   ? place - 1
                                                   : place < 0 ? newest
                                                               : 2 * reach) *
                                                      columns.pitch;
        std::uint8_t* const out = result(newest - reach);
        addRow<Extreme>(columns, columns.row(src, newest), newest == 0 || place == 1, rest,
                        overwritten ? kept : nullptr, out);
        if (place == 0) {
            const std::ptrdiff_t left = src.height - top, rows = left < columns.height ? left : columns.height;
            const Source block = overwritten ? Source{columns.ends, columns.pitch, columns.width, rows}
                                             : Source{src.data + top * src.pitch, src.pitch, columns.width, rows};
            endBlock<Extreme>(columns, block, belowBlock<Extreme>(columns, src, top));
            if (columns.height < columns.side())
                ofTwo<Extreme>(columns.ends, columns.ends, out, columns.width);
        }
        if (newest >= reach)
            done(newest - reach);
        place = place + 1 == columns.height ? 0 : place + 1;
    }
}

// Squares of any size. In place those that are too high for it have their columns done first, in panels, a narrow rest
// together with the last one.
template <class Extreme>
void filterSquares(const Source& src, const Target& dst, const Squares& squares, Stores stores, std::uint8_t* memory)
{
    const Layout layout = layoutOf(src, dst, squares);
    const auto misaligned = static_cast<std::ptrdiff_t>(reinterpret_cast<std::uintptr_t>(memory) % alignment);
    std::uint8_t* const lines = memory + (alignment - misaligned) % alignment;
    std::uint8_t *const outside = lines + 3 * layout.line, *const sofar = outside + layout.row;
    const bool overwritten = src.data == dst.data;
    const bool inPanels = layout.panel < dst.width;
    RowFilter<Extreme> rows(dst, squares, layout, lines, inPanels ? Stores::cached : stores);
    fillOutside(outside, dst.width, squares);
    const auto pitch = static_cast<std::ptrdiff_t>(layout.blockPitch);
    const auto height = static_cast<std::ptrdiff_t>(layout.height);
    std::uint8_t* const ends = sofar + layout.row;
    ColumnBlocks columns{
        reachWithin(dst.height, squares), dst.width, height, outside, sofar, ends, ends + height * pitch, pitch};
    if (!inPanels) {
        filterColumns<Extreme>(
            src, overwritten, columns, [&](std::ptrdiff_t) { return rows.row(); }, [&](std::ptrdiff_t) { rows.add(); });
        return;
    }
    for (std::ptrdiff_t x = 0; x < dst.width; x += columns.width) {
        columns.width = static_cast<std::ptrdiff_t>(layout.panel);
        columns.outside = outside + x;
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

inline Border border(const std::uint8_t (&outside)[3], int step)
{
    return {step, false, {outside[0], outside[1], outside[2]}};
}

template <class Extreme>
void filter(const Source& src, const Target& dst, const Squares& squares, Stores stores, std::uint8_t* memory)
{
    if (squares.reach == 1)
        filterBands(src, dst, border(squares.outside, squares.step), ofNine<Extreme>, Above::unfiltered, memory);
    else
        filterSquares<Extreme>(src, dst, squares, stores, memory);
}

inline std::int64_t memory(const Source& src, const Target& dst, const Squares& squares)
{
    return squares.reach == 1 ? std::int64_t{rowsKept(src.data == dst.data)} * dst.width
                              : layoutOf(src, dst, squares).total;
}

inline Source asSource(const Target& plane) { return {plane.data, plane.pitch, plane.width, plane.height}; }

template <class First, class Second>
void squaresTwice(const Source& src, const Target& dst, const Squares& squares, std::uint8_t* memory)
{
    const std::uint8_t(&next)[3] = squares.outsideNext;
    filterSquares<First>(src, dst, squares, Stores::cached, memory);
    filterSquares<Second>(asSource(dst), dst, {squares.reach, squares.step, {next[0], next[1], next[2]}, {}},
                          Stores::cached, memory);
}

template <class First, class Second>
void filterTwice(const Source& src, const Target& dst, const Squares& squares, Stores, std::uint8_t* memory)
{
    if (squares.reach > 1) {
        squaresTwice<First, Second>(src, dst, squares, memory);
        return;
    }
    const Border next = border(squares.outsideNext, squares.step);
    ofNineTwice<First>(src, border(squares.outside, squares.step), next, memory,
                       [&](const std::uint8_t* const* rows, std::ptrdiff_t y, std::ptrdiff_t count) {
                           ofNine<Second>(rows, {dst.data + y * dst.pitch, dst.pitch, dst.width, count}, next);
                       });
}

// What is made of a pixel and of what both steps have made of it.
struct Removed {
    static Bytes of(Bytes pixels, Bytes filtered) { return subtractSaturated(pixels, filtered); }
};

struct Added {
    static Bytes of(Bytes pixels, Bytes filtered) { return subtractSaturated(filtered, pixels); }
};

// Two rows at a time are filtered, and subtracted while they are in the first-level cache.
template <class First, class Second, class Difference>
void topHat(const Source& src, const Target& dst, const Squares& squares, Stores stores, std::uint8_t* memory)
{
    const auto subtract = [&](std::ptrdiff_t y, const std::uint8_t* filtered, Stores stored) {
        mapRow(dst.data + y * dst.pitch, dst.width, stored, [filtered, row = src.data + y * src.pitch](auto at) {
            return Difference::of(at.bytes(row), at.bytes(filtered));
        });
    };
    if (squares.reach > 1) {
        squaresTwice<First, Second>(src, dst, squares, memory);
        for (std::ptrdiff_t y = 0; y < dst.height; ++y)
            subtract(y, dst.data + y * dst.pitch, Stores::cached);
        return;
    }
    const Border next = border(squares.outsideNext, squares.step);
    const std::ptrdiff_t pitch = pitchBetween(dst.width);
    std::uint8_t* const filtered = memory + memoryOfTwoSteps(dst.width) - 2 * pitch;
    ofNineTwice<First>(src, border(squares.outside, squares.step), next, memory,
                       [&](const std::uint8_t* const* rows, std::ptrdiff_t y, std::ptrdiff_t count) {
                           for (std::ptrdiff_t i = 0; i < count; i += 2) {
                               const std::ptrdiff_t few = count - i < 2 ? 1 : 2;
                               ofNine<Second>(rows + i, {filtered, pitch, dst.width, few}, next);
                               for (std::ptrdiff_t k = 0; k < few; ++k)
                                   subtract(y + i + k, filtered + k * pitch, stores);
                           }
                       });
}

inline std::int64_t memoryOfTwo(const Source& src, const Target& dst, const Squares& squares)
{
    if (squares.reach == 1)
        return memoryOfTwoSteps(dst.width);
    const std::int64_t first = memory(src, dst, squares), second = memory(asSource(dst), dst, squares);
    return first > second ? first : second;
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::MorphologyWorkers zkit::MorphologyWorkers::ZKIT_SET = {
    {ZKIT_SET::filter<ZKIT_SET::Least>, ZKIT_SET::memory},
    {ZKIT_SET::filter<ZKIT_SET::Greatest>, ZKIT_SET::memory},
    {ZKIT_SET::filterTwice<ZKIT_SET::Least, ZKIT_SET::Greatest>, ZKIT_SET::memoryOfTwo},
    {ZKIT_SET::filterTwice<ZKIT_SET::Greatest, ZKIT_SET::Least>, ZKIT_SET::memoryOfTwo},
    {ZKIT_SET::topHat<ZKIT_SET::Least, ZKIT_SET::Greatest, ZKIT_SET::Removed>, ZKIT_SET::memoryOfTwo},
    {ZKIT_SET::topHat<ZKIT_SET::Greatest, ZKIT_SET::Least, ZKIT_SET::Added>, ZKIT_SET::memoryOfTwo}};
