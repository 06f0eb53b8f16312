#include "scene/scene.h"

#include <cstdint>
#include <cstdlib>
#include <numbers>

namespace zkit::tool {
namespace {

constexpr int partLevel = 200, tableLevel = 40;
constexpr int unit = 16;          // steps of a pixel in which parts are placed
constexpr int samplesAcross = 8;  // a pixel's coverage is found from 8 x 8 points
constexpr int samples = samplesAcross * samplesAcross;

int steps(double pixels) { return static_cast<int>(pixels * unit); }

// Whether a point, given in steps, lies on the part. Sizes are doubled, so that half of one is whole.
bool covers(const ScenePart& part, int x, int y)
{
    const std::int64_t dx = 2 * std::int64_t{std::abs(x - steps(part.centreX))},
                       dy = 2 * std::int64_t{std::abs(y - steps(part.centreY))};
    const std::int64_t width = steps(part.width), height = steps(part.height);
    if (part.shape == ScenePart::Shape::disc)
        return dx * dx + dy * dy <= width * width;
    return dx <= width && dy <= height;
}

bool isNear(const ScenePart& part, int x, int y)
{
    return std::abs(x - part.centreX) <= part.width / 2 + 1 && std::abs(y - part.centreY) <= part.height / 2 + 1;
}

// How many of a pixel's points lie on a part.
int coverage(int x, int y)
{
    for (const ScenePart& part : sceneParts) {
        if (!isNear(part, x, y))
            continue;
        int count = 0;
        for (int j = 1; j < unit; j += unit / samplesAcross)
            for (int i = 1; i < unit; i += unit / samplesAcross)
                count += covers(part, x * unit - unit / 2 + i, y * unit - unit / 2 + j) ? 1 : 0;
        return count;
    }
    return 0;
}

// The table is brightest at its bottom right.
int tableAt(int x, int y) { return tableLevel + x / 20 + y * y / 14400; }

// A xorshift generator; noise() is the sum of two values from -3.5 to 3.5, so that small values are the likelier ones.
class Noise {
public:
    int operator()()
    {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return static_cast<int>(state_ >> 29) + static_cast<int>(state_ >> 26 & 7) - 7;
    }

private:
    std::uint32_t state_ = 2463534242;
};

}  // namespace

double ScenePart::area() const { return shape == Shape::disc ? std::numbers::pi / 4 * width * height : width * height; }

ImagePointer<ZBW8> renderScene()
{
    auto image = std::make_unique<ZImage<ZBW8>>(sceneWidth, sceneHeight);
    Noise noise;
    for (int y = 0; y < sceneHeight; ++y)
        for (int x = 0; x < sceneWidth; ++x) {
            const int table = tableAt(x, y), level = table + (partLevel - table) * coverage(x, y) / samples;
            image->SetPixel(static_cast<ZBW8>(level + noise()), x, y);
        }
    return image;
}

}  // namespace zkit::tool
