// The frame of every exported operation: its trace name, the refusal to run while an error is pending, its end.
#pragma once

#include "zkit/core/error.h"

namespace zkit {

class CallFrame {
public:
    explicit CallFrame(const char* name) : name_(name) {}

    // Whether no error is pending: the first check of an operation.
    bool clear() const { return ZGetError() == Z_OK; }

    // Ends a call that failed, or one that records its name whatever happened.
    short trace() const { return ZTraceError(name_); }

    // The same for an operation that returns a value.
    template <class T>
    T trace(T value) const
    {
        ZTraceError(name_);
        return value;
    }

    // Ends a call whose work is done.
    short finish() const { return clear() ? ZOk() : trace(); }

    // Returns the value, or 0 when the work has raised an error.
    template <class T>
    T finish(T value) const
    {
        return clear() ? value : trace(T{});
    }

private:
    const char* name_;
};

}  // namespace zkit
