// The registers of an instruction set and the vectors that workers see in them.
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
using FloatRegister = __m256;
using DoubleRegister = __m256d;
#else
using Register = __m128i;
using FloatRegister = __m128;
using DoubleRegister = __m128d;
#endif

// Lanes of 8, 16, 32 and 64 bits. All arithmetic on them wraps unless its name says otherwise.
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

struct Floats {
    FloatRegister r;
};

struct Doubles {
    static constexpr int lanes = sizeof(Register) / 8;
    DoubleRegister r;
};

// Two vectors that hold all lanes of one between them.
struct TwoWords {
    Words low, high;
};

struct TwoInts {
    Ints low, high;
};

struct TwoFloats {
    Floats low, high;
};

struct TwoDoubles {
    Doubles low, high;
};

// The three bytes of Bytes::lanes colour pixels.
struct Components {
    Bytes c0, c1, c2;
};

// Bytes::lanes colour pixels as they lie in memory.
struct Interleaved {
    Bytes first, second, third;
};

}  // namespace
}  // namespace zkit::ZKIT_SET
