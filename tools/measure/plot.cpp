#include "measure/plot.h"

#include "drawing/cairo_device.h"
#include "measure/figures.h"

#include "zkit/core/error.h"
#include "zkit/img/analysis.h"
#include "zkit/img/point.h"

#include <algorithm>
#include <bit>

namespace zkit::tool {
namespace {

constexpr int plotWidth = 720, plotHeight = 420;

struct Counter {
    ZBW8HistogramVector& histogram;
    Rectangle region;

    void operator()(const ImagePointer<ZBW1>& image) const { count(*expand(*image)); }
    void operator()(const ImagePointer<ZBW8>& image) const { count(*image); }

    // As many bins as the greatest level needs.
    void operator()(const ImagePointer<ZBW16>& image) const
    {
        ZROI<ZBW16> part = partOf(*image);
        ZBW16 levels = 0;
        for (int y = 0; y < part.GetHeight(); ++y)
            for (int x = 0; x < part.GetWidth(); ++x)
                levels = static_cast<ZBW16>(levels | part.GetPixel(x, y));
        const auto bits = static_cast<unsigned>(std::max(1, static_cast<int>(std::bit_width(levels))));
        ImgHistogram(&part, &histogram, bits - 1, bits, 0);
    }

    void operator()(const ImagePointer<ZC24>& image) const
    {
        ZROI<ZC24> part = partOf(*image);
        ZImage<ZBW8> grey(region.width, region.height);
        ImgConvert(&part, &grey);
        ImgHistogram(&grey, &histogram);
    }

    template <class T>
    ZROI<T> partOf(ZImage<T>& image) const
    {
        ZROI<T> part(&image, region.x, region.y, region.width, region.height);
        part.CheckPlacement();
        throwPendingError();
        return part;
    }

    void count(ZImage<ZBW8>& image) const
    {
        ZROI<ZBW8> part = partOf(image);
        ImgHistogram(&part, &histogram);
    }
};

}  // namespace

void plotHistogram(const Picture& picture, const MeasureRequest& request, const std::filesystem::path& file)
{
    const ZThreadErrorScope scope;
    ZBW8HistogramVector histogram;
    std::visit(Counter{histogram, regionOf(picture, request)}, picture);
    throwPendingError();
    plotHistogram(histogram, std::nullopt, file);
}

void plotHistogram(ZBW8HistogramVector& histogram, std::optional<int> threshold, const std::filesystem::path& file)
{
    CairoDevice device(file, plotWidth, plotHeight);
    histogram.Draw(&device, 0, 0, plotWidth, plotHeight);
    if (threshold) {
        constexpr Pen thresholdPen = {0.9, 0, 0};
        ZPlot frame;  // the diagram's, whose horizontal axis runs from 0 to 255
        frame.SetXRange(0, 255);
        frame.SetView(0, 0, plotWidth, plotHeight);
        const int x = frame.XView(*threshold);
        device.setPen(thresholdPen);
        device.MoveTo(x, frame.YView(0));
        device.LineTo(x, frame.YView(1));
    }
    device.write();
}

}  // namespace zkit::tool
