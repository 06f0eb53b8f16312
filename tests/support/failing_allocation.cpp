#include "support/failing_allocation.h"

#include "support/errors.h"

#include <cstdlib>

namespace {

// Plain numbers: they are touched by allocations before and after everything else of a thread is there.
thread_local int allocationsLeft = -1;  // before the one that fails; none fails when negative
thread_local int blocksTaken = 0;

}  // namespace

FailingAllocation::FailingAllocation(int index) { allocationsLeft = index; }

FailingAllocation::~FailingAllocation() { allocationsLeft = -1; }

bool FailingAllocation::hasFailed() { return allocationsLeft < 0; }

bool nextAllocationFails() { return allocationsLeft >= 0 && allocationsLeft-- == 0; }

void countBlocks(int change) { blocksTaken += change; }

bool allocationsCanFail()
{
    const FailingAllocation failing(0);
    void* (*volatile allocate)(std::size_t) = std::malloc;  // volatile: compilers know too well what malloc does
    void* const block = allocate(1);
    std::free(block);
    return !block;
}

std::set<short> endsOfFailingAllocations(const std::function<void()>& operation)
{
    operation();  // what is only allocated once is there from now on
    EXPECT_EQ(takeFailure().code, Z_OK);
    std::set<short> ends;
    for (int index = 0;; ++index) {
        SCOPED_TRACE(testing::Message() << "after " << index << " allocations");
        const int before = blocksTaken;
        bool failed = false;
        {
            const FailingAllocation failing(index);
            operation();
            failed = FailingAllocation::hasFailed();
        }
        EXPECT_EQ(blocksTaken, before) << "memory left behind";
        const short code = takeFailure().code;
        if (!failed) {
            EXPECT_EQ(code, Z_OK);
            return ends;
        }
        ends.insert(code);
        operation();
        EXPECT_EQ(takeFailure().code, Z_OK);
    }
}
