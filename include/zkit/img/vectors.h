// Typed vectors: growable arrays of one element type (ZVectorTemplate) in which operations take and return data.
#pragma once

#include "zkit/core/pixel.h"
#include "zkit/core/plot.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"

/// A position of a path.
struct ZPath {
    short X, Y;
};

/// A position and the grey level there.
struct ZBW8Path {
    short X, Y;
    ZBW8 Pixel;
};

/// A position and the colour there.
struct ZC24Path {
    short X, Y;
    ZC24 Pixel;
};

/// A stretch of a profile above a threshold, or below it.
struct ZPeak {
    unsigned int Start;   ///< index of its first sample
    unsigned int Length;  ///< number of its samples
    float Center;         ///< position of its centre, between samples
    int Amplitude;        ///< largest excess over the threshold, negative for a valley
    int Area;             ///< sum of the excesses
};

extern template class ZKIT_IMG_API ZVectorTemplate<ZBW8>;
extern template class ZKIT_IMG_API ZVectorTemplate<ZBW16>;
extern template class ZKIT_IMG_API ZVectorTemplate<unsigned int>;
extern template class ZKIT_IMG_API ZVectorTemplate<ZC24>;
extern template class ZKIT_IMG_API ZVectorTemplate<ZPath>;
extern template class ZKIT_IMG_API ZVectorTemplate<ZBW8Path>;
extern template class ZKIT_IMG_API ZVectorTemplate<ZC24Path>;
extern template class ZKIT_IMG_API ZVectorTemplate<ZPeak>;

/// Grey levels and other unsigned numbers.
template <class T>
class ZNumberVector : public ZVectorTemplate<T> {
public:
    /// An empty vector with room for `maxElements`. @param use  a number of the caller's, kept and not interpreted
    explicit ZNumberVector(unsigned int maxElements = 0, int use = 0) : ZVectorTemplate<T>(maxElements), use_(use) {}
    using ZVectorTemplate<T>::operator=;
    int GetUse() const { return use_; }

private:
    int use_;
};

using ZBW8Vector = ZNumberVector<ZBW8>;           ///< e.g. a look-up table of 256 entries
using ZBW16Vector = ZNumberVector<ZBW16>;         ///< e.g. a row of 16-bit pixels
using ZBW32Vector = ZNumberVector<unsigned int>;  ///< e.g. the sums of a projection

/// Colour pixels.
class ZKIT_IMG_API ZC24Vector : public ZVectorTemplate<ZC24> {
public:
    /// An empty vector with room for `maxElements`.
    explicit ZC24Vector(unsigned int maxElements = 0);
    using ZVectorTemplate<ZC24>::operator=;
};

class ZKIT_IMG_API ZPathVector : public ZVectorTemplate<ZPath> {
public:
    /// An empty vector with room for `maxElements`.
    explicit ZPathVector(unsigned int maxElements = 0);
    using ZVectorTemplate<ZPath>::operator=;

    /// Draws the path: a line from each position to the next, (X, Y) lying at ((X + panX) * zoomX, (Y + panY) * zoomY)
    /// of the device, computed in double precision and truncated toward zero; beyond the 32-bit range the nearest
    /// number, 0 for NaN. zoomY = 0 means zoomX. The path is not closed, an empty one draws nothing. Raises nothing.
    void Draw(HDC device, float zoomX, float zoomY, float panX, float panY);
};

class ZKIT_IMG_API ZBW8PathVector : public ZVectorTemplate<ZBW8Path> {
public:
    /// An empty vector with room for `maxElements`.
    explicit ZBW8PathVector(unsigned int maxElements = 0);
    using ZVectorTemplate<ZBW8Path>::operator=;

    /// See ZPathVector::Draw.
    void Draw(HDC device, float zoomX, float zoomY, float panX, float panY);
};

class ZKIT_IMG_API ZC24PathVector : public ZVectorTemplate<ZC24Path> {
public:
    /// An empty vector with room for `maxElements`.
    explicit ZC24PathVector(unsigned int maxElements = 0);
    using ZVectorTemplate<ZC24Path>::operator=;

    /// See ZPathVector::Draw.
    void Draw(HDC device, float zoomX, float zoomY, float panX, float panY);
};

class ZKIT_IMG_API ZPeaksVector : public ZVectorTemplate<ZPeak> {
public:
    /// An empty vector with room for `maxElements`.
    explicit ZPeaksVector(unsigned int maxElements = 0);
    using ZVectorTemplate<ZPeak>::operator=;
};

/// A histogram: element i is the number of pixels of level i.
class ZKIT_IMG_API ZBW8HistogramVector : public ZVectorTemplate<unsigned int> {
public:
    /// An empty vector with room for `maxElements`.
    explicit ZBW8HistogramVector(unsigned int maxElements = 0);
    using ZVectorTemplate<unsigned int>::operator=;

    /// Draws the histogram as a diagram (ZPlot) in a rectangle of the device, its four numbers truncated toward zero;
    /// beyond the 32-bit range the nearest number, 0 for NaN. The horizontal axis, "Value", runs from 0 to the last
    /// index, at least to 1; the vertical one, "Count", from 0 to the largest element, at least to 1. Element i is a
    /// bar from the column of i up to that of i + 1, of vertical lines, at least one. Raises nothing.
    void Draw(HDC device, float x, float y, float width, float height);

private:
    ZPlot plot_;
};
