// What packed morphology is made of: the layout of its working memory, and extremes along rows.
#pragma once

#include "morpho/morphology_workers.h"
#include "simd/bands.h"
#include "simd/map.h"

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

// Fills with outside pixels.
inline void fillOutside(std::uint8_t* out, std::ptrdiff_t bytes, const Squares& squares)
{
    fillPixels(out, bytes, squares.outside, squares.step);
}

// Bytes beyond the end of a line of working memory that may be written and read in vain.
inline constexpr std::ptrdiff_t slack = 8 * Bytes::lanes;

// What the rows of a block may take, so that they stay in the second-level cache.
inline constexpr std::int64_t blockBytes = 1 << 18;

// What the rows may take that are kept in place. Where squares hold more the columns are filtered before the rows, in
// panels, which begin with whole lines of the cache and whole pixels.
inline constexpr std::int64_t keptBytes = 1 << 20, panelUnit = 3 * alignment;

// The least height of a block that is lower than the squares.
inline constexpr std::int64_t lowest = 16;

// What rows that are filtered together take at least, so that what one step has stored has arrived in the cache before
// the next one loads it at other places, for which it would have to wait.
inline constexpr std::int64_t lineBytes = 1 << 12;

// The working memory.
struct Layout {
    std::int64_t margin, pitch, rows, line;  // of rows, several in a line
    std::int64_t panel;                      // of columns, width of a panel
    std::int64_t parts, height;              // blocks in a square, rows in a block
    std::int64_t toKeep, turns;              // rows to keep, and how many of them are kept at a time
    std::int64_t blockPitch, total;
};

// The width of panels, which is that of the rows where there are none.
inline std::int64_t panelOf(const Source& src, const Target& dst, std::int64_t rows)
{
    if (src.data != dst.data || rows * dst.width <= keptBytes)
        return dst.width;
    const std::int64_t units = keptBytes / rows / panelUnit, panel = (units > 1 ? units : 1) * panelUnit;
    return panel < dst.width ? panel : dst.width;
}

