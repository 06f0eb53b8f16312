#include "zkit/core/roi.h"

#include "zkit/core/error.h"

#include <climits>
#include <cstdlib>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace {

constexpr std::int64_t rowAlignment = 64;
constexpr std::int64_t collidingPitch =
    4096;  // rows at multiples of it fall on the same lines of the first-level cache

// Asks for large pages where whole ones lie within the memory: of those that a camera image has otherwise the processor
// cannot keep all the addresses. Without them everything works, a little slower.
void preferLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes)
{
#ifdef MADV_HUGEPAGE
    constexpr std::uintptr_t large = 1 << 21;
    const auto begin = reinterpret_cast<std::uintptr_t>(memory), end = (begin + bytes) / large * large;
    const std::uintptr_t first = (begin + large - 1) / large * large;
    if (first < end)
        madvise(static_cast<char*>(memory) + (first - begin), end - first, MADV_HUGEPAGE);
#endif
}

int clampToInt(std::int64_t value)
{
    return static_cast<int>(value < INT_MIN ? INT_MIN : value > INT_MAX ? INT_MAX : value);
}

}  // namespace

ZGenericROI::ZGenericROI(zkit::ImageStorage* storage, int bitsPerPixel) : storage_(storage), bitsPerPixel_(bitsPerPixel)
{
}

ZGenericROI::~ZGenericROI() = default;

void* ZGenericROI::GetImagePtr() const { return storage_; }

int ZGenericROI::GetPixelSize() const { return bitsPerPixel_ / 8; }

void ZGenericROI::CheckSameSize(ZGenericROI* other)
{
    if (!other)
        ZSetError(Z_ERROR_NO_PIXELS);
    else if (other->width_ != width_ || other->height_ != height_)
        ZSetError(Z_ERROR_SIZE_MISMATCH);
}

void ZGenericROI::CheckSameSizeOther(ZGenericROI* other) { CheckSameSize(other); }

void ZGenericROI::CheckSizes(ZGenericROI* other, int, int) { CheckSameSize(other); }

void ZGenericROI::CheckMinimum(int pixels)
{
    if (width_ < pixels || height_ < pixels)
        ZSetError(Z_ERROR_BAD_IMAGE_SIZE);
}

void ZGenericROI::CheckMinimumOther(int pixels) { CheckMinimum(pixels); }

void ZGenericROI::SetSize(int width, int height)
{
    width_ = width;
    height_ = height;
}

int ZGenericROI::GetBitPosition(int x, int y) const
{
    static_cast<void>(y);
    return bitsPerPixel_ == 1 ? static_cast<int>((static_cast<unsigned>(x_) + static_cast<unsigned>(x)) & 7U) : 0;
}

void* ZGenericROI::GetPixelPtr(int x, int y) const
{
    if (!storage_ || !storage_->pixels)
        return nullptr;
    // Formed as a number: the address may lie outside the storage, and rows of attached buffers may run backwards.
    const std::int64_t column = static_cast<std::int64_t>(x_) + x, row = static_cast<std::int64_t>(y_) + y;
    const std::uint64_t offset = static_cast<std::uint64_t>(row) * static_cast<std::uint64_t>(storage_->rowPitch) +
                                 static_cast<std::uint64_t>((column * bitsPerPixel_) >> 3);
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(storage_->pixels) +
                                   static_cast<std::uintptr_t>(offset));
}

void ZGenericROI::CheckPlacement()
{
    if (!storage_ || !storage_->pixels)
        ZSetError(Z_ERROR_NO_PIXELS);
    else if (x_ < 0 || y_ < 0 || width_ < 0 || height_ < 0 || width_ > storage_->width - x_ ||
             height_ > storage_->height - y_)
        ZSetError(Z_ERROR_ROI_PLACEMENT);
}

int ZGenericROI::GetRowGap() const { return clampToInt(GetRowPitch() - rowBytes(x_, width_)); }

int ZGenericROI::GetRowPitch() const { return storage_ ? storage_->rowPitch : 0; }

void ZGenericROI::SetPlacement(int x, int y, int width, int height)
{
    x_ = x;
    y_ = y;
    width_ = width;
    height_ = height;
}

