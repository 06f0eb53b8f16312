// ImgImageToLineSegment and ImgLineSegmentToImage.
#include "analysis/bins.h"
#include "frame/call_frame.h"
#include "frame/planes.h"
#include "zkit/img/profile.h"

#include <cstdlib>
#include <cstring>

using namespace zkit;

namespace {

struct Ends {
    int x0, y0, x1, y1;
};

bool within(const ZGenericROI* region, Ends ends)
{
    const auto isColumn = [region](int x) { return x >= 0 && x < region->GetWidth(); };
    const auto isRow = [region](int y) { return y >= 0 && y < region->GetHeight(); };
    return require(isColumn(ends.x0), Z_ERROR_ARGUMENT_3_OUT_OF_RANGE) &&
           require(isRow(ends.y0), Z_ERROR_ARGUMENT_4_OUT_OF_RANGE) &&
           require(isColumn(ends.x1), Z_ERROR_ARGUMENT_5_OUT_OF_RANGE) &&
           require(isRow(ends.y1), Z_ERROR_ARGUMENT_6_OUT_OF_RANGE);
}

// A line within a region, as steps over bytes.
struct Line {
    template <class T>
    Line(const ZROI<T>* region, Ends ends)
    {
        const Target pixels = target(region);
        const std::ptrdiff_t pixel = sizeof(T);
        const int dx = ends.x1 - ends.x0, dy = ends.y1 - ends.y0;
        const std::ptrdiff_t right = dx > 0 ? pixel : -pixel, down = dy > 0 ? pixels.pitch : -pixels.pitch;
        const bool steep = std::abs(dx) < std::abs(dy);
        first = pixels.data + ends.y0 * pixels.pitch + ends.x0 * pixel;
        steps = static_cast<std::uint32_t>(std::abs(steep ? dy : dx));
        minor = static_cast<std::uint32_t>(std::abs(steep ? dx : dy));
        major = steep ? down : right;
        diagonal = right + down;
    }

    // Calls visit(pixel, k) for the pixels in order.
    template <class Visit>
    void follow(Visit visit) const
    {
        std::uint8_t* at = first;
        std::uint32_t error = steps / 2;
        visit(at, std::uint32_t{0});
        for (std::uint32_t k = 1; k <= steps; ++k) {
            error += minor;
            const bool aside = error >= steps;
            error -= aside ? steps : 0;
            at += aside ? diagonal : major;
            visit(at, k);
        }
    }

    std::uint8_t* first;
    std::uint32_t steps, minor;
    std::ptrdiff_t major, diagonal;
};

template <class T>
void readLine(const char* name, ZROI<T>* src, ZVectorTemplate<T>* profile, Ends ends)
{
    const CallFrame frame(name);
    if (frame.clear() && placed(src) && within(src, ends) && require(profile, Z_ERROR_VECTOR_EMPTY)) {
        const Line line(src, ends);
        if (hold(profile, line.steps + 1))
            line.follow([out = profile->GetDataPtr()](const std::uint8_t* pixel, std::uint32_t k) {
                std::memcpy(static_cast<void*>(out + k), pixel, sizeof(T));
            });
    }
    frame.finish();
}

template <class T>
void writeLine(const char* name, ZROI<T>* dst, ZVectorTemplate<T>* profile, Ends ends)
{
    const CallFrame frame(name);
    if (frame.clear() && placed(dst) && within(dst, ends) && require(profile, Z_ERROR_VECTOR_EMPTY)) {
        const Line line(dst, ends);
        if (require(profile->GetNumElements() == line.steps + 1, Z_ERROR_VECTOR_ELEMENT_COUNT))
            line.follow([in = profile->GetDataPtr()](std::uint8_t* pixel, std::uint32_t k) {
                std::memcpy(pixel, in + (k > 0 ? k - 1 : 0), sizeof(T));  // one place late, which is intended
            });
    }
    frame.finish();
}

template <class T>
void writeLine(const char* name, ZROI<T>* dst, T value, Ends ends)
{
    const CallFrame frame(name);
    if (frame.clear() && placed(dst) && within(dst, ends))
        Line(dst, ends).follow([value](std::uint8_t* pixel, std::uint32_t) { std::memcpy(pixel, &value, sizeof(T)); });
    frame.finish();
}

}  // namespace

void ImgImageToLineSegment(ZROI<ZBW8>* src, ZBW8Vector* profile, int x0, int y0, int x1, int y1)
{
    readLine<ZBW8>("ImgImageToLineSegment (BW8)", src, profile, {x0, y0, x1, y1});
}

void ImgImageToLineSegment(ZROI<ZC24>* src, ZC24Vector* profile, int x0, int y0, int x1, int y1)
{
    readLine<ZC24>("ImgImageToLineSegment (C24)", src, profile, {x0, y0, x1, y1});
}

void ImgImageToLineSegment(ZROI<ZBW16>* src, ZBW16Vector* profile, int x0, int y0, int x1, int y1)
{
    readLine<ZBW16>("ImgImageToLineSegment (BW16)", src, profile, {x0, y0, x1, y1});
}

void ImgLineSegmentToImage(ZROI<ZBW8>* dst, ZBW8Vector* profile, int x0, int y0, int x1, int y1)
{
    writeLine<ZBW8>("ImgLineSegmentToImage (BW8, vector)", dst, profile, {x0, y0, x1, y1});
}

void ImgLineSegmentToImage(ZROI<ZBW8>* dst, unsigned char value, int x0, int y0, int x1, int y1)
{
    writeLine<ZBW8>("ImgLineSegmentToImage (BW8, const)", dst, value, {x0, y0, x1, y1});
}

void ImgLineSegmentToImage(ZROI<ZC24>* dst, ZC24Vector* profile, int x0, int y0, int x1, int y1)
{
    writeLine<ZC24>("ImgLineSegmentToImage (C24, vector)", dst, profile, {x0, y0, x1, y1});
}

void ImgLineSegmentToImage(ZROI<ZC24>* dst, ZC24 value, int x0, int y0, int x1, int y1)
{
    writeLine<ZC24>("ImgLineSegmentToImage (C24, const)", dst, value, {x0, y0, x1, y1});
}
