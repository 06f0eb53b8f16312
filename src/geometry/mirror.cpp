// ImgVerticalMirror, grey and colour, and ImgHorizontalMirror.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "geometry/mirror_workers.h"
#include "simd/choice.h"
#include "zkit/img/geometry.h"

#include <algorithm>
#include <cstdlib>

using namespace zkit;

namespace {

void turnUpsideDown(const char* name, ZGenericROI* roi)
{
    const CallFrame frame(name);
    if (frame.clear() && placed(roi)) {
        const Target rows = bytes(target(roi), roi->GetPixelSize());
        const auto swap = workers<MirrorWorkers>().swap;
        std::uint8_t* above = rows.data;
        std::uint8_t* below = rows.data + (rows.height - 1) * rows.pitch;
        for (std::ptrdiff_t pairs = rows.height / 2; pairs > 0; --pairs, above += rows.pitch, below -= rows.pitch)
            swap(above, below, rows.width);
    }
    frame.finish();
}

// How many bytes a row of the region's image has from the region's left edge on. The region has pixels, and its image
// more than one row.
std::ptrdiff_t bytesToRightEdge(const ZGenericROI* roi)
{
    const ZGenericROI::Extent image = roi->GetStorageExtent();
    const std::ptrdiff_t pitch = std::abs(static_cast<std::ptrdiff_t>(roi->GetRowPitch()));
    const std::ptrdiff_t rowBytes = (image.end - image.first - 1) % pitch + 1;
    return rowBytes - (static_cast<const std::uint8_t*>(roi->GetPixelPtr(0, 0)) - image.first) % pitch;
}

}  // namespace

void ImgVerticalMirror(ZROI<ZBW8>* roi) { turnUpsideDown("ImgVerticalMirror (gray-level)", roi); }

void ImgVerticalMirror(ZROI<ZC24>* roi) { turnUpsideDown("ImgVerticalMirror (color)", roi); }

void ImgHorizontalMirror(ZROI<ZBW8>* roi)
{
    const CallFrame frame("ImgHorizontalMirror (gray-level)");
    if (frame.clear() && placed(roi) && roi->GetWidth() > 0 && roi->GetHeight() > 1) {
        const Target rows = target(roi);
        // The height counts as the width, which is intended; no further than the image's rows go.
        const std::ptrdiff_t end = std::min(rows.height, bytesToRightEdge(roi)), begin = rows.height - end;
        const auto reverse = workers<MirrorWorkers>().reverse;
        for (std::ptrdiff_t y = 0; begin < end && y < rows.height; ++y)
            reverse(rows.data + y * rows.pitch + begin, end - begin);
    }
    frame.finish();
}
