// Driving workers directly: every instruction set over every awkward size, against the plain workers.
#pragma once

#include "simd/plane.h"
#include "support/images.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

// A packed table of workers and the name of its instruction set.
template <class Workers>
struct PackedSet {
    const char* name;
    const Workers* workers;
};

// The packed sets that this processor can run; a set that it cannot is reported as skipped.
template <class Workers>
std::vector<PackedSet<Workers>> packedSets()
{
    std::vector<PackedSet<Workers>> sets{{"sse2", &Workers::sse2}};
    if (__builtin_cpu_supports("avx2"))
        sets.push_back({"avx2", &Workers::avx2});
    else
        std::cout << "[  SKIPPED ] avx2: not on this processor\n";
    return sets;
}

// Widths around the multiples of 16, 32, 64 and 128 lanes and around the stretches that workers cut rows into.
inline std::vector<int> awkwardWidths()
{
    std::vector<int> widths;
    for (int width = 0; width <= 100; ++width)
        widths.push_back(width);
    for (const int middle : {128, 160, 256, 512, 1024, 2048, 8160})
        for (int width = middle - 1; width <= middle + 1; ++width)
            widths.push_back(width);
    return widths;
}

// Pixels of a kind on the heap, exactly as many bytes as the rows take, so that the sanitizer sees any byte too many;
// the gaps between the rows hold other values than the pixels.
class Pixels {
public:
    enum Kind { noise, black, white, twoLevels, kinds };

    Pixels(Random& random, Kind kind, int width, int height, int pixelSize = 1)
        : offset_(random(0, 40)),
          pitch_(width * pixelSize + random(0, 3) * 7),
          width_(width),
          height_(height),
          size_(height > 0 ? static_cast<std::size_t>(offset_ + pitch_ * (height - 1) + width * pixelSize) : 0),
          bytes_(new std::uint8_t[size_])
    {
        const int low = random(0, 255), high = random(0, 255);
        for (std::size_t i = 0; i < size_; ++i)
            bytes_[i] = static_cast<std::uint8_t>(random(0, 255));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width * pixelSize; ++x) {
                std::uint8_t& byte = bytes_[static_cast<std::size_t>(offset_ + y * pitch_ + x)];
                byte = static_cast<std::uint8_t>(kind == black       ? 0
                                                 : kind == white     ? 255
                                                 : kind == twoLevels ? (byte & 1 ? low : high)
                                                                     : byte);
            }
    }

    Pixels(const Pixels& other)
        : offset_(other.offset_),
          pitch_(other.pitch_),
          width_(other.width_),
          height_(other.height_),
          size_(other.size_),
          bytes_(new std::uint8_t[size_])
    {
        std::memcpy(bytes_.get(), other.bytes_.get(), size_);
    }

    zkit::Source source() const { return {bytes_.get() + offset_, pitch_, width_, height_}; }
    const std::uint8_t* row(int y = 0) const { return bytes_.get() + offset_ + y * pitch_; }
    std::uint8_t* row(int y = 0) { return bytes_.get() + offset_ + y * pitch_; }
    std::vector<std::uint8_t> all() const { return {bytes_.get(), bytes_.get() + size_}; }

private:
    int offset_, pitch_, width_, height_;
    std::size_t size_;
    std::unique_ptr<std::uint8_t[]> bytes_;
};

// Calls check(random, kind, width) for every kind of pixels and every awkward width.
template <class Check>
void forAwkwardRows(Check check)
{
    Random random(20);
    for (int kind = 0; kind < Pixels::kinds; ++kind)
        for (const int width : awkwardWidths())
            check(random, static_cast<Pixels::Kind>(kind), width);
}

// Calls check(set, random, kind, width) for every packed set and every awkward row.
template <class Workers, class Check>
void forAwkwardRowsOfSets(Check check)
{
    for (const auto& set : packedSets<Workers>())
        forAwkwardRows([&](Random& random, Pixels::Kind kind, int width) {
            SCOPED_TRACE(testing::Message() << set.name << ' ' << kind << ' ' << width);
            check(set, random, kind, width);
        });
}

// 3 x 3 filters on bands of every height with every kind of border.
template <class Workers>
void expectSameBands(std::span<zkit::FilterBand Workers::*const> filters)
{
    forAwkwardRowsOfSets<Workers>([&](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const int step = width % 3 == 0 && random(0, 1) ? 3 : 1, height = random(1, zkit::rowsOfBand);
        if (width == 0)
            return;
        const auto some = [&] { return static_cast<std::uint8_t>(random(0, 255)); };
        const zkit::Border border{step, random(0, 1) == 1, {some(), some(), some()}};
        std::array<std::unique_ptr<Pixels>, zkit::rowsOfBand + 2> pixels;
        std::array<const std::uint8_t*, zkit::rowsOfBand + 2> rows{};
        for (std::size_t i = 0; i < static_cast<std::size_t>(height) + 2; ++i) {
            pixels[i] = std::make_unique<Pixels>(random, random(0, 3) ? kind : Pixels::noise, width, 1);
            rows[i] = pixels[i]->row();
        }
        const Pixels before(random, Pixels::noise, width + 9, height);
        for (const auto& filter : filters) {
            Pixels plain(before), packed(before);
            const auto run = [&](const Workers& workers, Pixels& out) {
                (workers.*filter)(rows.data(), {out.row() + 5, before.source().pitch, width, height}, border);
            };
            run(Workers::plain, plain);
            run(*set.workers, packed);
            ASSERT_EQ(packed.all(), plain.all()) << "filter " << (&filter - filters.data()) << ", step " << step
                                                 << ", height " << height << ", repeated " << border.repeated;
        }
    });
}
