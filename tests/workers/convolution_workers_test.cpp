#include "filter/fixed_convolution_workers.h"
#include "filter/floating_convolution_workers.h"
#include "support/workers.h"

#include <cmath>
#include <cstdlib>

using namespace zkit;

namespace {

TEST(ConvolutionWorkers, pairs_of_rows)
{
    forAwkwardRowsOfSets<FixedConvolutionWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const Pixels above(random, kind, width, 1), below(random, kind, width, 1);
        std::vector<std::uint32_t> packed(static_cast<std::size_t>(width)), plain(packed);
        set.workers->pair(above.row(), below.row(), packed.data(), width);
        FixedConvolutionWorkers::plain.pair(above.row(), below.row(), plain.data(), width);
        EXPECT_EQ(packed, plain);
    });
}

// Coefficients of 16 bits and of 32, and those with exact sums.
TEST(ConvolutionWorkers, fixed_point)
{
    forAwkwardRowsOfSets<FixedConvolutionWorkers>([](const auto& set, Random& random, Pixels::Kind, int width) {
        if (width == 0)
            return;
        FixedKernel kernel{};
        const bool exact = random(0, 1);
        kernel.size = 2 * random(1, exact ? 4 : 3) + 1;
        kernel.wide = exact || random(0, 1);
        kernel.sidesAlike = random(0, 1);
        kernel.negative = random(0, 1);
        kernel.fraction = exact ? random(16, 46) : random(0, 15);
        kernel.absolute = random(0, 1);
        kernel.offset = random(INT32_MIN, INT32_MAX) >> random(0, 31);
        const int size = kernel.size, half = size / 2, step = random(0, 1) ? 1 : 3;
        for (int r = 0; r < size; ++r)
            for (int k = 0; k < size; ++k) {
                const std::int32_t counterpart = kernel.coefficients[r * size + size - 1 - k];
                const bool alike = kernel.sidesAlike && k > half;
                const int low = alike ? static_cast<std::int16_t>(counterpart) : random(-32768, 32767);
                const int most = exact ? 16383 : 32767;
                int high = alike ? (counterpart - low) >> 16 : 0;
                if (!alike && kernel.wide)
                    high = random(kernel.negative ? -most : 0, most) >> random(0, 15);
                if (kernel.wide && !kernel.negative)
                    high = std::max(high, 1);  // keeps the coefficient positive whatever its lower half
                kernel.coefficients[r * size + k] =
                    static_cast<std::int32_t>((static_cast<unsigned>(high) << 16) + static_cast<unsigned>(low));
                for (const int parity : {0, 1}) {
                    const int at = r + parity;
                    kernel.low[parity][at / 2][k] |= (static_cast<unsigned>(low) & 0xFFFF) << at % 2 * 16;
                    kernel.high[parity][at / 2][k] |= (static_cast<unsigned>(high) & 0xFFFF) << at % 2 * 16;
                }
            }
        std::vector<std::vector<std::uint32_t>> entries;
        std::vector<const std::uint32_t*> pairs;
        for (int p = 0; p <= half; ++p) {
            entries.emplace_back(static_cast<std::size_t>(width + 2 * half * step + 31));
            for (std::uint32_t& entry : entries.back())
                entry = static_cast<std::uint32_t>(random(0, 255) | random(0, 255) << 16);
            pairs.push_back(entries.back().data() + half * step);
        }
        Pixels packed(random, Pixels::noise, width + 9, 2), plain(packed);
        const auto rows = exact ? &FixedConvolutionWorkers::exactRows : &FixedConvolutionWorkers::rows;
        (set.workers->*rows)(pairs.data(), packed.row(0) + 4, packed.row(1) + 4, width, step, kernel);
        (FixedConvolutionWorkers::plain.*rows)(pairs.data(), plain.row(0) + 4, plain.row(1) + 4, width, step, kernel);
        EXPECT_EQ(packed.all(), plain.all()) << size << (exact ? " exact" : kernel.wide ? " wide" : "");
    });
}

