#include "geometry/scale_rotate_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

// Pixels that are made at once: what the steps of making them leave for each other stays in the first-level cache.
constexpr std::ptrdiff_t most = 512;

inline std::int32_t asSigned(std::uint32_t coordinate) { return static_cast<std::int32_t>(coordinate); }

inline Coordinates moved(Coordinates at, std::ptrdiff_t pixels)
{
    const auto n = static_cast<std::uint32_t>(pixels);
    return {at.x + n * at.dx, at.y + n * at.dy, at.dx, at.dy};
}

// One coordinate along a row, as it would be without wrapping.
struct Line {
    std::int64_t start, step;

    std::int64_t at(std::int64_t pixel) const { return start + pixel * step; }

    // How many of `count` pixels come before it wraps.
    std::int64_t beforeWrap(std::int64_t count) const
    {
        constexpr std::int64_t least = INT32_MIN, greatest = INT32_MAX;
        if (step == 0 || (at(count - 1) >= least && at(count - 1) <= greatest))
            return count;
        return step > 0 ? (greatest - start) / step + 1 : (start - least) / -step + 1;
    }
};

// Pixels from `begin` up to and not including `end`.
struct Span {
    std::int64_t begin, end;
};

// Those whose coordinate's whole part lies in [0, size).
inline Span narrowed(Span span, Line line, std::ptrdiff_t size)
{
    const std::int64_t limit = static_cast<std::int64_t>(size < 0 ? 0 : size > 32768 ? 32768 : size) << 16;
    const auto inside = [limit](std::int64_t coordinate) { return coordinate >= 0 && coordinate < limit; };
    if (span.begin >= span.end || (inside(line.at(span.begin)) && inside(line.at(span.end - 1))))
        return span;
    if (line.step == 0)
        return {0, 0};
    if (line.step < 0)
        line = {limit - 1 - line.start, -line.step};
    const auto pixelsTo = [line](std::int64_t coordinate) {
        return coordinate > line.start ? (coordinate - line.start - 1) / line.step + 1 : 0;
    };
    const std::int64_t first = pixelsTo(0), past = pixelsTo(limit);
    const Span narrow{first > span.begin ? first : span.begin, past < span.end ? past : span.end};
    return narrow.begin < narrow.end ? narrow : Span{0, 0};
}

// Fills a row: fetch(dst, count, at) makes stretches of the pixels whose coordinates' whole parts lie in [0, width) and
// [0, height), the others are 0.
template <class Fetch>
void fillRow(std::ptrdiff_t width, std::ptrdiff_t height, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at,
             Fetch fetch)
{
    while (count > 0) {
        const Line x{asSigned(at.x), asSigned(at.dx)}, y{asSigned(at.y), asSigned(at.dy)};
        const std::int64_t straight = x.beforeWrap(y.beforeWrap(count));
        const Span inside = narrowed(narrowed({0, straight}, x, width), y, height);
        const auto pixels = static_cast<std::ptrdiff_t>(straight), begin = static_cast<std::ptrdiff_t>(inside.begin),
                   end = static_cast<std::ptrdiff_t>(inside.end);
        __builtin_memset(dst, 0, static_cast<std::size_t>(begin));
        if (begin < end)
            fetch(dst + begin, end - begin, moved(at, begin));
        __builtin_memset(dst + end, 0, static_cast<std::size_t>(pixels - end));
        dst += pixels;
        count -= pixels;
        at = moved(at, pixels);
    }
}

// Makes a stretch of pixels `most` at a time.
template <class Make>
void inPieces(std::uint8_t* dst, std::ptrdiff_t count, Coordinates at, Make make)
{
    for (std::ptrdiff_t i = 0; i < count; i += most)
        make(dst + i, count - i < most ? count - i : most, moved(at, i));
}

// A coordinate of Ints::lanes pixels, from the first on.
inline Ints lanesFrom(std::uint32_t coordinate, std::uint32_t step)
{
    static constexpr std::uint32_t numbers[8] = {0, 1, 2, 3, 4, 5, 6, 7};
    return broadcastInt(coordinate) + loadInts(numbers) * broadcastInt(step);
}

// Where the pixels lie in the source; entries after the last one are those of pixels beyond it.
struct Offsets {
    alignas(sizeof(Register)) std::uint32_t of[most];

    Offsets(const Source& src, std::ptrdiff_t count, Coordinates at)
    {
        constexpr int step = 2 * Ints::lanes;
        const Ints pitch = broadcastInt(static_cast<std::uint32_t>(src.pitch));
        const auto offsets = [pitch](Ints x, Ints y) {
            return shiftRightSigned(y, 16) * pitch + shiftRightSigned(x, 16);
        };
        const Ints dx = broadcastInt(step * at.dx), dy = broadcastInt(step * at.dy);
        const Coordinates middle = moved(at, Ints::lanes);
        Ints x = lanesFrom(at.x, at.dx), y = lanesFrom(at.y, at.dy);
        Ints nextX = lanesFrom(middle.x, at.dx), nextY = lanesFrom(middle.y, at.dy);
        for (std::ptrdiff_t i = 0; i < count; i += step) {
            store(of + i, offsets(x, y));
            store(of + i + Ints::lanes, offsets(nextX, nextY));
            x = x + dx;
            y = y + dy;
            nextX = nextX + dx;
            nextY = nextY + dy;
        }
    }

