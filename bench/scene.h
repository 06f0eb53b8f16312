// The images that operations are measured on: uneven light, parts on a background, sensor noise.
#pragma once

#include "zkit/core.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace bench {

struct Size {
    const char* name;
    int width;
    int height;

    double pixels() const { return double(width) * height; }
};

/// 509 has rows that no vector divides, 512 stays in the second-level cache, 12M is a camera frame.
inline constexpr Size sizes[] = {{"509", 509, 509}, {"512", 512, 512}, {"12M", 4096, 3072}};

/// The images of one size, drawn when first asked for and always the same. No byte of grey, colour and their references
/// is 0, so that they may divide.
///
/// A camera frame comes with cold caches. Of every image larger than the second-level cache there are therefore so many
/// copies in turn that the last-level cache has forgotten one when its turn comes again.
class Scene {
public:
    explicit Scene(const Size& size) : size_(size) {}

    const Size& size() const { return size_; }

    /// Turns to the next copies.
    void next() { ++turn_; }

    ZImage<ZBW8>* grey();
    ZImage<ZBW8>* greyReference();  ///< the same parts with other noise
    ZImage<ZBW8>* dark();           ///< the noise without light, darker than every other image
    ZImage<ZBW8>* mask();           ///< 255 where grey() is bright, else 0
    ZImage<ZBW8>* comb();           ///< a single object, nearly all of whose pixels are boundary
    ZImage<ZBW1>* bits();           ///< mask() with a bit a pixel
    ZImage<ZBW1>* bitsResult();
    ZImage<ZBW8>* greyResult();
    ZImage<ZBW16>* greySum();  ///< the sum of `summedImages` references
    ZImage<ZBW16>* grey16Result();
    ZImage<ZC24>* color();
    ZImage<ZC24>* colorReference();
    ZImage<ZC24>* colorResult();

    static constexpr unsigned int summedImages = 16;

private:
    template <class T>
    using Ring = std::vector<std::unique_ptr<ZImage<T>>>;

    template <class T, class Draw>
    ZImage<T>* current(Ring<T>& ring, Draw draw);

    Size size_;
    std::size_t turn_ = 0;
    Ring<ZBW8> grey_, greyReference_, dark_, mask_, comb_, greyResult_;
    Ring<ZBW1> bits_, bitsResult_;
    Ring<ZBW16> greySum_, grey16Result_;
    Ring<ZC24> color_, colorReference_, colorResult_;
};

}  // namespace bench
