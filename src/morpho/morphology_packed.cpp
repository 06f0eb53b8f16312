// A pass of 3 x 3 whose outside pixels have one value takes the extreme of the square around a pixel, those outside
// counted with their value: to reach a pixel outside by steps to neighbours, only the last one leaves the region. n
// passes therefore give the extreme of the square of 2 n + 1 pixels a side, first of its columns, then of the row that
// these make, and both take a time that does not depend on n:
//
// - Columns are cut into blocks. The extreme of a square's column is that of the end of one block, of what lies between
//   and of the beginning of what comes below. The ends of one block are kept in rows, what lies between belongs to each
//   of them, and the beginning grows as rows come. Blocks are as high as the squares, or low enough for the cache and
//   followed by others of which only the extremes are kept. In place rows are kept before they are overwritten, as
//   many as squares reach down; where these are too many columns are done first, in panels.
// - Rows get the outside value before and behind them. Extremes of 4 pixels from each pixel on make those of 16 or of a
//   vector, and those of wider squares are made of two to four of them, or by blocks again.
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

// Columns, row by row. As many parts as make the side of a square follow each other, and block i is as high as part i.
// The rows of part k come in while squares begin in block k - parts, and between the two lie whole parts.
struct ColumnBlocks {
    std::ptrdiff_t reach, width, parts, pitch;
    std::uint8_t* outside;  // the border rule of columns: a row of the outside value
    std::uint8_t* sofar;    // extremes of the rows of the part that have come
    std::uint8_t* first;    // of squares that begin above the region: outside, and the parts that have come
    std::uint8_t* ends;     // of the block, extremes of each row and those below it and of the parts between
    std::uint8_t* between;  // extremes of parts, in turn
    std::uint8_t* later;    // of those that have come since they were added up
    std::uint8_t* all;      // of all parts between
    std::ptrdiff_t toKeep;  // in place, how many rows blocks are made of
    std::ptrdiff_t turns;   // how many of them are kept at a time
    std::uint8_t* kept;     // those that have been written over, as they were, in turn

    std::ptrdiff_t side() const { return 2 * reach + 1; }
    std::ptrdiff_t cut(std::int64_t part) const { return static_cast<std::ptrdiff_t>(part * side() / parts); }
    std::uint8_t* partBetween(std::ptrdiff_t i) const { return between + i * pitch; }
    std::uint8_t* rowKept(std::ptrdiff_t y) const { return kept + y % turns * pitch; }
};

// Takes in the row below all others. With the ends of the block it makes a row of results, `rest` being the end.
template <class Extreme>
[[gnu::flatten]] void addRow(const std::uint8_t* in, const std::uint8_t* before, std::uint8_t* sofar,
                             const std::uint8_t* rest, std::uint8_t* out, std::ptrdiff_t width)
{
    eachVector(width, [=](auto at, std::ptrdiff_t x) {
        const Bytes extreme = Extreme::of(at.bytes(in), at.bytes(before));
        store(sofar + x, extreme);
        store(out + x, Extreme::of(extreme, load(rest + x)));
    });
}

// Takes in the part of which all rows have come. From the block of the same number on it is between the block and the
// rows that come; returns the extremes of all such parts, which are blocks of their own: the ends of as many as there
// are between, and what has come later.
template <class Extreme>
const std::uint8_t* endPart(const ColumnBlocks& columns, std::ptrdiff_t part)
{
    const std::ptrdiff_t count = columns.parts - 1, block = part + 1 - columns.parts, place = block % count;
    ofTwo<Extreme>(columns.sofar, columns.sofar, columns.partBetween((part - 1) % count), columns.width);
    if (block < 0)
        return nullptr;
    if (place == 0) {
        for (std::ptrdiff_t i = count - 2; i >= 0; --i)
            ofTwo<Extreme>(columns.partBetween(i), columns.partBetween(i + 1), columns.partBetween(i), columns.width);
        return columns.between;
    }
    ofTwo<Extreme>(columns.sofar, place == 1 ? columns.sofar : columns.later, columns.later, columns.width);
    ofTwo<Extreme>(columns.later, columns.partBetween(place), columns.all, columns.width);
    return columns.all;
}

// The ends of a block of rows row(0) to row(count - 1), with what is below it. Blocks lower than the squares are no
// longer in the cache: what lies two rows above is asked for.
template <class Extreme, class RowAt>
void endBlock(const ColumnBlocks& columns, std::ptrdiff_t count, RowAt row, const std::uint8_t* below)
{
    for (std::ptrdiff_t y = count - 1; y >= 0; --y) {
        const std::uint8_t *const in = row(y), *const next = row(y > 2 ? y - 2 : 0);
        std::uint8_t* const end = columns.ends + y * columns.pitch;
        if (columns.parts == 1)
            ofTwo<Extreme>(in, below, end, columns.width);
        else
            eachVector(columns.width, [=](auto at, std::ptrdiff_t x) {
                __builtin_prefetch(next + x);
                store(end + x, Extreme::of(at.bytes(in), at.bytes(below)));
            });
        below = end;
    }
}

