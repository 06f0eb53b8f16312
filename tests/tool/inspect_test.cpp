// What an inspection finds: the truth of the built-in scene, and objects of any shape against sums formed here.
#include "inspect/inspect.h"

#include "samples.h"
#include "scene/scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

using namespace zkit::tool;

namespace {

using Position = std::pair<int, int>;  // y, x
using Positions = std::set<Position>;

constexpr Position cross[] = {{0, 1}, {0, -1}, {1, 0}, {-1, 0}};

InspectRequest plainRequest()
{
    InspectRequest request;
    request.medians = 0;
    request.threshold.level = 128;
    return request;
}

// The object that a pixel belongs to: everything that can be reached through neighbours on all eight sides.
Positions objectAt(const ZImage<ZBW8>& image, Position start)
{
    Positions found = {start}, open = {start};
    while (!open.empty()) {
        const auto [y, x] = open.extract(open.begin()).value();
        for (int j = y - 1; j <= y + 1; ++j)
            for (int i = x - 1; i <= x + 1; ++i)
                if (image.GetPixel(i, j) >= 128 && i >= 0 && j >= 0 && i < image.GetWidth() && j < image.GetHeight() &&
                    found.insert({j, i}).second)
                    open.insert({j, i});
    }
    return found;
}

// The object's pixels beside what can be reached from outside it in horizontal and vertical steps.
Positions outerPixelsOf(const Positions& object, int width, int height)
{
    Positions outside = {{-1, -1}}, open = outside, outer;
    while (!open.empty()) {
        const auto [y, x] = open.extract(open.begin()).value();
        for (const auto& [dy, dx] : cross) {
            const Position next = {y + dy, x + dx};
            if (next.first < -1 || next.second < -1 || next.first > height || next.second > width)
                continue;
            if (object.count(next) != 0)
                outer.insert(next);
            else if (outside.insert(next).second)
                open.insert(next);
        }
    }
    return outer;
}

void expectFigures(const Object& object, const Positions& pixels, const ZImage<ZBW8>& image)
{
    double n = 0, x = 0, y = 0, level = 0;
    for (const auto& [j, i] : pixels) {
        n += 1;
        x += i;
        y += j;
        level += image.GetPixel(i, j);
    }
    double xx = 1.0 / 12 * n, yy = xx, xy = 0, squares = 0;
    for (const auto& [j, i] : pixels) {
        xx += std::pow(i - x / n, 2);
        yy += std::pow(j - y / n, 2);
        xy += (i - x / n) * (j - y / n);
        squares += std::pow(image.GetPixel(i, j) - level / n, 2);
    }
    EXPECT_EQ(static_cast<double>(object.area), n);
    EXPECT_NEAR(object.centreX, x / n, 1e-9);
    EXPECT_NEAR(object.centreY, y / n, 1e-9);
    EXPECT_NEAR(object.mean, level / n, 1e-4);
    EXPECT_NEAR(object.deviation, std::sqrt(squares / n), 1e-3);
    // The second moments along the axis and across it are those of the ellipse.
    const double angle = -object.orientation * std::acos(-1) / 180, c = std::cos(angle), s = std::sin(angle);
    const double along = c * c * xx + 2 * c * s * xy + s * s * yy, across = s * s * xx - 2 * c * s * xy + c * c * yy;
    EXPECT_NEAR(object.elongation, std::sqrt(along / across), 1e-6);
    EXPECT_NEAR(object.elongation + 1 / object.elongation, (xx + yy) / std::sqrt(std::max(xx * yy - xy * xy, 1e-9)),
                1e-6);
}

void expectContour(Object& object, const Positions& pixels, const ZImage<ZBW8>& image)
{
    Positions contour;
    double length = 0;
    ZPathVector& path = *object.contour;
    for (unsigned i = 0; i < path.GetNumElements(); ++i) {
        const ZPath from = path[i], to = path[(i + 1) % path.GetNumElements()];
        contour.insert({from.Y, from.X});
        length += std::hypot(to.X - from.X, to.Y - from.Y);
        EXPECT_LE(std::max(std::abs(to.X - from.X), std::abs(to.Y - from.Y)), 1) << "steps to a neighbour";
    }
    EXPECT_EQ(contour, outerPixelsOf(pixels, image.GetWidth(), image.GetHeight()));
    EXPECT_NEAR(object.perimeter, length, 1e-9);
}

// Every object of the picture, in the order of their first pixels.
void expectObjects(ZImage<ZBW8>& image)
{
    const auto inspection = inspect(image, plainRequest());
    Positions done;
    std::size_t next = 0;
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x) {
            if (image.GetPixel(x, y) < 128 || done.count({y, x}) != 0)
                continue;
            const Positions pixels = objectAt(image, {y, x});
            done.insert(pixels.begin(), pixels.end());
            ASSERT_LT(next, inspection->objects.size());
            Object& object = inspection->objects[next++];
            SCOPED_TRACE(testing::Message() << "object " << next << " at " << x << ", " << y);
            expectFigures(object, pixels, image);
            expectContour(object, pixels, image);
            const auto [left, right] = std::ranges::minmax(pixels, {}, &Position::second);
            EXPECT_EQ(object.box.x, left.second);
            EXPECT_EQ(object.box.y, y);
            EXPECT_EQ(object.box.width, right.second - left.second + 1);
            EXPECT_EQ(object.box.height, pixels.rbegin()->first - y + 1);
            EXPECT_EQ(object.touchesEdge, y == 0 || left.second == 0 || right.second == image.GetWidth() - 1 ||
                                              pixels.rbegin()->first == image.GetHeight() - 1);
        }
    EXPECT_EQ(next, inspection->objects.size());
}

}  // namespace

