#include "point/arithmetic_workers.h"
#include "simd/map.h"
#include "simd/quotient.h"
#include "zkit/img/arithmetic_codes.h"

namespace zkit::ZKIT_SET {
namespace {

template <class Vector>
Vector isZero(Vector a)
{
    return equal(a, filled(a, 0));
}

template <class Vector>
Vector isNonzero(Vector a)
{
    return ~isZero(a);
}

template <class Vector>
Vector isGreaterOrEqual(Vector a, Vector b)
{
    return isZero(subtractSaturated(b, a));
}

// Products of words, and of bytes as words, saturated to the largest byte or word.
inline Words multiplySaturated(Words a, Words b) { return a * b | isNonzero(multiplyHigh(a, b)); }

inline Words atMost255(Words a) { return a - subtractSaturated(a, filled(a, 255)); }

inline Bytes multiplySaturated(Bytes a, Bytes b)
{
    return interleave(atMost255(evenBytes(a) * evenBytes(b)), atMost255(oddBytes(a) * oddBytes(b)));
}

inline Bytes multiplyScaled(Bytes a, Bytes b)
{
    return interleave(shiftRight(evenBytes(a) * evenBytes(b), 8), shiftRight(oddBytes(a) * oddBytes(b), 8));
}

inline Words multiplyScaled(Words a, Words b)
{
    const Words high = multiplyHigh(a, b);
    return shiftLeft(high, 8) | shiftRight(a * b, 8) | isNonzero(shiftRight(high, 8));
}

// Every lane shifted by its own count with step(a, bits), which shifts all lanes by so many; counts of all bits and
// more give `beyond`.
template <class Vector, class Step>
Vector shifted(Vector a, Vector counts, Vector beyond, Step step)
{
    constexpr int digits = 8 * sizeof(Register) / Vector::lanes;
    for (int bits = 1; bits < digits; bits *= 2) {
        const Vector bit = filled(a, bits);
        a = select(equal(counts & bit, bit), a, step(a, bits));
    }
    return select(isGreaterOrEqual(counts, filled(a, digits)), a, beyond);
}

template <class Vector>
Vector shiftLeftSaturated(Vector a, int bits)
{
    for (int i = 0; i < bits; ++i)
        a = addSaturated(a, a);
    return a;
}

// What the code makes of a vector that held `old`. Quotients by 0 are the largest value.
template <int code, class Vector>
Vector combined(Vector a, Vector b, [[maybe_unused]] Vector old)
{
    const auto orTop = [b](Vector quotient) { return quotient | isZero(b); };
    if constexpr (code == ARITH_LOGIC_COPY)
        return a;
    else if constexpr (code == ARITH_LOGIC_INVERT)
        return ~a;
    else if constexpr (code == ARITH_LOGIC_ADD)
        return addSaturated(a, b);
    else if constexpr (code == ARITH_LOGIC_SUBTRACT)
        return subtractSaturated(a, b);
    else if constexpr (code == ARITH_LOGIC_MULTIPLY)
        return multiplySaturated(a, b);
    else if constexpr (code == ARITH_LOGIC_DIVIDE)
        return orTop(quotient(a, b));
    else if constexpr (code == ARITH_LOGIC_MODULO)
        return orTop(remainder(a, b));
    else if constexpr (code == ARITH_LOGIC_SHIFT_LEFT)
        return shifted(a, b, isNonzero(a), shiftLeftSaturated<Vector>);
    else if constexpr (code == ARITH_LOGIC_SHIFT_RIGHT)
        return shifted(a, b, filled(a, 0), [](Vector pixels, int bits) { return shiftRight(pixels, bits); });
    else if constexpr (code == ARITH_LOGIC_AVERAGE)
        return average(a, b);
    else if constexpr (code == ARITH_LOGIC_DIFFERENCE)
        return average(a, ~b);
    else if constexpr (code == ARITH_LOGIC_SCALED_MULTIPLY)
        return multiplyScaled(a, b);
    else if constexpr (code == ARITH_LOGIC_SCALED_DIVIDE)
        return orTop(scaledQuotient(a, 256, b));
    else if constexpr (code == ARITH_LOGIC_AND)
        return a & b;
    else if constexpr (code == ARITH_LOGIC_OR)
        return a | b;
    else if constexpr (code == ARITH_LOGIC_XOR)
        return a ^ b;
    else if constexpr (code == ARITH_LOGIC_LOGICAL_NAND)
        return isZero(a) | isZero(b);
    else if constexpr (code == ARITH_LOGIC_LOGICAL_NOR)
        return isZero(a | b);
    else if constexpr (code == ARITH_LOGIC_LOGICAL_XNOR)
        return equal(isZero(a), isZero(b));
    else if constexpr (code == ARITH_LOGIC_MIN)
        return a - subtractSaturated(a, b);
    else if constexpr (code == ARITH_LOGIC_MAX)
        return b + subtractSaturated(a, b);
    else if constexpr (code == ARITH_LOGIC_COPY_WHERE_ZERO)
        return select(isZero(a), old, b);
    else if constexpr (code == ARITH_LOGIC_COPY_WHERE_NONZERO)
        return select(isZero(a), b, old);
    else if constexpr (code == ARITH_LOGIC_EQUAL)
        return equal(a, b);
    else if constexpr (code == ARITH_LOGIC_NOT_EQUAL)
        return ~equal(a, b);
    else if constexpr (code == ARITH_LOGIC_GREATER_OR_EQUAL)
        return isGreaterOrEqual(a, b);
    else if constexpr (code == ARITH_LOGIC_LESS_OR_EQUAL)
        return isGreaterOrEqual(b, a);
    else if constexpr (code == ARITH_LOGIC_GREATER)
        return ~isGreaterOrEqual(b, a);
    else if constexpr (code == ARITH_LOGIC_LESS)
        return ~isGreaterOrEqual(a, b);
    else if constexpr (code == ARITH_LOGIC_ADD_MODULO)
        return a + b;
    else
        return a - b;
}

// A destination that is read as well is in the caches already.
template <int code>
Stores storesOf(Stores stores)
{
    return code == ARITH_LOGIC_COPY_WHERE_ZERO || code == ARITH_LOGIC_COPY_WHERE_NONZERO ? Stores::cached : stores;
}

// Whether the worker tells of zero divisors.
template <int code>
constexpr bool divides = code == ARITH_LOGIC_DIVIDE || code == ARITH_LOGIC_MODULO;

// Looks for zero divisors among pixels that do not fill a vector.
template <class Pixel>
bool hasZero(const std::uint8_t* b, std::ptrdiff_t count)
{
    bool found = false;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        Pixel pixel;
        __builtin_memcpy(&pixel, b + i * static_cast<std::ptrdiff_t>(sizeof pixel), sizeof pixel);
        found |= pixel == 0;
    }
    return found;
}

template <int code>
bool bytes(const std::uint8_t* a, const std::uint8_t* b, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    const bool inShortRow = divides<code> && count < Bytes::lanes && hasZero<std::uint8_t>(b, count);
    Bytes zeros = broadcast(0);
    mapRow(dst, count, storesOf<code>(stores), [=, &zeros](auto at) {
        const Bytes divisor = at.bytes(b);
        zeros = divides<code> ? zeros | isZero(divisor) : zeros;
        return combined<code>(at.bytes(a), divisor, at.bytes(dst));
    });
    return divides<code> && (count < Bytes::lanes ? inShortRow : hasBits(zeros));
}

template <int code>
bool words(const std::uint8_t* a, const std::uint8_t* b, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    const bool inShortRow = divides<code> && count < Bytes::lanes && hasZero<std::uint16_t>(b, count);
    Words zeros = broadcastWord(0);
    mapRow(dst, count, storesOf<code>(stores), [=, &zeros](auto at) {
        const TwoWords x = at.words(a), y = at.words(b), old = at.words(dst);
        zeros = divides<code> ? zeros | isZero(y.low) | isZero(y.high) : zeros;
        return TwoWords{combined<code>(x.low, y.low, old.low), combined<code>(x.high, y.high, old.high)};
    });
    return divides<code> && (count < Bytes::lanes ? inShortRow : hasBits(Bytes{zeros.r}));
}

template <int... codes>
constexpr ArithmeticWorkers table = {{bytes<codes>...}, {words<codes>...}};

}  // namespace
}  // namespace zkit::ZKIT_SET

const zkit::ArithmeticWorkers zkit::ArithmeticWorkers::ZKIT_SET =
    ZKIT_SET::table<0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26,
                    27, 28, 29, 30>;
