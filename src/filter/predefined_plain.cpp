#include "filter/predefined_workers.h"

#include <algorithm>
#include <cstdlib>

namespace zkit::plain {
namespace {

// The 3 x 3 pixels around one, row by row: a[4] is the pixel, a[1] the one above it, a[5] the one to its right.
using Neighbourhood = int[9];

int cross(const Neighbourhood& a) { return a[1] + a[3] + a[5] + a[7]; }
int corners(const Neighbourhood& a) { return a[0] + a[2] + a[6] + a[8]; }
int magnitude(int v) { return std::min(std::abs(v), 255); }
int magnitudes(int x, int y) { return std::min(std::abs(x) + std::abs(y), 255); }

int highpass1(const Neighbourhood& a) { return magnitude(5 * a[4] - cross(a)); }
int highpass2(const Neighbourhood& a) { return magnitude(9 * a[4] - cross(a) - corners(a)); }
int lowpass1(const Neighbourhood& a) { return (corners(a) + 2 * cross(a) + 4 * a[4] + 8) / 16; }
int lowpass2(const Neighbourhood& a) { return (cross(a) + corners(a)) / 8; }
int lowpass3(const Neighbourhood& a) { return (cross(a) + corners(a) + a[4]) / 9; }
int slopeX(const Neighbourhood& a) { return (a[2] - a[0]) + 2 * (a[5] - a[3]) + (a[8] - a[6]); }
int slopeY(const Neighbourhood& a) { return (a[6] - a[0]) + 2 * (a[7] - a[1]) + (a[8] - a[2]); }
int sobelX(const Neighbourhood& a) { return magnitude(slopeX(a)); }
int sobelY(const Neighbourhood& a) { return magnitude(slopeY(a)); }
int sobelXY(const Neighbourhood& a) { return magnitudes(slopeX(a), slopeY(a)); }
int stepX(const Neighbourhood& a) { return (a[2] + a[5] + a[8]) - (a[0] + a[3] + a[6]); }
int stepY(const Neighbourhood& a) { return (a[6] + a[7] + a[8]) - (a[0] + a[1] + a[2]); }
int prewittX(const Neighbourhood& a) { return magnitude(stepX(a)); }
int prewittY(const Neighbourhood& a) { return magnitude(stepY(a)); }
int prewittXY(const Neighbourhood& a) { return magnitudes(stepX(a), stepY(a)); }
int laplacian4(const Neighbourhood& a) { return magnitude(cross(a) - 4 * a[4]); }
int laplacian8(const Neighbourhood& a) { return magnitude(cross(a) + corners(a) - 8 * a[4]); }
int lowpass1X(const Neighbourhood& a) { return (a[3] + 2 * a[4] + a[5]) / 4; }
int lowpass1Y(const Neighbourhood& a) { return (a[1] + 2 * a[4] + a[7]) / 4; }
int roberts(const Neighbourhood& a) { return magnitudes(a[4] - a[8], a[5] - a[7]); }

// What is at column x of a row, when that may be one beyond its ends.
int pixelAt(const std::uint8_t* row, std::ptrdiff_t x, std::ptrdiff_t width, const Border& border)
{
    if (x >= 0 && x < width)
        return row[x];
    const std::ptrdiff_t nearest = x < 0 ? x + border.step : x - border.step;
    return border.repeated ? row[nearest] : border.pixel[nearest % border.step];
}

template <auto formula>
void filter(const std::uint8_t* const* rows, const Target& out, const Border& border)
{
    const int step = border.step;
    const std::ptrdiff_t left = std::min<std::ptrdiff_t>(step, out.width), right = std::max(out.width - step, left);
    for (std::ptrdiff_t y = 0; y < out.height; ++y) {
        const auto filtered = [=](std::ptrdiff_t x, auto pixel) {
            Neighbourhood a;
            for (int i = 0; i < 9; ++i)
                a[i] = pixel(rows[y + i / 3], x + (i % 3 - 1) * step);
            return static_cast<std::uint8_t>(formula(a));
        };
        const auto within = [](const std::uint8_t* row, std::ptrdiff_t x) { return row[x]; };
        const auto near = [&](const std::uint8_t* row, std::ptrdiff_t x) { return pixelAt(row, x, out.width, border); };
        std::uint8_t* const row = out.data + y * out.pitch;
        std::ptrdiff_t x = 0;
        for (; x < left; ++x)
            row[x] = filtered(x, near);
        for (; x < right; ++x)
            row[x] = filtered(x, within);
        for (; x < out.width; ++x)
            row[x] = filtered(x, near);
    }
}

constexpr PredefinedWorkers table = {
    .highpass1 = filter<highpass1>,
    .highpass2 = filter<highpass2>,
    .lowpass1 = filter<lowpass1>,
    .lowpass2 = filter<lowpass2>,
    .lowpass3 = filter<lowpass3>,
    .sobelX = filter<sobelX>,
    .sobelY = filter<sobelY>,
    .sobelXY = filter<sobelXY>,
    .prewittX = filter<prewittX>,
    .prewittY = filter<prewittY>,
    .prewittXY = filter<prewittXY>,
    .laplacian4 = filter<laplacian4>,
    .laplacian8 = filter<laplacian8>,
    .lowpass1X = filter<lowpass1X>,
    .lowpass1Y = filter<lowpass1Y>,
    .roberts = filter<roberts>,
};

}  // namespace
}  // namespace zkit::plain

const zkit::PredefinedWorkers zkit::PredefinedWorkers::plain = plain::table;
