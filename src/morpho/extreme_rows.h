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

inline constexpr std::int64_t alignment = 64;

// Bytes beyond the end of a line of working memory that may be written and read in vain.
inline constexpr std::ptrdiff_t slack = 8 * Bytes::lanes;

// What the rows of a block may take, so that they stay in the second-level cache.
inline constexpr std::int64_t blockBytes = 1 << 18;

// Panels that would be narrower than this take more, since every row of theirs is a page of its own, which costs more
// than that they leave the second-level cache.
inline constexpr std::int64_t panelWidth = 512, panelBytes = 1 << 20;

// The least height of a block that is lower than the squares.
inline constexpr std::int64_t lowest = 16;

// What rows that are filtered together take at least, so that what one step has stored has arrived in the cache before
// the next one loads it at other places, for which it would have to wait.
inline constexpr std::int64_t lineBytes = 1 << 12;

inline std::int64_t aligned(std::int64_t bytes) { return (bytes + alignment - 1) / alignment * alignment; }

// The working memory.
struct Layout {
    std::int64_t margin, pitch, rows, line;            // of rows, several in a line
    std::int64_t panel, height, segments, blockPitch;  // of columns and their blocks
    std::int64_t row, total;
};

inline Layout layoutOf(const Source& src, const Target& dst, const Squares& squares)
{
    Layout layout{};
    const std::int64_t reach = std::int64_t{squares.step} * reachWithin(dst.width / squares.step, squares);
    layout.margin = aligned(reach);
    layout.pitch = aligned(dst.width + 2 * reach);
    layout.rows = layout.pitch < lineBytes ? (lineBytes + layout.pitch - 1) / layout.pitch : 1;
    layout.line = layout.margin + layout.rows * layout.pitch + slack;

    const std::int64_t side = 2 * std::int64_t{reachWithin(dst.height, squares)} + 1;
    layout.panel = dst.width;
    layout.height = side;
    if (side * dst.width > blockBytes && src.data == dst.data) {
        const std::int64_t narrow = panelBytes / side < panelWidth ? panelBytes / side : panelWidth;
        const std::int64_t wide = blockBytes / side;
        const std::int64_t cut = (wide < narrow ? narrow : wide) / alignment * alignment;
        layout.panel = cut < alignment ? alignment : cut;
        layout.panel = layout.panel < dst.width ? layout.panel : dst.width;
    } else if (side * dst.width > blockBytes) {
        const std::int64_t low = blockBytes / dst.width;
        layout.height = low < lowest ? lowest : low;
        layout.height = layout.height < side ? layout.height : side;
    }
    layout.segments = side / layout.height - 1;
    layout.blockPitch = aligned(layout.panel + Bytes::lanes);
    layout.row = aligned(dst.width + slack);
    layout.total =
        alignment + 3 * layout.line + 2 * layout.row + (layout.height + layout.segments + 1) * layout.blockPitch;
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

    // Rows of wide squares. Where sixteen pixels have none within the region they are as they have been from the start.
    template <class Each>
    void filterWide(Each each)
    {
        const std::ptrdiff_t first = (reach_ - 15) * step_, width = dst_.width + 15 * step_;
        const auto fours = [=, this](std::ptrdiff_t at) {
            ofSeveral<Extreme, 4>(whole_ + at + first, step_, 3 * step_, fours_ + at + first, width + 12 * step_,
                                  Stores::cached);
        };
        const auto sixteens = [=, this](std::ptrdiff_t at) {
            ofSeveral<Extreme, 4>(fours_ + at + first, 4 * step_, 12 * step_, sixteens_ + at + first, width,
                                  Stores::cached);
        };
        each([&](std::ptrdiff_t at, std::uint8_t*) { fours(at); });
        each([&](std::ptrdiff_t at, std::uint8_t*) { sixteens(at); });
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

    // The extremes of as many whole vectors of pixels as the square has, and of the vector that its last pixels are in.
    // Pixels a vector apart are a column of their own, cut into blocks: the ends of a block are kept, and its beginning
    // grows.
    void coverByBlocks(const std::uint8_t* sixteens, std::uint8_t* ends, std::uint8_t* out)
    {
        const std::ptrdiff_t width = dst_.width, stride = Bytes::lanes * step_, block = side_ / Bytes::lanes * stride;
        const std::ptrdiff_t lastOfBlock = block - stride, lastOfSquare = (side_ - Bytes::lanes) * step_;
        const bool streamed = stores_ == Stores::streamed && firstAligned(out, 1) == 0;
        const auto put = [=](std::ptrdiff_t at, Bytes pixels) {
            if (at + Bytes::lanes > width)
                __builtin_memcpy(out + at, &pixels, static_cast<std::size_t>(width - at));
            else if (streamed)
                stream(out + at, pixels);
            else
                store(out + at, pixels);
        };
        for (std::ptrdiff_t start = 0; start < width; start += block)
            for (std::ptrdiff_t x = start; x < start + stride && x < width; x += Bytes::lanes) {
                Bytes extreme = ofVector(sixteens + x + lastOfBlock);
                store(ends + x + lastOfBlock, extreme);
                for (std::ptrdiff_t at = x + lastOfBlock - stride; at >= x; at -= stride) {
                    extreme = Extreme::of(extreme, ofVector(sixteens + at));
                    store(ends + at, extreme);
                }
                // Every square that begins in the block holds the block's last vector.
                extreme = ofVector(sixteens + x + lastOfBlock);
                for (std::ptrdiff_t at = x; at < x + block && at < width; at += stride) {
                    const Bytes last = ofVector(sixteens + at + lastOfSquare);
                    extreme = Extreme::of(extreme, ofVector(sixteens + at + lastOfBlock));
                    put(at, Extreme::of(Extreme::of(extreme, load(ends + at)), last));
                }
            }
    }

    Target dst_;
    Squares squares_;
    std::ptrdiff_t step_, reach_, side_;
    Stores stores_;
    std::ptrdiff_t pitch_, rows_, count_ = 0, rowsAdded_ = 0;
    std::uint8_t *whole_, *fours_, *sixteens_;
};

}  // namespace
}  // namespace zkit::ZKIT_SET
