// Morphology and the median.
#include "operation.h"
#include "zkit/img.h"

namespace bench {

namespace {

template <int n>
void erode(Scene& scene)
{
    ImgErode(scene.grey(), scene.greyResult(), n, 255);
}

template <int n>
void dilate(Scene& scene)
{
    ImgDilate(scene.grey(), scene.greyResult(), n, 0);
}

template <int n>
void erodeColor(Scene& scene)
{
    ImgErode(scene.color(), scene.colorResult(), n, {255, 255, 255});
}

template <int n>
void dilateColor(Scene& scene)
{
    ImgDilate(scene.color(), scene.colorResult(), n, {0, 0, 0});
}

// The grey and the colour form of an operation made of an erosion and a dilation.
template <short (*operation)(ZROI<ZBW8>*, ZROI<ZBW8>*, int, int, int), int first>
void both(Scene& scene)
{
    operation(scene.grey(), scene.greyResult(), 1, first, 255 - first);
}

template <void (*operation)(ZROI<ZC24>*, ZROI<ZC24>*, int, ZC24, ZC24), int first>
void bothColor(Scene& scene)
{
    constexpr unsigned char before = first, after = 255 - first;
    operation(scene.color(), scene.colorResult(), 1, {before, before, before}, {after, after, after});
}

void median(Scene& scene) { ImgMedian(scene.grey(), scene.greyResult()); }

void medianConstant(Scene& scene) { ImgMedian(scene.grey(), scene.greyResult(), 0); }

void medianColor(Scene& scene) { ImgMedian(scene.color(), scene.colorResult(), {0, 0, 0}); }

constexpr Operation table[] = {
    {"ImgErode", "BW8 n=1", 1, 1, erode<1>},
    {"ImgErode", "BW8 n=5", 1, 1, erode<5>},
    {"ImgErode", "BW8 n=15", 1, 1, erode<15>},
    {"ImgErode", "C24 n=1", 3, 3, erodeColor<1>},
    {"ImgErode", "C24 n=15", 3, 3, erodeColor<15>},
    {"ImgDilate", "BW8 n=1", 1, 1, dilate<1>},
    {"ImgDilate", "BW8 n=5", 1, 1, dilate<5>},
    {"ImgDilate", "BW8 n=15", 1, 1, dilate<15>},
    {"ImgDilate", "C24 n=1", 3, 3, dilateColor<1>},
    {"ImgOpen", "BW8 n=1", 1, 1, both<ImgOpen, 255>},
    {"ImgOpen", "C24 n=1", 3, 3, bothColor<ImgOpen, 255>},
    {"ImgClose", "BW8 n=1", 1, 1, both<ImgClose, 0>},
    {"ImgClose", "C24 n=1", 3, 3, bothColor<ImgClose, 0>},
    {"ImgWhiteTopHat", "BW8 n=1", 1, 1, both<ImgWhiteTopHat, 255>},
    {"ImgWhiteTopHat", "C24 n=1", 3, 3, bothColor<ImgWhiteTopHat, 255>},
    {"ImgBlackTopHat", "BW8 n=1", 1, 1, both<ImgBlackTopHat, 0>},
    {"ImgBlackTopHat", "C24 n=1", 3, 3, bothColor<ImgBlackTopHat, 0>},
    {"ImgMedian", "BW8 replicated", 1, 1, median},
    {"ImgMedian", "BW8 constant", 1, 1, medianConstant},
    {"ImgMedian", "C24", 3, 3, medianColor},
};

}  // namespace

std::span<const Operation> morphoOperations() { return table; }

}  // namespace bench
