// Interlaced frames, averages over time and warping.
#include "support/operation.h"
#include "zkit/img/temporal.h"
#include "zkit/img/warp.h"

#include <cstdlib>

using Grey = ZROI<ZBW8>*;
using Colour = ZROI<ZC24>*;

// A map with elements that often lie in the source, in storage of its own. One in a while it is of another size than
// the regions, or misplaced.
template <class T>
class Argument<ZImage<T>*> {
public:
    Argument(Input& input, Layout& layout) : map_(std::make_unique<ZImage<T>>())
    {
        const int kind = input.number(0, 31);
        if (kind == 31) {
            map_.reset();
            return;
        }
        const Layout::Region like = layout.regions().back();
        const int width = std::clamp(like.width, 0, 200), height = std::clamp(like.height, 0, 200);
        map_->SetSize(width + (kind > 26), height + (kind > 28));
        const bool near = input.oneIn(2);
        for (int y = 0; y < map_->GetHeight(); ++y)
            for (int x = 0; x < map_->GetWidth(); ++x) {
                const auto any = input.take<unsigned>();
                const unsigned sourceX = any % static_cast<unsigned>(std::max(width, 1) + near),
                               sourceY = (any >> 16) % static_cast<unsigned>(std::max(height, 1) + near);
                map_->SetPixel(static_cast<T>(sizeof(T) == 2 ? any % 64 - near : sourceX | sourceY << 16), x, y);
            }
        if (kind == 26)
            map_->SetPlacement(input.number(-2, 2), input.number(-2, 2), width, height);
        ZClearError();
    }

    ZImage<T>* in(Arena&) const { return map_.get(); }

private:
    std::unique_ptr<ZImage<T>> map_;
};

template <>
class Argument<ZBW16Vector*> {
public:
    Argument(Input& input, Layout&) : table_(std::make_unique<ZBW16Vector>())
    {
        const int kind = input.number(0, 15);
        if (kind == 15)
            table_.reset();
        else if (kind == 14)
            table_->SetNumElements(static_cast<unsigned>(input.number(0, 8192)));
        else if (kind > 8) {
            table_->SetNumElements(8191);
            input.fill({reinterpret_cast<std::uint8_t*>(table_->GetDataPtr()), std::size_t{2} * 8191});
        } else
            ImgSetRecursiveAverageLUT(table_.get(), input.real(), input.real());
        ZClearError();
    }

    ZBW16Vector* in(Arena&) const { return table_.get(); }

private:
    std::unique_ptr<ZBW16Vector> table_;
};

