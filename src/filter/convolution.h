// The two arithmetics of convolution. Widths count bytes; neighbours to the left and right are `step` bytes away (1, or
// 3 for colour). Source and destination may overlap. Both raise 1303 and return false without working memory.
#pragma once

#include "filter/fixed_convolution_workers.h"
#include "simd/plane.h"
#include "zkit/img/kernel.h"

namespace zkit {

// Kernels of 3 x 3, 5 x 5 and 7 x 7 with rectifiers 1 to 3; the symmetric form reads one octant of the coefficients.
FixedKernel fixedKernel(const ZKernel& kernel);
FixedKernel symmetricFixedKernel(const ZKernel& kernel);
bool convolveFixed(Source src, const Target& dst, int step, const FixedKernel& kernel);

// Fills in the coefficients as packed workers take them.
void makePairs(FixedKernel& kernel);

// Kernels of any size.
bool convolveFloating(Source src, const Target& dst, int step, const ZKernel& kernel);

}  // namespace zkit
