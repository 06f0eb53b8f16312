// Which workers a call uses. Every family of workers is a struct of functions with one constant of it per instruction
// set; an operation asks for the right one on every call.
#pragma once

namespace zkit {

enum class InstructionSet { plain, sse2, avx2 };

// The plain set when ZGetMMX() is 0, else the best set that the processor has.
InstructionSet chosenSet();

template <class Workers>
const Workers& workers()
{
    switch (chosenSet()) {
    case InstructionSet::sse2: return Workers::sse2;
    case InstructionSet::avx2: return Workers::avx2;
    case InstructionSet::plain: break;
    }
    return Workers::plain;
}

}  // namespace zkit
