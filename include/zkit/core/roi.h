// Images own pixels, regions view them. Every operation takes regions; an image is the region of all its pixels.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/pixel.h"
#include "zkit/export.h"

#include <cstdint>
#include <cstring>
#include <type_traits>

template <class T>
class ZImage;

namespace zkit {

/// The pixels of one image: its own, or a caller's buffer.
struct ImageStorage {
    unsigned char* pixels = nullptr;  // the first pixel of the first row; null without storage
    int width = 0;
    int height = 0;
    int rowPitch = 0;       // bytes from a row to the next; negative when the rows are stored bottom up
    void* owned = nullptr;  // what is to be freed
};

template <class T>
inline constexpr int bitsPerPixel = 8 * sizeof(T);
template <>
inline constexpr int bitsPerPixel<ZBW1> = 1;

}  // namespace zkit

/// What regions and images of every pixel type have in common. The virtual operations stand in the order that the
/// kit's modules rely on.
class ZKIT_CORE_API ZGenericROI {
public:
    virtual ~ZGenericROI();

    /// Identifies the image whose pixels the region uses: equal for two regions exactly when they lie on the same
    /// image. Null for a region without an image.
    virtual void* GetImagePtr() const;

    /// Bytes a pixel: 1 for ZBW8, 2 for ZBW16, 3 for ZC24, 4 for ZBW32, 8 for ZComplex64; 0 for ZBW1.
    virtual int GetPixelSize() const;

    /// Raises 1402 when the other region's width or height differs from this one's, 1400 when it is null.
    virtual void CheckSameSize(ZGenericROI* other);

    /// The same check against a region of another pixel type.
    virtual void CheckSameSizeOther(ZGenericROI* other);

    /// The check of neighbourhood filters, which pass 2 and 1: equal sizes (else 1402), a region that is not null
    /// (else 1400). The two numbers take no part in it.
    virtual void CheckSizes(ZGenericROI* other, int, int);

    /// Raises 1403 when the region is narrower or lower than `pixels`.
    virtual void CheckMinimum(int pixels);
    virtual void CheckMinimumOther(int pixels);

    /// Changes the size of the region, its corner staying where it is. An image takes new storage, see ZImage::SetSize.
    virtual void SetSize(int width, int height);

    /// For ZBW1: which bit of the byte at GetPixelPtr(x, y) is the pixel, 0 for mask 0x80 to 7 for mask 0x01. Else 0.
    virtual int GetBitPosition(int x, int y) const;

    /// Address of pixel (x, y), (0, 0) being the region's top-left corner. Plain arithmetic without any check of
    /// ranges; null only without storage.
    virtual void* GetPixelPtr(int x, int y) const;

    /// Raises 1400 when the region's image has no storage (or there is no image), 1401 when the region does not lie
    /// within its image. A region without pixels (width or height 0) may lie on the image's far edges.
    virtual void CheckPlacement();

    /// Bytes from the byte after the last pixel of a region row to the first pixel of the next row: the pitch minus
    /// the bytes of a row.
    virtual int GetRowGap() const;

    /// Bytes between the first pixels of two consecutive rows; negative for an attached image stored bottom up.
    virtual int GetRowPitch() const;

    int GetWidth() const { return width_; }
    int GetHeight() const { return height_; }

    /// Places the region on its image. Any numbers are taken; the operations refuse (1401) a region that does not lie
    /// within its image.
    void SetPlacement(int x, int y, int width, int height);

    /// The addresses that the image's storage occupies, from its first pixel to the byte after its last one: `first`
    /// equals `end` without storage.
    struct Extent {
        const unsigned char* first;
        const unsigned char* end;
    };
    Extent GetStorageExtent() const;

protected:
    ZGenericROI(zkit::ImageStorage* storage, int bitsPerPixel);
    ZGenericROI(const ZGenericROI&) = default;
    ZGenericROI& operator=(const ZGenericROI&) = default;

    /// Whether pixel (x, y) of the region lies in the image's storage.
    bool holds(int x, int y) const;

    // The storage of an image, see ZImage. A failure raises its code and leaves the storage as it was.
    static bool allocate(zkit::ImageStorage& storage, int width, int height, int bitsPerPixel);
    static short attach(zkit::ImageStorage& storage, void* pixels, int width, int height, int rowPitch,
                        int bitsPerPixel);
    static void release(zkit::ImageStorage& storage);

private:
    std::int64_t rowBytes(std::int64_t x, std::int64_t width) const;

    zkit::ImageStorage* storage_;
    int bitsPerPixel_;
    int x_ = 0;
    int y_ = 0;
    int width_ = 0;
    int height_ = 0;
};

