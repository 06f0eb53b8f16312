#include "support/workers.h"

#include "zkit/core/cpu.h"

#include <xmmintrin.h>

namespace {

Workers used;

}  // namespace

Workers packedWorkers(Input& input)
{
    const bool avx2 = __builtin_cpu_supports("avx2") && !input.oneIn(3);
    return {avx2 ? zkit::InstructionSet::avx2 : zkit::InstructionSet::sse2,
            input.oneIn(3) ? zkit::Stores::streamed : zkit::Stores::cached};
}

void use(const Workers& workers)
{
    used = workers;
    ZSetMMX(workers.set != zkit::InstructionSet::plain);
}

namespace zkit {

InstructionSet chosenSet() { return used.set; }
Stores storesFor(std::ptrdiff_t) { return used.stores; }
void endStreaming() { _mm_sfence(); }

}  // namespace zkit
