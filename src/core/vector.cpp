#include "zkit/core/vector.h"

#include "zkit/core/error.h"

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

enum VectorType { contour = 1, histogram = 2, lookUpTable = 3 };
enum DataType { unsignedInteger = 1, signedInteger = 2 };

int orElse(int number, int standard) { return number == 0 ? standard : number; }

}  // namespace

ZVector::ZVector(int vectType)
{
    if (vectType != 0)
        SetType(vectType, 0, 0);
}

ZVector::~ZVector() { std::free(data_); }

short ZVector::SetType(int vectType, int a, int b)
{
    if (a < 0 || b < 0)
        return ZSetError(a < 0 ? Z_ERROR_ARGUMENT_2_OUT_OF_RANGE : Z_ERROR_ARGUMENT_3_OUT_OF_RANGE);
    short code = Z_OK;
    switch (vectType) {
    case contour: code = layOut(4, orElse(a, 2000), 3, signedInteger); break;
    case histogram: code = layOut(4, orElse(a, 1), orElse(b, 256), unsignedInteger); break;
    case lookUpTable: code = layOut(2, orElse(a, 1), orElse(b, 256), unsignedInteger); break;
    default: code = layOut(4, orElse(a, 1), orElse(b, 1), unsignedInteger); break;
    }
    if (code != Z_OK)
        return code;
    vectType_ = vectType;
    if (vectType == contour)
        groups_ = 0;
    return ZOk();
}

short ZVector::SetStructure(int dataSize, int groups, int groupLength, int dataType)
{
    if (dataSize < 1)
        return ZSetError(Z_ERROR_ARGUMENT_1_OUT_OF_RANGE);
    if (groups < 0 || groupLength < 0)
        return ZSetError(groups < 0 ? Z_ERROR_ARGUMENT_2_OUT_OF_RANGE : Z_ERROR_ARGUMENT_3_OUT_OF_RANGE);
    return layOut(dataSize, groups, groupLength, dataType);
}

// Takes zero-filled storage for the structure; without it the vector stays as it was.
short ZVector::layOut(int dataSize, int groups, int groupLength, int dataType)
{
    void* fresh = nullptr;
    int bytes = 0;
    if (groups > 0 && groupLength > 0) {
        const std::int64_t elements = static_cast<std::int64_t>(groups) * groupLength;
        if (elements <= INT_MAX / dataSize) {
            bytes = static_cast<int>(elements * dataSize);
            fresh = std::calloc(1, static_cast<std::size_t>(bytes));
        }
        if (!fresh)
            return ZSetError(Z_ERROR_OUT_OF_MEMORY);
    }
    std::free(data_);
    data_ = fresh;
    allocatedSize_ = bytes;
    groups_ = fresh ? groups : 0;
    groupLength_ = groupLength;
    dataSize_ = dataSize;
    dataType_ = dataType;
    return ZOk();
}

int ZVector::GetNbMaxGroup() const
{
    const std::int64_t groupBytes = static_cast<std::int64_t>(groupLength_) * dataSize_;
    return groupBytes > 0 ? static_cast<int>(allocatedSize_ / groupBytes) : 0;
}

short ZVector::SetNbGroup(int groups)
{
    if (groups < 0 || groups > GetNbMaxGroup())
        return ZSetError(Z_ERROR_ARGUMENT_1_OUT_OF_RANGE);
    groups_ = groups;
    return ZOk();
}

short ZVector::Reallocate(int bytes)
{
    if (bytes < 0)
        return ZSetError(Z_ERROR_ARGUMENT_1_OUT_OF_RANGE);
    void* fresh = nullptr;
    if (bytes == 0)
        std::free(data_);
    else {
        fresh = std::realloc(data_, static_cast<std::size_t>(bytes));  // often grows in place
        if (!fresh)
            return ZSetError(Z_ERROR_OUT_OF_MEMORY);
        if (bytes > allocatedSize_)
            std::memset(static_cast<char*>(fresh) + allocatedSize_, 0,
                        static_cast<std::size_t>(bytes - allocatedSize_));
    }
    data_ = fresh;
    allocatedSize_ = bytes;
    if (groups_ > GetNbMaxGroup())
        groups_ = GetNbMaxGroup();
    return ZOk();
}
