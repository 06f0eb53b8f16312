// ImgFocusing, grey and colour.
#include "analysis/focusing_workers.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

#include <cmath>

using namespace zkit;

namespace {

// The bytes that an image's storage occupies, as offsets from the first byte of a region.
struct Storage {
    const std::uint8_t* region;
    std::ptrdiff_t first, end;

    bool holds(std::ptrdiff_t from, std::ptrdiff_t count) const { return from >= first && from + count <= end; }
    int at(std::ptrdiff_t offset) const { return holds(offset, 1) ? region[offset] : 0; }
};

Storage storageOf(const ZGenericROI* region)
{
    const auto extent = region->GetStorageExtent();
    const auto* first = static_cast<const std::uint8_t*>(region->GetPixelPtr(0, 0));
    return {first, extent.first - first, extent.end - first};
}

// The row sum of the workers where a byte may lie outside the storage, which then counts 0.
std::uint32_t guardedRow(const Storage& storage, std::ptrdiff_t from, std::ptrdiff_t pitch, std::ptrdiff_t count,
                         int step)
{
    std::uint32_t sum = 0;
    for (std::ptrdiff_t i = from; i < from + count; ++i) {
        const int across = storage.at(i) - storage.at(i + step), down = storage.at(i) - storage.at(i + pitch);
        sum += static_cast<std::uint32_t>(across * across + down * down);
    }
    return sum;
}

// Sum of squared differences to the right and below. The walk is slanted, which is intended: all pixels of a row but
// the last are taken, and the row gap is added to the position reached, so that each row starts one pixel further to
// the left than the one before it; the walk goes on while it is before the region's last row.
double squaredDifferences(ZGenericROI* src, int pixelSize)
{
    const Source plane = bytes(source(src), pixelSize);
    const Storage storage = storageOf(src);
    const std::ptrdiff_t count = plane.width - pixelSize, lastRow = plane.pitch * (plane.height - 1);
    const auto row = workers<FocusingWorkers>().row;
    double total = 0.0;
    if (count <= 0)
        return total;
    for (std::ptrdiff_t from = 0; plane.pitch > 0 ? from < lastRow : from > lastRow; from += plane.pitch - pixelSize) {
        const bool inside = storage.holds(from, count + pixelSize) && storage.holds(from + plane.pitch, count);
        total += inside ? row(plane.data + from, plane.data + from + plane.pitch, count, pixelSize)
                        : guardedRow(storage, from, plane.pitch, count, pixelSize);
    }
    return total;
}

float focusing(const char* name, ZGenericROI* src, int pixelSize)
{
    const CallFrame frame(name);
    if (!(frame.clear() && placed(src)))
        return frame.trace(0.0F);
    const double values = pixelsOf(src) * pixelSize;
    return frame.finish(static_cast<float>(std::sqrt(squaredDifferences(src, pixelSize) / values)));
}

}  // namespace

float ImgFocusing(ZROI<ZBW8>* src) { return focusing("ImgFocusing (BW8)", src, 1); }

float ImgFocusing(ZROI<ZC24>* src) { return focusing("ImgFocusing (C24)", src, 3); }
