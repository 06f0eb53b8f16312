// The predefined 3 x 3 filters, grey and colour.
#include "filter/predefined_workers.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "simd/choice.h"
#include "zkit/img/filter.h"

#include <algorithm>
#include <cstring>

using namespace zkit;

namespace {

using Workers = PredefinedWorkers;

constexpr Border zeros(int step) { return {step, false, {}}; }
constexpr Border repeated(int step) { return {step, true, {}}; }

// The names of a filter's two forms and its worker.
struct Filter {
    const char* grey;
    const char* colour;
    FilterBand Workers::*band;
};

constexpr Filter highpass1{"ImgConvolHighpass1", "ImgConvolHighpass1 (C24)", &Workers::highpass1};
constexpr Filter highpass2{"ImgConvolHighpass2", "ImgConvolHighpass2 (C24)", &Workers::highpass2};
constexpr Filter lowpass1{"ImgConvolLowpass1", "ImgConvolLowpass1 (C24)", &Workers::lowpass1};
constexpr Filter lowpass2{"ImgConvolLowpass2", "ImgConvolLowpass2 (C24)", &Workers::lowpass2};
constexpr Filter lowpass3{"ImgConvolLowpass3", "ImgConvolLowpass3 (C24)", &Workers::lowpass3};
constexpr Filter sobelX{"ImgConvolSobelX", "ImgConvolSobelX (C24)", &Workers::sobelX};
constexpr Filter sobelY{"ImgConvolSobelY", "ImgConvolSobelY (C24)", &Workers::sobelY};
constexpr Filter sobelXY{"ImgConvolSobelXY", "ImgConvolSobelXY (C24)", &Workers::sobelXY};
constexpr Filter prewittX{"ImgConvolPrewittX", "ImgConvolPrewittX (C24)", &Workers::prewittX};
constexpr Filter prewittY{"ImgConvolPrewittY", "ImgConvolPrewittY (C24)", &Workers::prewittY};
constexpr Filter prewittXY{"ImgConvolPrewittXY", "ImgConvolPrewittXY (C24)", &Workers::prewittXY};
constexpr Filter laplacian4{"ImgConvolLaplacian4", "ImgConvolLaplacian4 (C24)", &Workers::laplacian4};
constexpr Filter laplacian8{"ImgConvolLaplacian8", "ImgConvolLaplacian8 (C24)", &Workers::laplacian8};

// A grey filter. It does not ask for a pending error, which is intended.
short run(const Filter& filter, ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    const CallFrame frame(filter.grey);
    if (!(filterSizes(src, dst) && hasPixels(src) && hasPixels(dst) && placed(src) && placed(dst) &&
          filterRows(source(src), target(dst), zeros(1), workers<Workers>().*filter.band)))
        return frame.trace();
    return frame.finish();
}

// The size check of the grey filter that a colour form is made of.
bool sizesInside(const Filter& filter, ZROI<ZC24>* src, ZROI<ZC24>* dst)
{
    if (filterSizes(src, dst))
        return true;
    ZTraceError(filter.grey);
    return false;
}

// A filter on all components at once, with the errors of one component after the other.
void run(const Filter& filter, ZROI<ZC24>* src, ZROI<ZC24>* dst)
{
    const CallFrame frame(filter.colour);
    if (frame.clear() && require(src && dst, Z_ERROR_NO_PIXELS) && placed(src) && sizesInside(filter, src, dst) &&
        placed(dst) &&
        filterRows(bytes(source(src), 3), bytes(target(dst), 3), zeros(3), workers<Workers>().*filter.band))
        frame.finish();
    else
        frame.trace();
}

// Smoothing in one direction. It does not ask for a pending error and records its name always, which is intended.
void smooth(const char* name, ZROI<ZBW8>* src, ZROI<ZBW8>* dst, FilterBand band)
{
    const CallFrame frame(name);
    static_cast<void>(hasPixels(src) && hasPixels(dst) && sameSize(src, dst) && placed(src) && placed(dst) &&
                      filterRows(source(src), target(dst), repeated(1), band));
    frame.trace();
}

// Filters a whole source into the part of it that the destination has.
template <class T>
bool filterPart(ZROI<T>* src, ZROI<T>* dst, FilterBand band)
{
    constexpr int step = sizeof(T);
    const Source from = bytes(source(src), step);
    const Target to = bytes(target(dst), step);
    const std::ptrdiff_t width = std::min(from.width, to.width), height = std::min(from.height, to.height);
    if (width == 0 || height == 0)
        return true;
    if (width == from.width && height == from.height)
        return filterRows(from, {to.data, to.pitch, width, height}, repeated(step), band);
    ZImage<T> whole(src->GetWidth(), src->GetHeight());
    if (!(whole.GetPixelPtr(0, 0) && filterRows(from, bytes(target(&whole), step), repeated(step), band)))
        return false;
    for (std::ptrdiff_t y = 0; y < height; ++y)
        std::memcpy(to.data + y * to.pitch, whole.GetPixelPtr(0, static_cast<int>(y)), static_cast<std::size_t>(width));
    return true;
}

template <class T>
void roberts(const char* name, ZROI<T>* src, ZROI<T>* dst)
{
    const CallFrame frame(name);
    if (frame.clear() && require(src && dst, Z_ERROR_NO_PIXELS) && placed(src) && placed(dst) &&
        filterPart(src, dst, workers<Workers>().roberts))
        frame.finish();
    else
        frame.trace();
}

}  // namespace

