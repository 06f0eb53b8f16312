// Linear filters.
#include "operation.h"
#include "zkit/img.h"

#include <map>
#include <memory>
#include <utility>

namespace bench {

namespace {

template <class Result>
using Grey = Result (*)(ZROI<ZBW8>*, ZROI<ZBW8>*);
using Colour = void (*)(ZROI<ZC24>*, ZROI<ZC24>*);

template <Grey<short> filter>
void grey(Scene& scene)
{
    filter(scene.grey(), scene.greyResult());
}

template <Grey<void> filter>
void silentGrey(Scene& scene)
{
    filter(scene.grey(), scene.greyResult());
}

template <Colour filter>
void color(Scene& scene)
{
    filter(scene.color(), scene.colorResult());
}

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
    {"ImgConvolHighpass1", "BW8", 1, 1, grey<ImgConvolHighpass1>},
    {"ImgConvolHighpass1", "C24", 3, 3, color<ImgConvolHighpass1>},
    {"ImgConvolHighpass2", "BW8", 1, 1, grey<ImgConvolHighpass2>},
    {"ImgConvolHighpass2", "C24", 3, 3, color<ImgConvolHighpass2>},
    {"ImgConvolLowpass1", "BW8", 1, 1, grey<ImgConvolLowpass1>},
    {"ImgConvolLowpass1", "C24", 3, 3, color<ImgConvolLowpass1>},
    {"ImgConvolLowpass2", "BW8", 1, 1, grey<ImgConvolLowpass2>},
    {"ImgConvolLowpass2", "C24", 3, 3, color<ImgConvolLowpass2>},
    {"ImgConvolLowpass3", "BW8", 1, 1, grey<ImgConvolLowpass3>},
    {"ImgConvolLowpass3", "C24", 3, 3, color<ImgConvolLowpass3>},
    {"ImgConvolSobelX", "BW8", 1, 1, grey<ImgConvolSobelX>},
    {"ImgConvolSobelX", "C24", 3, 3, color<ImgConvolSobelX>},
    {"ImgConvolSobelY", "BW8", 1, 1, grey<ImgConvolSobelY>},
    {"ImgConvolSobelY", "C24", 3, 3, color<ImgConvolSobelY>},
    {"ImgConvolSobelXY", "BW8", 1, 1, grey<ImgConvolSobelXY>},
    {"ImgConvolSobelXY", "C24", 3, 3, color<ImgConvolSobelXY>},
    {"ImgConvolPrewittX", "BW8", 1, 1, grey<ImgConvolPrewittX>},
    {"ImgConvolPrewittX", "C24", 3, 3, color<ImgConvolPrewittX>},
    {"ImgConvolPrewittY", "BW8", 1, 1, grey<ImgConvolPrewittY>},
    {"ImgConvolPrewittY", "C24", 3, 3, color<ImgConvolPrewittY>},
    {"ImgConvolPrewittXY", "BW8", 1, 1, grey<ImgConvolPrewittXY>},
    {"ImgConvolPrewittXY", "C24", 3, 3, color<ImgConvolPrewittXY>},
    {"ImgConvolLaplacian4", "BW8", 1, 1, grey<ImgConvolLaplacian4>},
    {"ImgConvolLaplacian4", "C24", 3, 3, color<ImgConvolLaplacian4>},
    {"ImgConvolLaplacian8", "BW8", 1, 1, grey<ImgConvolLaplacian8>},
    {"ImgConvolLaplacian8", "C24", 3, 3, color<ImgConvolLaplacian8>},
    {"ImgConvolLowpass1X", "BW8", 1, 1, silentGrey<ImgConvolLowpass1X>},
    {"ImgConvolLowpass1Y", "BW8", 1, 1, silentGrey<ImgConvolLowpass1Y>},
    {"ImgConvolRoberts", "BW8", 1, 1, silentGrey<ImgConvolRoberts>},
    {"ImgConvolRoberts", "C24", 3, 3, color<ImgConvolRoberts>},
};

}  // namespace

std::span<const Operation> filterOperations() { return table; }

}  // namespace bench
