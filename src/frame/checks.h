// What operations require of their arguments. Every check records its error and returns false when it fails; an
// operation chains them with && in the order in which they are to be made.
//
// A check answers for itself alone: an error that is pending already, or that another thread records meanwhile, does
// not make it fail.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"

namespace zkit {

// Any requirement, with the code for its failure.
inline bool require(bool condition, Z_ERRORS code)
{
    if (!condition)
        ZSetError(code);
    return condition;
}

// The region lies within its image, which has pixels (1400, 1401).
bool placed(ZGenericROI* region);

// The two regions are equally large (1402).
bool sameSize(ZGenericROI* region, ZGenericROI* other);

// The size check of neighbourhood filters on source and destination (1402).
bool filterSizes(ZGenericROI* src, ZGenericROI* dst);

// What point operations require of their regions: all of them lie within their images, the destination last, and the
// destination is as large as each source.
template <class... Sources>
bool pointRegions(ZGenericROI* dst, Sources*... sources)
{
    return (placed(sources) && ...) && placed(dst) && (sameSize(dst, sources) && ...);
}

// The region has a pixel address (1400): where that is to be tested apart from its placement, of which it is a part.
bool hasPixels(const ZGenericROI* region);

}  // namespace zkit
