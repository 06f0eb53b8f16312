#include "zkit/core/error.h"

#include <atomic>
#include <mutex>

namespace {

// The state of every thread without a scope. The code is kept twice, so that asking for it takes no lock.
struct SharedState {
    std::mutex mutex;
    zkit::ErrorState state;
    std::atomic<short> code{Z_OK};
};

SharedState shared;
thread_local zkit::ErrorState* own = nullptr;  // the state of this thread's innermost scope

// Runs an action on the state that this thread uses.
template <class Action>
auto withState(Action action)
{
    if (own)
        return action(*own);
    const std::lock_guard lock(shared.mutex);
    const auto result = action(shared.state);
    shared.code.store(shared.state.code, std::memory_order_release);
    return result;
}

void clear(zkit::ErrorState& state)
{
    state.code = Z_OK;
    state.traceCount = 0;
    state.oldestTrace = 0;
}

void append(zkit::ErrorState& state, const char* name)
{
    const int capacity = zkit::ErrorState::trailCapacity;
    if (state.traceCount < capacity)
        state.traces[(state.oldestTrace + state.traceCount++) % capacity] = name;
    else {
        state.traces[state.oldestTrace] = name;
        state.oldestTrace = (state.oldestTrace + 1) % capacity;
    }
}

}  // namespace

short ZGetError() { return own ? own->code : shared.code.load(std::memory_order_acquire); }

short ZSetError(Z_ERRORS code)
{
    return withState([code](zkit::ErrorState& state) {
        if (state.code == Z_OK)
            clear(state);
        return state.code = code;
    });
}

short ZTraceError(const char* name)
{
    return withState([name](zkit::ErrorState& state) {
        append(state, name ? name : "");
        return state.code;
    });
}

short ZOk() { return Z_OK; }

void ZClearError()
{
    withState([](zkit::ErrorState& state) {
        clear(state);
        return Z_OK;
    });
}

int ZGetTraceCount()
{
    return withState([](zkit::ErrorState& state) { return state.traceCount; });
}

const char* ZGetTrace(int index)
{
    return withState([index](zkit::ErrorState& state) {
        if (index < 0 || index >= state.traceCount)
            return "";
        return state.traces[(state.oldestTrace + index) % zkit::ErrorState::trailCapacity];
    });
}

ZThreadErrorScope::ZThreadErrorScope() : outer_(own) { own = &state_; }

ZThreadErrorScope::~ZThreadErrorScope() { own = outer_; }
