#include "inspect/objects.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace zkit::tool {
namespace {

constexpr unsigned char backgroundLevel = 0, objectLevel = 255;

void findRuns(const ZImage<ZBW8>& mask, int y, std::vector<Run>& runs)
{
    const auto* const row = static_cast<const unsigned char*>(mask.GetPixelPtr(0, y));
    const unsigned char* const end = row + mask.GetWidth();
    const auto next = [end](const unsigned char* from, unsigned char wanted) {
        const void* const found = std::memchr(from, wanted, static_cast<std::size_t>(end - from));
        return found == nullptr ? end : static_cast<const unsigned char*>(found);
    };
    for (const unsigned char* first = next(row, objectLevel); first != end;) {
        const unsigned char* const stop = next(first, backgroundLevel);
        runs.push_back({y, static_cast<int>(first - row), static_cast<int>(stop - row) - 1});
        first = next(stop, objectLevel);
    }
}

// Sets of runs, each known by its first one.
class Sets {
public:
    void grow(std::size_t size)
    {
        const std::size_t before = firsts_.size();
        firsts_.resize(size);
        std::iota(firsts_.begin() + static_cast<std::ptrdiff_t>(before), firsts_.end(), before);
    }

    std::size_t firstOf(std::size_t run)
    {
        while (firsts_[run] != run)
            run = firsts_[run] = firsts_[firsts_[run]];
        return run;
    }

    void join(std::size_t one, std::size_t other)
    {
        one = firstOf(one);
        other = firstOf(other);
        firsts_[std::max(one, other)] = std::min(one, other);
    }

private:
    std::vector<std::size_t> firsts_;  // leads towards the set's first run
};

// Joins the runs of a row, from `here` on, with those of the row above, from `above` to `here`.
void joinRows(const std::vector<Run>& runs, std::size_t above, std::size_t here, Sets& sets)
{
    for (std::size_t i = above, j = here; i < here && j < runs.size();) {
        if (runs[i].first <= runs[j].last + 1 && runs[j].first <= runs[i].last + 1)
            sets.join(i, j);
        runs[i].last < runs[j].last ? ++i : ++j;
    }
}

}  // namespace

ObjectMap::ObjectMap(const ZImage<ZBW8>& mask)
{
    std::vector<Run> runs;
    Sets sets;
    for (int y = 0, height = mask.GetHeight(); y < height; ++y) {
        const std::size_t here = runs.size();
        findRuns(mask, y, runs);
        sets.grow(runs.size());
        std::size_t above = here;
        while (above > 0 && runs[above - 1].y == y - 1)
            --above;
        joinRows(runs, above, here, sets);
    }

    // Numbers the sets in the order of their first runs, and sorts the runs by them, keeping their order.
    std::vector<std::size_t> numbers(runs.size());
    starts_.push_back(0);
    for (std::size_t run = 0; run < runs.size(); ++run) {
        const std::size_t first = sets.firstOf(run);
        if (first == run) {
            numbers[run] = starts_.size() - 1;
            starts_.push_back(0);
        } else {
            numbers[run] = numbers[first];
        }
        ++starts_[numbers[run] + 1];
    }
    std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
    runs_.resize(runs.size());
    std::vector<std::size_t> places(starts_.begin(), starts_.end());
    for (std::size_t run = 0; run < runs.size(); ++run)
        runs_[places[numbers[run]]++] = runs[run];
}

Rectangle boxOf(std::span<const Run> object)
{
    int left = object.front().first, right = object.front().last;
    for (const Run& run : object) {
        left = std::min(left, run.first);
        right = std::max(right, run.last);
    }
    const int top = object.front().y;
    return {left, top, right - left + 1, object.back().y - top + 1};
}

std::int64_t areaOf(std::span<const Run> object)
{
    return std::accumulate(object.begin(), object.end(), std::int64_t{0},
                           [](std::int64_t sum, const Run& run) { return sum + run.length(); });
}

}  // namespace zkit::tool
