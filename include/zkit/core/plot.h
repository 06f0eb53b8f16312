// The frame of a diagram: maps data values to device coordinates and draws axes, ticks and captions.
#pragma once

#include "zkit/core/drawing.h"

class ZKIT_CORE_API ZPlot {
public:
    /// Ranges [0, 1] on both axes and a view of 256 x 256 at (0, 0).
    ZPlot();

    /// The data values at the two ends of an axis. A range that is not finite or has no extent becomes [from, from + 1]
    /// (or [0, 1] when `from` is not finite, [from, from / 2] when it is too large to count on); from > to turns the
    /// axis round.
    void SetXRange(double from, double to);
    void SetYRange(double from, double to);

    /// The device rectangle that the diagram lies in: its left and top edge, its width and height. Inside it a margin
    /// is kept for numbers and captions (56 left, 12 right, 12 above, 40 below, and never more than a quarter of the
    /// extent on each side).
    void SetView(int x, int y, int width, int height);

    /// Device column of a data value: the first value of the range gives the left end of the axis, the last its right
    /// end; linear between and beyond, rounded to the nearest column, halves to the right, within the 32-bit range.
    int XView(double value) const;

    /// Device row of a data value: the first value of the range gives the bottom row, the last the top row.
    int YView(double value) const;

    /// The plot's bottom row in device units: the line on which bars stand.
    int GetBaseLine() const;

    /// Sets the view to the given rectangle, then draws both axes, ticks at round values (1, 2 or 5 times a power of
    /// ten, about 50 device units apart) with their numbers, and the two captions. All of it goes through the device.
    /// Without a device only the view is set. A null caption is left out.
    void DrawAnnotations(HDC device, int x, int y, int width, int height, const char* xCaption, const char* yCaption);

private:
    struct Axis {
        double from, to;  // data values
        int start, end;   // their device coordinates

        int view(double value) const;
    };

    static void setRange(Axis& axis, double from, double to);
    void drawTicks(HDC device, const Axis& axis, bool horizontal) const;

    Axis x_, y_;
};
