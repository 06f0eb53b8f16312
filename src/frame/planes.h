// From regions to planes: the only place where the address of a region's pixels is taken for a worker.
#pragma once

#include "simd/plane.h"
#include "zkit/core/roi.h"

namespace zkit {

inline Source source(const ZGenericROI* region)
{
    return {static_cast<const std::uint8_t*>(region->GetPixelPtr(0, 0)), region->GetRowPitch(), region->GetWidth(),
            region->GetHeight()};
}

inline Target target(const ZGenericROI* region)
{
    return {static_cast<std::uint8_t*>(region->GetPixelPtr(0, 0)), region->GetRowPitch(), region->GetWidth(),
            region->GetHeight()};
}

inline Source asSource(const Target& plane) { return {plane.data, plane.pitch, plane.width, plane.height}; }

// Width times height, as a divisor.
inline double pixelsOf(const ZGenericROI* region)
{
    return static_cast<double>(region->GetWidth()) * region->GetHeight();
}

// The same rows with every pixel taken as `pixelSize` pixels of one byte.
template <class Plane>
Plane bytes(Plane plane, int pixelSize)
{
    plane.width *= pixelSize;
    return plane;
}

// Rows without a gap between them as one long row, for work to which rows mean nothing.
template <class... Planes>
void joinRows(std::ptrdiff_t pixelSize, Planes&... planes)
{
    const auto gapless = [pixelSize](const auto& plane) { return plane.pitch == plane.width * pixelSize; };
    if ((gapless(planes) && ...))
        ((planes.width *= planes.height, planes.height = planes.height > 0, planes.pitch = 0), ...);
}

}  // namespace zkit
