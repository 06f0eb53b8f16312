// What the memory of this machine allows. No operation that reads (and writes) as much can be much faster.
#include "operation.h"

#include <benchmark/benchmark.h>

#include <immintrin.h>

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

// Keeps the minimum, the maximum and the sum of the bytes, without a thought for rows: what a processor with AVX2 needs
// for three results in one pass.
[[gnu::target("avx2")]] __m256i minMaxSum(const unsigned char* from, std::size_t bytes)
{
    const __m256i zero = _mm256_setzero_si256();
    __m256i min0 = zero, min1 = zero, max0 = zero, max1 = zero, sum0 = zero, sum1 = zero;
    for (std::size_t i = 0; i + 64 <= bytes; i += 64) {
        const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + i));
        const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + i + 32));
        min0 = _mm256_min_epu8(min0, a);
        min1 = _mm256_min_epu8(min1, b);
        max0 = _mm256_max_epu8(max0, a);
        max1 = _mm256_max_epu8(max1, b);
        sum0 = _mm256_add_epi64(sum0, _mm256_sad_epu8(a, zero));
        sum1 = _mm256_add_epi64(sum1, _mm256_sad_epu8(b, zero));
    }
    return _mm256_xor_si256(_mm256_xor_si256(_mm256_xor_si256(min0, min1), _mm256_xor_si256(max0, max1)),
                            _mm256_add_epi64(sum0, sum1));
}

[[gnu::target("avx2")]] void keepMinMaxSum(const unsigned char* from, std::size_t bytes)
{
    __m256i result = minMaxSum(from, bytes);
    benchmark::DoNotOptimize(result);
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

void readMinMaxSum(Scene& scene)
{
    if (!__builtin_cpu_supports("avx2"))
        return;
    ZImage<ZBW8>& source = *scene.grey();
    forEachRow(source, [&](int y, std::size_t bytes) {
        keepMinMaxSum(static_cast<const unsigned char*>(source.GetPixelPtr(0, y)), bytes);
    });
}

constexpr Operation table[] = {
    {"memcpy", "BW8", 1, 1, copy},
    {"read", "BW8", 1, 0, read},
    {"minmaxsum", "BW8", 1, 0, readMinMaxSum},
};

}  // namespace

std::span<const Operation> limits() { return table; }

}  // namespace bench