namespace {

// An image as large as a region, unless that is strange.
template <class T>
class Like : public ZImage<T> {
public:
    explicit Like(const ZGenericROI* region)
        : ZImage<T>(region ? std::clamp(region->GetWidth(), 0, 200) : 1,
                    region ? std::clamp(region->GetHeight(), 0, 200) : 1)
    {
    }
};

// Shifts whose filling lies within the region: what lies beside it is not the same in separate images.
template <class T>
void realign(ZROI<T>* src, ZROI<T>* dst, int shift, unsigned field)
{
    const int width = src ? src->GetWidth() : 0;
    ImgRealignFrame(src, dst, shift > width || width < 2 ? std::min(shift, 0) : shift, field);
}

// Any shift, in a small image of its own.
template <class T>
void realignFar(ZROI<T>* roi, int shift, unsigned field, unsigned places)
{
    ZImage<T> image(9, 7);
    const auto number = [places](int bit) { return static_cast<int>(places >> bit & 3); };
    ZROI<T> src(&image, number(0), number(2), 4, 4), dst(&image, number(4), number(6), 4, 4);
    ImgRealignFrame(&src, &dst, shift, field);
    ImgSwapFrames(roi, roi);
}

template <class T>
void match(ZROI<T>* roi, int row, int minShift, int maxShift)
{
    int best = 0;
    ImgMatchFrames(roi, row, minShift, maxShift, best);
    if (ZGetError() == Z_OK && (best < minShift || best > maxShift))
        std::abort();
}

// The mean of two images, the first one black.
void average(Grey src, Grey dst, unsigned period, int holdsSource)
{
    Like<ZBW8> image(src);
    ZMovingAverage mean(period % 300, image.GetWidth(), image.GetHeight(), holdsSource % 2);
    if (holdsSource % 2)
        mean.GetSrcImage();
    else
        mean.Average(&image, &image);
    mean.Average(src, dst);
}

// A mean of what the object holds itself.
void averageHeld(Grey dst, unsigned period, unsigned level)
{
    Like<ZBW8> image(dst);
    ZMovingAverage mean(period % 300, image.GetWidth(), image.GetHeight(), 1);
    for (int i = 0; i < 3; ++i)
        if (ZImage<ZBW8>* const next = mean.GetSrcImage()) {
            next->SetPixel(static_cast<ZBW8>(level >> 8 * i), 0, 0);
            mean.Average(dst);
        }
}

// The state is both read and written: it is of its own here.
void follow(Grey src, Grey dst, unsigned seed, ZBW16Vector* table)
{
    Like<ZBW16> state(src);
    for (int y = 0; y < state.GetHeight(); ++y)
        for (int x = 0; x < state.GetWidth(); ++x)
            state.SetPixel(static_cast<ZBW16>((seed = seed * 1664525 + 1013904223) >> 16), x, y);
    ImgRecursiveAverage(src, &state, dst, table);
}

void circle(float x, float y, int rows, float radiusA, float radiusB, int columns, float start, float end)
{
    ZImage<ZBW16> mapX, mapY;
    ImgSetCircleWarp(x, y, rows % 200, radiusA, radiusB, columns % 200, start, end, &mapX, &mapY);
    if (ZGetError() != Z_OK)
        return;
    ZImage<ZBW8> src(60, 50), dst(mapX.GetWidth(), mapX.GetHeight());
    ImgWarp(&src, &dst, &mapX, &mapY, 0, 0);
    if (ZGetError() != Z_OK)
        std::abort();
}

const Operation operations[] = {
    operation<void(Grey, Grey)>("ImgSwapFrames (BW8)", ImgSwapFrames),
    operation<void(Colour, Colour)>("ImgSwapFrames (C24)", ImgSwapFrames),
    operation("ImgRealignFrame (BW8)", realign<ZBW8>),
    operation("ImgRealignFrame (C24)", realign<ZC24>),
    operation("ImgRealignFrame by far (BW8)", realignFar<ZBW8>),
    operation("ImgRealignFrame by far (C24)", realignFar<ZC24>),
    operation<void(Grey, Grey, unsigned)>("ImgRebuildFrame (BW8)", ImgRebuildFrame),
    operation<void(Colour, Colour, unsigned)>("ImgRebuildFrame (C24)", ImgRebuildFrame),
    operation("ImgMatchFrames (BW8)", match<ZBW8>),
    operation("ImgMatchFrames (C24)", match<ZC24>),
    operation("ZMovingAverage", average),
    operation("ZMovingAverage, held", averageHeld),
    operation("ImgRecursiveAverage", follow),
    operation<short(Grey, Grey, ZImage<ZBW16>*, ZImage<ZBW16>*, int, int)>("ImgWarp (BW8)", ImgWarp),
    operation<void(Colour, Colour, ZImage<ZBW16>*, ZImage<ZBW16>*, int, int)>("ImgWarp (C24)", ImgWarp),
    operation<short(Grey, Grey, ZImage<ZBW32>*)>("ImgWarp (packed map)", ImgWarp),
};

// Tables and maps alone: they end, within their memory.
void makeMaps(Input& input)
{
    const ZThreadErrorScope errors;
    circle(input.real(), input.real(), input.integer<int>(), input.real(), input.real(), input.integer<int>(),
           input.real(), input.real());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const auto choice = static_cast<std::size_t>(input.number(0, std::size(operations)));
    if (choice == std::size(operations))
        makeMaps(input);
    else
        operations[choice].fuzz(operations[choice].name, input);
    return 0;
}
