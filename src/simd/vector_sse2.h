// The words of the vocabulary for SSE2; vector_avx2.h says what they mean.
#pragma once

#include "simd/lanes.h"

namespace zkit::ZKIT_SET {
namespace {

inline Bytes load(const std::uint8_t* p) { return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))}; }
inline void store(std::uint8_t* p, Bytes b) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), b.r); }
inline void stream(std::uint8_t* p, Bytes b) { _mm_stream_si128(reinterpret_cast<__m128i*>(p), b.r); }
inline Words loadWords(const std::uint16_t* p) { return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))}; }
inline Ints loadInts(const std::uint32_t* p) { return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))}; }
inline void store(std::uint32_t* p, Ints i) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), i.r); }
inline void store(std::uint16_t* p, Words w) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), w.r); }

inline Bytes broadcast(std::uint8_t value) { return {_mm_set1_epi8(static_cast<char>(value))}; }
inline Words broadcastWord(int value) { return {_mm_set1_epi16(static_cast<short>(value))}; }
inline Ints broadcastInt(std::uint32_t value) { return {_mm_set1_epi32(static_cast<int>(value))}; }
inline Longs zeroLongs() { return {_mm_setzero_si128()}; }

inline Bytes min(Bytes a, Bytes b) { return {_mm_min_epu8(a.r, b.r)}; }
inline Bytes max(Bytes a, Bytes b) { return {_mm_max_epu8(a.r, b.r)}; }
inline Bytes equal(Bytes a, Bytes b) { return {_mm_cmpeq_epi8(a.r, b.r)}; }
inline Bytes operator&(Bytes a, Bytes b) { return {_mm_and_si128(a.r, b.r)}; }
inline Bytes operator|(Bytes a, Bytes b) { return {_mm_or_si128(a.r, b.r)}; }
inline Bytes operator^(Bytes a, Bytes b) { return {_mm_xor_si128(a.r, b.r)}; }
inline Bytes operator+(Bytes a, Bytes b) { return {_mm_add_epi8(a.r, b.r)}; }
inline Bytes operator-(Bytes a, Bytes b) { return {_mm_sub_epi8(a.r, b.r)}; }
inline Bytes addSaturated(Bytes a, Bytes b) { return {_mm_adds_epu8(a.r, b.r)}; }
inline Bytes averageUp(Bytes a, Bytes b) { return {_mm_avg_epu8(a.r, b.r)}; }
inline Bytes subtractSaturated(Bytes a, Bytes b) { return {_mm_subs_epu8(a.r, b.r)}; }
inline Bytes greaterSigned(Bytes a, Bytes b) { return {_mm_cmpgt_epi8(a.r, b.r)}; }

