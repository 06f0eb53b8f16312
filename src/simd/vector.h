// The vocabulary of the packed workers, and the only file with processor intrinsics.
//
// A packed worker is written once in these words and compiled once for every instruction set, which ZKIT_SET names
// (sse2, avx2). Everything here has internal linkage: the compiler's code for one set can never stand in for another's.
#pragma once

#include "simd/plane.h"

#ifdef __AVX2__
#include <immintrin.h>
#else
#include <emmintrin.h>
#endif

namespace zkit::ZKIT_SET {
namespace {

#ifdef __AVX2__

using Register = __m256i;

inline Register loadRegister(const void* p)
{
    return _mm256_loadu_si256(static_cast<const __m256i*>(p));
}
inline void storeRegister(void* p, Register r)
{
    _mm256_storeu_si256(static_cast<__m256i*>(p), r);
}

#else

using Register = __m128i;

inline Register loadRegister(const void* p)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(p));
}
inline void storeRegister(void* p, Register r)
{
    _mm_storeu_si128(static_cast<__m128i*>(p), r);
}

#endif

// Lanes of 8, 16, 32 and 64 bits. All arithmetic wraps unless its name says otherwise.
struct Bytes {
    static constexpr int lanes = sizeof(Register);
    Register r;
};

struct Words {
    static constexpr int lanes = sizeof(Register) / 2;
    Register r;
};

struct Ints {
    static constexpr int lanes = sizeof(Register) / 4;
    Register r;
};

struct Longs {
    static constexpr int lanes = sizeof(Register) / 8;
    Register r;
};

inline Bytes load(const std::uint8_t* p)
{
    return {loadRegister(p)};
}
inline void store(std::uint8_t* p, Bytes b)
{
    storeRegister(p, b.r);
}
inline Words loadWords(const void* p)
{
    return {loadRegister(p)};
}
inline void store(std::uint16_t* p, Words w)
{
    storeRegister(p, w.r);
}

#ifdef __AVX2__

inline Bytes broadcast(std::uint8_t value)
{
    return {_mm256_set1_epi8(static_cast<char>(value))};
}
inline Words broadcastWord(int value)
{
    return {_mm256_set1_epi16(static_cast<short>(value))};
}
inline Ints broadcastInt(std::uint32_t value)
{
    return {_mm256_set1_epi32(static_cast<int>(value))};
}
inline Longs zeroLongs()
{
    return {_mm256_setzero_si256()};
}

inline Bytes min(Bytes a, Bytes b)
{
    return {_mm256_min_epu8(a.r, b.r)};
}
inline Bytes max(Bytes a, Bytes b)
{
    return {_mm256_max_epu8(a.r, b.r)};
}
inline Bytes equal(Bytes a, Bytes b)
{
    return {_mm256_cmpeq_epi8(a.r, b.r)};
}
inline Bytes operator&(Bytes a, Bytes b)
{
    return {_mm256_and_si256(a.r, b.r)};
}
inline Bytes operator|(Bytes a, Bytes b)
{
    return {_mm256_or_si256(a.r, b.r)};
}
inline Bytes operator^(Bytes a, Bytes b)
{
    return {_mm256_xor_si256(a.r, b.r)};
}
inline Bytes operator-(Bytes a, Bytes b)
{
    return {_mm256_sub_epi8(a.r, b.r)};
}
inline Bytes greaterSigned(Bytes a, Bytes b)
{
    return {_mm256_cmpgt_epi8(a.r, b.r)};
}

inline Words operator+(Words a, Words b)
{
    return {_mm256_add_epi16(a.r, b.r)};
}
inline Words operator-(Words a, Words b)
{
    return {_mm256_sub_epi16(a.r, b.r)};
}
inline Words operator|(Words a, Words b)
{
    return {_mm256_or_si256(a.r, b.r)};
}
inline Words multiplyHigh(Words a, Words b)
{
    return {_mm256_mulhi_epu16(a.r, b.r)};
}
inline Ints multiplyAddPairs(Words a, Words b)
{
    return {_mm256_madd_epi16(a.r, b.r)};
}

inline Ints operator+(Ints a, Ints b)
{
    return {_mm256_add_epi32(a.r, b.r)};
}
inline Ints operator-(Ints a, Ints b)
{
    return {_mm256_sub_epi32(a.r, b.r)};
}
inline Ints operator*(Ints a, Ints b)
{
    return {_mm256_mullo_epi32(a.r, b.r)};
}
inline Ints shiftRight(Ints a, int count)
{
    return {_mm256_srl_epi32(a.r, _mm_cvtsi32_si128(count))};
}

