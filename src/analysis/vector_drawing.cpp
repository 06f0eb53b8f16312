// The typed vectors that can be drawn.
#include "frame/numbers.h"
#include "zkit/img/vectors.h"

#include <algorithm>

namespace {

// The elements' positions, joined by lines.
template <class T>
void drawPath(ZVectorTemplate<T>& path, HDC device, float zoomX, float zoomY, float panX, float panY)
{
    if (zoomY == 0)
        zoomY = zoomX;
    const auto along = [](short position, double pan, double zoom) { return zkit::truncated((position + pan) * zoom); };
    for (unsigned int i = 0; i < path.GetNumElements(); ++i) {
        const T& element = path.GetDataPtr()[i];
        const int x = along(element.X, panX, zoomX), y = along(element.Y, panY, zoomY);
        if (i == 0)
            MoveToEx(device, x, y, nullptr);
        else
            LineTo(device, x, y);
    }
}

}  // namespace

void ZPathVector::Draw(HDC device, float zoomX, float zoomY, float panX, float panY)
{
    drawPath(*this, device, zoomX, zoomY, panX, panY);
}

void ZBW8PathVector::Draw(HDC device, float zoomX, float zoomY, float panX, float panY)
{
    drawPath(*this, device, zoomX, zoomY, panX, panY);
}

void ZC24PathVector::Draw(HDC device, float zoomX, float zoomY, float panX, float panY)
{
    drawPath(*this, device, zoomX, zoomY, panX, panY);
}

void ZBW8HistogramVector::Draw(HDC device, float x, float y, float width, float height)
{
    if (!device)
        return;
    unsigned int largest = 1;
    for (unsigned int i = 0; i < NumElements; ++i)
        largest = std::max(largest, Data[i]);
    plot_.SetXRange(0, NumElements > 2 ? NumElements - 1 : 1);
    plot_.SetYRange(0, largest);
    plot_.DrawAnnotations(device, zkit::truncated(x), zkit::truncated(y), zkit::truncated(width),
                          zkit::truncated(height), "Value", "Count");

    const int bottom = plot_.GetBaseLine();
    for (unsigned int i = 0; i < NumElements; ++i) {
        const int end = plot_.XView(i + 1.0), top = plot_.YView(Data[i]);
        std::int64_t column = plot_.XView(i);  // one more than the greatest end must fit
        do {
            MoveToEx(device, static_cast<int>(column), bottom, nullptr);
            LineTo(device, static_cast<int>(column), top);
        } while (++column < end);
    }
}