ZGenericROI::Extent ZGenericROI::GetStorageExtent() const
{
    if (!storage_ || !storage_->pixels)
        return {nullptr, nullptr};
    const std::ptrdiff_t lastRow = static_cast<std::ptrdiff_t>(storage_->rowPitch) * (storage_->height - 1);
    const auto bytes = static_cast<std::ptrdiff_t>(rowBytes(0, storage_->width));
    return {storage_->pixels + (lastRow < 0 ? lastRow : 0), storage_->pixels + (lastRow < 0 ? 0 : lastRow) + bytes};
}

bool ZGenericROI::holds(int x, int y) const
{
    const std::int64_t column = static_cast<std::int64_t>(x_) + x, row = static_cast<std::int64_t>(y_) + y;
    return storage_ && storage_->pixels && column >= 0 && row >= 0 && column < storage_->width &&
           row < storage_->height;
}

// Bytes that `width` pixels from column x on touch.
std::int64_t ZGenericROI::rowBytes(std::int64_t x, std::int64_t width) const
{
    const std::int64_t firstBit = x * bitsPerPixel_ & 7;
    return (firstBit + width * bitsPerPixel_ + 7) >> 3;
}

bool ZGenericROI::allocate(zkit::ImageStorage& storage, int width, int height, int bitsPerPixel)
{
    if (width < 0 || height < 0) {
        ZSetError(width < 0 ? Z_ERROR_ARGUMENT_1_OUT_OF_RANGE : Z_ERROR_ARGUMENT_2_OUT_OF_RANGE);
        return false;
    }
    zkit::ImageStorage fresh{nullptr, width, height, 0, nullptr};
    if (width > 0 && height > 0) {
        const std::int64_t bytes = (static_cast<std::int64_t>(width) * bitsPerPixel + 7) / 8;
        std::int64_t pitch = (bytes + rowAlignment - 1) / rowAlignment * rowAlignment;
        if (pitch % collidingPitch == 0)
            pitch += rowAlignment;
        const bool possible = pitch <= INT_MAX && pitch <= (PTRDIFF_MAX - rowAlignment) / height;
        const std::size_t size = possible ? static_cast<std::size_t>(pitch * height + rowAlignment - 1) : 0;
        if (possible)
            fresh.owned = std::calloc(1, size);
        if (!fresh.owned) {
            ZSetError(Z_ERROR_OUT_OF_MEMORY);
            return false;
        }
        preferLargePages(fresh.owned, size);
        const auto misaligned = reinterpret_cast<std::uintptr_t>(fresh.owned) % rowAlignment;
        fresh.pixels = static_cast<unsigned char*>(fresh.owned) + (misaligned ? rowAlignment - misaligned : 0);
        fresh.rowPitch = static_cast<int>(pitch);
    }
    release(storage);
    storage = fresh;
    return true;
}

short ZGenericROI::attach(zkit::ImageStorage& storage, void* pixels, int width, int height, int rowPitch,
                          int bitsPerPixel)
{
    if (!pixels)
        return ZSetError(Z_ERROR_ARGUMENT_1_OUT_OF_RANGE);
    const std::int64_t bytes = (static_cast<std::int64_t>(width) * bitsPerPixel + 7) / 8;
    if (width < 1 || bytes > INT_MAX)
        return ZSetError(Z_ERROR_ARGUMENT_2_OUT_OF_RANGE);
    if (height < 1)
        return ZSetError(Z_ERROR_ARGUMENT_3_OUT_OF_RANGE);
    const std::int64_t magnitude = std::llabs(static_cast<std::int64_t>(rowPitch));
    if (height > 1 && (magnitude < bytes || magnitude > PTRDIFF_MAX / height))
        return ZSetError(Z_ERROR_ARGUMENT_4_OUT_OF_RANGE);
    release(storage);
    storage = {static_cast<unsigned char*>(pixels), width, height, rowPitch, nullptr};
    return ZOk();
}

void ZGenericROI::release(zkit::ImageStorage& storage)
{
    std::free(storage.owned);
    storage = {};
}

template class ZROI<ZBW1>;
template class ZROI<ZBW8>;
template class ZROI<ZBW16>;
template class ZROI<ZBW32>;
template class ZROI<ZC24>;
template class ZROI<ZComplex64>;
template class ZImage<ZBW1>;
template class ZImage<ZBW8>;
template class ZImage<ZBW16>;
template class ZImage<ZBW32>;
template class ZImage<ZC24>;
template class ZImage<ZComplex64>;
