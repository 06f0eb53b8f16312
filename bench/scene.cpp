#include "scene.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace bench {

namespace {

constexpr unsigned int partsSeed = 20240117;
constexpr unsigned int sourceNoise = 1;
constexpr unsigned int referenceNoise = 2;
constexpr unsigned int darkNoise = 3;
constexpr int bright = 150;

constexpr std::size_t smallImage = std::size_t(1) << 20;   // more than the second-level cache's share of one image
constexpr std::size_t cacheBytes = std::size_t(64) << 20;  // twice the last-level cache of a large processor

// An image under construction, one float a pixel.
struct Canvas {
    int width, height;
    std::vector<float> levels;

    float& at(int x, int y) { return levels[std::size_t(y) * std::size_t(width) + std::size_t(x)]; }
};

template <class T>
T* row(ZImage<T>& image, int y)
{
    return static_cast<T*>(image.GetPixelPtr(0, y));
}

void drawLight(Canvas& canvas)
{
    for (int y = 0; y < canvas.height; ++y)
        for (int x = 0; x < canvas.width; ++x)
            canvas.at(x, y) = 60.f + 60.f * float(x) / float(canvas.width) + 25.f * float(y) / float(canvas.height);
}

// A disc or a square that encloses it, cut off at the border.
void drawPart(Canvas& canvas, int centreX, int centreY, int radius, float level, bool disc)
{
    for (int y = std::max(0, centreY - radius); y < std::min(canvas.height, centreY + radius); ++y)
        for (int x = std::max(0, centreX - radius); x < std::min(canvas.width, centreX + radius); ++x) {
            const int dx = x - centreX, dy = y - centreY;
            if (!disc || dx * dx + dy * dy < radius * radius)
                canvas.at(x, y) = level;
        }
}

// One part of random contrast for every 4096 pixels.
void drawParts(Canvas& canvas)
{
    std::mt19937 random(partsSeed);
    const auto uniform = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    for (std::size_t parts = canvas.levels.size() / 4096; parts > 0; --parts) {
        const int x = uniform(0, canvas.width - 1), y = uniform(0, canvas.height - 1), radius = uniform(3, 30);
        const float level = float(uniform(40, 220));
        drawPart(canvas, x, y, radius, level, uniform(0, 1) != 0);
    }
}

void drawGrey(ZImage<ZBW8>& image, unsigned int noiseSeed)
{
    const int width = image.GetWidth(), height = image.GetHeight();
    Canvas canvas{width, height, std::vector<float>(std::size_t(width) * std::size_t(height))};
    drawLight(canvas);
    drawParts(canvas);
    std::mt19937 random(noiseSeed);
    std::normal_distribution<float> noise(0.f, 3.f);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            row(image, y)[x] = ZBW8(std::clamp(canvas.at(x, y) + noise(random), 0.f, 255.f));
}

void drawDark(ZImage<ZBW8>& image)
{
    std::mt19937 random(darkNoise);
    std::uniform_int_distribution<unsigned int> level(4, 12);
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            row(image, y)[x] = ZBW8(level(random));
}

void drawMask(ZImage<ZBW8>& image, ZImage<ZBW8>& grey)
{
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            row(image, y)[x] = row(grey, y)[x] > bright ? 255 : 0;
}

// A back of one row and teeth of two columns, one pixel away from the edges.
void drawComb(ZImage<ZBW8>& image)
{
    for (int y = 1; y < image.GetHeight() - 1; ++y)
        for (int x = 1; x < image.GetWidth() - 1; ++x)
            row(image, y)[x] = y == 1 || x % 3 != 0 ? 255 : 0;
}

void drawBits(ZImage<ZBW1>& image, ZImage<ZBW8>& grey)
{
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            image.SetPixel({row(grey, y)[x] > bright}, x, y);
}

void drawColor(ZImage<ZC24>& image, ZImage<ZBW8>& grey)
{
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x) {
            const ZBW8 level = row(grey, y)[x];
            row(image, y)[x] = {ZBW8(level / 2), level, ZBW8(255 - level)};
        }
}

void drawSum(ZImage<ZBW16>& image, ZImage<ZBW8>& grey)
{
    std::mt19937 random(referenceNoise);
    std::uniform_int_distribution<unsigned int> remainder(0, Scene::summedImages - 1);
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            row(image, y)[x] = ZBW16(row(grey, y)[x] * Scene::summedImages + remainder(random));
}

template <class T>
std::size_t copiesInTurn(ZImage<T>& image)
{
    const std::size_t bytes = std::size_t(image.GetRowPitch()) * std::size_t(image.GetHeight());
    return bytes <= smallImage ? 1 : (cacheBytes + bytes - 1) / bytes;
}

}  // namespace

template <class T, class Draw>
ZImage<T>* Scene::current(Ring<T>& ring, Draw draw)
{
    if (ring.empty()) {
        ring.push_back(std::make_unique<ZImage<T>>(size_.width, size_.height));
        draw(*ring[0]);
        const auto rowBytes = (std::size_t(size_.width) * zkit::bitsPerPixel<T> + 7) / 8;
        for (std::size_t copies = copiesInTurn(*ring[0]); ring.size() < copies;) {
            ring.push_back(std::make_unique<ZImage<T>>(size_.width, size_.height));
            for (int y = 0; y < size_.height; ++y)
                std::memcpy(row(*ring.back(), y), row(*ring[0], y), rowBytes);
        }
    }
    return ring[turn_ % ring.size()].get();
}

ZImage<ZBW8>* Scene::grey()
{
    return current(grey_, [](auto& image) { drawGrey(image, sourceNoise); });
}

ZImage<ZBW8>* Scene::greyReference()
{
    return current(greyReference_, [](auto& image) { drawGrey(image, referenceNoise); });
}

ZImage<ZBW8>* Scene::dark()
{
    return current(dark_, [](auto& image) { drawDark(image); });
}

ZImage<ZBW8>* Scene::mask()
{
    return current(mask_, [this](auto& image) { drawMask(image, *grey()); });
}

ZImage<ZBW8>* Scene::comb()
{
    return current(comb_, [](auto& image) { drawComb(image); });
}

ZImage<ZBW1>* Scene::bits()
{
    return current(bits_, [this](auto& image) { drawBits(image, *grey()); });
}

ZImage<ZBW1>* Scene::bitsResult()
{
    return current(bitsResult_, [this](auto& image) { drawBits(image, *greyReference()); });
}

ZImage<ZBW8>* Scene::greyResult()
{
    return current(greyResult_, [](auto& image) { drawGrey(image, referenceNoise); });
}

ZImage<ZBW16>* Scene::greySum()
{
    return current(greySum_, [this](auto& image) { drawSum(image, *greyReference()); });
}

ZImage<ZBW16>* Scene::grey16Result()
{
    return current(grey16Result_, [this](auto& image) { drawSum(image, *greyReference()); });
}

ZImage<ZC24>* Scene::color()
{
    return current(color_, [this](auto& image) { drawColor(image, *grey()); });
}

ZImage<ZC24>* Scene::colorReference()
{
    return current(colorReference_, [this](auto& image) { drawColor(image, *greyReference()); });
}

ZImage<ZC24>* Scene::colorResult()
{
    return current(colorResult_, [this](auto& image) { drawColor(image, *greyReference()); });
}

}  // namespace bench
