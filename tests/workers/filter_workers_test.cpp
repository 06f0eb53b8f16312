#include "filter/predefined_workers.h"
#include "support/workers.h"

using namespace zkit;

namespace {

TEST(FilterWorkers, predefined)
{
    using W = PredefinedWorkers;
    constexpr FilterBand W::*filters[] = {&W::highpass1,  &W::highpass2, &W::lowpass1,  &W::lowpass2,
                                          &W::lowpass3,   &W::sobelX,    &W::sobelY,    &W::sobelXY,
                                          &W::prewittX,   &W::prewittY,  &W::prewittXY, &W::laplacian4,
                                          &W::laplacian8, &W::lowpass1X, &W::lowpass1Y, &W::roberts};
    expectSameBands<PredefinedWorkers>(filters);
}

}  // namespace
