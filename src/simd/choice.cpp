#include "simd/choice.h"

#include "zkit/core/cpu.h"

namespace zkit {

namespace {

InstructionSet bestOfProcessor()
{
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") ? InstructionSet::avx2 : InstructionSet::sse2;
}

}  // namespace

InstructionSet chosenSet()
{
    static const InstructionSet best = bestOfProcessor();
    return ZGetMMX() ? best : InstructionSet::plain;
}

}  // namespace zkit
