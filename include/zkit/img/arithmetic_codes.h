// The codes of the arithmetic and logic operations.
#pragma once

/// What becomes of a pixel: a is the first operand and b the second, both unsigned; M is the largest value of the
/// destination's pixels, 255 or, for ZBW16, 65535. Quotients are truncated. Colour pixels are combined byte by byte.
enum ARITH_LOGIC_OPERATIONS : int {
    ARITH_LOGIC_COPY = 0,                 ///< a
    ARITH_LOGIC_INVERT = 1,               ///< M - a
    ARITH_LOGIC_ADD = 2,                  ///< a + b, at most M
    ARITH_LOGIC_SUBTRACT = 3,             ///< a - b, at least 0
    ARITH_LOGIC_MULTIPLY = 4,             ///< a b, at most M
    ARITH_LOGIC_DIVIDE = 5,               ///< a / b; M for b = 0
    ARITH_LOGIC_MODULO = 6,               ///< the remainder of a / b; M for b = 0
    ARITH_LOGIC_SHIFT_LEFT = 7,           ///< a 2^b, at most M
    ARITH_LOGIC_SHIFT_RIGHT = 8,          ///< a / 2^b
    ARITH_LOGIC_AVERAGE = 9,              ///< (a + b) / 2
    ARITH_LOGIC_DIFFERENCE = 10,          ///< (a + M - b) / 2: the signed difference around mid-grey
    ARITH_LOGIC_SCALED_MULTIPLY = 11,     ///< a b / 256, at most M
    ARITH_LOGIC_SCALED_DIVIDE = 12,       ///< 256 a / b, at most M; M for b = 0
    ARITH_LOGIC_AND = 13,                 ///< bitwise
    ARITH_LOGIC_OR = 14,                  ///< bitwise
    ARITH_LOGIC_XOR = 15,                 ///< bitwise
    ARITH_LOGIC_LOGICAL_NAND = 16,        ///< 0 where neither is 0, else M
    ARITH_LOGIC_LOGICAL_NOR = 17,         ///< M where both are 0, else 0
    ARITH_LOGIC_LOGICAL_XNOR = 18,        ///< M where both or neither is 0, else 0
    ARITH_LOGIC_MIN = 19,                 ///< the smaller
    ARITH_LOGIC_MAX = 20,                 ///< the larger
    ARITH_LOGIC_COPY_WHERE_ZERO = 21,     ///< b where a is 0, else what the destination holds
    ARITH_LOGIC_COPY_WHERE_NONZERO = 22,  ///< b where a is not 0, else what the destination holds
    ARITH_LOGIC_COMPARE_23 = 23,          ///< M where a = b, else 0
    ARITH_LOGIC_COMPARE_24 = 24,          ///< M where a and b differ, else 0
    ARITH_LOGIC_COMPARE_25 = 25,          ///< M where a >= b, else 0
    ARITH_LOGIC_COMPARE_26 = 26,          ///< M where a <= b, else 0
    ARITH_LOGIC_COMPARE_27 = 27,          ///< M where a > b, else 0
    ARITH_LOGIC_COMPARE_28 = 28,          ///< M where a < b, else 0
    ARITH_LOGIC_OP_29 = 29,               ///< a + b modulo M + 1
    ARITH_LOGIC_OP_30 = 30,               ///< a - b modulo M + 1
    ARITH_LOGIC_SET = 33,                 ///< b

    ARITH_LOGIC_EQUAL = ARITH_LOGIC_COMPARE_23,
    ARITH_LOGIC_NOT_EQUAL = ARITH_LOGIC_COMPARE_24,
    ARITH_LOGIC_GREATER_OR_EQUAL = ARITH_LOGIC_COMPARE_25,
    ARITH_LOGIC_LESS_OR_EQUAL = ARITH_LOGIC_COMPARE_26,
    ARITH_LOGIC_GREATER = ARITH_LOGIC_COMPARE_27,
    ARITH_LOGIC_LESS = ARITH_LOGIC_COMPARE_28,
    ARITH_LOGIC_ADD_MODULO = ARITH_LOGIC_OP_29,
    ARITH_LOGIC_SUBTRACT_MODULO = ARITH_LOGIC_OP_30,
};
