// Measurements of regions. All of them only read, but for ImgEqualize; coordinates count from the region's top-left
// pixel.
//
// Unless an operation says otherwise: it returns at once while an error is pending, and raises 1400 for a null region
// or one without pixels behind it and 1401 for one that does not lie within its image. Its results are then left as
// they were. Failures leave the operation's trace name in the trail, which is the function's name, followed where
// there are several forms by the marker in quotes. Sums of 32 bits wrap.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/pixel.h"
#include "zkit/core/roi.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"
#include "zkit/img/contour.h"
#include "zkit/img/profile.h"
#include "zkit/img/threshold_selection.h"
#include "zkit/img/vectors.h"

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

/// Counts the pixels of every grey level: the vector gets exactly 256 elements, element v being the number of pixels of
/// level v. A region without pixels gives zeros.
/// Errors, in this order: a pending error; 1400, 1401 of the region; 1601 null vector; 1303 no memory. The vector is
/// then unchanged.
ZKIT_IMG_API void ImgHistogram(ZROI<ZBW8>* src, ZBW8HistogramVector* hist);

/// Counts 16-bit pixels by `bits` of their bits, the highest of which is bit `highBit`: the vector gets exactly 2^bits
/// elements, and a pixel v counts in bin v >> (highBit - bits + 1). Pixels with bits above highBit count in the last
/// bin when `saturate` is not 0, else not at all. All pixels of a 12-bit camera in 256 bins: highBit 11, bits 8.
/// @param highBit  0..15.
/// @param bits     0..highBit + 1.
/// Errors, in this order: a pending error; 1400, 1401 of the region; 1013 highBit; 1014 bits; 1601 null vector; 1303 no
/// memory, the vector then being empty, and unchanged otherwise. Trail: "ImgHistogram (ZBW16)".
ZKIT_IMG_API void ImgHistogram(ZROI<ZBW16>* src, ZBW8HistogramVector* hist, unsigned int highBit, unsigned int bits,
                               int saturate);

/// The histogram of grey levels into an untyped vector. One of type 2 keeps its structure and gets 256 counts of 32
/// bits from its first byte on, as many of them as its storage has room for; any other is made SetType(2, 0, 0) first.
/// Errors, in this order: a pending error; 1400, 1401 of the region; 1601 null vector; 1303 no memory; 1601 a vector of
/// type 2 without data. No count is then written. Returns 0 or the code. Trail: "ImgHistogram (ZVector)".
ZKIT_IMG_API short ImgHistogram(ZROI<ZBW8>* src, ZVector* hist);

/// Makes the table that spreads the grey levels of a histogram evenly: with c_i the number of pixels below level i and
/// n the number of all, entry i = c_i 256 / n, truncated, its lower 8 bits. The product wraps at 32 bits, that is from
/// 2^24 pixels on; levels above those of all pixels get 0 (256). Without pixels all entries are 0. The table gets
/// exactly 256 elements.
/// Errors, in this order: a pending error; 1601 null histogram; 1613 not 256 bins; 1601 null table; 1303 no memory. The
/// table is then unchanged. Trail: "ImgSetupEqualize (ZBW8HistogramVector)".
ZKIT_IMG_API void ImgSetupEqualize(ZBW8HistogramVector* hist, ZBW8Vector* lut);

/// The same with untyped vectors, the counts being the 32-bit numbers from the histogram's first byte on (those that it
/// has no room for count 0) and the entries the first 256 bytes of the table, or as many as it has. A table that is not
/// of type 3 is made SetType(3, 1, 256) first.
/// Errors, in this order: a pending error; 1601 null histogram, or one of another type without data; 1603 a histogram
/// that is not of type 2; 1601 null table; 1303 no memory; 1601 histogram, then table, without data. No entry is then
/// written. Trail: "ImgSetupEqualize (ZVector)".
ZKIT_IMG_API void ImgSetupEqualize(ZVector* hist, ZVector* lut);