short ImgConvolHighpass1(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(highpass1, src, dst); }
void ImgConvolHighpass1(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(highpass1, src, dst); }

short ImgConvolHighpass2(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(highpass2, src, dst); }
void ImgConvolHighpass2(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(highpass2, src, dst); }

short ImgConvolLowpass1(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(lowpass1, src, dst); }
void ImgConvolLowpass1(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(lowpass1, src, dst); }

short ImgConvolLowpass2(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(lowpass2, src, dst); }
void ImgConvolLowpass2(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(lowpass2, src, dst); }

short ImgConvolLowpass3(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(lowpass3, src, dst); }
void ImgConvolLowpass3(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(lowpass3, src, dst); }

short ImgConvolSobelX(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(sobelX, src, dst); }
void ImgConvolSobelX(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(sobelX, src, dst); }

short ImgConvolSobelY(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(sobelY, src, dst); }
void ImgConvolSobelY(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(sobelY, src, dst); }

short ImgConvolSobelXY(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(sobelXY, src, dst); }
void ImgConvolSobelXY(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(sobelXY, src, dst); }

short ImgConvolPrewittX(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(prewittX, src, dst); }
void ImgConvolPrewittX(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(prewittX, src, dst); }

short ImgConvolPrewittY(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(prewittY, src, dst); }
void ImgConvolPrewittY(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(prewittY, src, dst); }

short ImgConvolPrewittXY(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(prewittXY, src, dst); }
void ImgConvolPrewittXY(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(prewittXY, src, dst); }

short ImgConvolLaplacian4(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(laplacian4, src, dst); }
void ImgConvolLaplacian4(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(laplacian4, src, dst); }

short ImgConvolLaplacian8(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { return run(laplacian8, src, dst); }
void ImgConvolLaplacian8(ZROI<ZC24>* src, ZROI<ZC24>* dst) { run(laplacian8, src, dst); }

void ImgConvolLowpass1X(ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    smooth("ImgConvolLowpass1X", src, dst, workers<Workers>().lowpass1X);
}

void ImgConvolLowpass1Y(ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    smooth("ImgConvolLowpass1Y", src, dst, workers<Workers>().lowpass1Y);
}

void ImgConvolRoberts(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { roberts("ImgConvolRoberts", src, dst); }
void ImgConvolRoberts(ZROI<ZC24>* src, ZROI<ZC24>* dst) { roberts("ImgConvolRoberts (C24)", src, dst); }
