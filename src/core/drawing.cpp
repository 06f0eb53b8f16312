#include "zkit/core/drawing.h"

#include <cstring>

#ifdef _WIN32

int ZDrawText(HDC device, int x, int y, const char* text)
{
    return text && TextOutA(device, x, y, text, static_cast<int>(std::strlen(text))) ? 1 : 0;
}

#else

ZDrawingDevice::~ZDrawingDevice() = default;

int MoveToEx(HDC device, int x, int y, POINT* previous)
{
    if (!device)
        return 0;
    if (previous)
        *previous = device->position_;
    device->position_ = {x, y};
    device->MoveTo(x, y);
    return 1;
}

int LineTo(HDC device, int x, int y)
{
    if (!device)
        return 0;
    device->position_ = {x, y};
    device->LineTo(x, y);
    return 1;
}

int ZDrawText(HDC device, int x, int y, const char* text)
{
    if (!device || !text)
        return 0;
    device->Text(x, y, text);
    return 1;
}

#endif