inline Words operator+(Words a, Words b) { return {_mm_add_epi16(a.r, b.r)}; }
inline Words operator-(Words a, Words b) { return {_mm_sub_epi16(a.r, b.r)}; }
inline Words operator*(Words a, Words b) { return {_mm_mullo_epi16(a.r, b.r)}; }
inline Words operator&(Words a, Words b) { return {_mm_and_si128(a.r, b.r)}; }
inline Words operator|(Words a, Words b) { return {_mm_or_si128(a.r, b.r)}; }
inline Words operator^(Words a, Words b) { return {_mm_xor_si128(a.r, b.r)}; }
inline Words equal(Words a, Words b) { return {_mm_cmpeq_epi16(a.r, b.r)}; }
inline Words addSaturated(Words a, Words b) { return {_mm_adds_epu16(a.r, b.r)}; }
inline Words subtractSaturated(Words a, Words b) { return {_mm_subs_epu16(a.r, b.r)}; }
inline Words maxSigned(Words a, Words b) { return {_mm_max_epi16(a.r, b.r)}; }
inline Words addSaturatedSigned(Words a, Words b) { return {_mm_adds_epi16(a.r, b.r)}; }
inline Words magnitude(Words a) { return {_mm_max_epi16(a.r, _mm_sub_epi16(_mm_setzero_si128(), a.r))}; }
inline Words averageUp(Words a, Words b) { return {_mm_avg_epu16(a.r, b.r)}; }
inline Words shiftRight(Words a, int count) { return {_mm_srl_epi16(a.r, _mm_cvtsi32_si128(count))}; }
inline Words shiftRightSigned(Words a, int count) { return {_mm_sra_epi16(a.r, _mm_cvtsi32_si128(count))}; }
inline Words shiftLeft(Words a, int count) { return {_mm_sll_epi16(a.r, _mm_cvtsi32_si128(count))}; }
inline Words multiplyHigh(Words a, Words b) { return {_mm_mulhi_epu16(a.r, b.r)}; }
inline Words multiplyAddBytes(Words pixels, Words factors)
{
    const __m128i even = _mm_and_si128(pixels.r, _mm_set1_epi16(255)), odd = _mm_srli_epi16(pixels.r, 8);
    const __m128i ofEven = _mm_srai_epi16(_mm_slli_epi16(factors.r, 8), 8), ofOdd = _mm_srai_epi16(factors.r, 8);
    return {_mm_add_epi16(_mm_mullo_epi16(even, ofEven), _mm_mullo_epi16(odd, ofOdd))};
}
inline Ints multiplyAddPairs(Words a, Words b) { return {_mm_madd_epi16(a.r, b.r)}; }

inline Ints operator+(Ints a, Ints b) { return {_mm_add_epi32(a.r, b.r)}; }
inline Ints operator-(Ints a, Ints b) { return {_mm_sub_epi32(a.r, b.r)}; }
inline Ints operator*(Ints a, Ints b)
{
    const __m128i even = _mm_mul_epu32(a.r, b.r);
    const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a.r, 32), _mm_srli_epi64(b.r, 32));
    return {_mm_unpacklo_epi32(_mm_shuffle_epi32(even, _MM_SHUFFLE(0, 0, 2, 0)),
                               _mm_shuffle_epi32(odd, _MM_SHUFFLE(0, 0, 2, 0)))};
}
inline Ints shiftRight(Ints a, int count) { return {_mm_srl_epi32(a.r, _mm_cvtsi32_si128(count))}; }
inline Ints shiftRightSigned(Ints a, int count) { return {_mm_sra_epi32(a.r, _mm_cvtsi32_si128(count))}; }
inline Ints shiftLeft(Ints a, int count) { return {_mm_sll_epi32(a.r, _mm_cvtsi32_si128(count))}; }

inline Ints magnitude(Ints a)
{
    const __m128i sign = _mm_srai_epi32(a.r, 31);
    return {_mm_sub_epi32(_mm_xor_si128(a.r, sign), sign)};
}
inline Ints equal(Ints a, Ints b) { return {_mm_cmpeq_epi32(a.r, b.r)}; }
inline Ints operator&(Ints a, Ints b) { return {_mm_and_si128(a.r, b.r)}; }
inline Ints operator|(Ints a, Ints b) { return {_mm_or_si128(a.r, b.r)}; }
inline Ints operator^(Ints a, Ints b) { return {_mm_xor_si128(a.r, b.r)}; }

inline Floats broadcastFloat(float value) { return {_mm_set1_ps(value)}; }
inline Floats operator+(Floats a, Floats b) { return {_mm_add_ps(a.r, b.r)}; }
inline Floats operator-(Floats a, Floats b) { return {_mm_sub_ps(a.r, b.r)}; }
inline Floats operator*(Floats a, Floats b) { return {_mm_mul_ps(a.r, b.r)}; }
inline Floats operator/(Floats a, Floats b) { return {_mm_div_ps(a.r, b.r)}; }
inline Floats reciprocal(Floats a) { return {_mm_rcp_ps(a.r)}; }
inline Ints toInts(Floats a) { return {_mm_cvttps_epi32(a.r)}; }

inline bool hasBits(Bytes a) { return _mm_movemask_epi8(_mm_cmpeq_epi8(a.r, _mm_setzero_si128())) != 0xFFFF; }