TEST(Inspect, FindsThePartsOfTheScene)
{
    const auto scene = renderScene();
    for (const char* threshold : {"isodata", "residue", "130", "adaptive:160x120"}) {
        SCOPED_TRACE(threshold);
        InspectRequest request;
        request.threshold = *parseThreshold(threshold);
        const auto inspection = inspect(*scene, request);
        ASSERT_EQ(inspection->objects.size(), sceneParts.size());
        for (const ScenePart& part : sceneParts) {
            const auto distance = [&](const Object& object) {
                return std::hypot(object.centreX - part.centreX, object.centreY - part.centreY);
            };
            const Object& object = *std::ranges::min_element(inspection->objects, {}, distance);
            EXPECT_NEAR(object.centreX, part.centreX, 0.1);
            EXPECT_NEAR(object.centreY, part.centreY, 0.1);
            EXPECT_NEAR(static_cast<double>(object.area), part.area(), 0.01 * part.area());
            EXPECT_NEAR(object.mean, 199, 2);
            EXPECT_NEAR(object.elongation, std::max(part.width / part.height, part.height / part.width), 0.03);
            if (part.width != part.height) {
                EXPECT_NEAR(object.orientation, part.width > part.height ? 0 : 90, 0.1);
            }
        }
    }
}

// Noise makes objects of every shape: with holes, cut by the edge, connected at corners, single pixels.
TEST(Inspect, ObjectsOfAnyShape)
{
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 9}, {9, 1}, {40, 30}, {600, 3}})
        for (const int greatest : {160, 200, 255}) {
            SCOPED_TRACE(testing::Message() << width << " x " << height << ", up to " << greatest);
            ZImage<ZBW8> image(width, height);
            const Values values = pattern(width * height, greatest);
            for (int i = 0; i < width * height; ++i)
                image.SetPixel(static_cast<ZBW8>(values[static_cast<std::size_t>(i)]), i % width, i / width);
            expectObjects(image);
        }
    ZImage<ZBW8> white(700, 300);
    for (int i = 0; i < 700 * 300; ++i)
        white.SetPixel(static_cast<ZBW8>(200 + i % 7), i % 700, i / 700);
    expectObjects(white);
}

TEST(Inspect, Steps)
{
    // A bright square, a line that an opening removes and a speck that a median removes, on a slope of light.
    ZImage<ZBW8> picture(64, 48), background(64, 48);
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x) {
            const bool bright =
                (x >= 8 && x < 28 && y >= 8 && y < 28) || (y == 40 && x > 4 && x < 60) || (x == 50 && y == 10);
            background.SetPixel(static_cast<ZBW8>(40 + x), x, y);
            picture.SetPixel(static_cast<ZBW8>((40 + x) * (bright ? 2 : 1)), x, y);
        }
    const auto count = [&](InspectRequest request) { return inspect(picture, request)->objects.size(); };
    InspectRequest request = plainRequest();
    request.threshold.level = 100;
    request.background = &background;  // the table is 71 then everywhere, the rest 142
    EXPECT_EQ(count(request), 3U);
    request.maxArea = 399;
    EXPECT_EQ(count(request), 2U);
    request.minArea = 2;
    EXPECT_EQ(count(request), 1U);
    request = {.background = &background, .medians = 1};
    EXPECT_EQ(count(request), 1U);
    request.medians = 0;
    request.opening = 1;
    ASSERT_EQ(count(request), 1U);
    EXPECT_EQ(inspect(picture, request)->objects[0].area, 400);
    EXPECT_NEAR(inspect(picture, request)->objects[0].mean, 2 * (40 + 17.5), 0.01) << "of the picture's own levels";
    request.dark = true;
    request.opening = 0;
    ASSERT_EQ(count(request), 1U);
    EXPECT_EQ(inspect(picture, request)->objects[0].area, 64 * 48 - 400 - 55 - 1);
    ZImage<ZBW8> other(64, 47), wide(32768, 1);
    request.background = &other;
    EXPECT_THROW(inspect(picture, request), MeasureError);
    EXPECT_THROW(inspect(wide, {}), MeasureError);
}

TEST(Inspect, ThresholdsAsText)
{
    EXPECT_EQ(parseThreshold("entropy")->level, static_cast<unsigned>(IMG_THRESHOLD_MAX_ENTROPY));
    EXPECT_EQ(parseThreshold("255")->level, 255U);
    EXPECT_FLOAT_EQ(parseThreshold("relative:0.4")->relative, 0.4F);
    EXPECT_EQ(parseThreshold("adaptive:64")->cellHeight, 64);
    EXPECT_EQ(parseThreshold("adaptive:64x20")->cellHeight, 20);
    for (const char* text : {"", "otsu", "256", "-1", "1.5", "12x", "relative", "relative:", "relative:1.1",
                             "relative:nan", "relative:0.4x", "adaptive", "adaptive:0", "adaptive:9x0",
                             "adaptive:9x9x9", "adaptive:x9", "adaptive:99999999999"})
        EXPECT_FALSE(parseThreshold(text)) << text;
}
