#include "geometry/warp_workers.h"
#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

// Pixels that are looked at together.
constexpr int most = Bytes::lanes;

// Coordinates of Ints::lanes pixels, pairs of words: x in the low half of each lane, y in the high one.
inline Ints pairs(std::ptrdiff_t x, std::ptrdiff_t y)
{
    return broadcastInt(static_cast<std::uint32_t>(y) << 16 | (static_cast<std::uint32_t>(x) & 0xFFFF));
}

// Where coordinates lead.
class Locator {
public:
    Locator(const Source& src, int pixelSize)
        : last_(pairs(src.width - 1, src.height - 1)), factors_(pairs(pixelSize, src.pitch))
    {
    }

    // 0 for pixels in the source. Negative coordinates are large ones.
    Ints outside(Ints coordinates) const { return {subtractSaturated(Words{coordinates.r}, Words{last_.r}).r}; }

    Ints offsets(Ints coordinates) const { return multiplyAddPairs(Words{coordinates.r}, Words{factors_.r}); }

private:
    Ints last_, factors_;
};

// What is known of `most` pixels.
struct Stretch {
    alignas(sizeof(Register)) std::uint32_t offsets[most];
    Ints outside[4];

    // coordinates(i) gives those of Ints::lanes pixels.
    template <class Coordinates>
    [[gnu::always_inline]] Stretch(const Locator& locator, Coordinates coordinates, std::ptrdiff_t i)
    {
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k) {
            const Ints here = coordinates(i + k * Ints::lanes);
            store(offsets + k * Ints::lanes, locator.offsets(here));
            outside[k] = locator.outside(here);
        }
    }

    // Copies the pixels. Offsets are read two at a time: the loads are what takes time.
    template <int pixelSize>
    void fetch(const std::uint8_t* data, std::uint8_t* dst) const
    {
#pragma GCC unroll 16
        for (int k = 0; k < most; k += 2) {
            std::int64_t two = 0;
            __builtin_memcpy(&two, offsets + k, sizeof two);
            __builtin_memcpy(dst + pixelSize * k, data + static_cast<std::int32_t>(two), pixelSize);
            __builtin_memcpy(dst + pixelSize * (k + 1), data + static_cast<std::ptrdiff_t>(two >> 32), pixelSize);
        }
    }

    bool isInside() const { return !hasBits(Bytes{(outside[0] | outside[1] | outside[2] | outside[3]).r}); }

    // Gives the first pixel of the source to those that lie outside, and says with zeros which they are.
    Bytes moveInside()
    {
        Ints inside[4];
        for (int k = 0; k < 4; ++k) {
            const Ints here = equal(outside[k], broadcastInt(0));
            store(offsets + k * Ints::lanes, loadInts(offsets + k * Ints::lanes) & here);
            inside[k] = here & broadcastInt(255);
        }
        return narrowInOrder({inside[0], inside[1]}, {inside[2], inside[3]});
    }
};

template <int pixelSize>
void separate(const Source& src, const SeparateMaps& maps, std::uint8_t* dst, std::ptrdiff_t count)
{
    const Locator locator(src, pixelSize);
    const Words offsets{pairs(maps.offsetX, maps.offsetY).r};
    const auto coordinates = [&](std::ptrdiff_t i) {
        const Ints both = widenWordsToInts(maps.x + 2 * i) | shiftLeft(widenWordsToInts(maps.y + 2 * i), 16);
        return Ints{addSaturatedSigned(Words{both.r}, offsets).r};
    };
    const auto single = [&](std::ptrdiff_t i) {
        std::int16_t mapX = 0, mapY = 0;
        __builtin_memcpy(&mapX, maps.x + 2 * i, sizeof mapX);
        __builtin_memcpy(&mapY, maps.y + 2 * i, sizeof mapY);
        const std::ptrdiff_t x = maps.offsetX + mapX, y = maps.offsetY + mapY;
        if (x >= 0 && x < src.width && y >= 0 && y < src.height)
            __builtin_memcpy(dst + pixelSize * i, src.data + y * src.pitch + x * pixelSize, pixelSize);
        else
            __builtin_memset(dst + pixelSize * i, 0, pixelSize);
    };
    std::ptrdiff_t i = 0;
    for (; i + most <= count; i += most) {
        Stretch stretch(locator, coordinates, i);
        std::uint8_t* const to = dst + pixelSize * i;
        if (stretch.isInside()) {
            stretch.fetch<pixelSize>(src.data, to);
        } else if (pixelSize == 1) {
            const Bytes inside = stretch.moveInside();
            if (hasBits(inside))
                stretch.fetch<pixelSize>(src.data, to);
            store(to, load(to) & inside);
        } else {
            for (int k = 0; k < most; ++k)
                single(i + k);
        }
    }
    for (; i < count; ++i)
        single(i);
}

std::ptrdiff_t packedMap(const Source& src, const std::uint8_t* map, std::uint8_t* dst, std::ptrdiff_t count,
                         const std::uint8_t* next)
{
    const Locator locator(src, 1);
    const auto coordinates = [&](std::ptrdiff_t i) { return Ints{load(map + 4 * i).r}; };
    std::ptrdiff_t i = 0;
    for (; i + most <= count; i += most) {
        for (std::ptrdiff_t line = 4 * i; line < 4 * (i + most); line += 64)
            __builtin_prefetch(next + line, 0, 2);  // only as far as the second-level cache
        const Stretch stretch(locator, coordinates, i);
        if (!stretch.isInside())
            break;
        stretch.fetch<1>(src.data, dst + i);
    }
    for (; i < count; ++i) {
        std::uint16_t x = 0, y = 0;
        __builtin_memcpy(&x, map + 4 * i, sizeof x);
        __builtin_memcpy(&y, map + 4 * i + 2, sizeof y);
        if (x >= src.width || y >= src.height)
            break;
        dst[i] = src.data[y * src.pitch + x];
    }
    return i;
}

bool inside(const Source& src, const std::uint8_t* map, std::ptrdiff_t count)
{
    const Locator locator(src, 1);
    std::uint32_t last[Ints::lanes] = {};
    Ints outside = broadcastInt(0);
    std::ptrdiff_t i = 0;
    for (; i + Ints::lanes <= count; i += Ints::lanes)
        outside = outside | locator.outside({load(map + 4 * i).r});
    __builtin_memcpy(last, map + 4 * i, static_cast<std::size_t>(4 * (count - i)));
    return !hasBits(Bytes{(outside | locator.outside(loadInts(last))).r});
}

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::WarpWorkers zkit::WarpWorkers::ZKIT_SET = {ZKIT_SET::separate<1>, ZKIT_SET::separate<3>,
                                                       ZKIT_SET::packedMap, ZKIT_SET::inside};
