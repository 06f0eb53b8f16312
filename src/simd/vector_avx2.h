// The words of the vocabulary for AVX2.
#pragma once

#include "simd/lanes.h"

namespace zkit::ZKIT_SET {
namespace {

inline Bytes load(const std::uint8_t* p) { return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p))}; }
inline void store(std::uint8_t* p, Bytes b) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), b.r); }
inline void stream(std::uint8_t* p, Bytes b) { _mm256_stream_si256(reinterpret_cast<__m256i*>(p), b.r); }
inline Ints loadInts(const std::uint32_t* p) { return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p))}; }
inline Words loadWords(const std::uint16_t* p) { return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p))}; }
inline void store(std::uint32_t* p, Ints i) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), i.r); }
inline void store(std::uint16_t* p, Words w) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), w.r); }

inline Bytes broadcast(std::uint8_t value) { return {_mm256_set1_epi8(static_cast<char>(value))}; }
inline Words broadcastWord(int value) { return {_mm256_set1_epi16(static_cast<short>(value))}; }
inline Ints broadcastInt(std::uint32_t value) { return {_mm256_set1_epi32(static_cast<int>(value))}; }
inline Longs zeroLongs() { return {_mm256_setzero_si256()}; }

inline Bytes min(Bytes a, Bytes b) { return {_mm256_min_epu8(a.r, b.r)}; }
inline Bytes max(Bytes a, Bytes b) { return {_mm256_max_epu8(a.r, b.r)}; }
inline Bytes equal(Bytes a, Bytes b) { return {_mm256_cmpeq_epi8(a.r, b.r)}; }
inline Bytes operator&(Bytes a, Bytes b) { return {_mm256_and_si256(a.r, b.r)}; }
inline Bytes operator|(Bytes a, Bytes b) { return {_mm256_or_si256(a.r, b.r)}; }
inline Bytes operator^(Bytes a, Bytes b) { return {_mm256_xor_si256(a.r, b.r)}; }
inline Bytes operator+(Bytes a, Bytes b) { return {_mm256_add_epi8(a.r, b.r)}; }
inline Bytes operator-(Bytes a, Bytes b) { return {_mm256_sub_epi8(a.r, b.r)}; }
inline Bytes addSaturated(Bytes a, Bytes b) { return {_mm256_adds_epu8(a.r, b.r)}; }
inline Bytes averageUp(Bytes a, Bytes b) { return {_mm256_avg_epu8(a.r, b.r)}; }
inline Bytes subtractSaturated(Bytes a, Bytes b) { return {_mm256_subs_epu8(a.r, b.r)}; }
inline Bytes greaterSigned(Bytes a, Bytes b) { return {_mm256_cmpgt_epi8(a.r, b.r)}; }

inline Words operator+(Words a, Words b) { return {_mm256_add_epi16(a.r, b.r)}; }
inline Words operator-(Words a, Words b) { return {_mm256_sub_epi16(a.r, b.r)}; }
inline Words operator*(Words a, Words b) { return {_mm256_mullo_epi16(a.r, b.r)}; }
inline Words operator&(Words a, Words b) { return {_mm256_and_si256(a.r, b.r)}; }
inline Words operator|(Words a, Words b) { return {_mm256_or_si256(a.r, b.r)}; }
inline Words operator^(Words a, Words b) { return {_mm256_xor_si256(a.r, b.r)}; }
inline Words equal(Words a, Words b) { return {_mm256_cmpeq_epi16(a.r, b.r)}; }
inline Words addSaturated(Words a, Words b) { return {_mm256_adds_epu16(a.r, b.r)}; }
inline Words subtractSaturated(Words a, Words b) { return {_mm256_subs_epu16(a.r, b.r)}; }
inline Words maxSigned(Words a, Words b) { return {_mm256_max_epi16(a.r, b.r)}; }
inline Words addSaturatedSigned(Words a, Words b) { return {_mm256_adds_epi16(a.r, b.r)}; }
inline Words magnitude(Words a) { return {_mm256_abs_epi16(a.r)}; }
inline Words averageUp(Words a, Words b) { return {_mm256_avg_epu16(a.r, b.r)}; }
inline Words shiftRight(Words a, int count) { return {_mm256_srl_epi16(a.r, _mm_cvtsi32_si128(count))}; }
inline Words shiftRightSigned(Words a, int count) { return {_mm256_sra_epi16(a.r, _mm_cvtsi32_si128(count))}; }
inline Words shiftLeft(Words a, int count) { return {_mm256_sll_epi16(a.r, _mm_cvtsi32_si128(count))}; }
inline Words multiplyHigh(Words a, Words b) { return {_mm256_mulhi_epu16(a.r, b.r)}; }
// The sums of the products of both bytes of a word with two signed bytes, which must fit.
inline Words multiplyAddBytes(Words pixels, Words factors) { return {_mm256_maddubs_epi16(pixels.r, factors.r)}; }
inline Ints multiplyAddPairs(Words a, Words b) { return {_mm256_madd_epi16(a.r, b.r)}; }

