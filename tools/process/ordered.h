// Work on several threads whose results are used in order.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace zkit::tool {

/// Runs work(i) for i from 0 to count - 1 on `jobs` threads, and use(result) for the results in order on this one. No
/// more than twice as many results as there are threads wait for their turn. As soon as stopped() holds nothing new is
/// begun; what has been begun is finished and used. work must not throw.
template <class Work, class Use, class Stopped>
void inOrder(std::size_t count, std::size_t jobs, Work work, Use use, Stopped stopped)
{
    const std::size_t threads = std::min(count, jobs), window = 2 * jobs;
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::optional<decltype(work(count))>> results(window);
    std::size_t begun = 0, used = 0, working = threads;
    bool abandoned = false;

    const auto run = [&] {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [&] { return begun == count || begun < used + window || abandoned; });
            if (begun == count || abandoned || stopped())
                break;
            const std::size_t i = begun++;
            lock.unlock();
            auto result = work(i);
            lock.lock();
            results[i % window] = std::move(result);
            changed.notify_all();
        }
        --working;
        changed.notify_all();
    };

    std::vector<std::jthread> pool;
    try {
        for (std::size_t i = 0; i < threads; ++i)
            pool.emplace_back(run);
        for (;;) {
            std::unique_lock lock(mutex);
            changed.wait(lock, [&] { return results[used % window] || working == 0; });
            if (!results[used % window])
                return;
            const auto result = std::move(*results[used % window]);
            results[used % window].reset();
            ++used;
            changed.notify_all();
            lock.unlock();
            use(result);
        }
    } catch (...) {
        const std::lock_guard lock(mutex);
        abandoned = true;
        changed.notify_all();
        throw;
    }
}

}  // namespace zkit::tool
