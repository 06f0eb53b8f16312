// Measuring large regions piece by piece. The library sums in 32 bits and in floats, which a whole camera picture
// overflows; the sums of a piece are whole numbers below 2^24, which both hold exactly.
#pragma once

#include "measure/measure.h"

#include <algorithm>

namespace zkit::tool {

/// The side of a piece. The greatest sum is that of 255 y^2 (or, for deviations, of 255^2) over its pixels.
constexpr int tileSide = 16;
static_assert(255 * 255 * tileSide * tileSide < 1 << 24);

/// Calls use(tile, x, y) for pieces that make up the region; (x, y) is the piece's corner within the region.
template <class T, class Use>
void forEachTile(ZImage<T>& image, const Rectangle& region, Use use)
{
    for (int y = 0; y < region.height; y += tileSide)
        for (int x = 0; x < region.width; x += tileSide) {
            ZROI<T> tile(&image, region.x + x, region.y + y, std::min(tileSide, region.width - x),
                         std::min(tileSide, region.height - y));
            use(tile, x, y);
        }
}

/// Means and variances of several values at a time, put together from those of pieces.
template <int count>
class PooledStatistics {
public:
    /// Adds `pixels` pixels with these means and (co)variances.
    void add(double pixels, const double (&mean)[count], const double (&covariance)[count][count])
    {
        const double total = pixels_ + pixels;
        double step[count];
        for (int i = 0; i < count; ++i)
            step[i] = mean[i] - mean_[i];
        for (int i = 0; i < count; ++i) {
            mean_[i] += step[i] * pixels / total;
            for (int j = 0; j < count; ++j)
                products_[i][j] += covariance[i][j] * pixels + step[i] * step[j] * pixels_ * pixels / total;
        }
        pixels_ = total;
    }

    double mean(int i) const { return mean_[i]; }
    double covariance(int i, int j) const { return products_[i][j] / pixels_; }

private:
    double pixels_ = 0;
    double mean_[count] = {};
    double products_[count][count] = {};  // sums of the products of the distances from the means
};

}  // namespace zkit::tool
