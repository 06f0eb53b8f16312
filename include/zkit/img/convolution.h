// Convolution with a kernel of the caller's.
#pragma once

#include "zkit/core/roi.h"
#include "zkit/export.h"
#include "zkit/img/kernel.h"

/// Convolves src with a kernel. With c the kernel's coefficients, S their sum, the sums formed in double precision:
///
/// A kernel of 3 x 3, 5 x 5 or 7 x 7 with a rectifier other than 0 is applied in fixed point. Its coefficients become
/// the integers c g 32768 with g = gain / S or, when S is 0, gain, fractions truncated toward zero; beyond 32 bits the
/// nearest number is taken, 0 for NaN. The offset, a signed number, is multiplied by 32768. For rectifier 1 g and the
/// offset are negated. Integers of 32 bits wrap: the sum of coefficients times pixels and the offset is shifted right
/// by 15 bits, rounding down, and clipped to 0..255, for rectifier 3 after taking its absolute value. A pixel outside
/// the region counts as the nearest one in it. With a rectifier below 0 or above 3 dst is left as it is, without an
/// error.
///
/// Any other kernel is applied in floating point. Its coefficients become c g, with g = gain / S or, when S is 0,
/// gain, both rounded to single precision. The sum of coefficients times pixels, added in double precision row by row,
/// is truncated toward zero to 32 bits, beyond which the nearest number is taken, 0 for NaN, and rectified (1: -v for
/// v <= 0, else 0; 2: v for v >= 0, else 0; 3: |v|; other values: v); then the offset is added, modulo 2^32, and the
/// result clipped to 0..255. Column k and row r of the kernel lie over pixel (x + k - sizeX / 2, y + r - sizeY / 2),
/// with truncated halves; outside the region there is the kernel's outside value.
///
/// In floating point a 3 x 3 kernel treats the border of the region, one pixel wide, in its own way, which is intended:
/// the coefficient of the pixel below (index 7) is that of the pixel on the right (index 5), and the sum is rectified
/// with the offset in the place of the rectifier, after which nothing is added.
///
/// Works in place and between overlapping regions.
/// Errors, in this order: a pending error; 1400 null region; 1402 sizes differ; 1400 no pixels of src, of dst; 1700 no
/// kernel, a size of zero or below or less data than the sizes ask for; 1401 src, then dst, outside its image; 1303 no
/// working memory. dst is then unchanged. Returns 0 or the code. Trail: "ImgConvolKernel", in fixed point for 1401 and
/// 1303 after "ConvolKernel3x3", "ConvolKernel5x5" or "ConvolKernel7x7".
ZKIT_IMG_API short ImgConvolKernel(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZKernel* kernel);

/// The same on every component of a colour region.
/// Errors, in this order: a pending error; 1400 null region; 1400, 1401 of src; 1402; 1700; 1400, 1401 of dst; 1303.
/// dst is then unchanged. Trail: "ImgConvolKernel (C24)", for 1402, 1700 and 1303 after that of the grey form.
ZKIT_IMG_API void ImgConvolKernel(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZKernel* kernel);

/// Convolves src with a kernel that is symmetric about both axes and both diagonals, in fixed point as ImgConvolKernel
/// does. Only the coefficients of the upper left octant are read; the others are taken to equal them.
/// Runs also while an error is pending, which then has the name in its trail.
/// Errors, in this order: 1700 as for ImgConvolKernel; 1702 rectifier 0; 1703 not 3 x 3, 5 x 5 or 7 x 7; 1400 null
/// region or no pixels, 1401 outside its image, of src; 1402 sizes differ; 1400, 1401 of dst; 1303 no working memory.
/// dst is then unchanged. Trail: "ImgConvolSymmetricKernel", for errors of the regions and 1303 after
/// "ConvolKernelS3xS3", "ConvolKernelS5xS5" or "ConvolKernelS7xS7".
ZKIT_IMG_API void ImgConvolSymmetricKernel(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZKernel* kernel);
