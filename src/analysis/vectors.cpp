// The typed vectors.
#include "zkit/img/vectors.h"

#include "core/vector_template.h"

template class ZVectorTemplate<ZBW8>;
template class ZVectorTemplate<ZBW16>;
template class ZVectorTemplate<unsigned int>;
template class ZVectorTemplate<ZC24>;

ZC24Vector::ZC24Vector(unsigned int maxElements) : ZVectorTemplate<ZC24>(maxElements) {}
