// ImgSwapFrames, ImgRealignFrame, ImgRebuildFrame and ImgMatchFrames, grey and colour.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "simd/choice.h"
#include "temporal/interlace_workers.h"
#include "zkit/img/temporal.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

using namespace zkit;

namespace {

// Source and destination of an operation, their widths counting bytes. They are the same or apart.
struct Frames {
    Source src;
    Target dst;
    Stores stores;
    bool same;
    const InterlaceWorkers& worker;

    const std::uint8_t* from(std::ptrdiff_t y) const { return src.data + y * src.pitch; }
    const std::uint8_t* next(std::ptrdiff_t y) const { return from(std::min(y, src.height - 1)); }
    std::uint8_t* to(std::ptrdiff_t y) const { return dst.data + y * dst.pitch; }
};

// Does the work, which takes frames, unless there is no memory to keep overlapping regions apart (1303).
template <class Work>
void withFrames(ZGenericROI* src, ZGenericROI* dst, Work work)
{
    const int pixelSize = src->GetPixelSize();
    PointSource from(src);
    Target to = target(dst);
    Stores stores{};
    if (!preparePoints({&from, 1}, to, pixelSize, Joining::none, stores))
        return;
    const Source in = bytes(from.plane, pixelSize);
    const Target out = bytes(to, pixelSize);
    work(Frames{in, out, stores, inPlace(in, out), workers<InterlaceWorkers>()});
    if (stores == Stores::streamed)
        endStreaming();
}

// Exchanges rows that are apart.
void exchange(std::uint8_t* a, std::uint8_t* b, std::ptrdiff_t count)
{
    std::uint8_t kept[4096];
    for (std::ptrdiff_t i = 0; i < count; i += std::ssize(kept)) {
        const auto piece = static_cast<std::size_t>(std::min(count - i, std::ssize(kept)));
        std::memcpy(kept, a + i, piece);
        std::memcpy(a + i, b + i, piece);
        std::memcpy(b + i, kept, piece);
    }
}

void swapFields(const char* name, ZGenericROI* src, ZGenericROI* dst)
{
    const CallFrame frame(name);
    if (frame.clear() && pointRegions(dst, src))
        withFrames(src, dst, [](const Frames& f) {
            for (std::ptrdiff_t y = 0; y + 1 < f.dst.height; y += 2)
                if (f.same) {
                    exchange(f.to(y), f.to(y + 1), f.dst.width);
                } else {
                    f.worker.copy(f.from(y + 1), f.from(y), f.to(y), f.dst.width, f.stores);
                    f.worker.copy(f.from(y), f.next(y + 3), f.to(y + 1), f.dst.width, f.stores);
                }
        });
    frame.finish();
}

// The first of the rows that are rewritten, every other one.
std::ptrdiff_t firstRow(unsigned int field) { return ~field & 1U; }

// Every other row from `first` on.
template <class Plane>
Plane everyOther(const Plane& frame, std::ptrdiff_t first)
{
    return {frame.data + first * frame.pitch, 2 * frame.pitch, frame.width, (frame.height - first + 1) / 2};
}

void rebuild(const char* name, ZGenericROI* src, ZGenericROI* dst, unsigned int field)
{
    const CallFrame frame(name);
    if (frame.clear() && pointRegions(dst, src))
        withFrames(src, dst, [field](const Frames& f) {
            const std::ptrdiff_t first = firstRow(field), last = f.dst.height - 1;
            const auto repeat = [&f](std::ptrdiff_t from, std::ptrdiff_t y) {
                f.worker.copy(f.from(from), f.from(from), f.to(y), f.dst.width, f.stores);
            };
            if (first == 0 && last >= 0)
                repeat(std::min(last, std::ptrdiff_t{1}), 0);
            if (const std::ptrdiff_t y = first == 0 ? 2 : 1; y < last) {
                const Source around = everyOther(f.src, y - 1);
                Target between = everyOther(f.dst, y);
                between.height = around.height - 1;
                f.worker.mean(around, between, f.stores);
            }
            if (last > 0 && (last - first) % 2 == 0)
                repeat(last - 1, last);
        });
    frame.finish();
}

// Moves by `shift` bytes, fewer than a row has if it is positive.
void shiftField(const Frames& f, std::ptrdiff_t first, std::ptrdiff_t shift, int pixelSize)
{
    const std::ptrdiff_t width = f.dst.width, moved = std::max(width - std::abs(shift), std::ptrdiff_t{0});
    const Shift by = shift > 0 ? Shift{0, shift, moved, pixelSize, pixelSize}
                               : Shift{width - moved, 0, moved, width - pixelSize, pixelSize};
    f.worker.shift(everyOther(f.src, first), everyOther(f.dst, first), by, f.stores);
}

// The pixels of one column of the region; for a column outside it those of its image's row, clamped to that.
Source column(const ZGenericROI* roi, std::ptrdiff_t x)
{
    const ZGenericROI::Extent image = roi->GetStorageExtent();
    const std::ptrdiff_t pitch = std::abs(static_cast<std::ptrdiff_t>(roi->GetRowPitch())), size = roi->GetPixelSize();
    const bool oneRow = pitch == 0 || image.end - image.first <= pitch;
    const std::ptrdiff_t rowBytes = oneRow ? image.end - image.first : (image.end - image.first - 1) % pitch + 1;
    Source plane = source(roi);
    const std::ptrdiff_t left = oneRow ? plane.data - image.first : (plane.data - image.first) % pitch;
    const std::ptrdiff_t first = -(left / size);
    plane.data += size * std::clamp(x, first, first + rowBytes / size - 1);
    plane.width = size;
    return plane;
}

// Raises 1303 when there is no memory to keep overlapping regions apart.
void fillFrom(Source column, const Target& dst, int pixelSize, std::ptrdiff_t first)
{
    SeparateSource separate;
    if (separate.forNeighbours(column, dst))
        workers<InterlaceWorkers>().shift(everyOther(column, first), everyOther(dst, first), {0, 0, 0, 0, pixelSize},
                                          Stores::cached);
}

void realign(const char* name, ZGenericROI* src, ZGenericROI* dst, int shift, unsigned int field)
{
    const CallFrame frame(name);
    if (frame.clear() && pointRegions(dst, src) && dst->GetWidth() > 0) {
        const std::ptrdiff_t width = dst->GetWidth();
        const int pixelSize = src->GetPixelSize();
        if (shift >= width)  // the pixel before the first one that would stay, and one to the right, which is intended
            fillFrom(column(src, width - shift + 1), bytes(target(dst), pixelSize), pixelSize, firstRow(field));
        else
            withFrames(src, dst, [&](const Frames& f) {
                const std::ptrdiff_t by = std::max<std::ptrdiff_t>(shift, -width) * pixelSize;
                shiftField(f, firstRow(field), by, pixelSize);
            });
    }
    frame.finish();
}

void match(const char* name, ZGenericROI* roi, int row, int minShift, int maxShift, int& bestShift)
{
    const CallFrame frame(name);
    if (!(frame.clear() && placed(roi))) {
        frame.trace();
        return;
    }
    const std::int64_t width = roi->GetWidth(), range = static_cast<std::int64_t>(maxShift) - minShift;
    if (require(range >= 0 && range <= width, Z_ERROR_INCONSISTENT_ARGUMENTS) &&
        require(row >= 0 && row < roi->GetHeight() - 1, Z_ERROR_ARGUMENT_2_OUT_OF_RANGE)) {
        const Source plane = source(roi);
        const std::ptrdiff_t size = roi->GetPixelSize();
        const std::uint8_t* const above = plane.data + row * plane.pitch;
        const std::uint8_t* const below = above + plane.pitch;
        // The columns that are compared; without any, all candidates are equal.
        const std::int64_t begin = std::max(maxShift, 0), end = width + std::min(minShift, 0);
        const auto bytesOf = [size](std::int64_t pixels) { return static_cast<std::ptrdiff_t>(pixels) * size; };
        const std::ptrdiff_t best =
            begin < end
                ? workers<InterlaceWorkers>().match(above + bytesOf(begin), below + bytesOf(begin - minShift),
                                                    bytesOf(end - begin), size, static_cast<std::ptrdiff_t>(range) + 1)
                : 0;
        if (best >= 0)
            bestShift = static_cast<int>(minShift + best);
    }
    frame.finish();
}

}  // namespace

