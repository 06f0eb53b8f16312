// Typed vectors: growable arrays of one element type (ZVectorTemplate) in which operations take and return data.
#pragma once

#include "zkit/core/pixel.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"

extern template class ZKIT_IMG_API ZVectorTemplate<ZBW8>;

/// Bytes, e.g. a look-up table of 256 entries.
class ZKIT_IMG_API ZBW8Vector : public ZVectorTemplate<ZBW8> {
public:
    /// An empty vector with room for `maxElements`. @param use  a number of the caller's, kept and not interpreted
    explicit ZBW8Vector(unsigned int maxElements = 0, int use = 0);
    using ZVectorTemplate<ZBW8>::operator=;
    int GetUse() const { return use_; }

private:
    int use_;
};