inline std::uint32_t packBits(Bytes a)
{
    const __m128i swapped = _mm_or_si128(_mm_slli_epi16(a.r, 8), _mm_srli_epi16(a.r, 8));
    const __m128i low = _mm_shufflelo_epi16(swapped, _MM_SHUFFLE(0, 1, 2, 3));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_shufflehi_epi16(low, _MM_SHUFFLE(0, 1, 2, 3))));
}
inline Bytes spreadBits(std::uint32_t bits)
{
    const __m128i two = _mm_cvtsi32_si128(static_cast<int>(bits)), words = _mm_unpacklo_epi8(two, two);
    const __m128i ints = _mm_unpacklo_epi16(words, words), bit = _mm_set1_epi64x(0x0102040810204080);
    return {_mm_cmpeq_epi8(_mm_and_si128(_mm_unpacklo_epi32(ints, ints), bit), bit)};
}

inline Longs operator+(Longs a, Longs b) { return {_mm_add_epi64(a.r, b.r)}; }
inline Longs sumsOfEight(Bytes a) { return {_mm_sad_epu8(a.r, _mm_setzero_si128())}; }

inline Words widen(const std::uint8_t* p)
{
    return {_mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128())};
}

inline Ints widenToInts(const std::uint8_t* p)
{
    const std::uint32_t four = static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 |
                               static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
    const __m128i words = _mm_unpacklo_epi8(_mm_cvtsi32_si128(static_cast<int>(four)), _mm_setzero_si128());
    return {_mm_unpacklo_epi16(words, _mm_setzero_si128())};
}
inline Ints widenWordsToInts(const std::uint8_t* p)
{
    return {_mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128())};
}

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
    return {eight(0)};
}

inline TwoWords widen(Bytes a)
{
    const __m128i zero = _mm_setzero_si128();
    return {{_mm_unpacklo_epi8(a.r, zero)}, {_mm_unpackhi_epi8(a.r, zero)}};
}

inline TwoFloats toFloats(Words a, float more = 0)
{
    const __m128i exponent = _mm_set1_epi16(0x4B00);
    const __m128 offset = _mm_set1_ps(8388608 - more);
    return {{_mm_sub_ps(_mm_castsi128_ps(_mm_unpacklo_epi16(a.r, exponent)), offset)},
            {_mm_sub_ps(_mm_castsi128_ps(_mm_unpackhi_epi16(a.r, exponent)), offset)}};
}
inline TwoWords pairs(Words a, Words b) { return {{_mm_unpacklo_epi16(a.r, b.r)}, {_mm_unpackhi_epi16(a.r, b.r)}}; }
inline TwoWords pairs(Bytes a, Bytes b) { return {{_mm_unpacklo_epi8(a.r, b.r)}, {_mm_unpackhi_epi8(a.r, b.r)}}; }
inline Words narrow(TwoInts a)
{
    // There is only a signed saturation: the numbers are moved into its range. The smallest one, which no number that
    // fits becomes, wraps to 65535.
    const __m128i offset = _mm_set1_epi32(32768);
    const __m128i words = _mm_packs_epi32(_mm_sub_epi32(a.low.r, offset), _mm_sub_epi32(a.high.r, offset));
    return {_mm_xor_si128(words, _mm_set1_epi16(-32768))};
}
inline Words narrowSigned(TwoInts a) { return {_mm_packs_epi32(a.low.r, a.high.r)}; }
inline Bytes narrow(TwoWords a) { return {_mm_packus_epi16(a.low.r, a.high.r)}; }
inline TwoWords widenInOrder(Bytes a) { return widen(a); }
inline Bytes narrowInOrder(TwoWords a) { return narrow(a); }
inline Bytes narrowInOrder(TwoInts a, TwoInts b) { return narrow(TwoWords{narrowSigned(a), narrowSigned(b)}); }

