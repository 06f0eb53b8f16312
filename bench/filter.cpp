// Linear filters.
#include "operation.h"
#include "zkit/img.h"

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

constexpr Operation table[] = {
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