/// Spreads the grey levels of src evenly: ImgHistogram of src, ImgSetupEqualize and ImgLut from src to dst. Works in
/// place, and regions that overlap in any other way give the result of separate regions.
/// Errors, in this order: a pending error; 1400, 1401 of src; 1400 null dst; 1402 sizes differ; 1400, 1401 of dst; 1303
/// no memory. dst is then unchanged. Trail: "ImgEqualize", after that of the operation that failed.
ZKIT_IMG_API void ImgEqualize(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// Adds up every column: the vector gets exactly as many elements as the region has columns, element x being the sum of
/// all pixels (x, y).
/// Errors, in this order: a pending error; 1400, 1401 of the region; 1601 null vector; 1303 no memory. The vector is
/// then unchanged. Trail: "ImgProjectOnARow (ZBW32Vector)".
ZKIT_IMG_API void ImgProjectOnARow(ZROI<ZBW8>* src, ZBW32Vector* proj);

/// Adds up every row: element y is the sum of all pixels (x, y). Errors as for columns. Trail: "ImgProjectOnAColumn
/// (ZBW32Vector)".
ZKIT_IMG_API void ImgProjectOnAColumn(ZROI<ZBW8>* src, ZBW32Vector* proj);

/// The sums of the columns into an untyped vector, made SetType(2, 1, width): 256 zeros for a region without columns.
/// Errors, in this order: a pending error; 1400, 1401 of the region; 1601 null vector; 1303 no memory; 1601 the vector
/// has no data after all. Returns 0 or the code. Trail: "ImgProjectOnARow (ZVector)".
ZKIT_IMG_API short ImgProjectOnARow(ZROI<ZBW8>* src, ZVector* proj);

/// The sums of the rows into an untyped vector, made SetType(2, 1, height): 256 zeros for a region without rows. Errors
/// as for columns, but a vector without data is 1400. Trail: "ImgProjectOnAColumn".
ZKIT_IMG_API short ImgProjectOnAColumn(ZROI<ZBW8>* src, ZVector* proj);

/// What is asked of a histogram h over the levels from a to b. Some features look at the bins 0 to b - a instead and
/// give their positions plus a; for a = 0 that is the same. Bins that the histogram does not have count 0.
enum IMG_HISTOGRAM_FEATURE : int {
    IMG_HISTOGRAM_MOST_FREQUENT_VALUE = 0,  ///< a + k, h(k) being the first of the largest of h(0) to h(b - a); 0 where
                                            ///< all are 0 or a > b
    IMG_HISTOGRAM_MOST_FREQUENT_COUNT = 1,  ///< that h(k); 0 for a > b
    IMG_HISTOGRAM_LEAST_FREQUENT_VALUE = 2,  ///< a + k, h(k) being the first of the smallest of them; 0 for a > b
    IMG_HISTOGRAM_LEAST_FREQUENT_COUNT = 3,  ///< that h(k); -1 for a > b
    IMG_HISTOGRAM_SMALLEST_VALUE = 4,     ///< a + k, h(k) being the first of them that is not 0; b + 1 where all are;
                                          ///< a for a > b
    IMG_HISTOGRAM_GREATEST_VALUE = 5,     ///< b for a < b, whatever the bins hold; else the greatest level of at most
                                          ///< b whose bin is not 0, -1 where there is none, b where that is negative
    IMG_HISTOGRAM_PIXEL_COUNT = 6,        ///< h(a) + ... + h(b), in 32 bits; 0 for a > b
    IMG_HISTOGRAM_AVERAGE_VALUE = 7,      ///< the mean level of the pixels from a to b, from a sum of 32 bits, which
                                          ///< wraps; 0 without pixels
    IMG_HISTOGRAM_STANDARD_DEVIATION = 8  ///< of the levels of the pixels in bins 0 to b - a; 0 without pixels. A sum
                                          ///< on the way is a float, which limits its precision
};

/// A feature of a histogram. Those that are integers are taken as signed numbers of 32 bits and rounded to a float. Any
/// other feature gives 0 and leaves the trail "ImgAnalyseHistogram" without a code.
/// Errors, in this order: a pending error; 1601 null vector; 1613 not 256 bins. The result is then 0. Trail:
/// "ImgAnalyseHistogram".
ZKIT_IMG_API float ImgAnalyseHistogram(ZBW8HistogramVector* hist, IMG_HISTOGRAM_FEATURE feature, int from, int to);

/// A feature from 0 to 6 of an untyped histogram, the 32-bit numbers from its first byte on. Any other feature leaves
/// the result as it is and is no error.
/// Errors, in this order: a pending error; 1601 null vector, or one of another type without data; 1602 a vector that is
/// not of type 2; 1601 no data. The result is then as it was. Returns 0 or the code. Trail: "ImgAnalyseHistogram".
ZKIT_IMG_API short ImgAnalyseHistogram(ZVector* hist, int from, int to, int feature, int& result);

/// The same for the features 7 and 8.
ZKIT_IMG_API short ImgAnalyseHistogram(ZVector* hist, int from, int to, int feature, float& result);
