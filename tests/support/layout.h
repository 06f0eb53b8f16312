// Where images lie in a byte buffer and regions in the images, as an input says: apart, the same or overlapping, at any
// address and pitch, and sometimes unusable.
#pragma once

#include "support/input.h"
#include "zkit/core/roi.h"

#include <sstream>
#include <string>
#include <vector>

// What the regions of a layout are like: of any kind, or all of one.
enum class Regions { any, overlapping, null, withoutImage, empty, outside, backwards };

class Layout {
public:
    struct Image {
        int bits = 0, width = 0, height = 0;  // bits a pixel; without storage when the height is 0
        std::ptrdiff_t pitch = 0, first = 0;  // bytes

        std::ptrdiff_t rowBytes() const { return (width * bits + 7) / 8; }
        std::ptrdiff_t at(int x, int y) const { return first + y * pitch + x * bits / 8; }
        std::ptrdiff_t low() const { return std::min(at(0, 0), at(0, height - 1)); }
        std::ptrdiff_t high() const { return std::max(at(0, 0), at(0, height - 1)) + rowBytes(); }
    };
    struct Region {
        enum Kind { onImage, withoutImage, null } kind = onImage;
        std::size_t image = 0;
        int x = 0, y = 0, width = 0, height = 0;
    };

    // Most regions will be of one size.
    explicit Layout(Input& input, Regions kind = Regions::any)
        : kind_(kind),
          width_(input.oneIn(8) ? input.number(0, 300) : (input.number(0, 70) + 8) % 71),
          height_((input.number(0, 20) + 8) % 21),
          end_(input.number(0, 63))
    {
    }

    // Adds a region of pixels of type T and returns its index.
    template <class T>
    std::size_t add(Input& input)
    {
        const int bits = zkit::bitsPerPixel<T>;
        regions_.push_back(kind_ == Regions::any ? choose(input, bits) : ofKind(bits));
        if (kind_ == Regions::any && input.oneIn(16)) {
            Region& r = regions_.back();
            int* const numbers[] = {&r.x, &r.y, &r.width, &r.height};
            *numbers[input.number(0, 3)] = input.oneIn(4) ? input.take<int>() : input.number(-3, 80);
        }
        return regions_.size() - 1;
    }

    // The same regions, which must be usable, each in an image of its own that holds nothing else.
    Layout apart() const
    {
        Layout layout(*this);
        layout.images_.clear();
        layout.begin_ = layout.end_ = 0;
        for (Region& r : layout.regions_) {
            r.x &= 7;  // the place of a binary pixel in its byte
            r.y = 0;
            Image image{images_[r.image].bits, std::max(r.x + r.width, 1), std::max(r.height, 1), 0, layout.end_};
            image.pitch = image.rowBytes();
            r.image = layout.place(image);
        }
        return layout;
    }

    std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
    const std::vector<Image>& images() const { return images_; }
    const std::vector<Region>& regions() const { return regions_; }
    std::ptrdiff_t offset(std::ptrdiff_t address) const { return address - begin_; }  // in the buffer

    bool usable(std::size_t index) const
    {
        const Region& r = regions_[index];
        if (r.kind != Region::onImage)
            return false;
        const Image& image = images_[r.image];
        return image.height > 0 && r.x >= 0 && r.y >= 0 && r.width >= 0 && r.height >= 0 &&
               r.width <= image.width - r.x && r.height <= image.height - r.y;
    }

    // Calls action(offset, bytes) for every row of a usable region.
    template <class Action>
    void forRows(std::size_t index, Action action) const
    {
        const Region& r = regions_[index];
        const Image& image = images_[r.image];
        const std::ptrdiff_t bytes = ((r.x + r.width) * image.bits + 7) / 8 - r.x * image.bits / 8;
        for (int y = r.y; y < r.y + r.height && r.width > 0; ++y)
            action(offset(image.at(r.x, y)), bytes);
    }