inline Longs operator+(Longs a, Longs b)
{
    return {_mm256_add_epi64(a.r, b.r)};
}

// Sums of each eight neighbouring bytes.
inline Longs sumsOfEight(Bytes a)
{
    return {_mm256_sad_epu8(a.r, _mm256_setzero_si256())};
}

// Words::lanes bytes from memory, one a word, in order.
inline Words widen(const std::uint8_t* p)
{
    return {_mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)))};
}

// The bytes of two vectors of words up to 255, in order.
inline Bytes narrow(Words first, Words second)
{
    return {_mm256_permute4x64_epi64(_mm256_packus_epi16(first.r, second.r), _MM_SHUFFLE(3, 1, 2, 0))};
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

// Table entry for every byte, its lower four bits choosing the entry (bit 7 must be clear).
inline Bytes lookUp(Bytes table, Bytes index)
{
    return {_mm256_shuffle_epi8(table.r, index.r)};
}
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
inline Bytes selectByTop(Bytes choice, Bytes a, Bytes b)
{
    return {_mm256_blendv_epi8(a.r, b.r, choice.r)};
}

#else

inline Bytes broadcast(std::uint8_t value)
{
    return {_mm_set1_epi8(static_cast<char>(value))};
}
inline Words broadcastWord(int value)
{
    return {_mm_set1_epi16(static_cast<short>(value))};
}
inline Ints broadcastInt(std::uint32_t value)
{
    return {_mm_set1_epi32(static_cast<int>(value))};
}
inline Longs zeroLongs()
{
    return {_mm_setzero_si128()};
}

inline Bytes min(Bytes a, Bytes b)
{
    return {_mm_min_epu8(a.r, b.r)};
}
inline Bytes max(Bytes a, Bytes b)
{
    return {_mm_max_epu8(a.r, b.r)};
}
inline Bytes equal(Bytes a, Bytes b)
{
    return {_mm_cmpeq_epi8(a.r, b.r)};
}
inline Bytes operator&(Bytes a, Bytes b)
{
    return {_mm_and_si128(a.r, b.r)};
}
inline Bytes operator|(Bytes a, Bytes b)
{
    return {_mm_or_si128(a.r, b.r)};
}
inline Bytes operator^(Bytes a, Bytes b)
{
    return {_mm_xor_si128(a.r, b.r)};
}
inline Bytes operator-(Bytes a, Bytes b)
{
    return {_mm_sub_epi8(a.r, b.r)};
}
inline Bytes greaterSigned(Bytes a, Bytes b)
{
    return {_mm_cmpgt_epi8(a.r, b.r)};
}

inline Words operator+(Words a, Words b)
{
    return {_mm_add_epi16(a.r, b.r)};
}
inline Words operator-(Words a, Words b)
{
    return {_mm_sub_epi16(a.r, b.r)};
}
inline Words operator|(Words a, Words b)
{
    return {_mm_or_si128(a.r, b.r)};
}
inline Words multiplyHigh(Words a, Words b)
{
    return {_mm_mulhi_epu16(a.r, b.r)};
}
inline Ints multiplyAddPairs(Words a, Words b)
{
    return {_mm_madd_epi16(a.r, b.r)};
}

inline Ints operator+(Ints a, Ints b)
{
    return {_mm_add_epi32(a.r, b.r)};
}
inline Ints operator-(Ints a, Ints b)
{
    return {_mm_sub_epi32(a.r, b.r)};
}
inline Ints operator*(Ints a, Ints b)
{
    const __m128i even = _mm_mul_epu32(a.r, b.r);
    const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a.r, 32), _mm_srli_epi64(b.r, 32));
    return {_mm_unpacklo_epi32(_mm_shuffle_epi32(even, _MM_SHUFFLE(0, 0, 2, 0)),
                               _mm_shuffle_epi32(odd, _MM_SHUFFLE(0, 0, 2, 0)))};
}
inline Ints shiftRight(Ints a, int count)
{
    return {_mm_srl_epi32(a.r, _mm_cvtsi32_si128(count))};
}

inline Longs operator+(Longs a, Longs b)
{
    return {_mm_add_epi64(a.r, b.r)};
}
inline Longs sumsOfEight(Bytes a)
{
    return {_mm_sad_epu8(a.r, _mm_setzero_si128())};
}