inline Ints operator+(Ints a, Ints b) { return {_mm256_add_epi32(a.r, b.r)}; }
inline Ints operator-(Ints a, Ints b) { return {_mm256_sub_epi32(a.r, b.r)}; }
inline Ints operator*(Ints a, Ints b) { return {_mm256_mullo_epi32(a.r, b.r)}; }
inline Ints shiftRight(Ints a, int count) { return {_mm256_srl_epi32(a.r, _mm_cvtsi32_si128(count))}; }
inline Ints shiftRightSigned(Ints a, int count) { return {_mm256_sra_epi32(a.r, _mm_cvtsi32_si128(count))}; }
inline Ints shiftLeft(Ints a, int count) { return {_mm256_sll_epi32(a.r, _mm_cvtsi32_si128(count))}; }

inline Ints magnitude(Ints a) { return {_mm256_abs_epi32(a.r)}; }
inline Ints equal(Ints a, Ints b) { return {_mm256_cmpeq_epi32(a.r, b.r)}; }
inline Ints operator&(Ints a, Ints b) { return {_mm256_and_si256(a.r, b.r)}; }
inline Ints operator|(Ints a, Ints b) { return {_mm256_or_si256(a.r, b.r)}; }
inline Ints operator^(Ints a, Ints b) { return {_mm256_xor_si256(a.r, b.r)}; }

inline Floats broadcastFloat(float value) { return {_mm256_set1_ps(value)}; }
inline Floats operator+(Floats a, Floats b) { return {_mm256_add_ps(a.r, b.r)}; }
inline Floats operator-(Floats a, Floats b) { return {_mm256_sub_ps(a.r, b.r)}; }
inline Floats operator*(Floats a, Floats b) { return {_mm256_mul_ps(a.r, b.r)}; }
inline Floats operator/(Floats a, Floats b) { return {_mm256_div_ps(a.r, b.r)}; }

// About 1 / a, with a relative error of at most 1.5 / 4096; infinite for 0.
inline Floats reciprocal(Floats a) { return {_mm256_rcp_ps(a.r)}; }

// Fractions are truncated; numbers that do not fit give the smallest one.
inline Ints toInts(Floats a) { return {_mm256_cvttps_epi32(a.r)}; }

inline Longs operator+(Longs a, Longs b) { return {_mm256_add_epi64(a.r, b.r)}; }

// Whether any bit is set.
inline bool hasBits(Bytes a) { return !_mm256_testz_si256(a.r, a.r); }

// Bit 7 of every lane: those of eight neighbours make a byte, the first one its most significant bit, and the bytes lie
// in memory in the order of the lanes. And back: all bits set in the lanes whose bit is set.
inline std::uint32_t packBits(Bytes a)
{
    const __m256i reversed = _mm256_set1_epi64x(0x0001020304050607);
    const __m256i order = _mm256_or_si256(reversed, _mm256_setr_epi64x(0, 0x0808080808080808, 0, 0x0808080808080808));
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_shuffle_epi8(a.r, order)));
}
inline Bytes spreadBits(std::uint32_t bits)
{
    const __m256i bytes = _mm256_setr_epi64x(0, 0x0101010101010101, 0x0202020202020202, 0x0303030303030303);
    const __m256i bit = _mm256_set1_epi64x(0x0102040810204080);
    const __m256i spread = _mm256_shuffle_epi8(_mm256_set1_epi32(static_cast<int>(bits)), bytes);
    return {_mm256_cmpeq_epi8(_mm256_and_si256(spread, bit), bit)};
}

