// Rows of working memory with room on both sides for what lies outside a region.
#pragma once

#include "frame/checks.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace zkit {

// So many entries beyond those they need may workers read: all but one of the lanes of a vector.
constexpr std::ptrdiff_t readAhead = 31;

template <class T>
class WorkRows {
public:
    // `rows` rows of `count` entries, `left` and `right` more of them beside each, all `value`. Raises 1303 and returns
    // false when there is no memory for them.
    bool make(std::ptrdiff_t rows, std::ptrdiff_t left, std::ptrdiff_t count, std::ptrdiff_t right, T value)
    {
        const std::int64_t pitch = std::int64_t{left} + count + right + readAhead, entries = rows * pitch;
        if (entries <= static_cast<std::int64_t>(PTRDIFF_MAX / sizeof(T)))
            entries_.reset(new (std::nothrow) T[static_cast<std::size_t>(entries)]);
        if (!require(entries_ != nullptr, Z_ERROR_OUT_OF_MEMORY))
            return false;
        left_ = left;
        pitch_ = static_cast<std::ptrdiff_t>(pitch);
        std::fill_n(entries_.get(), entries, value);
        return true;
    }

    // The first one of the `count` entries.
    T* row(std::ptrdiff_t index) const { return entries_.get() + index * pitch_ + left_; }

private:
    std::unique_ptr<T[]> entries_;
    std::ptrdiff_t left_ = 0, pitch_ = 0;
};

}  // namespace zkit
