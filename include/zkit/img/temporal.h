// Sequences of images: repair of interlaced frames, and averages over time.
//
// Between regions that overlap, also in place, the result is that of separate regions.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"
#include "zkit/img/vectors.h"

// Interlaced frames. The even rows (0, 2, 4, …) and the odd rows (1, 3, 5, …) of such an image, its two fields, were
// taken at different instants. Where an operation has a `field`, only its lowest bit counts: 0 rewrites the odd rows, 1
// the even ones; the rows of the other field are not written, not even copied.
//
// Errors, in this order: a pending error; 1400, 1401 of src, then of dst; 1402 sizes differ; 1303 no memory to keep
// overlapping regions apart. dst is then unchanged. Trail: the name of the operation and its pixel type,
// "ImgSwapFrames (ZBW8)", "ImgSwapFrames (ZC24)".

/// Exchanges the fields: rows y and y + 1 of dst are rows y + 1 and y of src, for y = 0, 2, 4, …; the last one of an
/// odd number of rows is not written.
ZKIT_IMG_API void ImgSwapFrames(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);
ZKIT_IMG_API void ImgSwapFrames(ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// Shifts a field: pixel x of a rewritten row is pixel x - shift of the row in src, a positive shift moving to the
/// right. Any shift is accepted. With a width of W, pixels that come from beyond the row are filled with one of its
/// pixels:
/// - for a negative shift with its last one, W - 1;
/// - for a shift from 1 to W - 1 with pixel 1, not with pixel 0, which is intended;
/// - for a shift of W and more, where the whole row is filled, with pixel W - shift + 1. Where that lies outside the
///   region it is taken from the row of the region's image, beyond the ends of which its end pixels stand.
ZKIT_IMG_API void ImgRealignFrame(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int shift, unsigned int field);
ZKIT_IMG_API void ImgRealignFrame(ZROI<ZC24>* src, ZROI<ZC24>* dst, int shift, unsigned int field);

/// Replaces a field by what lies between: pixels of a rewritten row are the means, truncated, of those above and below
/// in src; at the top and at the bottom the only neighbour counts twice. The only row of a region is copied.
ZKIT_IMG_API void ImgRebuildFrame(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, unsigned int field);
ZKIT_IMG_API void ImgRebuildFrame(ZROI<ZC24>* src, ZROI<ZC24>* dst, unsigned int field);

/// Finds the shift between the fields: that s of minShift to maxShift for which pixels (x - s, row + 1) resemble pixels
/// (x, row) most. It has the smallest sum of squared differences, modulo 2^32, over those columns x for which the
/// pixels of every candidate lie in the region, from max(maxShift, 0) to W - 1 + min(minShift, 0) with a width of W; of
/// equal sums the smallest shift wins. Where there is no such column, as with shifts beyond the width, minShift is
/// found.
/// @param bestShift  stays as it is if all sums are 2^32 - 1
/// Errors, in this order: a pending error; 1400, 1401; 1007 minShift > maxShift or maxShift - minShift > W; 1012 row is
/// negative or no row lies below it. bestShift is then unchanged. Trail: "ImgMatchFrames (ZBW8)".
ZKIT_IMG_API void ImgMatchFrames(ZROI<ZBW8>* roi, int row, int minShift, int maxShift, int& bestShift);

/// The same with the differences of all components. Trail: "ImgMatchFrames (ZC24)".
ZKIT_IMG_API void ImgMatchFrames(ZROI<ZC24>* roi, int row, int minShift, int maxShift, int& bestShift);

/// The mean of the last N images of a sequence, N being the period, at the same cost for any N: a ring of images and
/// their sum are kept, N (or N - 1) bytes and 2 bytes a pixel.
///
/// Images come in one of two ways: the caller passes them to Average(src, dst), which copies them into the ring; or, in
/// an object that holds the source, the caller writes each of them into the image that GetSrcImage returns, and then
/// calls Average(dst). The first image counts as if the N - 1 images before it had been the same.
///
/// Sums have 16 bits and wrap: for images that are all white they are exact up to a period of 257. Not copyable.
class ZKIT_IMG_API ZMovingAverage {
public:
    /// An empty object.
    ZMovingAverage() = default;

    /// The same, then SetSize.
    ZMovingAverage(unsigned int period, int width, int height, int holdsSource);

    virtual ~ZMovingAverage();
    ZMovingAverage(const ZMovingAverage&) = delete;
    ZMovingAverage& operator=(const ZMovingAverage&) = delete;

    /// Takes new storage and starts a sequence anew.
    /// @param period       images to average, at least 1. A period of 1 copies images.
    /// @param holdsSource  not 0 when images come through GetSrcImage
    /// Errors, in this order: a pending error, the object is then unchanged; 1011 period 0; 1303 more than 2^20 images
    /// or no memory; 1011 or 1012 a negative width or height. After these the object is empty. Trail:
    /// "ZMovingAverage::SetSize".
    void SetSize(unsigned int period, int width, int height, int holdsSource);

    /// What SetSize was given; of an empty object 0.
    void GetSize(unsigned int& period, int& width, int& height, int& holdsSource);

    /// The image of the ring into which the next image of the sequence is to be written.
    /// Errors: a pending error; 1003 the object does not hold the source. Returns null then. Trail:
    /// "ZMovingAverage::GetSrcImage".
    ZImage<ZBW8>* GetSrcImage();

    /// Adds src to the sequence and writes the mean of its last N images, truncated, to dst: with the 16-bit sum S of
    /// the N - 1 images before, s = src + S, dst = s / N, of which the low 8 bits count, and S becomes s less the
    /// oldest image. The first image is copied. Errors, in this order: a pending error; 1003 the object holds the
    /// source; 1400 null region; 1403 src, dst and the object's images differ in size; 1400, 1401 of src, then of dst;
    /// 1400 a ring without pixels; 1303 no memory to keep overlapping regions apart. dst and the sequence are then
    /// unchanged. Trail: "ZMovingAverage::Average".
    void Average(ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

    /// The same for the image that the caller has written into GetSrcImage().
    /// Errors: the same, 1003 meaning that the object does not hold the source. 1403 and 1401 may also come from images
    /// of the ring that the caller has changed.
    void Average(ZROI<ZBW8>* dst);

private:
    void average(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, bool holdsSource);
    bool allocate(int width, int height);
    void clear();
    ZImage<ZBW8>* newest() const;
    ZImage<ZBW8>* oldest() const;

    unsigned int Period = 0;
    int Shift = 0;     // log2 of the period, 0 when it is no power of two
    int Index = 0;     // where the next image goes; less RingSize in the first round
    int RingSize = 0;  // images in the ring: with the source Period, else one less
    int HoldsSource = 0;
    ZImage<ZBW8>* Ring = nullptr;
    ZImage<ZBW16> Sum;  // of the images that the next mean shares with those before
};

/// Makes the table of a recursive average: 8191 signed 16-bit numbers, of which entry 4095 + d says by how much a state
/// follows when the pixel differs from it by d, both in 1/16 of a grey level. All arithmetic is in double precision.
/// With q = reduction^2 and g = 2 / (q + 1):
/// - width 0: t(i) = 0.5 + i g, the product being a sum of i times g;
/// - else, with c = |16 width| in single precision and m = c (1 - q) / (1 + q): t(i) = i + m (1 - u) / (1 + u), where u
///   is e^(-2 / c) multiplied i times: i + m tanh(i / c).
/// For i = 0 to 4095, entry 4095 + i is t(i) truncated, entry 4095 - i its negative; entry 4095 is 0. What is not a
/// number gives 0. The table is the same on every machine.
/// @param lut        any vector; gets 8191 elements
/// @param reduction  by what small differences, such as noise, are to be reduced: their standard deviation is divided
/// by
///                   it, since the state follows them with the gain g
/// @param width      grey levels; larger differences, such as motion, are followed with a lag of |m| / 16 grey levels.
/// 0
///                   reduces all differences alike
/// Errors, in this order: a pending error; 1601 null vector; 1303 no memory ("ZVector::SetMaxElements",
/// "ZVector::SetNumElements" first in the trail). Trail: "ImgSetRecursiveAverageLUT".
ZKIT_IMG_API void ImgSetRecursiveAverageLUT(ZBW16Vector* lut, float reduction, float width);

/// Averages a sequence with one state a pixel: state = state + lut[4095 + d] with d = 16 src - state, at least -4095;
/// then dst = state / 16, truncated and clipped to 0..255. The state is stored modulo 65536, but dst is made of the sum
/// before.
/// @param state  16 times the average so far, unsigned; the caller's first state may be 16 times the first image
/// @param lut    from ImgSetRecursiveAverageLUT
/// Where dst shares memory with the state, dst is written last.
/// Errors, in this order: a pending error; 1400 null region or no pixels, of src, state and dst; 1403 dst or state
/// differs in size from src; 1401 of src, state and dst; 1601 null vector; 1613 the table does not have 8191 elements;
/// 1303 no memory to keep overlapping regions apart. state and dst are then unchanged. Trail: "ImgRecursiveAverage".
ZKIT_IMG_API void ImgRecursiveAverage(ZROI<ZBW8>* src, ZROI<ZBW16>* state, ZROI<ZBW8>* dst, ZBW16Vector* lut);
