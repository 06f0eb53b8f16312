// Colour operations that are defined as a grey operation on one component after the other.
#pragma once

#include "zkit/core/roi.h"

#include <functional>

namespace zkit {

// The grey operation on component 0, 1 or 2, which is byte 2 - component of the pixels. Returns 0 or the pending code.
// Made from a reference to the operation, so that it takes no memory, which might be missing.
using ComponentOperation = std::function<short(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int component)>;

void eachComponent(const char* name, ZROI<ZC24>* src, ZROI<ZC24>* dst, const ComponentOperation& operation);

// The whole call of such an operation. The regions are placed within their images (1400, 1401); then each component in
// turn is copied into a grey region of the source's size (1303), the operation makes one of the destination's size of
// it, and that is copied into the destination. An error ends this with the inner operation's name and `name` in the
// trail; components before it are done. The regions may overlap.
template <class Operation>
void byComponent(const char* name, ZROI<ZC24>* src, ZROI<ZC24>* dst, const Operation& operation)
{
    eachComponent(name, src, dst, std::cref(operation));
}

}  // namespace zkit
