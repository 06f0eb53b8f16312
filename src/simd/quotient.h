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
    return {f(toFloats(words).low...), f(toFloats(words).high...)};
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

// a / b. Undefined, like all that follows, where the divisor is 0.
inline Words quotient(Words a, Words b)
{
    return throughFloats([](Floats n, Floats d) { return toInts(n / d); }, a, b);
}

// An approximate reciprocal will do for bytes: with 0.5 added to the dividend every quotient is at least 0.5 / b away
// from whole numbers, and wrong by less than 0.1 / b.
inline Bytes quotient(Bytes a, Bytes b)
{
    const auto ofWords = [](Words dividends, Words divisors) {
        const TwoFloats n = toFloats(dividends, 0.5F), d = toFloats(divisors);
        return narrowSigned(TwoInts{toInts(n.low * reciprocal(d.low)), toInts(n.high * reciprocal(d.high))});
    };
    return narrow(TwoWords{ofWords(widen(a).low, widen(b).low), ofWords(widen(a).high, widen(b).high)});
}

// What a / b leaves over.
template <class Vector>
Vector remainder(Vector a, Vector b)
{
    return a - quotient(a, b) * b;
}

// factor a / b.
template <class Vector>
Vector scaledQuotient(Vector a, int factor, Vector b)
{
    const Floats f = broadcastFloat(static_cast<float>(factor));
    return throughFloats([f](Floats n, Floats d) { return toInts(n * f / d); }, a, b);
}

}  // namespace
}  // namespace zkit::ZKIT_SET
