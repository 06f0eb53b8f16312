#include "inspect/inspect.h"

#include "inspect/objects.h"
#include "inspect/segment.h"
#include "measure/figures.h"
#include "measure/tiles.h"

#include "zkit/core/error.h"
#include "zkit/img.h"

#include <cmath>
#include <numbers>

namespace zkit::tool {
namespace {

// Runs are measured in pieces of so many pixels, as large as tiles.
constexpr int pieceLength = tileSide * tileSide;

// Calls use(piece, x, y) for pieces of one row that make up the object; (x, y) is the piece's first pixel within the
// picture.
template <class Use>
void forEachPiece(ZImage<ZBW8>& image, std::span<const Run> runs, Use use)
{
    for (const Run& run : runs)
        for (int x = run.first; x <= run.last; x += pieceLength) {
            ZROI<ZBW8> piece(&image, x, run.y, std::min(pieceLength, run.last + 1 - x), 1);
            use(piece, x, run.y);
        }
}

// Centre, orientation and elongation from the moments within the box. A pixel is a square: the variance of its own
// extent, 1/12, belongs to both axes.
void setShape(Object& object, const Moments& moments)
{
    constexpr double pixelVariance = 1.0 / 12;
    const double x = moments.m10 / moments.m00, y = moments.m01 / moments.m00;
    const double xx = moments.m20 / moments.m00 - x * x + pixelVariance;
    const double yy = moments.m02 / moments.m00 - y * y + pixelVariance;
    const double xy = moments.m11 / moments.m00 - x * y;
    object.centreX = object.box.x + x;
    object.centreY = object.box.y + y;
    // Rows count downwards, angles upwards. A round object has no orientation: 0.
    object.orientation = xy == 0 && xx >= yy ? 0 : std::atan2(-2 * xy, xx - yy) / 2 * 180 / std::numbers::pi;
    if (object.orientation <= -90)
        object.orientation += 180;
    const double mean = (xx + yy) / 2, difference = std::hypot((xx - yy) / 2, xy);
    object.elongation = std::sqrt((mean + difference) / (mean - difference));
}

void setFigures(Object& object, ZImage<ZBW8>& grey, ZImage<ZBW8>& mask, std::span<const Run> runs)
{
    Moments moments;
    forEachPiece(mask, runs, [&](ZROI<ZBW8>& piece, int x, int y) {
        addBinaryMoments(moments, piece, 1, x - object.box.x, y - object.box.y);
    });
    setShape(object, moments);
    PooledStatistics<1> statistics;
    forEachPiece(grey, runs, [&](ZROI<ZBW8>& piece, int, int) {
        float variance = 0, average = 0;
        ImgPixelVariance(&piece, variance, average);
        statistics.add(piece.GetWidth(), {average}, {{variance}});
    });
    object.mean = statistics.mean(0);
    object.deviation = std::sqrt(statistics.covariance(0, 0));
}

// Follows the outer contour from the object's first pixel. Anticlockwise, since the search for the first step then
// begins at the neighbours above it, none of which is the object's: it cannot start along a hole.
void setContour(Object& object, ZImage<ZBW8>& mask, const Run& first)
{
    object.contour = std::make_unique<ZPathVector>();
    if (object.area == 1)  // has no contour to follow
        object.contour->AddElement({static_cast<short>(first.first), static_cast<short>(first.y)});
    else
        ImgContour(&mask, CONTOUR_ANTICLOCKWISE_ALONG_EDGE, first.first, first.y, CONTOUR_THRESHOLD_ABOVE, 1,
                   CONNEXITY_8, object.contour.get());
    throwPendingError();
    const unsigned count = object.contour->GetNumElements();
    const ZPath* const path = object.contour->GetDataPtr();
    int straight = 0, diagonal = 0;
    for (unsigned i = 0; i < count; ++i) {
        const ZPath from = path[i], to = path[(i + 1) % count];
        const int steps = std::abs(to.X - from.X) + std::abs(to.Y - from.Y);
        straight += steps == 1;
        diagonal += steps == 2;
    }
    object.perimeter = straight + diagonal * std::numbers::sqrt2;
}

bool touchesEdge(const Rectangle& box, const ZGenericROI& picture)
{
    return box.x == 0 || box.y == 0 || box.x + box.width == picture.GetWidth() ||
           box.y + box.height == picture.GetHeight();
}

}  // namespace

std::unique_ptr<Inspection> inspect(ZImage<ZBW8>& grey, const InspectRequest& request)
{
    const ZThreadErrorScope scope;
    if (grey.GetWidth() > maxInspectedSide || grey.GetHeight() > maxInspectedSide)
        throw MeasureError("a side of the picture has more than 32767 pixels");
    const Segmentation segmentation = segment(grey, request);
    auto inspection = std::make_unique<Inspection>();
    inspection->width = grey.GetWidth();
    inspection->height = grey.GetHeight();
    inspection->threshold = segmentation.threshold;
    ImgHistogram(segmentation.levels.get(), &inspection->histogram);
    const ObjectMap map(*segmentation.mask);
    for (std::size_t i = 0; i < map.size(); ++i) {
        const auto runs = map[i];
        Object object;
        object.area = areaOf(runs);
        if (object.area < request.minArea || object.area > request.maxArea)
            continue;
        object.box = boxOf(runs);
        object.touchesEdge = touchesEdge(object.box, grey);
        setFigures(object, grey, *segmentation.mask, runs);
        setContour(object, *segmentation.mask, runs.front());
        inspection->objects.push_back(std::move(object));
    }
    throwPendingError();
    return inspection;
}

}  // namespace zkit::tool
