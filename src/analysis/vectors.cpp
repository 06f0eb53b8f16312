// The typed vectors.
#include "zkit/img/vectors.h"

#include "core/vector_template.h"

template class ZVectorTemplate<ZBW8>;
template class ZVectorTemplate<ZBW16>;
template class ZVectorTemplate<unsigned int>;
template class ZVectorTemplate<ZC24>;
template class ZVectorTemplate<ZPath>;
template class ZVectorTemplate<ZBW8Path>;
template class ZVectorTemplate<ZC24Path>;
template class ZVectorTemplate<ZPeak>;

ZC24Vector::ZC24Vector(unsigned int maxElements) : ZVectorTemplate<ZC24>(maxElements) {}

ZPathVector::ZPathVector(unsigned int maxElements) : ZVectorTemplate<ZPath>(maxElements) {}

ZBW8PathVector::ZBW8PathVector(unsigned int maxElements) : ZVectorTemplate<ZBW8Path>(maxElements) {}

ZC24PathVector::ZC24PathVector(unsigned int maxElements) : ZVectorTemplate<ZC24Path>(maxElements) {}

ZPeaksVector::ZPeaksVector(unsigned int maxElements) : ZVectorTemplate<ZPeak>(maxElements) {}

ZBW8HistogramVector::ZBW8HistogramVector(unsigned int maxElements) : ZVectorTemplate<unsigned int>(maxElements) {}
