// Calls of C libraries that fail into a function which must not return to them.
#pragma once

#include "picture/picture.h"

#include <csetjmp>
#include <cstdio>
#include <string>
#include <type_traits>

namespace zkit::tool {

class JumpingCalls {
public:
    static constexpr int longestMessage = 200;

    explicit JumpingCalls(const char* format) : format_(format) {}

    // Runs calls that fail() leaves by a jump to here. The step and what it calls therefore own nothing.
    template <class Step>
    void run(Step step)
    {
        static_assert(std::is_trivially_destructible_v<Step>);
        if (setjmp(jump_) != 0)
            throw PictureError(std::string(format_) + ": " + message_);
        step();
    }

    [[noreturn]] void fail(const char* message)
    {
        std::snprintf(message_, sizeof message_, "%s", message);
        std::longjmp(jump_, 1);
    }

private:
    const char* format_;
    std::jmp_buf jump_{};
    char message_[longestMessage] = "";
};

}  // namespace zkit::tool
