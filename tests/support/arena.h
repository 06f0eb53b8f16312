// The images and regions of a layout, in a buffer on the heap of exactly the size that they need.
#pragma once

#include "support/layout.h"

#include <sanitizer/asan_interface.h>

#include <memory>

// The sanitizer reports any access to a byte between the rows of images, before the first and after the last one.
class Arena {
public:
    // @param guarded  whether that is so
    Arena(const Layout& layout, std::span<const std::uint8_t> bytes, bool guarded = true)
        : layout_(layout), bytes_(new std::uint8_t[layout.size()]), images_(layout.images().size())
    {
        std::copy(bytes.begin(), bytes.end(), bytes_.get());
        if (!guarded)
            return;
        ASAN_POISON_MEMORY_REGION(bytes_.get(), layout.size());
        for (const Layout::Image& image : layout.images())
            for (int y = 0; y < image.height; ++y)
                ASAN_UNPOISON_MEMORY_REGION(at(image.at(0, y)), static_cast<std::size_t>(image.rowBytes()));
    }

    // A region, which must have been added with the same type of pixels.
    template <class T>
    ZROI<T>* region(std::size_t index)
    {
        const Layout::Region& r = layout_.regions()[index];
        if (r.kind == Layout::Region::null)
            return nullptr;
        auto region = std::make_unique<ZROI<T>>(r.kind == Layout::Region::onImage ? image<T>(r.image) : nullptr, r.x,
                                                r.y, r.width, r.height);
        ZROI<T>* const result = region.get();
        regions_.push_back(std::move(region));
        return result;
    }

    // All bytes; from now on every one may be accessed.
    std::span<const std::uint8_t> bytes()
    {
        ASAN_UNPOISON_MEMORY_REGION(bytes_.get(), layout_.size());
        return {bytes_.get(), layout_.size()};
    }

private:
    std::uint8_t* at(std::ptrdiff_t address) { return bytes_.get() + layout_.offset(address); }

    template <class T>
    ZImage<T>* image(std::size_t index)
    {
        if (!images_[index]) {
            auto image = std::make_unique<ZImage<T>>();
            const Layout::Image& i = layout_.images()[index];
            if (i.height > 0)
                image->Attach(at(i.first), i.width, i.height, static_cast<int>(i.pitch));
            images_[index] = std::move(image);
        }
        return static_cast<ZImage<T>*>(images_[index].get());
    }

    const Layout& layout_;
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::vector<std::unique_ptr<ZGenericROI>> images_, regions_;
};