inline Words widen(const std::uint8_t* p)
{
    return {_mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128())};
}

inline Bytes narrow(Words first, Words second)
{
    return {_mm_packus_epi16(first.r, second.r)};
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

#endif

// The bytes at even and at odd places as words, and back (from words up to 255).
inline Words evenBytes(Bytes a)
{
#ifdef __AVX2__
    return {_mm256_and_si256(a.r, _mm256_set1_epi16(255))};
#else
    return {_mm_and_si128(a.r, _mm_set1_epi16(255))};
#endif
}

inline Words oddBytes(Bytes a)
{
#ifdef __AVX2__
    return {_mm256_srli_epi16(a.r, 8)};
#else
    return {_mm_srli_epi16(a.r, 8)};
#endif
}

inline Bytes interleave(Words even, Words odd)
{
#ifdef __AVX2__
    return {_mm256_or_si256(even.r, _mm256_slli_epi16(odd.r, 8))};
#else
    return {_mm_or_si128(even.r, _mm_slli_epi16(odd.r, 8))};
#endif
}

// The lower and the upper halves of the bytes as words. Which half of the bytes either is depends on the instruction
// set: the two together are all of them, which is what sums need.
struct TwoWords {
    Words low, high;
};

inline TwoWords widen(Bytes a)
{
#ifdef __AVX2__
    const __m256i zero = _mm256_setzero_si256();
    return {{_mm256_unpacklo_epi8(a.r, zero)}, {_mm256_unpackhi_epi8(a.r, zero)}};
#else
    const __m128i zero = _mm_setzero_si128();
    return {{_mm_unpacklo_epi8(a.r, zero)}, {_mm_unpackhi_epi8(a.r, zero)}};
#endif
}

// Sum of all lanes.
inline std::uint32_t total(Ints a)
{
#ifdef __AVX2__
    const __m128i four = _mm_add_epi32(_mm256_castsi256_si128(a.r), _mm256_extracti128_si256(a.r, 1));
#else
    const __m128i four = a.r;
#endif
    const __m128i two = _mm_add_epi32(four, _mm_shuffle_epi32(four, _MM_SHUFFLE(1, 0, 3, 2)));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(two)) +
           static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_shuffle_epi32(two, 1)));
}

// Sum of the lower 32 bits of all lanes, modulo 2^32.
inline std::uint32_t total(Longs a)
{
#ifdef __AVX2__
    const __m128i two = _mm_add_epi32(_mm256_castsi256_si128(a.r), _mm256_extracti128_si256(a.r, 1));
#else
    const __m128i two = a.r;
#endif
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(two)) +
           static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_shuffle_epi32(two, 2)));
}

inline Ints asInts(Longs a)
{
    return {a.r};
}

// The lanes of a longer row of words, `words` places before those of `here` or after them.
template <int words>
Words before(Words previous, Words here)
{
#ifdef __AVX2__
    return {_mm256_alignr_epi8(here.r, _mm256_permute2x128_si256(previous.r, here.r, 0x21), 16 - 2 * words)};
#else
    return {_mm_or_si128(_mm_slli_si128(here.r, 2 * words), _mm_srli_si128(previous.r, 16 - 2 * words))};
#endif
}

template <int words>
Words after(Words here, Words next)
{
#ifdef __AVX2__
    return {_mm256_alignr_epi8(_mm256_permute2x128_si256(here.r, next.r, 0x21), here.r, 2 * words)};
#else
    return {_mm_or_si128(_mm_srli_si128(here.r, 2 * words), _mm_slli_si128(next.r, 16 - 2 * words))};
#endif
}

// Where all bits of `choice` are set b, where none is a.
inline Bytes select(Bytes choice, Bytes a, Bytes b)
{
    return a ^ ((a ^ b) & choice);
}

// The ends of rows.

constexpr std::uint8_t lastLanesTable[2 * Bytes::lanes] = {
#ifdef __AVX2__
    0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,
    0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,
    255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
#else
    0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,
#endif
    255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};

// All bits set in the last or the first `count` lanes.
inline Bytes lastLanes(std::ptrdiff_t count)
{
    return load(lastLanesTable + count);
}
inline Bytes firstLanes(std::ptrdiff_t count)
{
    return equal(lastLanes(Bytes::lanes - count), broadcast(0));
}

