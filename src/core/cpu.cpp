#include "zkit/core/cpu.h"

#include <atomic>

namespace {
std::atomic<int> packedWorkers{1};
}

int ZGetMMX() { return packedWorkers.load(std::memory_order_relaxed); }

void ZSetMMX(int enabled) { packedWorkers.store(enabled != 0, std::memory_order_relaxed); }