void ImgSwapFrames(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { swapFields("ImgSwapFrames (ZBW8)", src, dst); }
void ImgSwapFrames(ZROI<ZC24>* src, ZROI<ZC24>* dst) { swapFields("ImgSwapFrames (ZC24)", src, dst); }

void ImgRealignFrame(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, int shift, unsigned int field)
{
    realign("ImgRealignFrame (ZBW8)", src, dst, shift, field);
}

void ImgRealignFrame(ZROI<ZC24>* src, ZROI<ZC24>* dst, int shift, unsigned int field)
{
    realign("ImgRealignFrame (ZC24)", src, dst, shift, field);
}

void ImgRebuildFrame(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, unsigned int field)
{
    rebuild("ImgRebuildFrame (ZBW8)", src, dst, field);
}

void ImgRebuildFrame(ZROI<ZC24>* src, ZROI<ZC24>* dst, unsigned int field)
{
    rebuild("ImgRebuildFrame (ZC24)", src, dst, field);
}

void ImgMatchFrames(ZROI<ZBW8>* roi, int row, int minShift, int maxShift, int& bestShift)
{
    match("ImgMatchFrames (ZBW8)", roi, row, minShift, maxShift, bestShift);
}

void ImgMatchFrames(ZROI<ZC24>* roi, int row, int minShift, int maxShift, int& bestShift)
{
    match("ImgMatchFrames (ZC24)", roi, row, minShift, maxShift, bestShift);
}
