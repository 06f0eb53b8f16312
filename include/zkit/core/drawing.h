// Where vectors and plots are drawn: on Windows a device context of the system, elsewhere an object of the caller's.
#pragma once

#include "zkit/export.h"

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else

struct POINT {
    int x, y;
};

/// A pen on a surface; device coordinates, x to the right and y down. Derive from it to draw into a file, a window or
/// a list.
class ZKIT_CORE_API ZDrawingDevice {
public:
    virtual ~ZDrawingDevice();
    virtual void MoveTo(int x, int y) = 0;
    virtual void LineTo(int x, int y) = 0;                  ///< a line from the pen's position, which moves along
    virtual void Text(int x, int y, const char* text) = 0;  ///< text whose top-left corner is (x, y)

private:
    friend int MoveToEx(ZDrawingDevice*, int, int, POINT*);
    friend int LineTo(ZDrawingDevice*, int, int);
    POINT position_ = {0, 0};
};

using HDC = ZDrawingDevice*;

/// Moves the pen. @param previous  receives the position before the move unless null.
/// Returns 1, or 0 when there is no device.
ZKIT_CORE_API int MoveToEx(HDC device, int x, int y, POINT* previous);

/// Draws a line from the pen's position to (x, y). Returns 1, or 0 when there is no device.
ZKIT_CORE_API int LineTo(HDC device, int x, int y);

#endif

/// Writes text with its top-left corner at (x, y). Returns 1, or 0 when there is no device or no text.
ZKIT_CORE_API int ZDrawText(HDC device, int x, int y, const char* text);
