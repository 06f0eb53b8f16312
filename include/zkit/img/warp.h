// Warping: every destination pixel takes the source pixel that a map names for it.
//
// Coordinates are whole pixels and count from the source region's top-left one. Between regions that overlap, maps
// included, the result is that of separate regions.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"

/// dst(i, j) = src(x, y) with x = offsetX + mapX(i, j) and y = offsetY + mapY(i, j), 0 where that lies outside the
/// source region. The elements of the maps are taken as signed 16-bit numbers. Errors, in this order: a pending error;
/// 1400 null region or no pixels, of src, dst, mapX and mapY; 1402 dst differs in size from mapX or mapY; 1401 of the
/// four; 1303 no memory to keep overlapping regions apart. dst is then unchanged. Returns 0 or the code. Trail:
/// "ImgWarp".
ZKIT_IMG_API short ImgWarp(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZImage<ZBW16>* mapX, ZImage<ZBW16>* mapY, int offsetX,
                           int offsetY);

/// The same for colour. Errors, in this order: a pending error; 1400, 1401 of src, then of dst; those of the grey form.
/// Trail: "ImgWarp (C24)", for errors of the grey form after its name.
ZKIT_IMG_API void ImgWarp(ZROI<ZC24>* src, ZROI<ZC24>* dst, ZImage<ZBW16>* mapX, ZImage<ZBW16>* mapY, int offsetX,
                          int offsetY);

/// dst(i, j) = src(x, y) with x in the low and y in the high 16 bits of map(i, j), both unsigned. The map may be larger
/// than dst.
/// Errors, in this order: a pending error; 1400 null src or dst; 1402 sizes of src and dst differ; 1400 null map; 2200
/// the map is narrower or lower than dst; 1400 no pixels; 1401 of src, dst and map; 1303 no memory to keep overlapping
/// regions apart. dst is then unchanged. 1405 a map element names a pixel outside the source region: dst then holds the
/// pixels before it, in rows from the top down and from left to right, and is unchanged from there on. Returns 0 or the
/// code. Trail: "ImgWarp".
ZKIT_IMG_API short ImgWarp(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, ZImage<ZBW32>* map);

/// Makes maps that unwrap a ring, or a sector of one, into a rectangle of angularCount x radialCount pixels. Row 0 lies
/// on radiusB, the last row on radiusA; column 0 at angleStart, the last column at angleEnd. Angles are in the current
/// unit (ZSetAngleUnit) and turn from the x axis to the y axis, clockwise as one sees it. With n = angularCount - 1 and
/// k = radialCount - 1
///   theta = ((n - j) start + j end) / n,  c and s = its cosine and sine, rounded to single precision
///   mapX(j, i) = t (radiusA c + centerX) + (1 - t) (radiusB c + centerX)
///   mapY(j, i) = (1 - t) (radiusB s + centerY) + t (radiusA s + centerY)
/// in double precision; t is 1 / k added i times to 0, and 1 - t is 1 / k subtracted i times from 1. Each is rounded
/// once to single precision, which hides what the sums are wrong by, and truncated toward zero to a 32-bit integer
/// (beyond its range the nearest one, 0 for NaN), whose low 16 bits are stored. With a count of 1, n or k being 0, the
/// only column lies at angleStart, the only row on radiusB. Errors, in this order: a pending error; 1400 null map;
/// 1013, 1016 a count below 1; 1303 no memory, mapX may then have its new size. Trail: "ImgSetCircleWarp".
ZKIT_IMG_API void ImgSetCircleWarp(float centerX, float centerY, int radialCount, float radiusA, float radiusB,
                                   int angularCount, float angleStart, float angleEnd, ZImage<ZBW16>* mapX,
                                   ZImage<ZBW16>* mapY);
