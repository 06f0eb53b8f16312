// The meaning of every arithmetic and logic code.
#pragma once

#include "point/arithmetic_workers.h"

#include <limits>

namespace zkit {

// What becomes of a pixel of the destination that held `old`, from the pixels a and b. Results are taken modulo the
// range of the pixels.
using Combination = std::uint32_t (*)(std::uint32_t a, std::uint32_t b, std::uint32_t old);

template <class Pixel>
struct Meaning {
    using Value = std::uint32_t;
    static constexpr Value top = std::numeric_limits<Pixel>::max();
    static constexpr Value digits = std::numeric_limits<Pixel>::digits;

    static constexpr Value saturated(Value value) { return value < top ? value : top; }
    static constexpr Value truth(bool condition) { return condition ? top : 0; }

    static constexpr Combination ofCode[combinations] = {
        /* 0  copy               */ [](Value a, Value, Value) { return a; },
        /* 1  invert             */ [](Value a, Value, Value) { return top - a; },
        /* 2  add                */ [](Value a, Value b, Value) { return saturated(a + b); },
        /* 3  subtract           */ [](Value a, Value b, Value) { return a > b ? a - b : 0; },
        /* 4  multiply           */ [](Value a, Value b, Value) { return saturated(a * b); },
        /* 5  divide             */ [](Value a, Value b, Value) { return b ? a / b : top; },
        /* 6  modulo             */ [](Value a, Value b, Value) { return b ? a % b : top; },
        /* 7  shift left         */ [](Value a, Value b, Value) { return b < digits ? saturated(a << b) : truth(a); },
        /* 8  shift right        */ [](Value a, Value b, Value) { return b < digits ? a >> b : 0; },
        /* 9  average            */ [](Value a, Value b, Value) { return (a + b) >> 1; },
        /* 10 difference         */ [](Value a, Value b, Value) { return (a + top - b) >> 1; },
        /* 11 scaled multiply    */ [](Value a, Value b, Value) { return saturated((a * b) >> 8); },
        /* 12 scaled divide      */ [](Value a, Value b, Value) { return b ? saturated((a << 8) / b) : top; },
        /* 13 and                */ [](Value a, Value b, Value) { return a & b; },
        /* 14 or                 */ [](Value a, Value b, Value) { return a | b; },
        /* 15 exclusive or       */ [](Value a, Value b, Value) { return a ^ b; },
        /* 16 logical nand       */ [](Value a, Value b, Value) { return truth(!(a && b)); },
        /* 17 logical nor        */ [](Value a, Value b, Value) { return truth(!a && !b); },
        /* 18 logical xnor       */ [](Value a, Value b, Value) { return truth(!a == !b); },
        /* 19 minimum            */ [](Value a, Value b, Value) { return a < b ? a : b; },
        /* 20 maximum            */ [](Value a, Value b, Value) { return a > b ? a : b; },
        /* 21 copy where zero    */ [](Value a, Value b, Value old) { return a ? old : b; },
        /* 22 copy where nonzero */ [](Value a, Value b, Value old) { return a ? b : old; },
        /* 23 equal              */ [](Value a, Value b, Value) { return truth(a == b); },
        /* 24 not equal          */ [](Value a, Value b, Value) { return truth(a != b); },
        /* 25 greater or equal   */ [](Value a, Value b, Value) { return truth(a >= b); },
        /* 26 less or equal      */ [](Value a, Value b, Value) { return truth(a <= b); },
        /* 27 greater            */ [](Value a, Value b, Value) { return truth(a > b); },
        /* 28 less               */ [](Value a, Value b, Value) { return truth(a < b); },
        /* 29 add modulo         */ [](Value a, Value b, Value) { return a + b; },
        /* 30 subtract modulo    */ [](Value a, Value b, Value) { return a - b; },
    };
};

}  // namespace zkit
