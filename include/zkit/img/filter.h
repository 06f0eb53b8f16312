// Linear filters on a neighbourhood of every pixel.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"
#include "zkit/img/convolution.h"
#include "zkit/img/kernel.h"

/// The predefined filters. Each makes a value v of the 3 x 3 neighbourhood of every pixel,
///
///     a0 a1 a2
///     a3 a4 a5        a4 being the pixel, x growing to the right and y downward,
///     a6 a7 a8
///
/// where pixels outside the region count 0: a lowpass darkens the border, the other ones respond along it. Unless the
/// filter says otherwise, dst = min(|v|, 255): slopes of either sign are bright.
///
/// The grey forms run also while an error is pending, which they then return.
/// Errors, in this order: 1400 null region; 1402 sizes differ; 1400 no pixels; 1401 region outside its image; 1303 no
/// memory for work rows. dst is then unchanged. They return 0 or the code; trail: the name of the function.
///
/// The colour forms filter every component by itself.
/// Errors, in this order: a pending error; 1400 null region; 1400, 1401 of src; 1402; 1400, 1401 of dst; 1303. dst is
/// then unchanged. Trail: the name and " (C24)", for 1402 inside it the name alone.
///
/// All work in place and between overlapping regions.

/// v = 5 a4 - a1 - a3 - a5 - a7.
ZKIT_IMG_API short ImgConvolHighpass1(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolHighpass1(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = 9 a4 - (a0 + a1 + a2 + a3 + a5 + a6 + a7 + a8).
ZKIT_IMG_API short ImgConvolHighpass2(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolHighpass2(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// Gaussian smoothing: dst = (a0 + a2 + a6 + a8 + 2 (a1 + a3 + a5 + a7) + 4 a4 + 8) / 16, truncated.
ZKIT_IMG_API short ImgConvolLowpass1(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolLowpass1(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// Mean of the neighbours without the pixel itself: dst = (a0 + a1 + a2 + a3 + a5 + a6 + a7 + a8) / 8, truncated.
ZKIT_IMG_API short ImgConvolLowpass2(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolLowpass2(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// Uniform smoothing: dst = (sum of all nine) / 9, truncated.
ZKIT_IMG_API short ImgConvolLowpass3(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolLowpass3(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = (a2 - a0) + 2 (a5 - a3) + (a8 - a6).
ZKIT_IMG_API short ImgConvolSobelX(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolSobelX(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = (a6 - a0) + 2 (a7 - a1) + (a8 - a2).
ZKIT_IMG_API short ImgConvolSobelY(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolSobelY(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = |v of ImgConvolSobelX| + |v of ImgConvolSobelY|.
ZKIT_IMG_API short ImgConvolSobelXY(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolSobelXY(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = (a2 + a5 + a8) - (a0 + a3 + a6).
ZKIT_IMG_API short ImgConvolPrewittX(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolPrewittX(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = (a6 + a7 + a8) - (a0 + a1 + a2).
ZKIT_IMG_API short ImgConvolPrewittY(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolPrewittY(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = |v of ImgConvolPrewittX| + |v of ImgConvolPrewittY|.
ZKIT_IMG_API short ImgConvolPrewittXY(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolPrewittXY(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = a1 + a3 + a5 + a7 - 4 a4.
ZKIT_IMG_API short ImgConvolLaplacian4(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolLaplacian4(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// v = a0 + a1 + a2 + a3 + a5 + a6 + a7 + a8 - 8 a4.
ZKIT_IMG_API short ImgConvolLaplacian8(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgConvolLaplacian8(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// Horizontal smoothing: dst = (a3 + 2 a4 + a5) / 4, truncated, where a pixel missing at an end of the row equals a4.
/// Works in place and between overlapping regions. Runs also while an error is pending.
/// Errors, in this order: 1400 null region or no pixels; 1402 sizes differ; 1401 region outside its image; 1303 no
/// memory for work rows. dst is then unchanged. Trail: "ImgConvolLowpass1X", also after success, which is intended.
ZKIT_IMG_API void ImgConvolLowpass1X(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// Vertical smoothing: dst = (a1 + 2 a4 + a7) / 4, and otherwise the same. Trail: "ImgConvolLowpass1Y", always.
ZKIT_IMG_API void ImgConvolLowpass1Y(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// Diagonal slopes: dst = min(|a4 - a8| + |a5 - a7|, 255), where pixels missing at the right end of a row or below the
/// last row equal those beside them: the last column becomes 2 |a4 - a7|, the last row 2 |a4 - a5|, its last pixel 0.
/// The sizes may differ: the pixels of dst that src has, too, are written, and the ends are those of src.
/// Works in place and between overlapping regions.
/// Errors, in this order: a pending error; 1400 null region; 1400, 1401 of src; 1400, 1401 of dst; 1303 no memory for
/// work rows. dst is then unchanged. Trail: "ImgConvolRoberts".
ZKIT_IMG_API void ImgConvolRoberts(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// The same on every component of a colour region. Trail: "ImgConvolRoberts (C24)".
ZKIT_IMG_API void ImgConvolRoberts(ZROI<ZC24>* src, ZROI<ZC24>* dst);
