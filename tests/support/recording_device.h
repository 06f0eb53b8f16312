// A drawing device that writes down what is drawn.
#pragma once

#include "zkit/core/drawing.h"

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

class RecordingDevice : public ZDrawingDevice {
public:
    void MoveTo(int x, int y) override { record("M ", x, y, ""); }
    void LineTo(int x, int y) override { record("L ", x, y, ""); }
    void Text(int x, int y, const char* text) override { record("T ", x, y, std::string(" ") + text); }

    std::vector<std::string> calls;
    int left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;  // of all coordinates

private:
    void record(const char* what, int x, int y, const std::string& text)
    {
        calls.push_back(what + std::to_string(x) + ' ' + std::to_string(y) + text);
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
};
