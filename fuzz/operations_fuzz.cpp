// Every operation with all kinds of regions and arguments, and with workers of every instruction set that the processor
// has: the library's own choice (simd/choice.cpp, simd/stores.cpp), which follows the processor and the size of images,
// is replaced here.
#include "simd/choice.h"
#include "simd/stores.h"
#include "support/operation.h"
#include "zkit/core/cpu.h"

#include <xmmintrin.h>

namespace {

int usedWorkers = 0;  // 0 plain ones, 1 and 2 those of a set, 3 and 4 the same with stores past the caches

}  // namespace

void useWorkers(int choice)
{
    usedWorkers = choice;
    ZSetMMX(choice != 0);
}

namespace zkit {

InstructionSet chosenSet()
{
    if (usedWorkers == 0)
        return InstructionSet::plain;
    return usedWorkers % 2 == 1 && __builtin_cpu_supports("avx2") ? InstructionSet::avx2 : InstructionSet::sse2;
}

Stores storesFor(std::ptrdiff_t) { return usedWorkers > 2 ? Stores::streamed : Stores::cached; }
void endStreaming() { _mm_sfence(); }

}  // namespace zkit

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const std::vector<Operation>& all = operations();
    checkOperation(all[static_cast<std::size_t>(input.number(0, static_cast<int>(all.size()) - 1))], input);
    return 0;
}
