// A region that an operation made of several others may read after it has begun to write another one.
#pragma once

#include "frame/overlap.h"
#include "frame/planes.h"

namespace zkit {

// The region itself where that is harmless, else a copy that lives as long as this object. The regions are placed
// within their images. Raises 1303 and returns false when there is no memory for the copy.
template <class T>
class SeparateRegion {
public:
    // For operations that write each pixel where they have read it for the last time.
    bool forPoints(ZROI<T>* src, const ZROI<T>* dst)
    {
        Source plane = source(src);
        return copy_.forPoints(plane, size, target(dst), size) && use(src, plane);
    }

    // For all others.
    bool forNeighbours(ZROI<T>* src, const ZROI<T>* dst)
    {
        Source plane = bytes(source(src), size);
        return copy_.forNeighbours(plane, bytes(target(dst), size)) && use(src, plane);
    }

    ZROI<T>* get() const { return region_; }

private:
    static constexpr int size = sizeof(T);

    bool use(ZROI<T>* src, const Source& plane)
    {
        region_ = src;
        if (plane.data != source(src).data) {
            image_.Attach(const_cast<std::uint8_t*>(plane.data), src->GetWidth(), src->GetHeight(),
                          static_cast<int>(plane.pitch));
            region_ = &image_;
        }
        return true;
    }

    SeparateSource copy_;
    ZImage<T> image_;
    ZROI<T>* region_ = nullptr;
};

}  // namespace zkit
