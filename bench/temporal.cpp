// Interlaced frames, averages over time, and warping.
#include "operation.h"
#include "zkit/img.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

namespace bench {

Point turned(int i, int j, const Size& size)
{
    const double s = std::sin(rotation * 0.0174532925), c = std::cos(rotation * 0.0174532925);
    const double x = i - size.width / 2.0, y = j - size.height / 2.0;
    return {int(std::floor(c * x - s * y + size.width / 2.0)), int(std::floor(s * x + c * y + size.height / 2.0))};
}

Point nearest(Point at, const Size& size)
{
    return {std::clamp(at.x, 0, size.width - 1), std::clamp(at.y, 0, size.height - 1)};
}

namespace {

// Something that is made once for every size of images.
template <class T, class Make>
T& perSize(Scene& scene, std::map<const Scene*, std::unique_ptr<T>>& all, Make make)
{
    std::unique_ptr<T>& one = all[&scene];
    if (!one)
        one = make(scene.size());
    return *one;
}

void swapFrames(Scene& scene) { ImgSwapFrames(scene.grey(), scene.greyResult()); }

void swapFramesInPlace(Scene& scene) { ImgSwapFrames(scene.greyResult(), scene.greyResult()); }

// Both fields, so that a whole image is written.
void realign(Scene& scene)
{
    ImgRealignFrame(scene.grey(), scene.greyResult(), fieldShift, 0);
    ImgRealignFrame(scene.grey(), scene.greyResult(), fieldShift, 1);
}

void realignColor(Scene& scene)
{
    ImgRealignFrame(scene.color(), scene.colorResult(), fieldShift, 0);
    ImgRealignFrame(scene.color(), scene.colorResult(), fieldShift, 1);
}

void rebuild(Scene& scene)
{
    ImgRebuildFrame(scene.grey(), scene.greyResult(), 0);
    ImgRebuildFrame(scene.grey(), scene.greyResult(), 1);
}

void match(Scene& scene)
{
    int shift = 0;
    ImgMatchFrames(scene.grey(), scene.size().height / 2, -32, 31, shift);
}

// A sequence that goes on from call to call.
template <unsigned int period>
void movingAverage(Scene& scene)
{
    static std::map<const Scene*, std::unique_ptr<ZMovingAverage>> all;
    perSize(scene, all, [](const Size& size) {
        return std::make_unique<ZMovingAverage>(period, size.width, size.height, 0);
    }).Average(scene.grey(), scene.greyResult());
}

void movingAverageHeld(Scene& scene)
{
    static std::map<const Scene*, std::unique_ptr<ZMovingAverage>> all;
    ZMovingAverage& average = perSize(
        scene, all, [](const Size& size) { return std::make_unique<ZMovingAverage>(8U, size.width, size.height, 1); });
    average.GetSrcImage();
    average.Average(scene.greyResult());
}

struct Table : ZBW16Vector {
    Table() { ImgSetRecursiveAverageLUT(this, 4, 10); }
};

void recursiveAverage(Scene& scene)
{
    static Table table;
    ImgRecursiveAverage(scene.grey(), scene.grey16Result(), scene.greyResult(), &table);
}

void recursiveTable(Scene&)
{
    ZBW16Vector table;
    ImgSetRecursiveAverageLUT(&table, 4, 10);
}

// What turns an image about its middle.
struct Maps {
    ZImage<ZBW16> x, y;
    ZImage<ZBW32> packed;  // coordinates beyond the image are those of its nearest pixel

    explicit Maps(const Size& size)
        : x(size.width, size.height), y(size.width, size.height), packed(size.width, size.height)
    {
        for (int j = 0; j < size.height; ++j)
            for (int i = 0; i < size.width; ++i) {
                const Point at = turned(i, j, size);
                x.SetPixel(ZBW16(at.x), i, j);
                y.SetPixel(ZBW16(at.y), i, j);
                const Point inside = nearest(at, size);
                packed.SetPixel(ZBW32(inside.x) | ZBW32(inside.y) << 16, i, j);
            }
    }

    static Maps& of(Scene& scene)
    {
        static std::map<const Scene*, std::unique_ptr<Maps>> all;
        return perSize(scene, all, [](const Size& size) { return std::make_unique<Maps>(size); });
    }
};

void warp(Scene& scene)
{
    Maps& maps = Maps::of(scene);
    ImgWarp(scene.grey(), scene.greyResult(), &maps.x, &maps.y, 0, 0);
}

void warpColor(Scene& scene)
{
    Maps& maps = Maps::of(scene);
    ImgWarp(scene.color(), scene.colorResult(), &maps.x, &maps.y, 0, 0);
}

void warpPacked(Scene& scene) { ImgWarp(scene.grey(), scene.greyResult(), &Maps::of(scene).packed); }

void circleWarp(Scene& scene)
{
    static ZImage<ZBW16> x, y;
    const Size& size = scene.size();
    ImgSetCircleWarp(200, 200, size.height, 180, 100, size.width, 0, 360, &x, &y);
}

constexpr Operation table[] = {
    {"ImgSwapFrames", "BW8", 1, 1, swapFrames},
    {"ImgSwapFrames", "BW8 in place", 1, 1, swapFramesInPlace},
    {"ImgRealignFrame", "BW8", 1, 1, realign},
    {"ImgRealignFrame", "C24", 3, 3, realignColor},
    {"ImgRebuildFrame", "BW8", 1, 1, rebuild},
    {"ImgMatchFrames", "BW8 64 shifts", 0, 0, match},
    {"ZMovingAverage", "BW8 of 8", 4, 4, movingAverage<8>},
    {"ZMovingAverage", "BW8 of 5", 4, 4, movingAverage<5>},
    {"ZMovingAverage", "BW8 of 8 held", 4, 3, movingAverageHeld},
    {"ImgRecursiveAverage", "BW8", 3, 3, recursiveAverage},
    {"ImgSetRecursiveAverageLUT", "8191", 0, 0, recursiveTable},
    {"ImgWarp", "BW8", 5, 1, warp},
    {"ImgWarp", "C24", 7, 3, warpColor},
    {"ImgWarp", "BW8 packed map", 5, 1, warpPacked},
    {"ImgSetCircleWarp", "BW16", 0, 4, circleWarp},
};

}  // namespace

std::span<const Operation> temporalOperations() { return table; }

}  // namespace bench
