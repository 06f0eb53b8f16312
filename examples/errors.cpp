// Failures: codes with a trail, and threads that do not stop each other.
#include <zkit/img.h>

#include <cstdio>
#include <thread>

namespace {

void report(const char* what)
{
    std::printf("%s: code %d, %s\n", what, ZGetError(), ZErrorText(ZGetError()));
    for (int i = 0; i < ZGetTraceCount(); ++i)
        std::printf("    in %s\n", ZGetTrace(i));
}

}  // namespace

int main()
{
    ZImage<ZBW8> picture(64, 64), other(32, 32), result(64, 64);
    ZROI<ZBW8> outside(&picture, 60, 0, 10, 10);
    float mean = 0;

    // Every operation checks its arguments before it touches a pixel. Many return the code, all of them leave it.
    if (ImgPixelAverage(&outside, mean) != Z_ERROR_ROI_PLACEMENT)
        return 1;
    report("a region that is not within its image");

    // While an error is pending further operations only add their names: check once, after the last one.
    ImgMedian(&picture, &result);
    report("an operation after it");
    ZClearError();

    // An error deep inside travels out with a name for each level.
    ImgWhiteTopHat(&picture, &other, 1, 255, 0);
    report("images of different sizes");
    const bool deep = ZGetError() == Z_ERROR_SIZE_MISMATCH;

    // A thread that works beside others has an error state of its own.
    short code = 0;
    std::thread worker([&] {
        const ZThreadErrorScope scope;
        code = ImgPixelAverage(&picture, mean);  // succeeds: the error above is not this thread's
    });
    worker.join();
    std::printf("on the other thread: code %d\n", code);
    ZClearError();
    return deep && code == Z_OK ? 0 : 1;
}
