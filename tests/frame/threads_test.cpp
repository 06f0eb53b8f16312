// Several threads at once, each with errors of its own: ThreadSanitizer watches these tests.
#include "support/contour_model.h"
#include "support/errors.h"
#include "support/images.h"
#include "support/operation.h"

#include <cmath>
#include <thread>

void useWorkers(int choice) { ZSetMMX(choice != 0); }

namespace {

class ThreadsTest : public OperationTest {};

// Calls work(number of the thread) on so many threads.
template <class Work>
void onThreads(int count, const Work& work)
{
    std::vector<std::thread> threads;
    for (int t = 0; t < count; ++t)
        threads.emplace_back([&work, t] {
            const ZThreadErrorScope errors;
            work(t);
        });
    for (std::thread& thread : threads)
        thread.join();
}

// What every call of the table does that is made from the same few bytes each time, the `first` operation first.
std::vector<Outcome> outcomes(std::size_t first)
{
    constexpr std::size_t callsOfEach = 3;
    const std::size_t count = operations().size();
    std::vector<Outcome> all(callsOfEach * count);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::size_t k = (first + i) % all.size();
        Random random(static_cast<unsigned>(k));
        std::vector<std::uint8_t> bytes(k < count ? 0 : 64);
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random(0, 255));
        Input input(bytes.data(), bytes.size());
        const Call call = operations()[k % count].choose(input, Regions::any);
        all[k] = outcomeOf(call, call.layout, call.bytes, 1);
    }
    return all;
}

// The first calls, which choose workers and make tables, are among those that meet.
TEST_F(ThreadsTest, operations_do_not_disturb_each_other)
{
    std::vector<std::vector<Outcome>> results(4);
    onThreads(4, [&](int t) { results[static_cast<std::size_t>(t)] = outcomes(static_cast<std::size_t>(100 * t)); });
    const std::vector<Outcome> alone = outcomes(0);
    for (const std::vector<Outcome>& result : results)
        for (std::size_t k = 0; k < alone.size(); ++k)
            EXPECT_TRUE(result[k] == alone[k]) << operations()[k % operations().size()].name;
}

// Discs of different sizes and senses.
TEST_F(ThreadsTest, contours_do_not_disturb_each_other)
{
    std::vector<int> faults(8);
    onThreads(8, [&faults](int t) {
        const int radius = 10 + 3 * t, size = 2 * radius + t;  // cut off by two edges for a small t
        ZImage<ZBW8> image(size, size);
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                image.SetPixel(std::hypot(x - radius - 1, y - radius - 1) < radius ? 200 : 0, x, y);
        const auto sense = t % 2 ? CONTOUR_THRESHOLD_ABOVE : CONTOUR_THRESHOLD_BELOW;
        for (int round = 0; round < 60; ++round) {
            const auto mode = static_cast<CONTOUR_MODE>((t + round) % 6);
            const auto connexity = static_cast<CONNEXITY>(round % 2);
            const int x = t % 2 ? radius + 1 : 0, y = t % 2 ? 2 : 0;
            const ContourModel model(image, mode, x, y, sense, 100, connexity, false);
            ZPathVector path;
            ImgContour(&image, mode, x, y, sense, 100, connexity, &path);
            faults[static_cast<std::size_t>(t)] +=
                takeFailure().code != model.code || path.GetNumElements() != model.steps.size();
        }
    });
    EXPECT_EQ(faults, std::vector<int>(8));
}

// Every other thread fails all the time, the others never, and neither see the others.
TEST_F(ThreadsTest, errors_stay_on_their_thread)
{
    ZImage<ZBW8> image(64, 64);
    onThreads(4, [&image](int t) {
        ZROI<ZBW8> nowhere;
        for (int i = 0; i < 1000; ++i) {
            float average = 0;
            EXPECT_EQ(ImgPixelAverage(t % 2 ? &nowhere : &image, average), t % 2 ? 1400 : Z_OK);
            EXPECT_EQ(takeFailure().trail, t % 2 ? Trail{"ImgPixelAverage (BW8)"} : Trail{});
        }
    });
    EXPECT_FAILURE(Z_OK);
}

// Without scopes the state is shared: what is seen is anybody's, but touching it is no data race.
TEST_F(ThreadsTest, without_scopes_one_state_is_shared_safely)
{
    const auto hammer = [] {
        ZROI<ZBW8> nowhere;
        for (int i = 0; i < 1000; ++i) {
            unsigned char min = 0;
            ImgPixelMin(&nowhere, min);
            const std::string newest = ZGetTrace(ZGetTraceCount() - 1);
            EXPECT_TRUE(newest.empty() || newest == "ImgPixelMin");
            if (i % 8 == 0)
                ZClearError();
        }
    };
    std::thread first(hammer), second(hammer);
    first.join();
    second.join();
    ZClearError();
}

}  // namespace