// Sums of each eight neighbouring bytes.
inline Longs sumsOfEight(Bytes a) { return {_mm256_sad_epu8(a.r, _mm256_setzero_si256())}; }

// Words::lanes bytes from memory, one a word, in order.
inline Words widen(const std::uint8_t* p)
{
    return {_mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)))};
}

// Ints::lanes values of 8 or 16 bits from memory, one a lane, in order.
inline Ints widenToInts(const std::uint8_t* p)
{
    return {_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)))};
}
inline Ints widenWordsToInts(const std::uint8_t* p)
{
    return {_mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)))};
}

// Words::lanes words of a table, each with an index of its own.
inline Words fetchWords(const std::uint16_t* table, const std::uint16_t* indices)
{
    const auto eight = [=](int first) {
        const auto word = [=](int i) { return static_cast<short>(table[indices[first + i]]); };
        __m128i a = _mm_cvtsi32_si128(word(0)), b = _mm_cvtsi32_si128(word(4));
        a = _mm_insert_epi16(a, word(1), 1);
        b = _mm_insert_epi16(b, word(5), 1);
        a = _mm_insert_epi16(a, word(2), 2);
        b = _mm_insert_epi16(b, word(6), 2);
        a = _mm_insert_epi16(a, word(3), 3);
        b = _mm_insert_epi16(b, word(7), 3);
        return _mm_unpacklo_epi64(a, b);
    };
    return {_mm256_inserti128_si256(_mm256_castsi128_si256(eight(0)), eight(8), 1)};
}

// The bytes as words. Which of them are low and which high depends on the instruction set: sums need all of them.
inline TwoWords widen(Bytes a)
{
    const __m256i zero = _mm256_setzero_si256();
    return {{_mm256_unpacklo_epi8(a.r, zero)}, {_mm256_unpackhi_epi8(a.r, zero)}};
}

// The words as floats, plus 0 or 0.5: below the exponent of 2^23 they are its last bits. Integers back to words with
// saturation to 0..65535 or to the range of signed words; signed words back to bytes with saturation to 0..255. They
// undo each other, whatever order of the lanes lies between.
inline TwoFloats toFloats(Words a, float more = 0)
{
    const __m256i exponent = _mm256_set1_epi16(0x4B00);
    const __m256 offset = _mm256_set1_ps(8388608 - more);
    return {{_mm256_sub_ps(_mm256_castsi256_ps(_mm256_unpacklo_epi16(a.r, exponent)), offset)},
            {_mm256_sub_ps(_mm256_castsi256_ps(_mm256_unpackhi_epi16(a.r, exponent)), offset)}};
}
// The words of two vectors in pairs, which narrowSigned takes back to the order of either.
inline TwoWords pairs(Words a, Words b)
{
    return {{_mm256_unpacklo_epi16(a.r, b.r)}, {_mm256_unpackhi_epi16(a.r, b.r)}};
}
// The bytes of two vectors in pairs, which narrow takes back to the order of either.
inline TwoWords pairs(Bytes a, Bytes b) { return {{_mm256_unpacklo_epi8(a.r, b.r)}, {_mm256_unpackhi_epi8(a.r, b.r)}}; }
inline Words narrow(TwoInts a) { return {_mm256_packus_epi32(a.low.r, a.high.r)}; }
inline Words narrowSigned(TwoInts a) { return {_mm256_packs_epi32(a.low.r, a.high.r)}; }
inline Bytes narrow(TwoWords a) { return {_mm256_packus_epi16(a.low.r, a.high.r)}; }

// The same with the lanes in the order of memory.
inline TwoWords widenInOrder(Bytes a)
{
    return {{_mm256_cvtepu8_epi16(_mm256_castsi256_si128(a.r))},
            {_mm256_cvtepu8_epi16(_mm256_extracti128_si256(a.r, 1))}};
}
inline Bytes narrowInOrder(TwoWords a) { return {_mm256_permute4x64_epi64(narrow(a).r, _MM_SHUFFLE(3, 1, 2, 0))}; }

// Signed numbers one after the other in memory as bytes, with saturation to 0..255.
inline Bytes narrowInOrder(TwoInts a, TwoInts b)
{
    const Bytes mixed = narrow(TwoWords{narrowSigned(a), narrowSigned(b)});
    return {_mm256_permutevar8x32_epi32(mixed.r, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7))};
}

