// The members of ZVectorTemplate that use files. A library that instantiates the template includes this file beside
// core/vector_template.h and gives the mark of each of its element types.
#pragma once

#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/file.h"
#include "zkit/core/vector.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace zkit {

static_assert(std::endian::native == std::endian::little, "vectors are written as they lie in memory");

// What a file says of its elements.
struct ElementMark {
    unsigned char code;
    char letter;
};

template <class T>
constexpr ElementMark elementMark = {};  // none

using VectorFileHeader = std::array<unsigned char, 4>;

template <class T>
constexpr VectorFileHeader vectorFileHeader()
{
    constexpr ElementMark mark = elementMark<T>;
    static_assert(mark.code != 0, "the element type has a mark");
    return {'Z', mark.code, 1, static_cast<unsigned char>(mark.letter)};
}

}  // namespace zkit

template <class T>
void ZVectorTemplate<T>::Save(const char* path) const
{
    constexpr zkit::VectorFileHeader header = zkit::vectorFileHeader<T>();
    const zkit::CallFrame frame("ZVector::Save");
    zkit::File file;
    if (!(frame.clear() && file.open(path, "wb") && zkit::writeBytes(file.stream(), header.data(), header.size()) &&
          writeElements(file.stream()) && file.close()))
        frame.trace();
}

template <class T>
void ZVectorTemplate<T>::Load(const char* path)
{
    zkit::VectorFileHeader header;
    const zkit::CallFrame frame("ZVector::Load");
    zkit::File file;
    if (!(frame.clear() && file.open(path, "rb") && zkit::readBytes(file.stream(), header.data(), header.size()) &&
          zkit::require(header == zkit::vectorFileHeader<T>(), Z_ERROR_FILE_BAD_CONTENT) &&
          readElements(file.stream()) && file.close()))
        frame.trace();
}

template <class T>
void ZVectorTemplate<T>::Serialize(void* file, int write)
{
    if (write)
        writeElements(file);
    else
        readElements(file);
}

template <class T>
bool ZVectorTemplate<T>::writeElements(void* file) const
{
    auto* const stream = static_cast<std::FILE*>(file);
    return zkit::writeBytes(stream, &NumElements, sizeof NumElements) &&
           zkit::writeBytes(stream, Data, NumElements * sizeof(T));
}

// After a short read the count is the announced one and elements that did not arrive are what the storage held, which
// is intended.
template <class T>
bool ZVectorTemplate<T>::readElements(void* file)
{
    auto* const stream = static_cast<std::FILE*>(file);
    unsigned int announced = 0;
    if (!zkit::readBytes(stream, &announced, sizeof announced))
        return false;
    NumElements = 0;
    const zkit::Storage storage = announced == MaxElements
                                      ? zkit::Storage::atOnce
                                      : zkit::storageFor(stream, static_cast<std::uint64_t>(announced) * sizeof(T));
    if (!zkit::require(storage != zkit::Storage::notAtAll, Z_ERROR_FILE_READ))
        return false;

    std::uint64_t room = storage == zkit::Storage::atOnce ? announced : zkit::harmlessBytes / sizeof(T);
    unsigned int arrived = 0;
    do {
        const auto capacity = static_cast<unsigned int>(std::min<std::uint64_t>(room, announced));
        NumElements = arrived;
        SetMaxElements(capacity);
        if (MaxElements != capacity) {
            NumElements = 0;
            ZTraceError("ZVector::SetNumElements");  // which would have grown it
            return false;
        }
        NumElements = capacity == announced ? announced : 0;
        if (!zkit::readBytes(stream, Data + arrived, (capacity - arrived) * sizeof(T)))
            return false;
        arrived = capacity;
        room *= 2;
    } while (arrived < announced);
    return true;
}
