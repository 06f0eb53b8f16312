// Point operations: every destination pixel is a function of the source pixel at the same place.
//
// All of them work in place, and regions that overlap in any other way give the result of separate regions. No pixel
// outside the destination region is written. Thresholds, and arithmetic between images, have headers of their own,
// which this one includes.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"
#include "zkit/img/arithmetic.h"
#include "zkit/img/threshold.h"
#include "zkit/img/vectors.h"

/// Applies a table: dst(x, y) = table[src(x, y)].
/// @param lut  at least 1 group of at least 256 elements of at least 2 bytes, data type 1, as SetType(3, 1, 256) makes
///             it. The table is the first 256 bytes of its data, whatever the element size.
/// Errors, in this order: a pending error; 1400 null region; 1402 sizes differ; 1601 null vector; 1602 the vector has
/// another structure; 1601 it has no data; 1400 no pixels; 1401 region outside its image; 1303 no memory to keep
/// overlapping regions apart. dst is then unchanged. Returns 0 or the code. Trail: "ImgLut", twice from the second 1400
/// on.
ZKIT_IMG_API short ImgLut(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZVector* lut);

/// The same with a typed table of exactly 256 elements (else 1613, which stands in the order of 1602).
ZKIT_IMG_API void ImgLut(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZBW8Vector* lut);

/// Gives the grey levels another mean and standard deviation: with m and s those of src (ImgPixelStdDev) and
/// k = stdDev / s, dst = src k + mean - k m, rounded to float, truncated, and clipped to 0..255. Where that is not a
/// number, as for some levels when s = 0, dst = 0.
/// Errors, in this order: a pending error; 1400 null region; 1402 sizes differ; 1400 no pixels; 1401 region outside its
/// image; 1303 no memory to keep overlapping regions apart. dst is then unchanged. Returns 0 or the code. Trail:
/// "ImgNormalize", after that of ImgPixelStdDev (which also a success leaves) or after "ImgLut".
ZKIT_IMG_API short ImgNormalize(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, float mean, float stdDev);

/// dst = src gain + offset in fixed point: with G = gain 32 and O = offset, both truncated to 32-bit integers (beyond
/// their range the nearest one, 0 for NaN), dst = (src G) / 32 + O, truncated and clipped to 0..255.
///
/// For gains from 0 to 4 and offsets of 16 bits (0 <= G <= 128, -32768 <= O <= 32767) plain and packed workers agree.
/// Beyond, each has its own arithmetic:
/// - plain workers, through a table: src G is an unsigned 32-bit product, shifted right by 5 bits, plus O. A negative
///   gain thus gives 255 for all src but 0.
/// - packed workers: so in every row the pixels before the first destination address that is a multiple of 8, and those
///   from the last such address on; between them src G is a 16-bit product, shifted right arithmetically by 5 bits,
///   plus O with saturation to 16 bits, O itself saturated likewise.
///
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1402 sizes differ; 1303 no memory to keep
/// overlapping regions apart. dst is then unchanged. Trail: "ImgGainOffset".
ZKIT_IMG_API void ImgGainOffset(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, float gain, float offset);

/// The same for each component: dst = src gain + offset in double precision, truncated and clipped to 0..255, 0 for
/// NaN. Component 0 of gain and offset is for byte 2 of a pixel, component 1 for byte 1, component 2 for byte 0. Plain
/// and packed workers agree for all arguments. Errors and trail: as for grey.
ZKIT_IMG_API void ImgGainOffset(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZColor gain, ZColor offset);

/// dst = function(src).
/// @param useTable  not 0: the function is called once for each level from 0 to 255, in this order, and the table of
/// its
///                  results applied; 0: it is called for every pixel, from left to right, row after row.
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1402 sizes differ; 1013 null function; 1303
/// no memory to keep overlapping regions apart. dst is then unchanged. An error that the function raises is pending
/// after all pixels are done. Trail: "ImgTransform".
ZKIT_IMG_API void ImgTransform(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, unsigned char (*function)(unsigned char),
                               int useTable);

/// Evens out the light of a bright scene: dst = src level / reference, truncated, at most 255; 255 where the reference
/// is 0.
/// @param reference  the same scene without objects.
/// @param level      the grey level that it is to get.
/// Errors, in this order: a pending error; 1400, 1401 of src, reference and dst; 1402 src, then reference, of another
/// size than dst; 1303 no memory to keep overlapping regions apart. dst is then unchanged. Trail: "ImgUniformize (light
/// background)".
ZKIT_IMG_API void ImgUniformize(ZROI<ZBW8>* src, unsigned char level, ZROI<ZBW8>* reference, ZROI<ZBW8>* dst);

/// Evens out light and dark current: dst = (src - dark) (lightLevel - darkLevel) / (light - dark) + darkLevel with the
/// quotient truncated toward zero, clipped to 0..255; darkLevel where both references are equal. The dark level may be
/// above the light one.
/// Errors: as above over src, lightReference, darkReference and dst. Trail: "ImgUniformize (light/dark background)".
ZKIT_IMG_API void ImgUniformize(ZROI<ZBW8>* src, unsigned char lightLevel, ZROI<ZBW8>* lightReference,
                                unsigned char darkLevel, ZROI<ZBW8>* darkReference, ZROI<ZBW8>* dst);

// Conversions between pixel types. Errors, in this order: 1400 null region; 1402 sizes differ, which replaces an error
// that is pending; a pending error; 1400, 1401 of src, then of dst; 1303 no memory to keep overlapping regions apart.
// dst is then unchanged. Trail: the name in quotes.

/// dst = the low 8 bits of src >> shift, without saturation: callers who want the top byte pass 8. Shifts count modulo
/// 32; from 16 on the result is 0. "ImgConvert (BW16 to BW8)"
ZKIT_IMG_API void ImgConvert(ZROI<ZBW16>* src, ZROI<ZBW8>* dst, unsigned int shift);

/// dst = the low 16 bits of src << shift. Shifts count modulo 32; from 16 on the result is 0. "ImgConvert (BW8 to
/// BW16)"
ZKIT_IMG_API void ImgConvert(ZROI<ZBW8>* src, ZROI<ZBW16>* dst, unsigned int shift);

/// Packed 4:2:2 without colour: the first byte of dst = src, the second one = 128; nothing is subsampled.
/// "ImgConvertTo422 (BW8 to BW16)"
ZKIT_IMG_API void ImgConvertTo422(ZROI<ZBW8>* src, ZROI<ZBW16>* dst);

/// All three bytes of dst = src. "ImgConvert (BW8 to C24)"
ZKIT_IMG_API void ImgConvert(ZROI<ZBW8>* src, ZROI<ZC24>* dst);

/// dst = 85 (c0 + c1 + c2) / 256, truncated: about the mean, white gives 254. "ImgConvert (C24 to BW8)"
ZKIT_IMG_API void ImgConvert(ZROI<ZC24>* src, ZROI<ZBW8>* dst);