inline Bytes reversed(Bytes a)
{
    const __m128i pairs = _mm_or_si128(_mm_slli_epi16(a.r, 8), _mm_srli_epi16(a.r, 8));
    const __m128i low = _mm_shufflelo_epi16(pairs, _MM_SHUFFLE(0, 1, 2, 3));
    return {_mm_shuffle_epi32(_mm_shufflehi_epi16(low, _MM_SHUFFLE(0, 1, 2, 3)), _MM_SHUFFLE(1, 0, 3, 2))};
}

inline Words evenBytes(Bytes a) { return {_mm_and_si128(a.r, _mm_set1_epi16(255))}; }
inline Words oddBytes(Bytes a) { return {_mm_srli_epi16(a.r, 8)}; }
inline Bytes interleave(Words even, Words odd) { return {_mm_or_si128(even.r, _mm_slli_epi16(odd.r, 8))}; }
inline Bytes interleaveSaturated(Words even, Words odd)
{
    const __m128i both = _mm_packus_epi16(even.r, odd.r);
    return {_mm_unpacklo_epi8(both, _mm_unpackhi_epi64(both, both))};
}

inline std::uint32_t total(Ints a)
{
    const __m128i two = _mm_add_epi32(a.r, _mm_unpackhi_epi64(a.r, a.r));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_add_epi32(two, _mm_shuffle_epi32(two, 1))));
}

inline std::uint32_t total(Longs a)
{
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_add_epi32(a.r, _mm_unpackhi_epi64(a.r, a.r))));
}

template <int places>
Bytes before(Bytes previous, Bytes here)
{
    return {_mm_or_si128(_mm_slli_si128(here.r, places), _mm_srli_si128(previous.r, 16 - places))};
}

template <int places>
Bytes after(Bytes here, Bytes next)
{
    return {_mm_or_si128(_mm_srli_si128(here.r, places), _mm_slli_si128(next.r, 16 - places))};
}

inline Doubles loadDoubles(const double* p) { return {_mm_loadu_pd(p)}; }
inline void store(double* p, Doubles d) { _mm_storeu_pd(p, d.r); }
inline Doubles broadcastDouble(double value) { return {_mm_set1_pd(value)}; }
inline Doubles operator+(Doubles a, Doubles b) { return {_mm_add_pd(a.r, b.r)}; }
inline Doubles operator*(Doubles a, Doubles b) { return {_mm_mul_pd(a.r, b.r)}; }

inline TwoDoubles toDoubles(Ints a)
{
    return {{_mm_cvtepi32_pd(a.r)}, {_mm_cvtepi32_pd(_mm_unpackhi_epi64(a.r, a.r))}};
}
inline Ints toInts(TwoDoubles a) { return {_mm_unpacklo_epi64(_mm_cvttpd_epi32(a.low.r), _mm_cvttpd_epi32(a.high.r))}; }
inline Ints truncated(TwoDoubles a)
{
    const auto fitting = [](Doubles d) -> Doubles {
        const __m128d number = _mm_and_pd(d.r, _mm_cmpord_pd(d.r, d.r));
        return {_mm_max_pd(_mm_min_pd(number, _mm_set1_pd(2147483647)), _mm_set1_pd(-2147483648.0))};
    };
    return toInts(TwoDoubles{fitting(a.low), fitting(a.high)});
}

inline Components loadInterleaved(const std::uint8_t* p) { return {load(p), load(p + 16), load(p + 32)}; }

inline Components takeApart(Components p)
{
    // Merging the two halves of the 48 bytes moves byte i to 2 i mod 47; four times to 16 i mod 47, that is 3 k to k.
    for (int i = 0; i < 4; ++i) {
        const __m128i a = p.c0.r, b = p.c1.r, c = p.c2.r;
        p.c0.r = _mm_unpacklo_epi8(a, _mm_unpackhi_epi64(b, b));
        p.c1.r = _mm_unpacklo_epi8(_mm_unpackhi_epi64(a, a), c);
        p.c2.r = _mm_unpacklo_epi8(b, _mm_unpackhi_epi64(c, c));
    }
    return p;
}

}  // namespace
}  // namespace zkit::ZKIT_SET
