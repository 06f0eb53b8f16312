// Measurements of regions. All of them only read; coordinates count from the region's top-left pixel.
//
// Unless an operation says otherwise: it returns at once while an error is pending, and raises 1400 for a null region
// or one without pixels behind it and 1401 for one that does not lie within its image. Its results are then left as
// they were. Failures leave the operation's trace name in the trail, which is the function's name, followed where
// there are several forms by the marker in quotes. Sums of 32 bits wrap.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/pixel.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"

/// The smallest grey level; 255 for a region of no pixels.
ZKIT_IMG_API short ImgPixelMin(ZROI<ZBW8>* src, unsigned char& min);

/// The greatest grey level; 0 for a region of no pixels.
ZKIT_IMG_API short ImgPixelMax(ZROI<ZBW8>* src, unsigned char& max);

/// The mean grey level: the 32-bit sum of all pixels (exact up to 16.8 million of them) divided by their number, in
/// double precision. Not a number for a region of no pixels. Trail: "ImgPixelAverage (BW8)".
ZKIT_IMG_API short ImgPixelAverage(ZROI<ZBW8>* src, float& average);

/// The mean of each component: of the pixels' byte 2 (component 0), byte 1 and byte 0, as for grey pixels. Trail:
/// "ImgPixelAverage (C24)".
ZKIT_IMG_API void ImgPixelAverage(ZROI<ZC24>* src, float& average2, float& average1, float& average0);

/// Minimum, maximum and mean in one pass. The mean is that of the row means, added in double precision from the top.
/// Without rows both extremes are the pixel at (0, 0), 0 where the image has none, and the mean is not a number.
ZKIT_IMG_API short ImgPixelStat(ZROI<ZBW8>* src, unsigned char& min, unsigned char& max, float& average);

/// The number of positions at which two grey regions differ; 0 after a failure. Errors: 1402 sizes differ, tested
/// before 1400 and 1401. Trail: "ImgPixelCompare (BW8)".
ZKIT_IMG_API unsigned int ImgPixelCompare(ZROI<ZBW8>* first, ZROI<ZBW8>* second);

/// The number of positions at which any of the three bytes differs. Trail: "ImgPixelCompare (C24)".
ZKIT_IMG_API unsigned int ImgPixelCompare(ZROI<ZC24>* first, ZROI<ZC24>* second);

/// Variance and mean of the grey levels: with N pixels, S1 their 32-bit sum and S2 the sum of their squares (32 bits a
/// row, rows added in double precision), mean = S1 / N and variance = (N S2 - S1^2) / N^2, not below 0. Not numbers for
/// a region of no pixels. Trail: "ImgPixelVariance (BW8)".
ZKIT_IMG_API short ImgPixelVariance(ZROI<ZBW8>* src, float& variance, float& average);

/// Variances, covariances and means of the bytes c_0, c_1, c_2 of the pixels (c_i being component 2 - i). With E the
/// mean over all pixels: var_i = E(c_i^2) - E(c_i)^2, cov_ij = E(c_i^2 + c_j^2 - (c_i - c_j)^2) / 2 - E(c_i) E(c_j).
/// Sums of squares are formed in 32 bits a row and added up row by row in a float, which limits their precision: a
/// variance of nearly uniform pixels may come out a little below 0. Trail: "ImgPixelVariance (C24)".
ZKIT_IMG_API void ImgPixelVariance(ZROI<ZC24>* src, float& var2, float& var1, float& var0, float& cov21, float& cov10,
                                   float& cov02, float& average2, float& average1, float& average0);

/// Standard deviation (the root of ImgPixelVariance) and mean. Its name is added to the trail after success too. Trail
/// of a failure: "ImgPixelVariance (BW8)", "ImgPixelStdDev".
ZKIT_IMG_API short ImgPixelStdDev(ZROI<ZBW8>* src, float& stdDev, float& average);

/// Standard deviations (a variance below 0 counts as 0), correlation coefficients corr_ij = cov_ij / (dev_i dev_j), not
/// a number or infinite where a component is uniform, and means. Trail of a failure: "ImgPixelVariance (C24)",
/// "ImgPixelStdDev".
ZKIT_IMG_API void ImgPixelStdDev(ZROI<ZC24>* src, float& dev2, float& dev1, float& dev0, float& corr21, float& corr10,
                                 float& corr02, float& average2, float& average1, float& average0);

/// Counts the pixels below `low`, above `high`, and the rest. With low > high a pixel between the two counts as below
/// and none is left for between.
ZKIT_IMG_API short ImgPixelCount(ZROI<ZBW8>* src, unsigned char low, unsigned char high, int& below, int& between,
                                 int& above);

/// The number of pixels strictly above the threshold. Trail of a failure: "ImgPixelCount", "ImgArea".
ZKIT_IMG_API short ImgArea(ZROI<ZBW8>* src, unsigned char threshold, int& area);

/// The number of pixels from `low` to `high`, both included. Trail of a failure: "ImgPixelCount",
/// "ImgAreaDoubleThreshold".
ZKIT_IMG_API short ImgAreaDoubleThreshold(ZROI<ZBW8>* src, unsigned char low, unsigned char high, int& area);

/// The number of pixels for which the predicate answers not 0; it is called once a pixel, row by row from the top left.
/// 0 after a failure, also after one that the predicate has raised; a null predicate is 1012. Trail: "ImgCount (BW8)".
ZKIT_IMG_API unsigned int ImgCount(ZROI<ZBW8>* src, int (*predicate)(ZBW8&));

/// The same for colour pixels. Trail: "ImgCount (C24)".
ZKIT_IMG_API unsigned int ImgCount(ZROI<ZC24>* src, int (*predicate)(ZC24&));