// Puts the extremes of columns through the filter of rows, or into the rows of a panel. Where these are written over
// the source, its rows are kept for the blocks to come.
template <class Extreme, class Rows>
void filterColumns(const Source& src, const ColumnBlocks& columns, Rows& rows)
{
    const std::ptrdiff_t width = columns.width, end = src.height + columns.reach;
    std::uint8_t* const sofar = columns.sofar;
    const auto row = [&](std::ptrdiff_t y) { return y < src.height ? src.data + y * src.pitch : columns.outside; };
    std::ptrdiff_t newest = 0;
    for (std::ptrdiff_t part = 0; newest < end; ++part) {
        const std::ptrdiff_t begin = newest, block = part - columns.parts;
        const std::uint8_t* between = row(newest);
        if (part > 1 && columns.parts > 1)
            between = endPart<Extreme>(columns, part - 1);
        if (part > 0 && block < 0)
            ofTwo<Extreme>(columns.first, sofar, columns.first, width);
        const std::ptrdiff_t next = block < 0 ? 0 : columns.cut(block + 1);
        if (block >= 0) {
            const std::ptrdiff_t top = columns.cut(block);
            const auto original = [&](std::ptrdiff_t i) -> const std::uint8_t* {
                const std::ptrdiff_t y = top + i;
                return y < newest - columns.reach && y < columns.toKeep ? columns.rowKept(y) : row(y);
            };
            endBlock<Extreme>(columns, (next < src.height ? next : src.height) - top, original, between);
        }
        for (; newest < columns.cut(part + 1) - 1 && newest < end; ++newest) {
            const std::uint8_t *const in = row(newest), *const before = newest == begin ? in : sofar;
            const std::uint8_t* const rest =
                block < 0 ? columns.first : columns.ends + (newest - begin) * columns.pitch;
            const std::ptrdiff_t y = newest - columns.reach;
            if (y < 0) {
                ofTwo<Extreme>(in, before, sofar, width);
                continue;
            }
            if (y >= next && y < columns.toKeep)
                __builtin_memcpy(columns.rowKept(y), row(y), static_cast<std::size_t>(width));
            if (newest > src.height && newest != begin)
                ofTwo<Extreme>(before, rest, rows.row(), width);
            else
                addRow<Extreme>(in, before, sofar, rest, rows.row(), width);
            rows.add();
        }
    }
}

// The rows of a panel, from the top down.
class PanelRows {
public:
    PanelRows(std::uint8_t* top, std::ptrdiff_t pitch) : row_(top), pitch_(pitch) {}

    std::uint8_t* row() { return row_; }
    void add() { row_ += pitch_; }

private:
    std::uint8_t* row_;
    std::ptrdiff_t pitch_;
};

template <class Extreme>
void filterSquares(const Source& src, const Target& dst, const Squares& squares, Stores stores, std::uint8_t* memory)
{
    const Layout layout = layoutOf(src, dst, squares);
    std::uint8_t* const lines = aligned(memory);
    const auto pitch = static_cast<std::ptrdiff_t>(layout.blockPitch);
    std::uint8_t* next = lines + 3 * layout.line;
    const auto take = [&](std::int64_t count) {
        std::uint8_t* const taken = next;
        next += count * pitch;
        return taken;
    };
    const auto parts = static_cast<std::ptrdiff_t>(layout.parts);
    ColumnBlocks columns{reachWithin(dst.height, squares),
                         dst.width,
                         parts,
                         pitch,
                         take(1),
                         take(1),
                         take(1),
                         take(layout.height),
                         take(parts),
                         take(1),
                         take(1),
                         static_cast<std::ptrdiff_t>(layout.toKeep),
                         static_cast<std::ptrdiff_t>(layout.turns),
                         nullptr};
    columns.kept = parts > 1 ? next : columns.ends;
    const auto filterPanel = [&](std::ptrdiff_t x, std::ptrdiff_t width, auto& into) {
        columns.width = width;
        fillOutside(columns.outside, width, squares);
        fillOutside(columns.first, width, squares);
        filterColumns<Extreme>({src.data + x, src.pitch, width, src.height}, columns, into);
    };
    RowFilter<Extreme> rows(dst, squares, layout, lines, stores);
    const auto panel = static_cast<std::ptrdiff_t>(layout.panel);
    if (panel == dst.width)
        return filterPanel(0, panel, rows);
    std::ptrdiff_t width = 0;
    for (std::ptrdiff_t x = 0; x < dst.width; x += width) {
        const std::ptrdiff_t left = dst.width - x;
        width = left < panel + Bytes::lanes ? left : panel;  // a narrow rest comes with the last one
        PanelRows into(dst.data + x, dst.pitch);
        filterPanel(x, width, into);
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

// A few rows at a time are filtered, and subtracted while they are in the first-level cache: narrow ones more at a
// time, so that what has been stored has arrived there.
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
    std::uint8_t* const filtered = rowsBetweenIn(memory, dst.width) + rowsBetween * pitch;
    const std::ptrdiff_t most = rowsOfBand * pitch <= lineBytes ? rowsOfBand : 2;
    ofNineTwice<First>(src, border(squares.outside, squares.step), next, memory,
                       [&](const std::uint8_t* const* rows, std::ptrdiff_t y, std::ptrdiff_t count) {
                           for (std::ptrdiff_t i = 0; i < count; i += most) {
                               const std::ptrdiff_t left = count - i, few = left < most ? left : most;
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
