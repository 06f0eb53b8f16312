// Interlaced frames, averages over time and warping.
#include "support/operation.h"
#include "zkit/img/temporal.h"
#include "zkit/img/warp.h"

#include <cmath>
#include <type_traits>

using Grey = ZROI<ZBW8>*;
using Colour = ZROI<ZC24>*;
using Deep = ZROI<ZBW16>*;

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
                const unsigned sourceX = any % static_cast<unsigned>(width + near),
                               sourceY = (any >> 16) % static_cast<unsigned>(height + near);
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

// Shifts whose filling lies within the region: what lies beside it is not the same in separate images.
template <class T>
void realign(ZROI<T>* src, ZROI<T>* dst, int shift, unsigned field)
{
    const int width = src ? src->GetWidth() : 0;
    ImgRealignFrame(src, dst, shift > width || width < 2 ? std::min(shift, 0) : shift, field);
}

// Any shift, in place, for the sanitizers alone: the regions change nothing but their images.
template <class T>
void realignFar(ZROI<T>* roi, int shift, unsigned field)
{
    ZImage<T> image(9, 7);
    ZROI<T> part(&image, 3, 2, 4, 4);
    ImgRealignFrame(&part, &part, shift, field);
    ImgRealignFrame(roi, roi, 0, 0);
}

template <class T>
void match(ZROI<T>* roi, int row, int minShift, int maxShift)
{
    int best = 0;
    ImgMatchFrames(roi, row, minShift, maxShift, best);
    if (ZGetError() != Z_OK)
        return;
    const std::int64_t width = roi->GetWidth();
    if (best < minShift || best > maxShift || maxShift - std::int64_t{minShift} > width)
        std::abort();
}

// The mean of three images, the first two of the object's own making.
void average(Grey src, Grey dst, unsigned period, int holdsSource)
{
    ZImage<ZBW8> image(src ? src->GetWidth() : 1, src ? src->GetHeight() : 1), result;
    const short before = ZGetError();
    ZMovingAverage mean(period % 300, image.GetWidth(), image.GetHeight(), holdsSource % 2);
    if (ZGetError() != Z_OK)
        return;
    static_cast<void>(before);
    if (holdsSource % 2)
        mean.GetSrcImage();
    else
        mean.Average(&image, &image);
    mean.Average(src, dst);
}

// The state is both read and written: it is a copy here.
void follow(Grey src, Grey dst, unsigned seed, ZBW16Vector* table)
{
    ZImage<ZBW16> state(src ? src->GetWidth() : 1, src ? src->GetHeight() : 1);
    for (int y = 0; y < state.GetHeight() && y < 100; ++y)
        for (int x = 0; x < state.GetWidth() && x < 100; ++x)
            state.SetPixel(static_cast<ZBW16>(seed = seed * 1664525 + 1013904223), x, y);
    ImgRecursiveAverage(src, &state, dst, table);
}

}  // namespace
