// Which workers a call uses. Every family of workers is a constant table of functions, one table per instruction set;
// an operation asks for the table on every call.
#pragma once

namespace zkit {

enum class InstructionSet { plain, sse2, avx2 };

// The plain set when ZGetMMX() is 0, else the best set that the processor has.
InstructionSet chosenSet();

template <class Workers>
const Workers& choose(const Workers& plain, const Workers& sse2, const Workers& avx2)
{
    switch (chosenSet()) {
    case InstructionSet::sse2: return sse2;
    case InstructionSet::avx2: return avx2;
    case InstructionSet::plain: break;
    }
    return plain;
}

}  // namespace zkit
