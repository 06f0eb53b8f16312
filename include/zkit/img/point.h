// Point operations: every destination pixel is a function of the source pixel at the same place.
//
// All of them work in place, and regions that overlap in any other way give the result of separate regions. No pixel
// outside the destination region is written.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"
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
