// The typed vectors.
#include "zkit/img/vectors.h"

#include "core/vector_template.h"

template class ZVectorTemplate<ZBW8>;

ZBW8Vector::ZBW8Vector(unsigned int maxElements, int use) : ZVectorTemplate<ZBW8>(maxElements), use_(use) {}