// The bytes from the last to the first.
inline Bytes reversed(Bytes a)
{
    const __m256i back =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0));
    return {_mm256_permute4x64_epi64(_mm256_shuffle_epi8(a.r, back), _MM_SHUFFLE(1, 0, 3, 2))};
}

// The bytes at even and at odd places as words, and back (from words up to 255).
inline Words evenBytes(Bytes a) { return {_mm256_and_si256(a.r, _mm256_set1_epi16(255))}; }
inline Words oddBytes(Bytes a) { return {_mm256_srli_epi16(a.r, 8)}; }
inline Bytes interleave(Words even, Words odd) { return {_mm256_or_si256(even.r, _mm256_slli_epi16(odd.r, 8))}; }

// Signed words back to bytes with saturation to 0..255.
inline Bytes interleaveSaturated(Words even, Words odd)
{
    const __m256i order =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15));
    return {_mm256_shuffle_epi8(_mm256_packus_epi16(even.r, odd.r), order)};
}

// Sum of all lanes.
inline std::uint32_t total(Ints a)
{
    const __m128i four = _mm_add_epi32(_mm256_castsi256_si128(a.r), _mm256_extracti128_si256(a.r, 1));
    const __m128i two = _mm_add_epi32(four, _mm_unpackhi_epi64(four, four));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_add_epi32(two, _mm_shuffle_epi32(two, 1))));
}

// Sum of the lower 32 bits of all lanes, modulo 2^32.
inline std::uint32_t total(Longs a)
{
    const __m128i two = _mm_add_epi32(_mm256_castsi256_si128(a.r), _mm256_extracti128_si256(a.r, 1));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_add_epi32(two, _mm_unpackhi_epi64(two, two))));
}

// The lanes of a longer row, `places` before those of `here` or after them.
template <int places>
Bytes before(Bytes previous, Bytes here)
{
    return {_mm256_alignr_epi8(here.r, _mm256_permute2x128_si256(previous.r, here.r, 0x21), 16 - places)};
}

template <int places>
Bytes after(Bytes here, Bytes next)
{
    return {_mm256_alignr_epi8(_mm256_permute2x128_si256(here.r, next.r, 0x21), here.r, places)};
}

inline Doubles loadDoubles(const double* p) { return {_mm256_loadu_pd(p)}; }
inline void store(double* p, Doubles d) { _mm256_storeu_pd(p, d.r); }
inline Doubles broadcastDouble(double value) { return {_mm256_set1_pd(value)}; }
inline Doubles operator+(Doubles a, Doubles b) { return {_mm256_add_pd(a.r, b.r)}; }
inline Doubles operator*(Doubles a, Doubles b) { return {_mm256_mul_pd(a.r, b.r)}; }

// Integers as doubles in order, and back: truncated toward zero. Numbers that do not fit give the smallest one (toInts)
// or the nearest one and 0 for NaN (truncated).
inline TwoDoubles toDoubles(Ints a)
{
    return {{_mm256_cvtepi32_pd(_mm256_castsi256_si128(a.r))}, {_mm256_cvtepi32_pd(_mm256_extracti128_si256(a.r, 1))}};
}
inline Ints toInts(TwoDoubles a)
{
    return {_mm256_inserti128_si256(_mm256_castsi128_si256(_mm256_cvttpd_epi32(a.low.r)), _mm256_cvttpd_epi32(a.high.r),
                                    1)};
}
inline Ints truncated(TwoDoubles a)
{
    const auto fitting = [](Doubles d) -> Doubles {
        const __m256d number = _mm256_and_pd(d.r, _mm256_cmp_pd(d.r, d.r, _CMP_ORD_Q));
        return {_mm256_max_pd(_mm256_min_pd(number, _mm256_set1_pd(2147483647)), _mm256_set1_pd(-2147483648.0))};
    };
    return toInts(TwoDoubles{fitting(a.low), fitting(a.high)});
}

// What SSE2 has no equivalent of.

// For every byte of the index, whose bit 7 is clear, the table's byte that its lower four bits name; the two halves of
// the registers each by themselves.
inline Bytes lookUp(Bytes table, Bytes index) { return {_mm256_shuffle_epi8(table.r, index.r)}; }
inline Bytes loadTable(const std::uint8_t* sixteen)
{
    return {_mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(sixteen)))};
}

