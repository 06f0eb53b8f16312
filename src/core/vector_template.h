// The members of ZVectorTemplate but those that use files. A library that instantiates it for its element types
// includes this file once.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/vector.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

template <class T>
ZVectorTemplate<T>::ZVectorTemplate(unsigned int maxElements)
{
    SetMaxElements(maxElements);
}

template <class T>
ZVectorTemplate<T>::~ZVectorTemplate()
{
    std::free(Data);
    Data = nullptr;
}

// Takes the storage over and abandons its own, see the header.
// NOLINTBEGIN(misc-unconventional-assign-operator, bugprone-unhandled-self-assignment)
template <class T>
ZVectorTemplate<T>& ZVectorTemplate<T>::operator=(ZVectorTemplate& other)
{
    NumElements = other.NumElements;
    MaxElements = other.MaxElements;
    Data = other.Data;
    other.NumElements = 0;
    other.MaxElements = 0;
    other.Data = nullptr;
    return *this;
}
// NOLINTEND(misc-unconventional-assign-operator, bugprone-unhandled-self-assignment)

// Zero-filled, so that elements nobody has set, and their padding, bring nothing else of the memory into files.
template <class T>
void ZVectorTemplate<T>::SetMaxElements(unsigned int n)
{
    if (n == MaxElements)
        return;
    T* fresh = nullptr;
    if (n > 0) {
        const std::uint64_t bytes = static_cast<std::uint64_t>(n) * sizeof(T);
        if (bytes <= PTRDIFF_MAX)
            fresh = static_cast<T*>(std::calloc(1, static_cast<std::size_t>(bytes)));
        if (!fresh) {
            ZSetError(Z_ERROR_OUT_OF_MEMORY);
            ZTraceError("ZVector::SetMaxElements");
            return;
        }
    }
    MaxElements = n;
    if (NumElements > n)
        NumElements = 0;
    else if (NumElements > 0)
        std::memcpy(static_cast<void*>(fresh), Data, NumElements * sizeof(T));
    std::free(Data);
    Data = fresh;
}

template <class T>
void ZVectorTemplate<T>::SetNumElements(unsigned int n)
{
    if (n > MaxElements) {
        NumElements = 0;
        SetMaxElements(n);
        if (MaxElements != n) {
            ZTraceError("ZVector::SetNumElements");
            return;
        }
    }
    NumElements = n;
}

// The element is taken by value: it may lie in the storage that growing releases.
template <class T>
void ZVectorTemplate<T>::append(T element, const char* name)
{
    if (NumElements == MaxElements) {
        const std::uint64_t doubled = MaxElements == 0 ? 1 : 2 * static_cast<std::uint64_t>(MaxElements);
        if (doubled <= UINT32_MAX)
            SetMaxElements(static_cast<unsigned int>(doubled));
        else {
            ZSetError(Z_ERROR_OUT_OF_MEMORY);
            ZTraceError("ZVector::SetMaxElements");
        }
        if (ZGetError() != Z_OK || NumElements == MaxElements) {
            ZTraceError(name);
            return;
        }
    }
    std::memcpy(static_cast<void*>(Data + NumElements++), &element, sizeof(T));
}

template <class T>
void ZVectorTemplate<T>::AddElement(T element)
{
    append(element, "ZVector::AddElement");
}

template <class T>
void ZVectorTemplate<T>::AddElementByRef(T& element)
{
    append(element, "ZVector::AddElementByRef");
}

template <class T>
T& ZVectorTemplate<T>::operator[](unsigned int i)
{
    if (i < NumElements)
        return Data[i];
    ZSetError(Z_ERROR_ARGUMENT_1_OUT_OF_RANGE);
    ZTraceError("ZVector::operator[]");
    thread_local T nowhere{};
    return nowhere;
}
