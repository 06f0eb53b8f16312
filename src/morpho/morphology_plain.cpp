#include "morpho/morphology_workers.h"

namespace zkit::plain {
namespace {

struct Least {
    static std::uint8_t of(std::uint8_t a, std::uint8_t b) { return a < b ? a : b; }
};

struct Greatest {
    static std::uint8_t of(std::uint8_t a, std::uint8_t b) { return a > b ? a : b; }
};

template <class Extreme>
std::uint8_t ofThree(std::uint8_t a, std::uint8_t b, std::uint8_t c)
{
    return Extreme::of(Extreme::of(a, b), c);
}

// Three pixels side by side. The right one is read before anything is written and the left one is kept.
template <class Extreme>
void filterRow(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t width, const Squares& squares)
{
    for (std::ptrdiff_t first = 0; first < 3 && first < squares.step; ++first) {
        std::uint8_t left = squares.outside[first], here = src[first];
        std::ptrdiff_t x = first;
        for (; x + squares.step < width; x += squares.step) {
            const std::uint8_t right = src[x + squares.step];
            dst[x] = ofThree<Extreme>(left, here, right);
            left = here;
            here = right;
        }
        dst[x] = ofThree<Extreme>(left, here, squares.outside[first]);
    }
}

// Three pixels one above the other, in place. `above` holds the row above as it was.
template <class Extreme>
void filterColumns(const Target& rows, const Squares& squares, std::uint8_t* above)
{
    for (std::ptrdiff_t x = 0; x < rows.width; ++x)
        above[x] = squares.outside[x % squares.step];
    for (std::ptrdiff_t y = 0; y < rows.height; ++y) {
        std::uint8_t* const row = rows.data + y * rows.pitch;
        const bool last = y + 1 == rows.height;
        for (std::ptrdiff_t x = 0; x < rows.width; ++x) {
            const std::uint8_t here = row[x], below = last ? squares.outside[x % squares.step] : row[x + rows.pitch];
            row[x] = ofThree<Extreme>(above[x], here, below);
            above[x] = here;
        }
    }
}

// As many passes of 3 x 3 as the squares reach; none beyond the larger side, when every square has come to hold the
// whole region and something outside. Without memory columns are left out.
template <class Extreme>
void filter(const Source& src, const Target& dst, const Squares& squares, Stores, std::uint8_t* memory)
{
    const std::ptrdiff_t columns = dst.width / squares.step, most = columns > dst.height ? columns : dst.height;
    const std::ptrdiff_t passes = squares.reach < most ? squares.reach : most;
    for (std::ptrdiff_t pass = 0; pass < passes; ++pass) {
        for (std::ptrdiff_t y = 0; y < dst.height; ++y) {
            std::uint8_t* const row = dst.data + y * dst.pitch;
            filterRow<Extreme>(pass == 0 ? src.data + y * src.pitch : row, row, dst.width, squares);
        }
        if (memory)
            filterColumns<Extreme>(dst, squares, memory);
    }
}

template <class First, class Second>
void filterTwice(const Source& src, const Target& dst, const Squares& squares, Stores stores, std::uint8_t* memory)
{
    const std::uint8_t(&outside)[3] = squares.outsideNext;
    filter<First>(src, dst, squares, stores, memory);
    filter<Second>({dst.data, dst.pitch, dst.width, dst.height}, dst,
                   {squares.reach, squares.step, {outside[0], outside[1], outside[2]}, {}}, stores, memory);
}

struct Removed {
    static int of(int pixel, int filtered) { return pixel - filtered; }
};

struct Added {
    static int of(int pixel, int filtered) { return filtered - pixel; }
};

template <class First, class Second, class Difference>
void topHat(const Source& src, const Target& dst, const Squares& squares, Stores stores, std::uint8_t* memory)
{
    filterTwice<First, Second>(src, dst, squares, stores, memory);
    for (std::ptrdiff_t y = 0; y < dst.height; ++y)
        for (std::ptrdiff_t x = 0; x < dst.width; ++x) {
            std::uint8_t& pixel = dst.data[y * dst.pitch + x];
            const int difference = Difference::of(src.data[y * src.pitch + x], pixel);
            pixel = static_cast<std::uint8_t>(difference > 0 ? difference : 0);
        }
}

std::int64_t memory(const Source&, const Target& dst, const Squares&) { return dst.width; }

}  // namespace
}  // namespace zkit::plain

const zkit::MorphologyWorkers zkit::MorphologyWorkers::plain = {
    {plain::filter<plain::Least>, plain::memory},
    {plain::filter<plain::Greatest>, plain::memory},
    {plain::filterTwice<plain::Least, plain::Greatest>, plain::memory},
    {plain::filterTwice<plain::Greatest, plain::Least>, plain::memory},
    {plain::topHat<plain::Least, plain::Greatest, plain::Removed>, plain::memory},
    {plain::topHat<plain::Greatest, plain::Least, plain::Added>, plain::memory}};
