// The typed vectors.
#include "zkit/img/vectors.h"

#include "core/vector_template.h"
#include "frame/vector_file.h"

namespace zkit {

// The marks of their files; 5 is ZColor.
template <>
constexpr ElementMark elementMark<ZBW8> = {1, 'A'};
template <>
constexpr ElementMark elementMark<ZBW16> = {2, 'W'};
template <>
constexpr ElementMark elementMark<unsigned int> = {3, 'U'};
template <>
constexpr ElementMark elementMark<ZC24> = {4, 'R'};
template <>
constexpr ElementMark elementMark<ZPath> = {6, 'B'};
template <>
constexpr ElementMark elementMark<ZBW8Path> = {7, 'C'};
template <>
constexpr ElementMark elementMark<ZC24Path> = {8, 'L'};
template <>
constexpr ElementMark elementMark<ZPeak> = {9, 'M'};

}  // namespace zkit

static_assert(sizeof(ZPath) == 4 && sizeof(ZBW8Path) == 6 && sizeof(ZC24Path) == 8 && sizeof(ZPeak) == 20,
              "files hold elements of these sizes");

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