// Bit `bit` of every byte moved to its bit 7; the bits below are undefined.
template <int bit>
Bytes bitToTop(Bytes a)
{
    return {_mm256_slli_epi16(a.r, 7 - bit)};
}

// Where bit 7 of `choice` is set b, else a.
inline Bytes selectByTop(Bytes choice, Bytes a, Bytes b) { return {_mm256_blendv_epi8(a.r, b.r, choice.r)}; }

// Bytes::lanes colour pixels as they lie in memory, the two halves of the pixels side by side in the two halves of the
// registers.
inline Components loadInterleaved(const std::uint8_t* p)
{
    const auto at = [p](int offset) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + offset));
        return Bytes{_mm256_inserti128_si256(_mm256_castsi128_si256(low),
                                             _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 48 + offset)), 1)};
    };
    return {at(0), at(16), at(32)};
}

// Where the bytes of a component lie in 16 bytes that pixels are cut into.
struct Places {
    std::uint8_t every[3][16];  // all bits set at the places of phase 0, 1, 2: bytes whose number modulo 3 is that
    std::uint8_t order[3][16];  // the places of component 0, 1, 2 of 16 pixels one after the other
    std::uint8_t pixel[3][16];  // the pixels that the 48 bytes of 16 of them belong to
};

constexpr Places makePlaces()
{
    Places places{};
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 16; ++k) {
            places.every[i][k] = k % 3 == i ? 255 : 0;
            places.order[i][k] = static_cast<std::uint8_t>((3 * k + i) % 16);
            places.pixel[i][k] = static_cast<std::uint8_t>((16 * i + k) / 3);
        }
    return places;
}

inline constexpr Places places = makePlaces();

// Their components, each in one vector.
inline Components takeApart(Components p)
{
    // Byte b of a register is of component b mod 3 in the first, (b + 1) mod 3 in the second, (b + 2) mod 3 in the
    // third. A component's places in the three do not collide: merge, then order.
    const Bytes phase0 = loadTable(places.every[0]), phase1 = loadTable(places.every[1]);
    const Bytes phase2 = loadTable(places.every[2]);
    const auto merged = [&p](Bytes inFirst, Bytes inSecond, Bytes inThird) {
        return (p.c0 & inFirst) | (p.c1 & inSecond) | (p.c2 & inThird);
    };
    return {lookUp(merged(phase0, phase2, phase1), loadTable(places.order[0])),
            lookUp(merged(phase1, phase0, phase2), loadTable(places.order[1])),
            lookUp(merged(phase2, phase1, phase0), loadTable(places.order[2]))};
}

// From the two halves of the pixels side by side to the order of memory.
inline Interleaved inMemory(Bytes a, Bytes b, Bytes c)
{
    return {{_mm256_permute2x128_si256(a.r, b.r, 0x20)},
            {_mm256_permute2x128_si256(c.r, a.r, 0x30)},
            {_mm256_permute2x128_si256(b.r, c.r, 0x31)}};
}

// Colour pixels with the grey levels of a vector in all three components.
inline Interleaved spread(Bytes grey)
{
    return inMemory(lookUp(grey, loadTable(places.pixel[0])), lookUp(grey, loadTable(places.pixel[1])),
                    lookUp(grey, loadTable(places.pixel[2])));
}

// Components back to pixels.
inline Interleaved putTogether(Components c)
{
    const auto of = [&c](int i) {
        const Bytes from0 = lookUp(c.c0, loadTable(places.pixel[i])) & loadTable(places.every[(3 - i) % 3]);
        const Bytes from1 = lookUp(c.c1, loadTable(places.pixel[i])) & loadTable(places.every[(4 - i) % 3]);
        const Bytes from2 = lookUp(c.c2, loadTable(places.pixel[i])) & loadTable(places.every[(5 - i) % 3]);
        return from0 | from1 | from2;
    };
    return inMemory(of(0), of(1), of(2));
}

// Every lane shifted by its own count.
inline Ints shiftRight(Ints a, Ints counts) { return {_mm256_srlv_epi32(a.r, counts.r)}; }

}  // namespace
}  // namespace zkit::ZKIT_SET
