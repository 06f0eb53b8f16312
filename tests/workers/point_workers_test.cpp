#include "point/arithmetic_workers.h"
#include "point/convert_workers.h"
#include "point/gain_offset_workers.h"
#include "point/lut_workers.h"
#include "point/threshold_workers.h"
#include "point/uniformize_workers.h"
#include "support/workers.h"

#include <algorithm>

using namespace zkit;

namespace {

// Rows of a test: up to three sources and a destination with a margin, whose place a packed set may be given.
struct Rows {
    Rows(Random& random, Pixels::Kind kind, int width, int bytesIn, int bytesOut)
        : first(random, kind, width, 1, bytesIn),
          second(random, random(0, 2) ? Pixels::noise : kind, width, 1, bytesIn),
          third(random, Pixels::noise, width, 1, bytesIn),
          before(random, Pixels::noise, bytesOut * width + 80, 1),
          offset(random(0, 40))
    {
    }

    // Checks that the packed worker writes what the plain one does, through the cache and past it; work(workers, dst,
    // stores).
    template <class Workers, class Work>
    void compare(const PackedSet<Workers>& set, Work work) const
    {
        Pixels plain(before);
        work(Workers::plain, plain.row() + offset, Stores::cached);
        for (const Stores stores : {Stores::cached, Stores::streamed}) {
            Pixels packed(before);
            work(*set.workers, packed.row() + offset, stores);
            EXPECT_EQ(packed.all(), plain.all());
        }
    }

    Pixels first, second, third, before;
    int offset;
};

template <class Workers>
void expectSameInPlace(const PackedSet<Workers>& set, const CombineRow (Workers::*rows)[combinations], int code,
                       const Rows& r, int width)
{
    for (const int operand : {0, 1}) {
        Pixels plain(operand ? r.second : r.first), packed(plain);
        const auto combine = [&](const Workers& workers, Pixels& inPlace) {
            (workers.*rows)[code](operand ? r.first.row() : inPlace.row(), operand ? inPlace.row() : r.second.row(),
                                  inPlace.row(), width, Stores::cached);
        };
        combine(Workers::plain, plain);
        combine(*set.workers, packed);
        EXPECT_EQ(packed.all(), plain.all()) << "in place of operand " << operand;
    }
}

TEST(PointWorkers, arithmetic)
{
    forAwkwardRowsOfSets<ArithmeticWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const Rows bytes(random, kind, width, 1, 1), words(random, kind, width, 2, 2);
        for (int code = 0; code < combinations; ++code) {
            SCOPED_TRACE(code);
            bytes.compare(set, [&](const auto& workers, auto dst, Stores stores) {
                workers.bytes[code](bytes.first.row(), bytes.second.row(), dst, width, stores);
            });
            words.compare(set, [&](const auto& workers, auto dst, Stores stores) {
                workers.words[code](words.first.row(), words.second.row(), dst, width, stores);
            });
            expectSameInPlace(set, &ArithmeticWorkers::bytes, code, bytes, width);
            expectSameInPlace(set, &ArithmeticWorkers::words, code, words, width);
        }
    });
}

// Every pair of bytes, and of words every pair of those around powers of two and of every 251st with small ones.
TEST(PointWorkers, arithmetic_of_all_values)
{
    std::vector<std::uint16_t> values{3, 5, 7, 255, 1000, 32769, 43691, 65534, 65535};
    for (int i = 0; i < 16; ++i)
        for (const int offset : {-1, 0, 1})
            values.push_back(static_cast<std::uint16_t>((1 << i) + offset));
    std::vector<std::uint8_t> a, b;
    std::vector<std::uint16_t> wideA, wideB;
    for (int first = 0; first < 256; ++first)
        for (int second = 0; second < 256; ++second) {
            a.push_back(static_cast<std::uint8_t>(first));
            b.push_back(static_cast<std::uint8_t>(second));
        }
    for (int first = 0; first < 65536; first += 251)
        for (int second = 0; second < 256; ++second) {
            wideA.push_back(static_cast<std::uint16_t>(first));
            wideB.push_back(static_cast<std::uint16_t>(second));
        }
    for (const std::uint16_t first : values)
        for (const std::uint16_t second : values) {
            wideA.push_back(first);
            wideB.push_back(second);
        }
    const auto expectSame = [](const CombineRow* plain, const CombineRow* packed, const auto& first,
                               const auto& second) {
        using Bytes = const std::uint8_t*;
        const auto count = static_cast<std::ptrdiff_t>(first.size());
        for (int code = 0; code < combinations; ++code) {
            auto expected = first, result = first;
            plain[code](reinterpret_cast<Bytes>(first.data()), reinterpret_cast<Bytes>(second.data()),
                        reinterpret_cast<std::uint8_t*>(expected.data()), count, Stores::cached);
            packed[code](reinterpret_cast<Bytes>(first.data()), reinterpret_cast<Bytes>(second.data()),
                         reinterpret_cast<std::uint8_t*>(result.data()), count, Stores::cached);
            EXPECT_EQ(result, expected) << "code " << code;
        }
    };
    for (const auto& set : packedSets<ArithmeticWorkers>()) {
        expectSame(ArithmeticWorkers::plain.bytes, set.workers->bytes, a, b);
        expectSame(ArithmeticWorkers::plain.words, set.workers->words, wideA, wideB);
    }
}

