// Typed vectors: growable arrays of one element type (ZVectorTemplate) in which operations take and return data.
#pragma once

#include "zkit/core/pixel.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"

extern template class ZKIT_IMG_API ZVectorTemplate<ZBW8>;
extern template class ZKIT_IMG_API ZVectorTemplate<ZBW16>;
extern template class ZKIT_IMG_API ZVectorTemplate<unsigned int>;
extern template class ZKIT_IMG_API ZVectorTemplate<ZC24>;

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