    std::ptrdiff_t operator[](std::ptrdiff_t i) const { return asSigned(of[i]); }
};

void fetchNearest(const Source& src, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at)
{
    const Offsets offsets(src, count, at);
    const std::uint8_t* const data = src.data;
    std::ptrdiff_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const auto pixel = [&](int k) { return static_cast<std::uint64_t>(data[offsets[i + k]]) << 8 * k; };
        const std::uint64_t eight =
            pixel(0) | pixel(1) | pixel(2) | pixel(3) | pixel(4) | pixel(5) | pixel(6) | pixel(7);
        __builtin_memcpy(dst + i, &eight, sizeof eight);
    }
    for (; i < count; ++i)
        dst[i] = data[offsets[i]];
}

void nearest(const Source& src, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at)
{
    const auto fetch = [&src](std::uint8_t* out, std::ptrdiff_t pixels, Coordinates from) {
        if (from.dx == 65536 && from.dy == 0) {
            const std::uint8_t* const row = src.data + (asSigned(from.y) >> 16) * src.pitch;
            __builtin_memcpy(out, row + (asSigned(from.x) >> 16), static_cast<std::size_t>(pixels));
        } else {
            inPieces(out, pixels, from, [&src](auto... piece) { fetchNearest(src, piece...); });
        }
    };
    fillRow(src.width, src.height, dst, count, at, fetch);
}

// Weights of `bits` bits of the fractions of coordinates: pairs of words, for the pixel at their whole part and for the
// next one.
struct Weights {
    int bits;

    Words operator()(Ints coordinates) const
    {
        const Ints fraction = shiftRight(coordinates & broadcastInt(0xFFFF), 16 - bits);
        return {(shiftLeft(fraction, 16) + (broadcastInt(1U << bits) - fraction)).r};
    }
};

// The four pixels around the coordinates of each pixel: left and right above, left and right below.
struct Neighbours {
    std::uint32_t of[most];

    void fetch(const Source& src, std::ptrdiff_t count, Coordinates at)
    {
        const Offsets offsets(src, count, at);
        const std::uint8_t *const data = src.data, *const next = src.data + src.pitch;
        const auto pair = [](const std::uint8_t* pixels) {
            std::uint16_t both = 0;
            __builtin_memcpy(&both, pixels, sizeof both);
            return static_cast<std::uint32_t>(both);
        };
        for (std::ptrdiff_t i = 0; i < count; ++i)
            of[i] = pair(data + offsets[i]) | pair(next + offsets[i]) << 16;
    }
};

// Mixes the neighbours of Ints::lanes pixels. The products of the second pass need signed words, so that 32768 is taken
// from the sums and added, times the weights, again.
inline Ints mixed(Ints neighbours, Words ofColumns, Words ofRows, int bits)
{
    const Bytes pixels{neighbours.r};
    const Ints left = multiplyAddPairs(evenBytes(pixels), ofRows), right = multiplyAddPairs(oddBytes(pixels), ofRows);
    const Ints sums = (left | shiftLeft(right, 16)) ^ broadcastInt(0x80008000);
    return shiftRight(multiplyAddPairs(Words{sums.r}, ofColumns) + broadcastInt(32768U << bits), 2 * bits);
}

void mixRow(const Neighbours& neighbours, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at, int bits)
{
    const Weights weights{bits};
    const Ints dx = broadcastInt(Ints::lanes * at.dx), dy = broadcastInt(Ints::lanes * at.dy);
    Ints x = lanesFrom(at.x, at.dx), y = lanesFrom(at.y, at.dy);
    for (std::ptrdiff_t i = 0; i < count; i += Bytes::lanes) {
        const auto next = [&](int k) {
            const Ints made = mixed(loadInts(neighbours.of + i + k * Ints::lanes), weights(x), weights(y), bits);
            x = x + dx;
            y = y + dy;
            return made;
        };
        const Ints first = next(0), second = next(1), third = next(2), fourth = next(3);
        const Bytes made = narrowInOrder({first, second}, {third, fourth});
        if (count - i >= Bytes::lanes) {
            store(dst + i, made);
        } else {
            std::uint8_t last[Bytes::lanes];
            store(last, made);
            __builtin_memcpy(dst + i, last, static_cast<std::size_t>(count - i));
        }
    }
}

void bilinear(const Source& src, std::uint8_t* dst, std::ptrdiff_t count, Coordinates at, int bits)
{
    Neighbours neighbours = {};
    const auto make = [&](std::uint8_t* out, std::ptrdiff_t pixels, Coordinates from) {
        neighbours.fetch(src, pixels, from);
        mixRow(neighbours, out, pixels, from, bits);
    };
    fillRow(src.width - 1, src.height - 1, dst, count, at, [&make](auto... stretch) { inPieces(stretch..., make); });
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::ScaleRotateWorkers zkit::ScaleRotateWorkers::ZKIT_SET = {ZKIT_SET::nearest, ZKIT_SET::bilinear};
