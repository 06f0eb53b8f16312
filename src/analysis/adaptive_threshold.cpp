// ImgAutoAdaptiveThreshold.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "zkit/img/analysis.h"
#include "zkit/img/geometry.h"

#include <algorithm>
#include <climits>
#include <cstdint>

using namespace zkit;

namespace {

struct Span {
    int first, length;
};

// The samples along a row or a column of a region: one more than there are steps between them.
struct Samples {
    Samples(int length, int cellLength) : pixels(length), cell(cellLength), steps((pixels + cell - 1) / cell) {}

    // The pixels that a sample looks at: half a cell to both sides, within the region.
    Span cellOf(std::int64_t sample) const
    {
        const std::int64_t centre = sample * pixels / steps;
        const std::int64_t first = std::max<std::int64_t>(centre - cell / 2, 0);
        return {static_cast<int>(first), static_cast<int>(std::min(centre + cell / 2, pixels) - first)};
    }

    float step() const { return static_cast<float>(static_cast<double>(pixels) / static_cast<double>(steps)); }

    std::int64_t pixels, cell, steps;
};

// The threshold of one cell. Whatever the mode chooses it is that of isodata, which is intended: of the choice only an
// error remains.
bool sample(ZROI<ZBW8>& cell, IMG_THRESHOLD_MODES mode, ZBW8& level)
{
    ZBW8HistogramVector histogram(256);
    ImgHistogram(&cell, &histogram);
    auto threshold = static_cast<unsigned int>(mode);
    float lowMean, highMean;
    if (ZGetError() == Z_OK)
        ImgHistogramThreshold(&histogram, threshold, lowMean, highMean, 0.5F, 0, 255);
    if (ZGetError() != Z_OK)
        return false;
    level = ImgIsodataThreshold(&histogram, 0, 255);
    return true;
}

// The image of the samples' thresholds.
bool sampleAll(const ZROI<ZBW8>* src, IMG_THRESHOLD_MODES mode, const Samples& columns, const Samples& rows,
               ZImage<ZBW8>& grid)
{
    if (!require(std::max(columns.steps, rows.steps) < INT_MAX, Z_ERROR_OUT_OF_MEMORY))
        return false;
    grid.SetSize(static_cast<int>(columns.steps) + 1, static_cast<int>(rows.steps) + 1);
    ZImage<ZBW8> pixels;
    pixels.Attach(src->GetPixelPtr(0, 0), src->GetWidth(), src->GetHeight(), src->GetRowPitch());
    ZROI<ZBW8> cell(&pixels, 0, 0, 0, 0);
    for (int y = 0; y < grid.GetHeight(); ++y)
        for (int x = 0; x < grid.GetWidth(); ++x) {
            const Span across = columns.cellOf(x), down = rows.cellOf(y);
            cell.SetPlacement(across.first, down.first, across.length, down.length);
            ZBW8 level;
            if (!sample(cell, mode, level))
                return false;
            grid.SetPixel(level, x, y);
        }
    return ZGetError() == Z_OK;
}

}  // namespace

void ImgAutoAdaptiveThreshold(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, IMG_THRESHOLD_MODES mode, int cellWidth, int cellHeight)
{
    const CallFrame frame("ImgAutoAdaptiveThreshold");
    if (frame.clear() && placed(src) && placed(dst) && sameSize(dst, src) &&
        require(cellWidth > 0, Z_ERROR_ARGUMENT_4_OUT_OF_RANGE) &&
        require(cellHeight >= 0, Z_ERROR_ARGUMENT_5_OUT_OF_RANGE) && src->GetWidth() > 0 && src->GetHeight() > 0) {
        const Samples columns(src->GetWidth(), cellWidth);
        const Samples rows(src->GetHeight(), cellHeight == 0 ? cellWidth : cellHeight);
        ZImage<ZBW8> grid;
        if (sampleAll(src, mode, columns, rows, grid))
            ImgScaleRotate(&grid, 0, 0, 0, 0, columns.step(), rows.step(), 0, dst, 8);
    }
    frame.finish();
}
