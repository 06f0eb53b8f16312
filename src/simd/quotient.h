// Truncated quotients of unsigned lanes. They are formed in single precision, which holds dividends and divisors below
// 2^24 exactly: a quotient that is no whole number differs from the next one by more than its rounding.
#pragma once

#include "simd/vector.h"

namespace zkit::ZKIT_SET {
namespace {

// f(lanes of the operands as floats) of the lower and of the upper lanes.
template <class F, class... Operands>
TwoInts eachThroughFloats(F f, Operands... words)
{
    return {f(toFloats(widen(words).low)...), f(toFloats(widen(words).high)...)};
}

// Gives every lane f(lanes of the operands as floats), an integer, saturated to the range of the lanes.
template <class F, class... Others>
Words throughFloats(F f, Words first, Others... others)
{
    return narrow(eachThroughFloats(f, first, others...));
}

template <class F, class... Others>
Bytes throughFloats(F f, Bytes first, Others... others)
{
    return narrow(TwoWords{narrowSigned(eachThroughFloats(f, widen(first).low, widen(others).low...)),
                           narrowSigned(eachThroughFloats(f, widen(first).high, widen(others).high...))});
}

// All three are undefined where the divisor is 0.
template <class Vector>
Vector quotient(Vector a, Vector b)
{
    return throughFloats([](Floats n, Floats d) { return toInts(n / d); }, a, b);
}

template <class Vector>
Vector remainder(Vector a, Vector b)
{
    return throughFloats([](Floats n, Floats d) { return toInts(n - toFloats(toInts(n / d)) * d); }, a, b);
}

// 256 a / b.
template <class Vector>
Vector scaledQuotient(Vector a, Vector b)
{
    return throughFloats([](Floats n, Floats d) { return toInts(n * broadcastFloat(256) / d); }, a, b);
}

}  // namespace
}  // namespace zkit::ZKIT_SET
