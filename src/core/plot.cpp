#include "zkit/core/plot.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

constexpr int leftMargin = 56, rightMargin = 12, topMargin = 12, bottomMargin = 40;
constexpr int tickLength = 5, tickSpacing = 50;
constexpr int characterWidth = 7, characterHeight = 12;  // room kept for a character

int add(int a, long long b) { return static_cast<int>(std::clamp<long long>(a + b, INT_MIN, INT_MAX)); }

// The round step, 1, 2 or 5 times a power of ten, that divides a range into at most `count` pieces.
double roundStep(double low, double high, int count)
{
    const double least = high / count - low / count;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least)
            return factor * power;
    return 10.0 * power;
}

}  // namespace

int ZPlot::Axis::view(double value) const
{
    // Differences and products of the greatest numbers would overflow.
    const double scale = std::max({std::abs(value), std::abs(from), std::abs(to)}) > 1e290 ? 1e-20 : 1.0;
    const double distance = value * scale - from * scale, range = to * scale - from * scale;
    const double extent = static_cast<double>(end) - start;
    const double position = std::floor(start + distance * extent / range + 0.5);
    return std::isnan(position) ? start : static_cast<int>(std::clamp<double>(position, INT_MIN, INT_MAX));
}

ZPlot::ZPlot() : x_{0, 1, 0, 0}, y_{0, 1, 0, 0} { SetView(0, 0, 256, 256); }

void ZPlot::setRange(Axis& axis, double from, double to)
{
    if (!std::isfinite(from))
        from = to = 0;
    axis.from = from;
    axis.to = std::isfinite(to) && to != from ? to : from + 1;
    if (axis.to == axis.from)  // a number so large that one more is the same
        axis.to = from / 2;
}

void ZPlot::SetXRange(double from, double to) { setRange(x_, from, to); }

void ZPlot::SetYRange(double from, double to) { setRange(y_, from, to); }

void ZPlot::SetView(int x, int y, int width, int height)
{
    width = std::max(width, 1);
    height = std::max(height, 1);
    x_.start = add(x, std::min(leftMargin, width / 4));
    x_.end = add(x, static_cast<long long>(width) - 1 - std::min(rightMargin, width / 4));
    y_.start = add(y, static_cast<long long>(height) - 1 - std::min(bottomMargin, height / 4));
    y_.end = add(y, std::min(topMargin, height / 4));
}

int ZPlot::XView(double value) const { return x_.view(value); }

int ZPlot::YView(double value) const { return y_.view(value); }

int ZPlot::GetBaseLine() const { return y_.start; }

void ZPlot::drawTicks(HDC device, const Axis& axis, bool horizontal) const
{
    const double low = std::min(axis.from, axis.to), high = std::max(axis.from, axis.to);
    const long long length = std::llabs(static_cast<long long>(axis.end) - axis.start);
    const int count = static_cast<int>(std::clamp<long long>(length / tickSpacing, 1, 100));
    const double step = roundStep(low, high, count);
    const double first = std::ceil(low / step);
    for (int i = 0; i <= count; ++i) {
        const double value = (first + i) * step;
        if (!(value <= high))
            return;
        const int at = axis.view(value);
        char number[32];
        std::snprintf(number, sizeof number, "%.6g", value == 0 ? 0.0 : value);
        const int width = characterWidth * static_cast<int>(std::strlen(number));
        if (horizontal) {
            MoveToEx(device, at, y_.start, nullptr);
            LineTo(device, at, add(y_.start, tickLength));
            ZDrawText(device, add(at, -width / 2), add(y_.start, tickLength + 2), number);
        } else {
            MoveToEx(device, x_.start, at, nullptr);
            LineTo(device, add(x_.start, -tickLength), at);
            ZDrawText(device, add(x_.start, -tickLength - 3 - width), add(at, -characterHeight / 2), number);
        }
    }
}

void ZPlot::DrawAnnotations(HDC device, int x, int y, int width, int height, const char* xCaption, const char* yCaption)
{
    SetView(x, y, width, height);
    if (!device)
        return;
    MoveToEx(device, x_.start, y_.end, nullptr);
    LineTo(device, x_.start, y_.start);
    LineTo(device, x_.end, y_.start);
    drawTicks(device, x_, true);
    drawTicks(device, y_, false);
    if (xCaption) {
        const long long captionWidth = characterWidth * static_cast<long long>(std::strlen(xCaption));
        ZDrawText(device, add(x_.end, -captionWidth), add(y_.start, tickLength + 4 + characterHeight), xCaption);
    }
    if (yCaption)
        ZDrawText(device, add(x_.start, tickLength), y_.end, yCaption);
}
