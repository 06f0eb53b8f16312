// The predefined 3 x 3 filters, a band of rows at a time.
#pragma once

#include "simd/plane.h"

namespace zkit {

struct PredefinedWorkers {
    FilterBand highpass1, highpass2;
    FilterBand lowpass1, lowpass2, lowpass3;
    FilterBand sobelX, sobelY, sobelXY;
    FilterBand prewittX, prewittY, prewittXY;
    FilterBand laplacian4, laplacian8;
    FilterBand lowpass1X, lowpass1Y, roberts;

    static const PredefinedWorkers plain, sse2, avx2;
};

}  // namespace zkit