/// Centre of gravity of the pixels at or above the threshold: the means of their columns and rows, 0 when there are
/// none. The sums of columns and of rows over the whole region are formed modulo 2^32, which a bright region of about
/// 2049 x 2049 pixels exceeds. Needs no working memory.
ZKIT_IMG_API short ImgGravityCenter(ZROI<ZBW8>* src, unsigned int threshold, float& x, float& y);

/// Raw moments of the pixels at or above the threshold: m_pq is the sum of x^p y^q over them, neither normalised nor
/// centred. Every row is summed in 32 bits and added to a float; a threshold above 255 gives 0. The sums of x^2 of a
/// row wrap from 2345 columns on where all of them qualify: measure wider regions in pieces. A pending error does not
/// stop this operation, and its name is added to the trail always; after a failure the moments are 0. Trail:
/// "ImgBinaryMoments (first order)".
ZKIT_IMG_API void ImgBinaryMoments(ZROI<ZBW8>* src, unsigned int threshold, float& m00, float& m10, float& m01);

/// The same with the second order, m11 being (m20 + m02 - D) / 2 with D the sum of (x - y)^2 formed in the same way.
/// Trail: "ImgBinaryMoments (second order)".
ZKIT_IMG_API void ImgBinaryMoments(ZROI<ZBW8>* src, unsigned int threshold, float& m00, float& m10, float& m01,
                                   float& m20, float& m11, float& m02);

/// As the binary moments of all pixels, each weighed with its grey level. The sums of a white row wrap from 5805
/// columns on (v x) and from 371 columns on (v x^2). Trail: "ImgWeighedMoments (first order)".
ZKIT_IMG_API void ImgWeighedMoments(ZROI<ZBW8>* src, float& m00, float& m10, float& m01);

/// Trail: "ImgWeighedMoments (second order)".
ZKIT_IMG_API void ImgWeighedMoments(ZROI<ZBW8>* src, float& m00, float& m10, float& m01, float& m20, float& m11,
                                    float& m02);

/// How sharp a picture is: the root of the mean over the region's pixels of the squared differences to the right-hand
/// and the lower neighbour. For comparing pictures of one scene; the higher the sharper.
///
/// The walk over the rows is slanted: of each row all pixels but the last are taken, and each row starts one pixel
/// further to the left than the one above it; it goes on while it is before the first pixel of the region's last row.
/// Pixels outside the region therefore take part; bytes outside the image's storage count 0. A region one pixel wide
/// has focus 0, one without pixels none (not a number). Returns 0 after a failure. Trail: "ImgFocusing (BW8)".
ZKIT_IMG_API float ImgFocusing(ZROI<ZBW8>* src);

/// The same over the bytes of colour pixels, each compared with the same byte of the neighbours, and the mean over all
/// bytes. Trail: "ImgFocusing (C24)".
ZKIT_IMG_API float ImgFocusing(ZROI<ZC24>* src);

/// What the reference of a noise measurement is. Any other value counts as noise-free.
enum IMG_REFERENCE_NOISE : int {
    IMG_REFERENCE_NOISELESS = 0,          ///< free of noise: q = 1
    IMG_REFERENCE_INDEPENDENT_NOISE = 1,  ///< the mean of n images without the source: q = 1 + 1/n
    IMG_REFERENCE_INCLUDES_SOURCE = 2     ///< the mean of n images with the source among them: q = 1 - 1/n
};

/// Signal-to-noise ratio in decibels: 10 log10(sum src^2 / sum (src - ref)^2) + 10 log10 q, with n = 1; 0 where source
/// and reference are equal, and after a failure. Errors: 1402 sizes differ, tested before 1400 and 1401; 1013 for
/// IMG_REFERENCE_INCLUDES_SOURCE, unless the two are equal. Trail: "ImgSignalNoiseRatio (BW8 source and BW8
/// reference)".
ZKIT_IMG_API float ImgSignalNoiseRatio(ZROI<ZBW8>* src, ZROI<ZBW8>* ref, IMG_REFERENCE_NOISE reference);

/// The same against the sum of `count` images, a power of two from 1 to 256 (else 1013, tested first): every reference
/// pixel is divided by it, truncating, and n = count. With IMG_REFERENCE_INCLUDES_SOURCE and one image the ratio is
/// minus infinity. Trail: "ImgSignalNoiseRatio (BW8 source and BW16 reference)".
ZKIT_IMG_API float ImgSignalNoiseRatio(ZROI<ZBW8>* src, ZROI<ZBW16>* ref, unsigned int count,
                                       IMG_REFERENCE_NOISE reference);

/// Root mean square of the noise in grey levels: the root of sum (src - ref)^2 / (q N) over the N pixels; 0 after a
/// failure. The rows are added up in a float. Errors as for the ratio, 1013 also where the two are equal. Trail:
/// "ImgRmsNoise (BW8 source and BW8 reference)".
ZKIT_IMG_API float ImgRmsNoise(ZROI<ZBW8>* src, ZROI<ZBW8>* ref, IMG_REFERENCE_NOISE reference);

/// The same against the sum of `count` images, as for the ratio; the rows are added up in double precision. With
/// IMG_REFERENCE_INCLUDES_SOURCE and one image the result is infinite, or not a number without noise. Trail:
/// "ImgRmsNoise (BW8 source and BW16 reference)".
ZKIT_IMG_API float ImgRmsNoise(ZROI<ZBW8>* src, ZROI<ZBW16>* ref, unsigned int count, IMG_REFERENCE_NOISE reference);
