// Morphology and the median: extremes and medians of the pixels around each pixel.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"

// Erosion and dilation, and what is made of them. n passes of 3 x 3 take the smallest or largest value of the square of
// 2 n + 1 pixels a side around each pixel. Plain workers make these passes; packed ones take a time that hardly depends
// on n. Pixels outside the region have a border value, of which the lower 8 bits count: 255 when eroding and 0 when
// dilating leave the border to the pixels inside. n = 0 or below is success and leaves the destination untouched.
//
// They work in place and between overlapping regions, unless said otherwise. A colour border has a byte for each byte
// of a pixel, in the same order.
//
// Errors of the grey forms, in this order: a pending error; and for n > 0: 1400 null region; 1402 sizes differ; 1400 no
// pixels; 1401 region outside its image; 1303 no memory to keep overlapping regions apart. dst is then unchanged. They
// return 0 or the code; trail: "ImgErodeDilate" and the operation's name. Errors of the colour forms: a pending error;
// 1400, 1401 of src, then of dst; those of the grey form, followed by the operation's name and the one in quotes.
//
// Without memory for work rows nothing is raised, and only the neighbours to the left and right count, which is
// intended.

/// The smallest value of the square.
ZKIT_IMG_API short ImgErode(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int border);

/// The same for every component. "ImgErode (C24)"
ZKIT_IMG_API void ImgErode(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 border);

/// The largest value of the square.
ZKIT_IMG_API short ImgDilate(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int border);

/// The same for every component. "ImgDilate (C24)"
ZKIT_IMG_API void ImgDilate(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 border);

/// An erosion and then a dilation, each with its border value: removes what is bright and narrower than the square.
ZKIT_IMG_API short ImgOpen(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderErode, int borderDilate);

/// The same for every component. "ImgOpen (C24)"
ZKIT_IMG_API void ImgOpen(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderErode, ZC24 borderDilate);

/// A dilation and then an erosion, each with its border value: removes what is dark and narrower than the square.
ZKIT_IMG_API short ImgClose(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderDilate, int borderErode);

/// The same for every component. "ImgClose (C24)"
ZKIT_IMG_API void ImgClose(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderDilate, ZC24 borderErode);

/// What an opening removes: dst = src - opening, at least 0. The two regions must not lie on the same image.
/// Errors, in this order: a pending error; 1400 null region; 1413 same image; 1400 no pixels; 1401 region outside its
/// image; and for n > 0: 1402 of ImgOpen; 1303 no memory to keep overlapping regions apart. dst is then unchanged.
/// Returns 0 or the code. Trail: "ImgWhiteTopHat", for errors of ImgOpen after its trail.
ZKIT_IMG_API short ImgWhiteTopHat(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderErode, int borderDilate);

/// The same for every component. Works also on one image and in place, where it copies the source.
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; and for n > 0: 1402 sizes differ, 1303 no
/// memory to keep overlapping regions apart. dst is then unchanged. Trail: "ImgWhiteTopHat (C24)", for 1402 after the
/// trail of the grey form.
ZKIT_IMG_API void ImgWhiteTopHat(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderErode, ZC24 borderDilate);

/// What a closing removes: dst = closing - src, at least 0. The two regions must not lie on the same image.
/// Errors as of ImgWhiteTopHat, with ImgClose for ImgOpen. Trail: "ImgBlackTopHat".
ZKIT_IMG_API short ImgBlackTopHat(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderDilate, int borderErode);

/// The same for every component. Works also on one image and in place, where it copies the source.
/// Errors as of the colour form of ImgWhiteTopHat. Trail: "ImgBlackTopHat (C24)".
ZKIT_IMG_API void ImgBlackTopHat(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderDilate, ZC24 borderErode);

/// The median of the 3 x 3 neighbourhood. Pixels outside the region have the border value, of which the lower 8 bits
/// count. Regions that overlap give the result of separate ones; but in place the row above a pixel is taken as already
/// filtered, which is intended.
/// Errors, in this order: a pending error; 1400 null region; 1402 sizes differ; 1400 no pixels; 1401 region outside its
/// image; 1303 no memory for work rows. dst is then unchanged. Returns 0 or the code. Trail: "ImgMedian".
ZKIT_IMG_API short ImgMedian(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int border);

/// The same with the nearest pixel of the region for pixels outside. Works in place and between overlapping regions,
/// and on several threads at once.
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1402 sizes differ; 1303 no memory for work
/// rows. dst is then unchanged. Trail: "ImgMedian".
ZKIT_IMG_API void ImgMedian(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// The median of every component with a border value for each byte of a pixel. Works in place and between overlapping
/// regions: all rows are taken as they were.
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1402; 1303. dst is then unchanged. Trail:
/// "ImgMedian (C24)", for 1402 and 1303 after "ImgMedian".
ZKIT_IMG_API void ImgMedian(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZC24 border);
