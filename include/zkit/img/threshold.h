// Thresholding: images of two or three levels, to and from images of bits.
//
// All of these work in place where the pixel types are the same, and regions that overlap in any other way give the
// result of separate regions. No pixel outside the destination region is written, in images of bits no bit outside it.
// Errors leave dst unchanged.
#pragma once

#include "zkit/color.h"
#include "zkit/core/error.h"
#include "zkit/core/pixel.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"

enum IMG_THRESHOLD_MODES : int;

/// dst = src >= threshold ? high : low.
/// @param threshold  0..255, or one of IMG_THRESHOLD_MODES: then ImgHistogramThreshold chooses it from the histogram of
///                   src. A chosen threshold of 256 (IMG_THRESHOLD_RELATIVE with relative 1) gives low everywhere.
/// @param relative   for IMG_THRESHOLD_RELATIVE: the part of the pixels below the threshold, 0..1.
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1402 sizes differ; with a mode those of
/// ImgHistogram and ImgHistogramThreshold (1012 above 255 and no mode, 1015 relative); 1303 no memory to keep
/// overlapping regions apart. Returns 0 or the code. Trail: "ImgThreshold", after that of the operation that failed.
ZKIT_IMG_API short ImgThreshold(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, unsigned int threshold, unsigned char low,
                                unsigned char high, float relative);

/// dst = above for src > highThreshold, else between for src >= lowThreshold, else below. With a lowThreshold beyond
/// highThreshold no pixel is between; thresholds above 255 are beyond all pixels.
/// Errors, in this order: a pending error; 1400 null region; 1402 sizes differ; 1400 no pixels, of dst and then of src;
/// 1401 region outside its image; 1303 no memory to keep overlapping regions apart. Returns 0 or the code. Trail:
/// "ImgDoubleThreshold (BW8 to BW8)".
ZKIT_IMG_API short ImgDoubleThreshold(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, unsigned int lowThreshold,
                                      unsigned int highThreshold, unsigned char below, unsigned char between,
                                      unsigned char above);

/// Sets the bits of dst where src >= threshold and clears the others. A threshold above 255 clears all: the modes mean
/// nothing here.
/// Errors, in this order: a pending error; 1400 dst null or without pixels; 1400 src null; 1402 sizes differ; 1400,
/// 1401 of src, then of dst; 1303 no memory to keep overlapping regions apart. Trail: "ImgThreshold (BW8 to BW1)".
ZKIT_IMG_API void ImgThreshold(ZROI<ZBW8>* src, ZROI<ZBW1>* dst, unsigned int threshold);

/// dst = oneValue where the bit of src is set, else zeroValue. Errors as above. Trail: "ImgThreshold (BW1 to BW8)".
ZKIT_IMG_API void ImgThreshold(ZROI<ZBW1>* src, ZROI<ZBW8>* dst, unsigned char zeroValue, unsigned char oneValue);

/// dst = inside where each of the three bytes of src lies between the same byte of minimum and of maximum, both
/// included, else outside.
/// @param lookup  converts the colours of src before they are compared, unless it is null.
/// Errors, in this order: a pending error; 1400 null region or no pixels, of src and then of dst; 1402 sizes differ;
/// 1401 region outside its image; 1303 no memory to keep overlapping regions apart. Trail: "ImgThreshold (C24)".
ZKIT_IMG_API void ImgThreshold(ZROI<ZC24>* src, ZROI<ZBW8>* dst, ZC24 minimum, ZC24 maximum, ZColorLookup* lookup,
                               unsigned char outside, unsigned char inside);

/// The threshold that ImgHistogramThreshold chooses for a region from the levels 0 to 255: its low 8 bits, so that 256
/// (IMG_THRESHOLD_RELATIVE with relative 1) gives 0. A threshold in the place of a mode is given back. 0 after a
/// failure. Errors: those of ImgHistogram, and of ImgHistogramThreshold, which is not called after them. It has no
/// trace name of its own.
ZKIT_IMG_API unsigned char ImgAutoThreshold(ZROI<ZBW8>* src, IMG_THRESHOLD_MODES mode, float relative);
