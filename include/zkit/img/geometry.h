// Geometric transforms: scaling and rotation, registration, reduction and mirroring.
//
// Source and destination may have any sizes unless an operation says otherwise. Between regions that overlap the result
// is that of separate regions. Coordinates count from a region's top-left pixel, x to the right and y down; pixel (x,
// y) is the point (x, y). Warping by maps has a header of its own, which this one includes.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"
#include "zkit/img/warp.h"

/// Scales and rotates: srcPivot lands on dstPivot, distances from it are multiplied by scaleX and scaleY, and a
/// positive angle turns the source's x axis towards negative y (counter-clockwise as one sees it). With s and c the
/// sine and the cosine of the angle, a source point lands on
///   x' = a11 x + a12 y + b1,  a11 = scaleX c,     a12 = scaleY s,  b1 = dstPivotX - (a11 srcPivotX + a12 srcPivotY)
///   y' = a21 x + a22 y + b2,  a21 = -(scaleX s),  a22 = scaleY c,  b2 = dstPivotY - (a21 srcPivotX + a22 srcPivotY)
/// in single precision, every product and sum rounded.
///
/// Every destination pixel takes its value from where the inverse leads, in 16.16 fixed point: the steps of the source
/// coordinates per column, a22 / D and -a21 / D with D = a22 a11 - a21 a12, those per row, -a12 / D and a11 / D, and
/// the coordinates for destination pixel (0, 0) are multiplied by 65536 and truncated toward zero (beyond 32 bits the
/// nearest number, 0 for NaN); from then on they are added as integers of 32 bits, which wrap. Large destinations thus
/// drift by up to 1/65536 of a pixel a column and a row.
/// @param angle              in the current unit (ZSetAngleUnit)
/// @param interpolationBits  0 takes the pixel at the coordinates rounded down, 0 where there is none. 4 and 8 mix the
///                           four pixels around, weighed with so many bits of the coordinates' fractions, and truncate:
///                           with b bits ((p00 (2^b - fx) + p01 fx) (2^b - fy) + (p10 (2^b - fx) + p11 fx) fy) / 2^2b,
///                           0 where not all four lie in the source region, thus always for its last column and row
/// Errors, in this order: a pending error; 1400 null region; 1400 no source pixels; then, where the destination's image
/// has no storage, the call ends successfully; 1401 src, then dst, outside its image; 1411 D is 0 or not a number, as
/// for a scale of 0; 1007 another value of interpolationBits; 1303 no memory to keep overlapping regions apart. dst is
/// then unchanged. Returns 0 or the code. Trail: "ImgScaleRotate".
ZKIT_IMG_API short ImgScaleRotate(ZROI<ZBW8>* src, float srcPivotX, float srcPivotY, float dstPivotX, float dstPivotY,
                                  float scaleX, float scaleY, float angle, ZROI<ZBW8>* dst, int interpolationBits);

/// The same for every component.
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1303 no memory for the components; those of
/// the grey form. dst is then unchanged. Trail: "ImgScaleRotate (C24)", for errors of the grey form after its name.
ZKIT_IMG_API void ImgScaleRotate(ZROI<ZC24>* src, float srcPivotX, float srcPivotY, float dstPivotX, float dstPivotY,
                                 float scaleX, float scaleY, float angle, ZROI<ZC24>* dst, int interpolationBits);

/// Moves src so that its point (srcX, srcY) lands on (dstX, dstY): ImgScaleRotate with scales 1 and angle 0, whose
/// errors and trail it has; it leaves no name of its own.
ZKIT_IMG_API void ImgRegister(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, float srcX, float srcY, float dstX, float dstY,
                              int interpolationBits);
ZKIT_IMG_API void ImgRegister(ZROI<ZC24>* src, ZROI<ZC24>* dst, float srcX, float srcY, float dstX, float dstY,
                              int interpolationBits);

/// Moves and turns src, with a scaling flag other than 0 also scales it, so that its point 0 lands on the destination's
/// and the line from its point 0 to its point 1 lies on the destination's: ImgScaleRotate about points 0 by the angle
/// between the lines, with both scales the quotient of their lengths or 1. Two equal source points with scaling have no
/// scale: 1411 or an arbitrary picture. Errors and trail are those of ImgScaleRotate.
ZKIT_IMG_API void ImgRegister(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, float srcX0, float srcY0, float srcX1, float srcY1,
                              float dstX0, float dstY0, float dstX1, float dstY1, int interpolationBits,
                              int scalingFlag);
ZKIT_IMG_API void ImgRegister(ZROI<ZC24>* src, ZROI<ZC24>* dst, float srcX0, float srcY0, float srcX1, float srcY1,
                              float dstX0, float dstY0, float dstX1, float dstY1, int interpolationBits,
                              int scalingFlag);

/// Reduces src to the size of dst: every destination pixel is the mean, truncated, of a block of source pixels. With W
/// and W' the widths of src and dst, column i is made of the source columns from i W / W' up to and not including
/// (i + 1) W / W', both truncated; rows likewise. Sums are formed modulo 2^32 (blocks of up to 16.8 million pixels are
/// exact).
/// Errors, in this order: a pending error; 1400 null region or no pixels, of src, then of dst; 1401 src, then dst,
/// outside its image; 1403 dst wider or higher than src; 1303 no working memory. dst is then unchanged. Returns 0 or
/// the code. Trail: "ImgShrink".
ZKIT_IMG_API short ImgShrink(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// The same for every component.
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1303 no memory for the components; those of
/// the grey form. dst is then unchanged, but for components done before memory ran out. Trail: "ImgShrink (C24)", for
/// errors of the grey form after its name.
ZKIT_IMG_API void ImgShrink(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// Turns the region upside down, in place: row y and row height - 1 - y change places.
/// Errors, in this order: a pending error; 1400 null region or no pixels; 1401 outside its image. Trail:
/// "ImgVerticalMirror (gray-level)".
ZKIT_IMG_API void ImgVerticalMirror(ZROI<ZBW8>* roi);

/// The same for colour. Trail: "ImgVerticalMirror (color)".
ZKIT_IMG_API void ImgVerticalMirror(ZROI<ZC24>* roi);

/// Mirrors a square region left to right, in place. In every row, pixel x and pixel height - 1 - x change places: it is
/// the region's height, not its width, that places the last column, which is intended. Of a wider region only the first
/// `height` columns are mirrored; for a higher one the mirrored columns reach to the right of the region, as far as its
/// image does: pixels whose partner would lie beyond the image's right edge keep their place. A region of no pixels
/// stays as it is.
/// Errors, in this order: a pending error; 1400 null region or no pixels; 1401 outside its image. Trail:
/// "ImgHorizontalMirror (gray-level)".
ZKIT_IMG_API void ImgHorizontalMirror(ZROI<ZBW8>* roi);
