// The figures, against sums formed here pixel by pixel, and against the truth of the built-in scene.
#include "measure/measure.h"
#include "samples.h"
#include "scene/scene.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace zkit::tool;

namespace {

template <class T>
ImagePointer<T> imageOf(const Values& values, int width, int height)
{
    auto image = std::make_unique<ZImage<T>>(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image->SetPixel(static_cast<T>(values[static_cast<std::size_t>(y * width + x)]), x, y);
    return image;
}

// Means of products over a region of values.
struct Reference {
    const Values& values;
    int pitch;
    Rectangle region;

    template <class Term>
    double sum(Term term) const
    {
        double total = 0;
        for (int y = 0; y < region.height; ++y)
            for (int x = 0; x < region.width; ++x)
                total +=
                    term(values[static_cast<std::size_t>((region.y + y) * pitch + region.x + x)], double(x), double(y));
        return total;
    }
};

void expectMoments(const Moments& moments, const Reference& reference, const std::function<double(int)>& weight)
{
    const auto sum = [&](int p, int q) {
        return reference.sum([&](int v, double x, double y) { return weight(v) * std::pow(x, p) * std::pow(y, q); });
    };
    EXPECT_DOUBLE_EQ(moments.m00, sum(0, 0));
    EXPECT_DOUBLE_EQ(moments.m10, sum(1, 0));
    EXPECT_DOUBLE_EQ(moments.m01, sum(0, 1));
    EXPECT_DOUBLE_EQ(moments.m20, sum(2, 0));
    EXPECT_DOUBLE_EQ(moments.m11, sum(1, 1));
    EXPECT_DOUBLE_EQ(moments.m02, sum(0, 2));
}

void expectGrey(const Picture& picture, const Values& values, const Rectangle& region, int width, int threshold)
{
    const Measurement measurement = measure(picture, {region, threshold});
    const auto& figures = std::get<GreyFigures>(measurement.figures);
    const Reference reference{values, width, region};
    const double pixels = reference.sum([](int, double, double) { return 1; });
    const double mean = reference.sum([](int v, double, double) { return v; }) / pixels;
    const double squares = reference.sum([&](int v, double, double) { return (v - mean) * (v - mean); });
    EXPECT_DOUBLE_EQ(figures.mean, mean);
    EXPECT_NEAR(figures.deviation, std::sqrt(squares / pixels), 1e-6 * figures.max);
    EXPECT_EQ(figures.area, reference.sum([&](int v, double, double) { return v > threshold; }));
    expectMoments(figures.binary, reference, [&](int v) { return v >= threshold ? 1 : 0; });
    expectMoments(figures.weighed, reference, [](int v) { return v; });
}

}  // namespace

// At 2600 bright pixels a row the sums of a whole picture overflow 32 bits many times over.
TEST(Figures, GreyOfAnySize)
{
    for (const auto& [width, height] : {std::pair{1, 1}, {16, 16}, {37, 35}, {2600, 300}}) {
        SCOPED_TRACE(width);
        Values values = pattern(width * height, 255);
        if (width > 1000)
            std::fill(values.begin(), values.end(), 255);
        const Picture picture = imageOf<ZBW8>(values, width, height);
        expectGrey(picture, values, {0, 0, width, height}, width, 128);
        expectGrey(picture, values, {width / 3, height / 2, width / 2 + 1, height / 4 + 1}, width, 200);
    }
}

TEST(Figures, WideGrey)
{
    const Values values = pattern(61 * 43, 65535);
    const Picture picture = imageOf<ZBW16>(values, 61, 43);
    expectGrey(picture, values, {0, 0, 61, 43}, 61, 32768);
    expectGrey(picture, values, {5, 6, 20, 30}, 61, 65535);
    const auto byDefault = std::get<GreyFigures>(measure(picture, {}).figures);
    EXPECT_EQ(byDefault.threshold, 32768);
    EXPECT_EQ(byDefault.min, 0);
    EXPECT_EQ(byDefault.max, 65535);
    // 3 x 2 pixels: differences 1 and 10 at the first, 2 and 20 at the second one.
    const Picture small = imageOf<ZBW16>({1000, 1001, 1003, 1010, 1021, 9}, 3, 2);
    EXPECT_DOUBLE_EQ(std::get<GreyFigures>(measure(small, {}).figures).focus, std::sqrt((1 + 100 + 4 + 400) / 6.0));
}

TEST(Figures, BitsAreLevelsZeroAndOne)
{
    auto image = std::make_unique<ZImage<ZBW1>>(21, 9);
    image->SetPixel({1}, 20, 8);
    image->SetPixel({1}, 10, 2);
    const auto figures = std::get<GreyFigures>(measure(Picture(std::move(image)), {}).figures);
    EXPECT_EQ(figures.max, 1);
    EXPECT_EQ(figures.binary.m00, 2);
    EXPECT_EQ(figures.centreX(), 15);
    EXPECT_EQ(figures.centreY(), 5);
}

TEST(Figures, Colour)
{
    const int width = 50, height = 33, pixels = width * height;
    const Values values = pattern(pixels, 255);
    auto image = std::make_unique<ZImage<ZC24>>(width, height);
    for (int i = 0; i < pixels; ++i) {
        const auto level = static_cast<unsigned char>(values[static_cast<std::size_t>(i)]);
        // Red follows the level, green runs against it at half its height, blue is uniform.
        image->SetPixel({77, static_cast<unsigned char>(200 - level / 2 * 2 / 2), level}, i % width, i / width);
    }
    const auto figures = std::get<ColourFigures>(measure(Picture(std::move(image)), {}).figures);
    double mean = 0, squares = 0;
    for (const int value : values)
        mean += value / double(pixels);
    for (const int value : values)
        squares += (value - mean) * (value - mean);
    EXPECT_NEAR(figures.mean.red, mean, 1e-4);
    EXPECT_NEAR(figures.deviation.red, std::sqrt(squares / pixels), 1e-4);
    EXPECT_NEAR(figures.mean.green, 200 - mean / 2, 0.5);
    EXPECT_EQ(figures.mean.blue, 77);
    EXPECT_NEAR(figures.deviation.blue, 0, 0.1);
    EXPECT_NEAR(figures.redGreen, -1, 1e-3);
}

TEST(Figures, RegionAndThresholdOutOfReach)
{
    const Picture grey = imageOf<ZBW8>(pattern(12, 255), 4, 3), wide = imageOf<ZBW16>(pattern(12, 9), 4, 3);
    const Picture colour = std::make_unique<ZImage<ZC24>>(4, 3), bits = std::make_unique<ZImage<ZBW1>>(4, 3);
    for (const Picture* picture : {&grey, &wide, &colour, &bits})
        for (const Rectangle region :
             {Rectangle{0, 0, 5, 1}, {-1, 0, 2, 2}, {0, 2, 1, 2}, {2147483647, 0, 2147483647, 1}})
            EXPECT_THROW(measure(*picture, {.region = region}), MeasureError);
    EXPECT_THROW(measure(grey, {.threshold = 256}), MeasureError);
    EXPECT_THROW(measure(bits, {.threshold = 2}), MeasureError);
    EXPECT_NO_THROW(measure(wide, {.threshold = 65535}));
}

TEST(Figures, SceneShowsItsParts)
{
    const Picture scene = renderScene();
    for (const ScenePart& part : sceneParts) {
        const int x = static_cast<int>(part.centreX - part.width / 2) - 8,
                  y = static_cast<int>(part.centreY - part.height / 2) - 8;
        const Rectangle region{x, y, static_cast<int>(part.width) + 16, static_cast<int>(part.height) + 16};
        const auto figures = std::get<GreyFigures>(measure(scene, {region, sceneThreshold}).figures);
        EXPECT_NEAR(x + figures.centreX(), part.centreX, 0.1);
        EXPECT_NEAR(y + figures.centreY(), part.centreY, 0.1);
        EXPECT_NEAR(figures.binary.m00, part.area(), 0.01 * part.area());
    }
    double total = 0;
    for (const ScenePart& part : sceneParts)
        total += part.area();
    const auto whole = std::get<GreyFigures>(measure(scene, {.threshold = sceneThreshold}).figures);
    EXPECT_NEAR(whole.binary.m00, total, 0.01 * total) << "nothing but parts is bright";
}

TEST(Figures, SceneIsTheSameEverywhere)
{
    const auto figures = std::get<GreyFigures>(measure(Picture(renderScene()), {}).figures);
    EXPECT_EQ(figures.weighed.m00, 25759384);
    EXPECT_EQ(figures.weighed.m10, 8807940595);
}
