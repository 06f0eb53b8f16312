// What the memory of this machine allows. No operation that reads (and writes) as much can be much faster.
#include "operation.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>

namespace bench {

namespace {

using Words [[gnu::vector_size(32)]] = std::uint64_t;

constexpr std::size_t step = 4 * sizeof(Words);

// Sums so much of a row as full steps hold; the compiler makes a version for each instruction set.
[[gnu::target_clones("avx2", "default")]] std::uint64_t sumOfWords(const unsigned char* from, std::size_t bytes)
{
    Words sums[4] = {};
    for (std::size_t i = 0; i + step <= bytes; i += step) {
        Words first, second, third, fourth;
        std::memcpy(&first, from + i, sizeof first);
        std::memcpy(&second, from + i + sizeof first, sizeof second);
        std::memcpy(&third, from + i + 2 * sizeof first, sizeof third);
        std::memcpy(&fourth, from + i + 3 * sizeof first, sizeof fourth);
        sums[0] += first;
        sums[1] += second;
        sums[2] += third;
        sums[3] += fourth;
    }
    const Words all = (sums[0] + sums[1]) + (sums[2] + sums[3]);
    return all[0] + all[1] + all[2] + all[3];
}

// Rows without a gap between them are one long row.
template <class Row>
void forEachRow(ZImage<ZBW8>& image, Row row)
{
    const std::size_t width = std::size_t(image.GetWidth());
    if (image.GetRowGap() == 0) {
        row(0, width * std::size_t(image.GetHeight()));
        return;
    }
    for (int y = 0; y < image.GetHeight(); ++y)
        row(y, width);
}

void copy(Scene& scene)
{
    ZImage<ZBW8>&source = *scene.grey(), &result = *scene.greyResult();
    forEachRow(source, [&](int y, std::size_t bytes) {
        std::memcpy(result.GetPixelPtr(0, y), source.GetPixelPtr(0, y), bytes);
    });
}

void read(Scene& scene)
{
    ZImage<ZBW8>& source = *scene.grey();
    std::uint64_t sum = 0;
    forEachRow(source, [&](int y, std::size_t bytes) {
        sum += sumOfWords(static_cast<const unsigned char*>(source.GetPixelPtr(0, y)), bytes);
    });
    benchmark::DoNotOptimize(sum);
}

constexpr Operation table[] = {
    {"memcpy", "BW8", 1, 1, copy},
    {"read", "BW8", 1, 0, read},
};

}  // namespace

std::span<const Operation> limits() { return table; }

}  // namespace bench
