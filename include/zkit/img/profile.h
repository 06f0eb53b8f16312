// Profiles: the pixels along a path or a straight line as a vector, there and back, and what a profile shows.
//
// Paths hold positions within a region; a line goes from pixel (x0, y0) to pixel (x1, y1), both included: with n the
// larger of |x1 - x0| and |y1 - y0| and m the smaller one it has n + 1 pixels, one in each column (or in each row, if
// there are more of them), the k-th one (n/2 + k m) / n rows (columns) further, divisions truncating.
//
// All of these return at once while an error is pending. Trails end with the operation's trace name, which is the
// function's name and the marker in quotes.
#pragma once

#include "zkit/core/pixel.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"
#include "zkit/img/vectors.h"

/// Gives every element of the path the pixel at its position. An element outside the region keeps its pixel and raises
/// 1503, which does not end the work and leaves the trail empty.
/// Errors, in this order: a pending error; 1400, 1401 of the region; 1601 null path; the path is then unchanged.
/// Trail: "ImgImageToPath (BW8)".
ZKIT_IMG_API void ImgImageToPath(ZROI<ZBW8>* src, ZBW8PathVector* path);

/// The same for colour pixels. Trail: "ImgImageToPath (C24)".
ZKIT_IMG_API void ImgImageToPath(ZROI<ZC24>* src, ZC24PathVector* path);

/// Gives the region's pixel at the position of every element the element's pixel, in order. An element outside the
/// region writes nothing and raises 1503, as above. Errors as above; the region is then unchanged. Trail:
/// "ImgPathToImage (BW8)".
ZKIT_IMG_API void ImgPathToImage(ZROI<ZBW8>* dst, ZBW8PathVector* path);

/// The same for colour pixels. Trail: "ImgPathToImage (C24)".
ZKIT_IMG_API void ImgPathToImage(ZROI<ZC24>* dst, ZC24PathVector* path);

/// The pixels of a line, from its first one on. The profile gets exactly n + 1 elements and room for no more.
/// Errors, in this order: a pending error; 1400, 1401 of the region; 1013 x0, 1014 y0, 1015 x1, 1016 y1 is outside the
/// region; 1601 null profile; 1303 no memory; the profile is then unchanged. Trail: "ImgImageToLineSegment (BW8)".
ZKIT_IMG_API void ImgImageToLineSegment(ZROI<ZBW8>* src, ZBW8Vector* profile, int x0, int y0, int x1, int y1);

/// The same for colour pixels. Trail: "ImgImageToLineSegment (C24)".
ZKIT_IMG_API void ImgImageToLineSegment(ZROI<ZC24>* src, ZC24Vector* profile, int x0, int y0, int x1, int y1);

/// The same for 16-bit pixels. Trail: "ImgImageToLineSegment (BW16)".
ZKIT_IMG_API void ImgImageToLineSegment(ZROI<ZBW16>* src, ZBW16Vector* profile, int x0, int y0, int x1, int y1);

/// Writes a profile into the pixels of a line, one place late, which is intended: the first pixel and the second one
/// get element 0, the third one element 1; the last element is not written (but on a line of one pixel).
/// Errors, in this order: a pending error; 1400, 1401 of the region; 1013 x0, 1014 y0, 1015 x1, 1016 y1 is outside the
/// region; 1601 null profile; 1613 it has not n + 1 elements; the region is then unchanged. Trail:
/// "ImgLineSegmentToImage (BW8, vector)".
ZKIT_IMG_API void ImgLineSegmentToImage(ZROI<ZBW8>* dst, ZBW8Vector* profile, int x0, int y0, int x1, int y1);

/// Gives all pixels of a line one value. Errors as above without those of the profile. Trail: "ImgLineSegmentToImage
/// (BW8, const)".
ZKIT_IMG_API void ImgLineSegmentToImage(ZROI<ZBW8>* dst, unsigned char value, int x0, int y0, int x1, int y1);

/// The same two for colour pixels. Trail: "ImgLineSegmentToImage (C24, vector)".
ZKIT_IMG_API void ImgLineSegmentToImage(ZROI<ZC24>* dst, ZC24Vector* profile, int x0, int y0, int x1, int y1);

/// Trail: "ImgLineSegmentToImage (C24, const)".
ZKIT_IMG_API void ImgLineSegmentToImage(ZROI<ZC24>* dst, ZC24 value, int x0, int y0, int x1, int y1);

/// Finds the peaks of a profile, runs of samples above `high`, and its valleys, runs of samples below `low`, in the
/// order in which they end. The excess of a sample is what it has above `high`, or, negative, below `low`. Of a run
/// Start is the index of its first sample, Length the number of its samples, Amplitude the excess of its extreme sample
/// and Area the sum of the excesses, in 32 bits, which wraps; Center is the mean index weighed with the excesses,
/// computed in double precision, while the area fits 32 bits, or the middle of the run when the area is 0.
///
/// Taken are peaks with Amplitude >= minAmplitude and Area >= minArea, and valleys whose negated figures are so, all
/// compared as signed numbers. A run at the begin or at the end of the profile is none.
/// Errors, in this order: a pending error; 1007 low > high; 1601 null vector; the peaks are then unchanged; 1303 no
/// memory, the peaks are then incomplete. Trail: "ImgGetProfilePeaks".
ZKIT_IMG_API void ImgGetProfilePeaks(ZBW8Vector* profile, ZPeaksVector* peaks, unsigned int low, unsigned int high,
                                     unsigned int minAmplitude, unsigned int minArea);

/// Slopes of a profile around 128: dst[i] = (src[i + 1] - src[i - 1]) / 2 + 128, halved towards minus infinity. At the
/// two ends it is the difference to the only neighbour + 128, clipped to 0..255; a single sample gives 128. dst gets as
/// many elements as src; the two may be one vector.
/// Errors, in this order: a pending error; 1601 null vector; 1303 no memory, dst is then empty. Trail:
/// "ImgProfileDerivative".
ZKIT_IMG_API void ImgProfileDerivative(ZBW8Vector* src, ZBW8Vector* dst);