TEST(PointWorkers, conversions)
{
    forAwkwardRowsOfSets<ConvertWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const Rows narrowing(random, kind, width, 2, 1), widening(random, kind, width, 1, 2);
        const Rows spreading(random, kind, width, 1, 3), joining(random, kind, width, 3, 1);
        const int shift = random(0, 31) / random(1, 2);
        narrowing.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.wideToGrey(narrowing.first.row(), dst, width, shift, stores);
        });
        widening.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.greyToWide(widening.first.row(), dst, width, shift, stores);
        });
        widening.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.greyTo422(widening.first.row(), dst, width, stores);
        });
        spreading.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.greyToColour(spreading.first.row(), dst, width, stores);
        });
        joining.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.colourToGrey(joining.first.row(), dst, width, stores);
        });
    });
}

TEST(PointWorkers, gain_and_offset_in_colour)
{
    forAwkwardRowsOfSets<GainOffsetWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        Pixels tables(random, Pixels::noise, 256, 1, 3);
        ColourGainOffset how{tables.row(), random(0, 1) == 1, {}, {}, {}};
        for (int c = 0; c < 3 && how.whole; ++c) {
            how.factor[c] = static_cast<std::uint32_t>(random(0, (1 << 24) - 1));
            how.shift[c] = static_cast<std::uint32_t>(random(1, 31));
            how.offset[c] = random(-32767, 32767) / (random(0, 1) ? 1 : 200);
            for (std::uint32_t i = 0; i < 256; ++i)
                tables.row()[256 * c + static_cast<int>(i)] = static_cast<std::uint8_t>(
                    std::clamp(static_cast<int>(i * how.factor[c] >> how.shift[c]) + how.offset[c], 0, 255));
        }
        const Rows rows(random, kind, width, 3, 3);
        rows.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.colour(rows.first.row(), dst, width, how, stores);
        });
        Pixels plain(rows.first), packed(plain);
        GainOffsetWorkers::plain.colour(plain.row(), plain.row(), width, how, Stores::cached);
        set.workers->colour(packed.row(), packed.row(), width, how, Stores::cached);
        EXPECT_EQ(packed.all(), plain.all());
    });
}

TEST(PointWorkers, lut)
{
    forAwkwardRowsOfSets<LutWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const Pixels table(random, Pixels::noise, 256, 1);
        const Rows rows(random, kind, width, 1, 1);
        rows.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.row(rows.first.row(), dst, width, table.row(), stores);
        });
        Pixels plain(rows.first), packed(plain);
        LutWorkers::plain.row(plain.row(), plain.row(), width, table.row(), Stores::cached);
        set.workers->row(packed.row(), packed.row(), width, table.row(), Stores::cached);
        EXPECT_EQ(packed.all(), plain.all());
    });
}

TEST(PointWorkers, thresholds)
{
    forAwkwardRowsOfSets<ThresholdWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const auto level = [&] {
            return static_cast<std::uint8_t>(random(0, 2) ? random(0, 255) : 255 * random(0, 1));
        };
        const std::uint8_t threshold = level(), low = level(), high = level();
        const DoubleThreshold levels{level(), level(), low, level(), high};
        const ColourRange range{{level(), 0, level()}, {level(), level(), 255}, low, high};
        const Rows rows(random, kind, width, 1, 1), colours(random, kind, width, 3, 1);
        rows.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.grey(rows.first.row(), dst, width, threshold, low, high, stores);
        });
        rows.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.twice(rows.first.row(), dst, width, levels, stores);
        });
        colours.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.colour(colours.first.row(), dst, width, range, stores);
        });
        Pixels plain(rows.first), packed(plain);
        ThresholdWorkers::plain.grey(plain.row(), plain.row(), width, threshold, low, high, Stores::cached);
        set.workers->grey(packed.row(), packed.row(), width, threshold, low, high, Stores::cached);
        EXPECT_EQ(packed.all(), plain.all());
    });
}

TEST(PointWorkers, thresholds_to_and_from_bits)
{
    forAwkwardRowsOfSets<ThresholdWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const int position = random(0, 7), threshold = random(0, 9) ? random(0, 255) : 256;
        const Pixels bits(random, kind, width > 0 ? (position + width + 7) / 8 : 0, 1);
        const Rows rows(random, kind, width, 1, 1);
        rows.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.bitsToGrey(bits.row(), position, dst, width, 3, 250, stores);
        });
        Pixels plain(bits), packed(bits);
        ThresholdWorkers::plain.greyToBits(rows.first.row(), plain.row(), position, width, threshold);
        set.workers->greyToBits(rows.first.row(), packed.row(), position, width, threshold);
        EXPECT_EQ(packed.all(), plain.all());
    });
}

TEST(PointWorkers, uniformize)
{
    forAwkwardRowsOfSets<UniformizeWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const Rows rows(random, kind, width, 1, 1);
        const int level = random(0, 255), dark = random(0, 255), range = random(0, 255) - dark;
        rows.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.light(rows.first.row(), rows.second.row(), dst, width, level, stores);
        });
        rows.compare(set, [&](const auto& workers, auto dst, Stores stores) {
            workers.lightAndDark(rows.first.row(), rows.second.row(), rows.third.row(), dst, width, range, dark,
                                 stores);
        });
    });
}

}  // namespace
