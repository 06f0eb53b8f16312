// Linear filters.
#include "operation.h"
#include "zkit/img.h"

#include <map>
#include <memory>
#include <utility>

namespace bench {

namespace {

void lowpass3(Scene& scene) { ImgConvolLowpass3(scene.grey(), scene.greyResult()); }

void lowpass3Color(Scene& scene) { ImgConvolLowpass3(scene.color(), scene.colorResult()); }

// Rectifier 0 chooses floating point, 2 fixed point.
ZKernel* smoothing(short size, short rectifier)
{
    static std::map<std::pair<short, short>, std::unique_ptr<ZKernel>> kernels;
    std::unique_ptr<ZKernel>& kernel = kernels[{size, rectifier}];
    if (!kernel) {
        kernel = std::make_unique<ZKernel>(size, size, 1.F, 0, rectifier, 0);
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                kernel->SetKernelData(x, y, coefficient(size, x, y));
    }
    return kernel.get();
}

template <short size, short rectifier>
void convolve(Scene& scene)
{
    ImgConvolKernel(scene.grey(), scene.greyResult(), smoothing(size, rectifier));
}

template <short size, short rectifier>
void convolveColor(Scene& scene)
{
    ImgConvolKernel(scene.color(), scene.colorResult(), smoothing(size, rectifier));
}

template <short size>
void convolveSymmetric(Scene& scene)
{
    ImgConvolSymmetricKernel(scene.grey(), scene.greyResult(), smoothing(size, 2));
}

constexpr Operation table[] = {
    {"ImgConvolKernel", "BW8 fixed 3x3", 1, 1, convolve<3, 2>},
    {"ImgConvolKernel", "BW8 fixed 5x5", 1, 1, convolve<5, 2>},
    {"ImgConvolKernel", "BW8 fixed 7x7", 1, 1, convolve<7, 2>},
    {"ImgConvolKernel", "BW8 floating 3x3", 1, 1, convolve<3, 0>},
    {"ImgConvolKernel", "BW8 floating 5x5", 1, 1, convolve<5, 0>},
    {"ImgConvolKernel", "BW8 floating 7x7", 1, 1, convolve<7, 0>},
    {"ImgConvolKernel", "BW8 floating 9x9", 1, 1, convolve<9, 0>},
    {"ImgConvolKernel", "C24 fixed 3x3", 3, 3, convolveColor<3, 2>},
    {"ImgConvolKernel", "C24 fixed 7x7", 3, 3, convolveColor<7, 2>},
    {"ImgConvolKernel", "C24 floating 3x3", 3, 3, convolveColor<3, 0>},
    {"ImgConvolKernel", "C24 floating 9x9", 3, 3, convolveColor<9, 0>},
    {"ImgConvolSymmetricKernel", "BW8 3x3", 1, 1, convolveSymmetric<3>},
    {"ImgConvolSymmetricKernel", "BW8 5x5", 1, 1, convolveSymmetric<5>},
    {"ImgConvolSymmetricKernel", "BW8 7x7", 1, 1, convolveSymmetric<7>},
    {"ImgConvolLowpass3", "BW8", 1, 1, lowpass3},
    {"ImgConvolLowpass3", "C24", 3, 3, lowpass3Color},
};

}  // namespace

std::span<const Operation> filterOperations() { return table; }

}  // namespace bench
