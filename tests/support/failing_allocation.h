// What operations do when they run out of memory.
#pragma once

#include <functional>
#include <set>

// Whether allocations of this process can be made to fail. Not under sanitizers, which have an allocator of their own,
// nor with a C library other than glibc.
bool allocationsCanFail();

// While it lives, one allocation of its thread fails: that after the next `index` ones.
class FailingAllocation {
public:
    explicit FailingAllocation(int index);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    static bool hasFailed();
};

// Runs an operation again and again, with its first, its second, … allocation failing, until it needs no more, and
// returns the codes in which the failures end, 0 for one that is survived. They must leave no memory behind, and not
// keep the next call from succeeding.
std::set<short> endsOfFailingAllocations(const std::function<void()>& operation);

// For the allocation functions themselves, about the calling thread.
bool nextAllocationFails();
void countBlocks(int change);  // 1 for a block that is taken, -1 for one that is given back