inline Layout layoutOf(const Source& src, const Target& dst, const Squares& squares)
{
    Layout layout{};
    const std::int64_t reach = std::int64_t{squares.step} * reachWithin(dst.width / squares.step, squares);
    layout.margin = aligned(reach);
    layout.pitch = aligned(dst.width + 2 * reach);
    layout.rows = layout.pitch < lineBytes ? (lineBytes + layout.pitch - 1) / layout.pitch : 1;
    layout.line = layout.margin + layout.rows * layout.pitch + slack;

    const std::int64_t columnReach = reachWithin(dst.height, squares), side = 2 * columnReach + 1;
    layout.panel = panelOf(src, dst, columnReach);
    const std::int64_t low = blockBytes / layout.panel, most = low < lowest ? lowest : low;
    layout.parts = (side + most - 1) / most;
    layout.height = (side + layout.parts - 1) / layout.parts;
    if (src.data == dst.data) {
        const std::int64_t ofBlocks = dst.height - columnReach + layout.height;
        layout.toKeep = ofBlocks < dst.height ? ofBlocks : dst.height;
    }
    // One block of all parts keeps rows in place of ends that are no longer needed.
    layout.turns = layout.parts > 1 ? columnReach : side;
    layout.blockPitch = aligned(layout.panel + Bytes::lanes);
    // Beside the blocks: the outside row, three rows of extremes so far, those of all parts but one, and of all of
    // them.
    const std::int64_t rows =
        layout.height + layout.parts + 5 + (layout.parts > 1 && layout.toKeep > 0 ? layout.turns : 0);
    layout.total = alignment + 3 * layout.line + rows * layout.blockPitch;
    return layout;
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

// out = the extremes of two rows.
template <class Extreme>
[[gnu::flatten]] void ofTwo(const std::uint8_t* a, const std::uint8_t* b, std::uint8_t* out, std::ptrdiff_t width,
                            Stores stores = Stores::cached)
{
    mapRow(out, width, stores, [=](auto at) { return Extreme::of(at.bytes(a), at.bytes(b)); });
}

// Makes of the extremes of `have` pixels those of `want` pixels, of one vector of a row after the other: a vector is
// given back when `delay` more have been put in.
template <class Extreme, int step, int have, int want>
class Longer {
    static constexpr int more = have < want - have ? have : want - have;
    using Next = Longer<Extreme, step, have + more, want>;

public:
    static constexpr int delay = 1 + Next::delay;

    Bytes operator()(Bytes here)
    {
        const Bytes longer = Extreme::of(previous_, after<more * step>(previous_, here));
        previous_ = here;
        return next_(longer);
    }

private:
    Bytes previous_{};
    Next next_;
};

template <class Extreme, int step, int want>
class Longer<Extreme, step, want, want> {
public:
    static constexpr int delay = 0;

    Bytes operator()(Bytes here) const { return here; }
};

// out[i] = the extreme of as many pixels from in[i] on as a vector has.
template <class Extreme, int step>
[[gnu::flatten]] void ofVectors(const std::uint8_t* in, std::uint8_t* out, std::ptrdiff_t width)
{
    Longer<Extreme, step, 4, Bytes::lanes / step> longer;
    constexpr std::ptrdiff_t ahead = longer.delay * Bytes::lanes;
    const auto put = [&](const std::uint8_t* p) {
        return longer(
            Extreme::of(Extreme::of(load(p), load(p + step)), Extreme::of(load(p + 2 * step), load(p + 3 * step))));
    };
    for (std::ptrdiff_t x = 0; x < ahead; x += Bytes::lanes)
        put(in + x);
    for (std::ptrdiff_t x = 0; x < width; x += Bytes::lanes)
        store(out + x, put(in + x + ahead));
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
          size_(Bytes::lanes / squares.step),
          stores_(stores),
          pitch_(static_cast<std::ptrdiff_t>(layout.pitch)),
          rows_(static_cast<std::ptrdiff_t>(layout.rows)),
          whole_(lines + layout.margin - reach_ * step_),
          fours_(lines + layout.line),
          sixteens_(lines + 2 * layout.line)
    {
        for (std::ptrdiff_t i = 0; i < rows_; ++i) {
            surround(i);
            fillOutside(sixteens_ + i * pitch_, pitch_, squares_);
        }
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
        if (side_ > 64)
            return filterWide(each);
        ofSeveral<Extreme, 4>(whole_, step_, 3 * step_, fours_, bytes, Stores::cached);
        if (side_ <= 16)
            return each([this](std::ptrdiff_t at, std::uint8_t* to) { cover(fours_ + at, 4, to); });
        ofSeveral<Extreme, 4>(fours_, 4 * step_, 12 * step_, sixteens_, bytes, Stores::cached);
        each([this](std::ptrdiff_t at, std::uint8_t* to) { cover(sixteens_ + at, 16, to); });
    }

    // Rows of wide squares, made of as many pixels as a vector has. Where these have none within the region they are as
    // they have been from the start. They are stored at addresses of whole vectors.
    template <class Each>
    void filterWide(Each each)
    {
        const std::ptrdiff_t before = (size_ - 1) * step_;
        const std::ptrdiff_t first = (reach_ * step_ - before) / Bytes::lanes * Bytes::lanes;
        each([&](std::ptrdiff_t at, std::uint8_t*) {
            const auto filter = step_ == 1 ? ofVectors<Extreme, 1> : ofVectors<Extreme, 3>;
            filter(whole_ + at + first, sixteens_ + at + first, reach_ * step_ + dst_.width - first);
        });
        each([this](std::ptrdiff_t at, std::uint8_t* to) {
            if (side_ <= 4 * size_)
                cover(sixteens_ + at, size_, to);
            else
                coverByBlocks(sixteens_ + at, fours_ + at, to);
        });
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

    // The extremes of as many vectors of pixels as the square has, and of the vector that its last pixels are in.
    // Vectors as far apart as they are wide are a column of their own, cut into blocks: the ends of a block are kept,
    // and what comes behind it grows. Blocks are a vector shorter than squares, which therefore hold also what the last
    // lanes of a vector of colours have: they begin with those of the next one.
    void coverByBlocks(const std::uint8_t* vectors, std::uint8_t* ends, std::uint8_t* out)
    {
        const std::ptrdiff_t stride = size_ * step_, block = (side_ / size_ - 1) * stride;
        const std::ptrdiff_t last = (side_ - size_) * step_, lastWhole = dst_.width - Bytes::lanes;
        // Without blocks, for the ends of rows.
        const auto whole = [=](std::ptrdiff_t x) {
            Bytes extreme = load(vectors + x + last);
            for (std::ptrdiff_t i = 0; i <= block; i += stride)
                extreme = Extreme::of(extreme, load(vectors + x + i));
            return extreme;
        };
        // Vectors of colours overlap, which streamed ones must not.
        const bool streamed = step_ == 1 && stores_ == Stores::streamed;
        std::ptrdiff_t x = streamed ? firstAligned(out, 1) : 0;
        if (x > 0)
            store(out, whole(0));
        while (x <= lastWhole) {
            keepEnds(vectors, ends, x, block);
            const std::ptrdiff_t begin = x, end = x + block <= lastWhole ? x + block : lastWhole + 1;
            Bytes extreme = load(vectors + begin + block);
            const auto next = [&] {
                extreme = Extreme::of(extreme, load(vectors + x + block));
                return Extreme::of(Extreme::of(extreme, load(vectors + x + last)), load(ends + x));
            };
            if (streamed)
                for (; x < end; x += stride)
                    stream(out + x, next());
            else
                for (; x < end; x += stride)
                    store(out + x, next());
        }
        if (x < dst_.width)
            store(out + lastWhole, whole(lastWhole));
    }

    // ends[x] = the extreme of the vectors from x to the end of the block that begins there.
    void keepEnds(const std::uint8_t* vectors, std::uint8_t* ends, std::ptrdiff_t begin, std::ptrdiff_t block) const
    {
        const std::ptrdiff_t stride = size_ * step_, outside = dst_.width + reach_ * step_;
        std::ptrdiff_t x = begin + block - stride;
        if (x > outside)
            x -= (x - outside) / stride * stride;  // the first one of those that are alike
        Bytes extreme = load(vectors + x);
        for (; x >= begin; x -= stride) {
            extreme = Extreme::of(extreme, load(vectors + x));
            store(ends + x, extreme);
        }
    }

    Target dst_;
    Squares squares_;
    std::ptrdiff_t step_, reach_, side_;
    std::ptrdiff_t size_;  // pixels of a vector
    Stores stores_;
    std::ptrdiff_t pitch_, rows_, count_ = 0, rowsAdded_ = 0;
    std::uint8_t *whole_, *fours_, *sixteens_;
};

}  // namespace
}  // namespace zkit::ZKIT_SET
