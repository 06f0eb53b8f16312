#include "frame/overlap.h"

#include "frame/checks.h"
#include "frame/planes.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace zkit {

namespace {

// The rows of a plane in the order of their addresses.
struct Rows {
    std::intptr_t first;
    std::ptrdiff_t pitch, bytes, count;
};

Rows ascending(const Source& plane)
{
    const auto first = reinterpret_cast<std::intptr_t>(plane.data);
    if (plane.pitch >= 0)
        return {first, plane.pitch, plane.width, plane.height};
    return {first + plane.pitch * (plane.height - 1), -plane.pitch, plane.width, plane.height};
}

std::intptr_t end(const Rows& rows) { return rows.first + rows.pitch * (rows.count - 1) + rows.bytes; }

// Rounded down; the divisor is positive.
std::ptrdiff_t floorDivide(std::ptrdiff_t dividend, std::ptrdiff_t divisor)
{
    return dividend / divisor - (dividend % divisor < 0);
}

}  // namespace

bool overlap(Source src, const Target& dst)
{
    if (src.width <= 0 || src.height <= 0 || dst.width <= 0 || dst.height <= 0)
        return false;
    const Rows a = ascending(src), b = ascending(asSource(dst));
    if (a.first >= end(b) || b.first >= end(a))
        return false;
    if (a.pitch != b.pitch || a.pitch == 0)
        return true;
    // Row i of a meets row i + d of b when the distance of their first bytes lies between -b.bytes and a.bytes.
    const std::ptrdiff_t distance = b.first - a.first;
    const std::ptrdiff_t d = std::max(floorDivide(-b.bytes - distance, a.pitch) + 1, 1 - a.count);
    return d < b.count && distance + d * a.pitch < a.bytes;
}

bool inPlace(const Source& src, const Target& dst)
{
    return src.data == dst.data && (src.pitch == dst.pitch || src.height <= 1);
}

bool SeparateSource::copy(Source& src, std::ptrdiff_t rowBytes)
{
    pixels_.reset(new (std::nothrow) std::uint8_t[static_cast<std::size_t>(rowBytes * src.height)]);
    if (!require(pixels_ != nullptr, Z_ERROR_OUT_OF_MEMORY))
        return false;
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        std::memcpy(pixels_.get() + y * rowBytes, src.data + y * src.pitch, static_cast<std::size_t>(rowBytes));
    src.data = pixels_.get();
    src.pitch = rowBytes;
    return true;
}

bool SeparateSource::forPoints(Source& src, int srcPixelSize, const Target& dst, int dstPixelSize)
{
    const bool harmless = srcPixelSize == dstPixelSize && inPlace(src, dst);
    if (harmless || !overlap(bytes(src, srcPixelSize), bytes(dst, dstPixelSize)))
        return true;
    return copy(src, src.width * srcPixelSize);
}

bool SeparateSource::forNeighbours(Source& src, const Target& dst)
{
    return !overlap(src, dst) || copy(src, src.width);
}

}  // namespace zkit
