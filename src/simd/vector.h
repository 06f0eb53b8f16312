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

// Where all bits of `choice` are set b, where none is a.
inline Bytes select(Bytes choice, Bytes a, Bytes b) { return a ^ ((a ^ b) & choice); }

inline Components loadComponents(const std::uint8_t* p) { return takeApart(loadInterleaved(p)); }

}  // namespace
}  // namespace zkit::ZKIT_SET
