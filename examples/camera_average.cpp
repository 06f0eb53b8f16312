// A noisy camera, simulated, whose frames are averaged: over the last eight, and recursively.
#include <zkit/img.h>

#include <cstdio>
#include <random>

namespace {

constexpr int width = 320, height = 240;

// Frames of a grey wall with noise of 8 levels.
class Camera {
public:
    void grab(ZImage<ZBW8>& frame)
    {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                frame.SetPixel(static_cast<ZBW8>(100 + static_cast<int>(generator_() % 29) - 14), x, y);
    }

private:
    std::minstd_rand generator_;
};

float noiseOf(ZImage<ZBW8>& frame)
{
    float deviation = 0, mean = 0;
    ImgPixelStdDev(&frame, deviation, mean);
    return deviation;
}

}  // namespace

int main()
{
    Camera camera;
    ZImage<ZBW8> frame(width, height), mean(width, height), smooth(width, height);

    // The mean of the last eight frames: noise shrinks by the root of 8.
    ZMovingAverage average(8, width, height, 0);

    // A mean of all frames in which older ones count less and less: noise shrinks to a quarter.
    ZBW16Vector table;
    ImgSetRecursiveAverageLUT(&table, 4, 0);
    ZImage<ZBW16> state(width, height);  // the mean in sixteenths of a level
    camera.grab(frame);
    ImgConvert(&frame, &state, 4);

    for (int i = 0; i < 40; ++i) {
        camera.grab(frame);
        average.Average(&frame, &mean);
        ImgRecursiveAverage(&frame, &state, &smooth, &table);
    }
    if (ZGetError() != Z_OK) {
        std::printf("%s: %s\n", ZGetTrace(0), ZErrorText(ZGetError()));
        return 1;
    }
    const float before = noiseOf(frame), ofMean = noiseOf(mean), ofSmooth = noiseOf(smooth);
    std::printf("noise %.2f levels, %.2f in the mean of eight, %.2f in the recursive one\n", before, ofMean, ofSmooth);
    return before > 8 && ofMean < before / 2.5F && ofSmooth < before / 3.5F ? 0 : 1;
}
