// The counts of a histogram, as operations on histograms read and write them.
#pragma once

#include "frame/checks.h"
#include "zkit/core/vector.h"
#include "zkit/img/vectors.h"

#include <cstdint>

namespace zkit {

// The vector holds a histogram: it has the type of one (1601 for a vector without data, else the given code).
inline bool isHistogram(const ZVector* vector, Z_ERRORS code)
{
    return require(vector, Z_ERROR_VECTOR_EMPTY) &&
           require(vector->IsSameVectType(2), vector->GetDataPtr() ? code : Z_ERROR_VECTOR_EMPTY);
}

// A typed histogram has as many bins as there are grey levels (1613).
inline bool isHistogram(const ZBW8HistogramVector* vector)
{
    return require(vector, Z_ERROR_VECTOR_EMPTY) &&
           require(vector->GetNumElements() == 256, Z_ERROR_VECTOR_ELEMENT_COUNT);
}

inline bool hasData(const ZVector* vector) { return require(vector && vector->GetDataPtr(), Z_ERROR_VECTOR_EMPTY); }

// Gives a typed vector exactly `count` elements and room for no more.
template <class T>
bool hold(ZVectorTemplate<T>* vector, unsigned int count)
{
    vector->SetMaxElements(count);
    if (vector->GetMaxElements() != count)
        return false;
    vector->SetNumElements(count);
    return true;
}

// The bins of a vector, whatever its structure: as many as its storage has room for.
struct Bins {
    explicit Bins(const ZVector* vector)
        : counts(static_cast<std::uint32_t*>(vector->GetDataPtr())),
          size(vector->GetAllocatedSize() / static_cast<int>(sizeof *counts))
    {
    }

    explicit Bins(const ZBW8HistogramVector* vector)
        : counts(vector->GetDataPtr()), size(static_cast<int>(vector->GetNumElements()))
    {
    }

    // Bins that are missing count 0.
    std::uint32_t operator[](std::int64_t bin) const { return bin >= 0 && bin < size ? counts[bin] : 0; }

    std::uint32_t* counts;
    int size;
};

}  // namespace zkit