    std::string text() const
    {
        std::ostringstream out;
        out << size() << " bytes\n";
        for (const Image& i : images_)
            out << "image of " << i.bits << " bits a pixel: " << i.width << " x " << i.height << ", pitch " << i.pitch
                << ", at " << offset(i.first) << '\n';
        for (const Region& r : regions_)
            out << "region " << (r.kind == Region::onImage ? "on image " : "null or without image ") << r.image << ": "
                << r.width << " x " << r.height << " at " << r.x << ',' << r.y << '\n';
        return out.str();
    }

private:
    Region ofKind(int bits)
    {
        if (kind_ == Regions::overlapping) {  // every one a pixel further, in one buffer whatever the types of pixels
            const int at = static_cast<int>(regions_.size());
            return {Region::onImage, place({bits, 20, 20, 64, 0}), at, at, 16, 16};
        }
        if (kind_ == Regions::outside || kind_ == Regions::backwards) {
            const bool outside = kind_ == Regions::outside;
            return {Region::onImage, place({bits, 8, 8, 64, end_}), 4, 4, outside ? 5 : -1, outside ? 4 : 2};
        }
        images_.push_back({bits});
        if (kind_ == Regions::empty)
            return {Region::onImage, images_.size() - 1};
        return {kind_ == Regions::null ? Region::null : Region::withoutImage, images_.size() - 1, 0, 0, 8, 8};
    }

    Region choose(Input& input, int bits)
    {
        const int kind = input.number(0, 63);
        if (kind > 60) {
            images_.push_back({bits});
            const Region::Kind kinds[] = {Region::onImage, Region::withoutImage, Region::null};
            return {kinds[kind - 61], images_.size() - 1, 0, 0, width_, height_};
        }
        enum { alone, same, sameImage, overlapping };
        const int where = regions_.empty() ? alone : input.number(alone, overlapping);
        if (where == alone)
            return inNewImage(input, bits, nullptr, 0);
        const std::size_t index = input.take<std::uint8_t>() % regions_.size();
        const Region& other = regions_[index];
        const Image& image = images_[other.image];
        if (where == overlapping || image.bits != bits || !usable(index))
            return inNewImage(input, bits, usable(index) ? &other : nullptr,
                              where == overlapping ? input.number(-200, 200) : 0);
        if (where == same)
            return other;
        return {Region::onImage,
                other.image,
                input.number(0, std::max(image.width - width_, 0)),
                input.number(0, std::max(image.height - height_, 0)),
                width_,
                height_};
    }

    // A region behind all images, or some bytes beside another region and with its pitch if possible.
    Region inNewImage(Input& input, int bits, const Region* near, std::ptrdiff_t beside)
    {
        const int x = input.number(0, 9), y = input.number(0, 3), more = input.oneIn(4) ? 2 : 1;
        Image image{bits, std::max(x + more * width_ + input.number(0, 9), 1),
                    std::max(y + more * height_ + input.number(0, 3), 1)};
        image.pitch = image.rowBytes() + std::max(input.number(-9, 9), 0);
        bool bottomUp = input.oneIn(4);
        if (near) {
            const Image& other = images_[near->image];
            image.pitch = std::max(image.pitch, std::abs(other.pitch));
            bottomUp ^= other.pitch < 0;
        }
        if (bottomUp)
            image.pitch = -image.pitch;
        image.first = near ? images_[near->image].at(near->x, near->y) + beside - image.at(x, y)
                           : end_ + input.number(0, 20) - image.low();
        return {Region::onImage, place(image), x, y, width_, height_};
    }

    // Makes room for an image and returns its index.
    std::size_t place(const Image& image)
    {
        begin_ = std::min(begin_, image.low());
        end_ = std::max(end_, image.high());
        images_.push_back(image);
        return images_.size() - 1;
    }

    Regions kind_;
    int width_, height_;
    std::ptrdiff_t begin_ = 0, end_;
    std::vector<Image> images_;
    std::vector<Region> regions_;
};
