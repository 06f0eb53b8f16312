// Which pixels belong together.
#pragma once

#include "measure/measure.h"

#include <cstdint>
#include <span>
#include <vector>

namespace zkit::tool {

/// Object pixels side by side in a row: columns `first` to `last`.
struct Run {
    int y, first, last;

    int length() const { return last - first + 1; }
};

/// The objects of a mask: its pixels of value 255 that touch, also at their corners. Found in two passes over the runs,
/// in time and memory proportional to the picture whatever it shows.
class ObjectMap {
public:
    /// @param mask  holds 0 and 255 only
    explicit ObjectMap(const ZImage<ZBW8>& mask);

    /// Objects are numbered in the order of their first pixels, row by row from the top left.
    std::size_t size() const { return starts_.size() - 1; }

    /// The runs of an object from the top left; the first run's first pixel is the object's first one.
    std::span<const Run> operator[](std::size_t object) const
    {
        return std::span(runs_).subspan(starts_[object], starts_[object + 1] - starts_[object]);
    }

private:
    std::vector<Run> runs_;            // object after object
    std::vector<std::size_t> starts_;  // of each object's runs, and the end of all
};

/// The smallest rectangle around an object.
Rectangle boxOf(std::span<const Run> object);

/// The number of its pixels.
std::int64_t areaOf(std::span<const Run> object);

}  // namespace zkit::tool
