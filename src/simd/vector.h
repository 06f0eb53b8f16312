// The vocabulary of the packed workers.
//
// A packed worker is written once in these words and compiled once for every instruction set, which ZKIT_SET names
// (sse2, avx2). Everything here has internal linkage: the compiler's code for one set can never stand in for another's.
// The words themselves are in a file per set, the only ones with processor intrinsics.
#pragma once

#ifdef __AVX2__
#include "simd/vector_avx2.h"
#else
#include "simd/vector_sse2.h"
#endif

namespace zkit::ZKIT_SET {
namespace {

inline Ints asInts(Longs a) { return {a.r}; }

// For vectors that are used twice and lie across cache lines: without this the compiler loads them twice.
inline Ints loadOnce(const std::uint32_t* p)
{
    Ints loaded = loadInts(p);
    __asm__("" : "+x"(loaded.r));
    return loaded;
}

inline Doubles loadOnce(const double* p)
{
    Doubles loaded = loadDoubles(p);
    __asm__("" : "+x"(loaded.r));
    return loaded;
}

// sum += more. Sums of many products stay in their registers, where the compiler would form all products first.
inline void addTo(Ints& sum, Ints more)
{
    sum = sum + more;
    __asm__("" : "+x"(sum.r));
}

inline void addTo(Doubles& sum, Doubles more)
{
    sum = sum + more;
    __asm__("" : "+x"(sum.r));
}

// Calls f(0) to f(count - 1), written out one after the other, so that vectors of an array that they index stay in
// registers.
template <int count, class F>
[[gnu::always_inline]] inline void unrolled(const F& f)
{
    if constexpr (count > 0) {
        unrolled<count - 1>(f);
        f(count - 1);
    }
}

// A vector like the first argument with the same value in every lane.
inline Bytes filled(Bytes, int value) { return broadcast(static_cast<std::uint8_t>(value)); }
inline Words filled(Words, int value) { return broadcastWord(value); }

template <class Vector>
Vector operator~(Vector a)
{
    return a ^ filled(a, -1);
}

// Where all bits of `choice` are set b, where none is a.
template <class Vector>
Vector select(Vector choice, Vector a, Vector b)
{
    return a ^ ((a ^ b) & choice);
}

// (a + b) / 2, truncated.
template <class Vector>
Vector average(Vector a, Vector b)
{
    return averageUp(a, b) - ((a ^ b) & filled(a, 1));
}

inline Bytes shiftRight(Bytes a, int count)
{
    return Bytes{shiftRight(Words{a.r}, count).r} & broadcast(static_cast<std::uint8_t>(255 >> count));
}

// Products of bytes.
inline Bytes operator*(Bytes a, Bytes b)
{
    return interleave(evenBytes(Bytes{(Words{a.r} * Words{b.r}).r}), oddBytes(a) * oddBytes(b));
}

inline TwoWords loadTwoWords(const std::uint8_t* p) { return {Words{load(p).r}, Words{load(p + sizeof(Register)).r}}; }

inline void store(std::uint8_t* p, TwoWords words)
{
    store(p, Bytes{words.low.r});
    store(p + sizeof(Register), Bytes{words.high.r});
}

inline void stream(std::uint8_t* p, TwoWords words)
{
    stream(p, Bytes{words.low.r});
    stream(p + sizeof(Register), Bytes{words.high.r});
}

inline void store(std::uint8_t* p, Interleaved pixels)
{
    store(p, pixels.first);
    store(p + sizeof(Register), pixels.second);
    store(p + 2 * sizeof(Register), pixels.third);
}

inline void stream(std::uint8_t* p, Interleaved pixels)
{
    stream(p, pixels.first);
    stream(p + sizeof(Register), pixels.second);
    stream(p + 2 * sizeof(Register), pixels.third);
}

inline Components loadComponents(const std::uint8_t* p) { return takeApart(loadInterleaved(p)); }

}  // namespace
}  // namespace zkit::ZKIT_SET