// Straight from bytes: 3 x 3 kernels that are symmetric, that have sums of 16 bits, and others.
TEST(ConvolutionWorkers, fixed_point_bands)
{
    forAwkwardRowsOfSets<FixedConvolutionWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const int step = random(0, 1) ? 1 : 3, bytes = width * step, height = random(1, rowsOfBand);
        if (width == 0)
            return;
        FixedKernel kernel{};
        kernel.size = 3;
        kernel.fraction = random(0, 15);
        kernel.absolute = random(0, 1);
        const bool symmetric = random(0, 1), small = random(0, 1);
        kernel.offset = random(0, 1) ? random(INT32_MIN, INT32_MAX) >> (small ? random(22, 23) : random(0, 31)) : 0;
        int most = small ? 127 : 32767;
        for (int i = 0; i < 9; ++i) {
            int& coefficient = kernel.coefficients[i];
            coefficient = random(-most, most);
            most -= small ? std::abs(coefficient) : 0;
        }
        if (symmetric)
            for (int i = 2; i < 9; ++i)
                kernel.coefficients[i] = i == 4 ? kernel.coefficients[4] : kernel.coefficients[i % 2];
        const Pixels pixels(random, kind, bytes, height + 2);
        std::vector<const std::uint8_t*> rows;
        for (int y = 0; y < height + 2; ++y)
            rows.push_back(pixels.row(y));
        Pixels packed(random, Pixels::noise, bytes + 9, height), plain(packed);
        const auto target = [&](Pixels& of) {
            return Target{of.row(0) + 4, height > 1 ? of.row(1) - of.row(0) : 0, bytes, height};
        };
        set.workers->band(rows.data(), target(packed), step, kernel);
        FixedConvolutionWorkers::plain.band(rows.data(), target(plain), step, kernel);
        EXPECT_EQ(packed.all(), plain.all()) << height << " rows, " << kernel.fraction << " bits of fraction";
    });
}

// Sums that fit and sums beyond, NaN among them; bytes outside the row stay as they are.
TEST(ConvolutionWorkers, floating_point)
{
    forAwkwardRowsOfSets<FloatingConvolutionWorkers>([](const auto& set, Random& random, Pixels::Kind kind, int width) {
        const int columns = random(1, 10), rows = random(1, 4), step = random(0, 1) ? 1 : 3, beside = columns * step;
        const double scales[] = {1, 1, 1e7, 1e9, 1e300, NAN};
        const double scale = scales[random(0, 5)];
        std::vector<double> coefficients(static_cast<std::size_t>(columns * rows));
        for (double& coefficient : coefficients)
            coefficient = random(-100, 120) / 99.0 * scale;
        std::vector<std::vector<double>> entries;
        std::vector<const double*> pointers;
        for (int r = 0; r <= rows; ++r) {
            const Pixels pixels(random, kind, width + beside + 31, 1);
            std::vector<double> packed(static_cast<std::size_t>(width + beside + 31)), plain(packed);
            set.workers->widen(pixels.row(), packed.data(), width + beside + 31);
            FloatingConvolutionWorkers::plain.widen(pixels.row(), plain.data(), width + beside + 31);
            ASSERT_EQ(packed, plain);
            entries.push_back(std::move(plain));
            pointers.push_back(entries.back().data());
        }
        const FloatingKernel kernel{coefficients.data(), columns, rows, random(-1, 4), random(-300, 300), scale == 1};
        if (width == 0)
            return;
        Pixels packed(random, Pixels::noise, width + 9, 2), plain(packed);
        set.workers->rows(pointers.data(), packed.row(0) + 4, packed.row(1) + 4, width, step, kernel);
        FloatingConvolutionWorkers::plain.rows(pointers.data(), plain.row(0) + 4, plain.row(1) + 4, width, step,
                                               kernel);
        EXPECT_EQ(packed.all(), plain.all()) << columns << 'x' << rows << " times " << scale;
    });
}

}  // namespace