// Colour: Bytes::lanes pixels of three bytes, taken apart into their components.
struct Components {
    Bytes c0, c1, c2;
};

#ifdef __AVX2__

// Three vectors of interleaved bytes, the two halves of the pixels side by side in the two halves of the registers.
inline Components loadInterleaved(const std::uint8_t* p)
{
    const auto at = [p](int offset) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + offset));
        return Bytes{_mm256_inserti128_si256(_mm256_castsi128_si256(low),
                                             _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 48 + offset)), 1)};
    };
    return {at(0), at(16), at(32)};
}

inline Components takeApart(Components p)
{
    // Component i of 16 pixels is spread over three registers at positions that do not collide: merge, then order.
    const auto pick = [&p](Bytes fromFirst, Bytes fromSecond, Bytes fromThird, Bytes order) {
        return lookUp((p.c0 & fromFirst) | (p.c1 & fromSecond) | (p.c2 & fromThird), order);
    };
    const auto every = [](const char* sixteen) { return loadTable(reinterpret_cast<const std::uint8_t*>(sixteen)); };
    // Byte b of a register is component b mod 3 in the first, (b + 1) mod 3 in the second, (b + 2) mod 3 in the third.
    const Bytes m0 = every("\xff\0\0\xff\0\0\xff\0\0\xff\0\0\xff\0\0\xff");
    const Bytes m1 = every("\0\xff\0\0\xff\0\0\xff\0\0\xff\0\0\xff\0\0");
    const Bytes m2 = every("\0\0\xff\0\0\xff\0\0\xff\0\0\xff\0\0\xff\0");
    const Bytes order0 = every("\x00\x03\x06\x09\x0c\x0f\x02\x05\x08\x0b\x0e\x01\x04\x07\x0a\x0d");
    const Bytes order1 = every("\x01\x04\x07\x0a\x0d\x00\x03\x06\x09\x0c\x0f\x02\x05\x08\x0b\x0e");
    const Bytes order2 = every("\x02\x05\x08\x0b\x0e\x01\x04\x07\x0a\x0d\x00\x03\x06\x09\x0c\x0f");
    return {pick(m0, m2, m1, order0), pick(m1, m0, m2, order1), pick(m2, m1, m0, order2)};
}

#else

inline Components loadInterleaved(const std::uint8_t* p)
{
    return {load(p), load(p + 16), load(p + 32)};
}

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

#endif

inline Components loadComponents(const std::uint8_t* p)
{
    return takeApart(loadInterleaved(p));
}

// Copies the first `count` pixels, fewer than a vector has, and makes the others black.
inline const std::uint8_t* padFirst(std::uint8_t (&padded)[3 * Bytes::lanes], const std::uint8_t* p,
                                    std::ptrdiff_t count)
{
    for (int i = 0; i < 3; ++i)
        store(padded + i * Bytes::lanes, broadcast(0));
    __builtin_memcpy(padded, p, static_cast<std::size_t>(3 * count));
    return padded;
}

inline Components loadFirstInterleaved(const std::uint8_t* p, std::ptrdiff_t count)
{
    std::uint8_t padded[3 * Bytes::lanes];
    return loadInterleaved(padFirst(padded, p, count));
}

// The last vector of a row: the pixels that no whole vector before it has held, among others that do not count. No
// byte outside the row is read.
class LastVector {
public:
    explicit LastVector(std::ptrdiff_t width) : width_(width), left_(width % Bytes::lanes), wide_(width >= Bytes::lanes)
    {
    }

    // Column of the first lane.
    std::ptrdiff_t start() const { return wide_ ? width_ - Bytes::lanes : 0; }

    // All bits set where the pixels count.
    Bytes counting() const { return wide_ ? lastLanes(left_) : firstLanes(left_); }

    Bytes bytes(const std::uint8_t* row) const
    {
        if (wide_)
            return load(row + start());
        std::uint8_t pixels[Bytes::lanes] = {};
        __builtin_memcpy(pixels, row, static_cast<std::size_t>(left_));
        return load(pixels);
    }

    Components interleaved(const std::uint8_t* row) const
    {
        return wide_ ? loadInterleaved(row + 3 * start()) : loadFirstInterleaved(row, left_);
    }

private:
    std::ptrdiff_t width_, left_;
    bool wide_;
};

}  // namespace
}  // namespace zkit::ZKIT_SET
