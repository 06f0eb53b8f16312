// ImgWhiteTopHat and ImgBlackTopHat, grey and colour.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/separate_region.h"
#include "zkit/img/arithmetic.h"
#include "zkit/img/morpho.h"

#include <algorithm>
#include <memory>
#include <new>

using namespace zkit;

namespace {

// The images are told apart before their pixels are looked for, which is intended.
bool onImagesOfTheirOwn(ZGenericROI* src, ZGenericROI* dst)
{
    return require(src && dst, Z_ERROR_NO_PIXELS) &&
           require(src->GetImagePtr() != dst->GetImagePtr(), Z_ERROR_SAME_IMAGE) && hasPixels(src) && hasPixels(dst) &&
           placed(src) && placed(dst);
}

// The size check inside the grey form.
bool sizesInside(ZGenericROI* src, ZGenericROI* dst, const char* filterName)
{
    if (filterSizes(src, dst))
        return true;
    ZTraceError("ImgErodeDilate");
    ZTraceError(filterName);
    return false;
}

// An image of rows of a region.
template <class T>
struct RowsOf : ZImage<T> {
    RowsOf(const ZROI<T>* region, int first, int end)
    {
        this->Attach(region->GetPixelPtr(0, first), region->GetWidth(), end - first, region->GetRowPitch());
    }
};

// What is filtered before it is subtracted, so that it is still in the second-level cache then.
constexpr std::int64_t bandBytes = 1 << 18;

// filter(source, result), then combine(source, result, destination) for regions that are apart, in bands where they
// are large. The filter reaches 2 n rows, so many more of which a band is made.
template <class T, class Filter, class Combine>
void filterAndSubtract(ZROI<T>* src, ZROI<T>* dst, int n, Filter filter, Combine combine)
{
    const std::int64_t height = src->GetHeight(), around = 2 * std::int64_t{n};
    const std::int64_t rowBytes = std::int64_t{src->GetWidth()} * static_cast<int>(sizeof(T));
    const std::int64_t pitch = rowBytes / 128 * 128 + 192;  // rows do not fall on the same lines of the cache
    const std::int64_t rows = std::max(bandBytes / pitch, 8 * around);
    std::unique_ptr<std::uint8_t[]> memory;
    if (rowBytes > 0 && rows < height)
        memory.reset(new (std::nothrow) std::uint8_t[static_cast<std::size_t>((rows + 2 * around) * pitch)]);
    if (!memory) {
        filter(src, dst);
        combine(src, dst, dst);
        return;
    }
    for (std::int64_t top = 0; top < height; top += rows) {
        const int begin = static_cast<int>(top), end = static_cast<int>(std::min(top + rows, height));
        const int first = static_cast<int>(std::max<std::int64_t>(top - around, 0));
        RowsOf<T> band(src, first, static_cast<int>(std::min(end + around, height)));
        RowsOf<T> from(src, begin, end), to(dst, begin, end);
        ZImage<T> filtered;
        filtered.Attach(memory.get(), band.GetWidth(), band.GetHeight(), static_cast<int>(pitch));
        filter(&band, &filtered);
        ZROI<T> inner(&filtered, 0, begin - first, band.GetWidth(), end - begin);
        combine(&from, &inner, &to);
    }
}

template <class Filter, class Combine>
short grey(const char* name, const char* filterName, ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, Filter filter,
           Combine combine)
{
    const CallFrame frame(name);
    SeparateRegion<ZBW8> from;
    if (!(frame.clear() && onImagesOfTheirOwn(src, dst)))
        return frame.trace();
    if (n > 0 && sizesInside(src, dst, filterName) && from.forNeighbours(src, dst))
        filterAndSubtract<ZBW8>(from.get(), dst, n, filter, combine);
    return frame.finish();
}

template <class Filter, class Combine>
void colour(const char* name, const char* filterName, const char* greyName, ZROI<ZC24>* src, ZROI<ZC24>* dst, int n,
            Filter filter, Combine combine)
{
    const CallFrame frame(name);
    SeparateRegion<ZC24> from;
    if (frame.clear() && placed(src) && placed(dst) && n > 0) {
        if (!sizesInside(src, dst, filterName))
            ZTraceError(greyName);
        else if (from.forNeighbours(src, dst))
            filterAndSubtract<ZC24>(from.get(), dst, n, filter, combine);
    }
    frame.finish();
}

// dst = a - b, at least 0.
void subtract(ZROI<ZBW8>* a, ZROI<ZBW8>* b, ZROI<ZBW8>* dst) { ImgOper123(ARITH_LOGIC_SUBTRACT, a, b, dst); }
void subtract(ZROI<ZC24>* a, ZROI<ZC24>* b, ZROI<ZC24>* dst) { ImgOper(ARITH_LOGIC_SUBTRACT, a, b, dst); }

template <class T>
void whatIsRemoved(ZROI<T>* src, ZROI<T>* filtered, ZROI<T>* dst)
{
    subtract(src, filtered, dst);
}

template <class T>
void whatIsAdded(ZROI<T>* src, ZROI<T>* filtered, ZROI<T>* dst)
{
    subtract(filtered, src, dst);
}

}  // namespace

short ImgWhiteTopHat(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderErode, int borderDilate)
{
    const auto open = [=](ZROI<ZBW8>* from, ZROI<ZBW8>* to) { ImgOpen(from, to, n, borderErode, borderDilate); };
    return grey("ImgWhiteTopHat", "ImgOpen", src, dst, n, open, whatIsRemoved<ZBW8>);
}

short ImgBlackTopHat(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int n, int borderDilate, int borderErode)
{
    const auto close = [=](ZROI<ZBW8>* from, ZROI<ZBW8>* to) { ImgClose(from, to, n, borderDilate, borderErode); };
    return grey("ImgBlackTopHat", "ImgClose", src, dst, n, close, whatIsAdded<ZBW8>);
}

void ImgWhiteTopHat(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderErode, ZC24 borderDilate)
{
    const auto open = [=](ZROI<ZC24>* from, ZROI<ZC24>* to) { ImgOpen(from, to, n, borderErode, borderDilate); };
    colour("ImgWhiteTopHat (C24)", "ImgOpen", "ImgWhiteTopHat", src, dst, n, open, whatIsRemoved<ZC24>);
}

void ImgBlackTopHat(ZROI<ZC24>* src, ZROI<ZC24>* dst, int n, ZC24 borderDilate, ZC24 borderErode)
{
    const auto close = [=](ZROI<ZC24>* from, ZROI<ZC24>* to) { ImgClose(from, to, n, borderDilate, borderErode); };
    colour("ImgBlackTopHat (C24)", "ImgClose", "ImgBlackTopHat", src, dst, n, close, whatIsAdded<ZC24>);
}