/// A rectangular region of an image. It uses the image's pixels in place and must not be used after the image is gone;
/// when the image changes its size, the region stays where it was and is checked anew by every operation.
template <class T>
class ZROI : public ZGenericROI {
public:
    /// A region without an image: operations refuse it with 1400.
    ZROI() : ZGenericROI(nullptr, zkit::bitsPerPixel<T>) {}

    /// The region of `width` x `height` pixels whose top-left corner is pixel (x, y) of the image.
    ZROI(ZImage<T>* parent, int x, int y, int width, int height);

    /// Pixel (x, y) of the region. A pixel outside the image's storage reads as zero.
    T GetPixel(int x, int y) const
    {
        T value{};
        if (!holds(x, y))
            return value;
        std::memcpy(&value, GetPixelPtr(x, y), sizeof value);
        if constexpr (isBit)
            value.bits = static_cast<unsigned char>(value.bits >> (7 - GetBitPosition(x, y)) & 1);
        return value;
    }

    /// Writes pixel (x, y) of the region. A pixel outside the image's storage is left out.
    void SetPixel(T value, int x, int y)
    {
        if (!holds(x, y))
            return;
        void* const address = GetPixelPtr(x, y);
        if constexpr (isBit) {
            const int byte = *static_cast<unsigned char*>(address), mask = 0x80 >> GetBitPosition(x, y);
            value.bits = static_cast<unsigned char>(value.bits ? byte | mask : byte & ~mask);
        }
        std::memcpy(address, &value, sizeof value);
    }

protected:
    explicit ZROI(zkit::ImageStorage* storage) : ZGenericROI(storage, zkit::bitsPerPixel<T>) {}

private:
    static constexpr bool isBit = std::is_same_v<T, ZBW1>;
};

/// An image of pixels of type T, and the region of all of them.
///
/// Its own rows start at multiples of 64 bytes, and on Linux it asks for large pages where its storage covers any. Not
/// copyable: regions refer to it by its address.
template <class T>
class ZImage : public ZROI<T> {
public:
    /// An image without storage: operations refuse it with 1400.
    ZImage() : ZROI<T>(&storage_) {}

    /// An image of its own zero pixels, see SetSize.
    ZImage(int width, int height) : ZROI<T>(&storage_) { ZImage::SetSize(width, height); }

    ~ZImage() override { this->release(storage_); }

    ZImage(const ZImage&) = delete;
    ZImage& operator=(const ZImage&) = delete;

    /// Takes new storage of its own, all zero, and lets go of the old. A width or height of 0 gives an image without
    /// storage. Raises 1011 or 1012 for a negative size and 1303 for one that does not fit into memory; the image is
    /// then as before.
    void SetSize(int width, int height) override
    {
        if (this->allocate(storage_, width, height, zkit::bitsPerPixel<T>))
            this->SetPlacement(0, 0, width, height);
    }

    /// Uses a caller's buffer in place (of a camera, of another library), which must outlive its use. The buffer may
    /// have any address, any pitch and nothing after its last pixel.
    /// @param pixels    the first pixel of the top row, not null (else 1011)
    /// @param width     pixels a row, at least 1 and no more than an int can count the bytes of (else 1012)
    /// @param height    rows, at least 1 (else 1013)
    /// @param rowPitch  bytes from a row to the next; negative for rows stored bottom up. With more than one row its
    ///                  magnitude is at least the bytes of a row (else 1014)
    /// Returns 0 or the code raised; the image is then as before.
    short Attach(void* pixels, int width, int height, int rowPitch)
    {
        const short code = this->attach(storage_, pixels, width, height, rowPitch, zkit::bitsPerPixel<T>);
        if (code == 0)
            this->SetPlacement(0, 0, width, height);
        return code;
    }

private:
    friend class ZROI<T>;
    zkit::ImageStorage storage_;
};

template <class T>
ZROI<T>::ZROI(ZImage<T>* parent, int x, int y, int width, int height)
    : ZGenericROI(parent ? &parent->storage_ : nullptr, zkit::bitsPerPixel<T>)
{
    SetPlacement(x, y, width, height);
}

extern template class ZKIT_CORE_API ZROI<ZBW1>;
extern template class ZKIT_CORE_API ZROI<ZBW8>;
extern template class ZKIT_CORE_API ZROI<ZBW16>;
extern template class ZKIT_CORE_API ZROI<ZBW32>;
extern template class ZKIT_CORE_API ZROI<ZC24>;
extern template class ZKIT_CORE_API ZROI<ZComplex64>;
extern template class ZKIT_CORE_API ZImage<ZBW1>;
extern template class ZKIT_CORE_API ZImage<ZBW8>;
extern template class ZKIT_CORE_API ZImage<ZBW16>;
extern template class ZKIT_CORE_API ZImage<ZBW32>;
extern template class ZKIT_CORE_API ZImage<ZC24>;
extern template class ZKIT_CORE_API ZImage<ZComplex64>;
