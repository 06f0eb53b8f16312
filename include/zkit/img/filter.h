// Linear filters on a neighbourhood of every pixel.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"
#include "zkit/img/convolution.h"
#include "zkit/img/kernel.h"

/// Uniform smoothing: dst = (sum of the 3 x 3 neighbourhood of src) / 9, truncated. Pixels outside the region count 0,
/// so that the border darkens. Works in place and between overlapping regions.
/// Runs also while an error is pending, which it then returns.
/// Errors, in this order: 1400 null region; 1402 sizes differ; 1400 no pixels; 1401 region outside its image; 1303 no
/// memory for work rows. dst is then unchanged. Returns 0 or the code; trail: "ImgConvolLowpass3".
ZKIT_IMG_API short ImgConvolLowpass3(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// The same on every component of a colour region.
/// Errors, in this order: a pending error; 1400 null region; 1400, 1401 of src; 1402; 1400, 1401 of dst; 1303. Trail:
/// "ImgConvolLowpass3 (C24)", for 1402 inside it "ImgConvolLowpass3".
ZKIT_IMG_API void ImgConvolLowpass3(ZROI<ZC24>* src, ZROI<ZC24>* dst);
