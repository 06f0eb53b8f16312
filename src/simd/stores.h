// How results are written: into the caches, or past them.
//
// A streamed store does not read the cache line that it fills and does not drive others out: at camera size a third of
// the traffic. Below, where the next operation still finds its source in the cache, streaming loses.
#pragma once

#include <cstddef>

namespace zkit {

enum class Stores { cached, streamed };

// Streamed where the bytes that an operation reads and writes exceed half the last-level cache of the processor (of
// 8 MiB where it does not say).
Stores storesFor(std::ptrdiff_t bytes);

// Makes streamed bytes visible to other threads before anything that this one writes from now on.
void endStreaming();

}  // namespace zkit
