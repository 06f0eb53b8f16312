// Choosing thresholds from histograms of the 256 grey levels.
//
// A threshold t parts the levels into a low class, below t, and a high class, from t on. Of a class, n is the number of
// its pixels and s the sum of their levels, both of 32 bits, which wrap; A is the sum of h ln h over the counts h of
// its bins, empty ones adding 0. All else is double precision, but a criterion is rounded to a float before it is
// compared: of equal ones the lowest threshold wins. Only thresholds that leave pixels in both classes are compared.
#pragma once

#include "zkit/core/pixel.h"
#include "zkit/core/roi.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"
#include "zkit/img/vectors.h"

/// How a threshold is chosen, where a threshold may stand: as unsigned numbers all of them are above 255.
enum IMG_THRESHOLD_MODES : int {
    IMG_THRESHOLD_ISODATA = -6,      ///< nearest to the middle of the means: the least |s_low / 2 n_low + s_high / 2
                                     ///< n_high - t|
    IMG_THRESHOLD_MAX_ENTROPY = -5,  ///< the greatest sum of ln n - A / n over both classes
    IMG_THRESHOLD_MIN_RESIDUE = -4,  ///< the greatest sum of s^2 / n over both classes
    IMG_THRESHOLD_RELATIVE = -3      ///< a given part of the pixels is below it
};

/// Chooses a threshold by one of the modes and gives the means of the two classes.
/// @param hist       of exactly 256 bins, of which min to max count.
/// @param threshold  in: the mode, or a threshold from min to max that is kept; out: the threshold chosen. Where all
///                   pixels are in one bin, or there are none, the modes that compare give 0 and both classes count as
///                   empty.
/// @param lowMean    s / n of the low class, min when it is empty; n is signed here.
/// @param highMean   s / n of the high class, max + 1 when it is empty.
/// @param relative   for IMG_THRESHOLD_RELATIVE: with n pixels and k = n relative, truncated, the threshold is the
///                   highest that leaves n - k of them in the high class; max + 1 for 1, the lowest level of a pixel
///                   for 0.
/// A threshold t of the caller's parts the bins at min + t, and the high class counts its levels from min on (as if its
/// first bin were t); both are intended and matter only for min above 0. The low class is then bins min to min + t - 1,
/// also where that is beyond max.
/// Errors, in this order: 1601 null vector; 1613 not 256 bins; 1015 min above 255; 1016 max above 255; 1007 min not
/// less than max, all of which replace an error that is pending; a pending error; 1015 relative is not from 0 to 1;
/// 1012 the threshold is no mode and not from min to max. Nothing is then changed. Trail: "ImgHistogramThreshold".
ZKIT_IMG_API void ImgHistogramThreshold(ZBW8HistogramVector* hist, unsigned int& threshold, float& lowMean,
                                        float& highMean, float relative, unsigned int min, unsigned int max);

/// Chooses a threshold T by iteration: from the middle of the range, (min + max + 1) / 2, T becomes the middle of the
/// truncated means of the bins min to T (which includes T) and T + 1 to max, until it stays or 16 times. The mean of no
/// pixels is (min + T) / 2 below and (T + max + 1) / 2 above. All numbers are unsigned, of 32 bits, and truncated.
/// Returns the low 8 bits of T, 0 after a failure. Does not look at an error that is pending.
/// Errors, in this order: 1601 null vector; 1613 not 256 bins; 1012 min above 255; 1013 max above 255; 1007 min not
/// less than max. Trail: "ImgIsodataThreshold (ZBW8HistogramVector)".
ZKIT_IMG_API unsigned char ImgIsodataThreshold(ZBW8HistogramVector* hist, unsigned int min, unsigned int max);

/// The same from an untyped vector of type 2, whose data are 32-bit counts; those that it has no room for are 0. The
/// levels of bin min are left out of the sums, which is intended: it counts as if it were level 0. T may thus fall
/// below min, where there are no pixels.
/// Returns T; 0 after the first four errors, the middle of the range after the others.
/// Errors, in this order: a pending error; 1012 min above 255; 1013 max above 255; 1007 min not less than max; 1601
/// null vector; 1607 not of type 2; 1601 it has no data. Trail: "ImgIsodataThreshold (ZVector)".
ZKIT_IMG_API unsigned int ImgIsodataThreshold(ZVector* hist, unsigned int min, unsigned int max);

/// Chooses the threshold with the greatest sum of s^2 / n over both classes, and gives their means s / n. Where none is
/// greater than s^2 / n of all pixels it returns 0 and leaves the means as they were. Does not look at an error that is
/// pending.
/// Errors: 1601 null vector; 1613 not 256 bins; it returns 0 then. Trail: "ImgMinResidueThreshold".
ZKIT_IMG_API unsigned char ImgMinResidueThreshold(ZBW8HistogramVector* hist, float& lowMean, float& highMean);

/// The same with the greatest sum of ln n - A / n, the entropy of a class. Trail: "ImgMaxEntropyThreshold".
ZKIT_IMG_API unsigned char ImgMaxEntropyThreshold(ZBW8HistogramVector* hist, float& lowMean, float& highMean);

/// Makes an image of thresholds that follow the light: those of a grid of overlapping cells, with what lies between
/// interpolated. With nx = W / cellWidth, rounded up, and ny likewise, cell (i, j) with i from 0 to nx and j from 0 to
/// ny is what lies in src of the cellWidth x cellHeight pixels (halves truncated) around (i W / nx, j H / ny),
/// truncated. Its threshold is ImgIsodataThreshold of its histogram, from 0 to 255, whatever the mode:
/// ImgHistogramThreshold is called with the mode, relative 0.5 and the same bounds, but only its errors count, which is
/// intended. The image of the (nx + 1) x (ny + 1) thresholds is enlarged into dst by ImgScaleRotate with scales W / nx
/// and H / ny, pivots and angle 0 and interpolation of 8 bits.
/// @param cellWidth   above 0.
/// @param cellHeight  not below 0; 0 means cellWidth.
/// dst may overlap src in any way. Without pixels nothing is done.
/// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1402 sizes differ; 1014 cellWidth; 1015
/// cellHeight; 1303 no memory; those of ImgHistogramThreshold (1012 no mode and above 255) and ImgScaleRotate. dst is
/// then unchanged. Trail: "ImgAutoAdaptiveThreshold", after that of the operation that failed.
ZKIT_IMG_API void ImgAutoAdaptiveThreshold(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, IMG_THRESHOLD_MODES mode, int cellWidth,
                                           int cellHeight);
