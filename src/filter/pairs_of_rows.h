// What convolutions in integers read: pairs of neighbouring rows, an entry of two pixels for every column.
#pragma once

#include "filter/fixed_convolution_workers.h"
#include "filter/work_rows.h"
#include "simd/choice.h"

#include <optional>

namespace zkit {

// The pairs around two rows of results, for a kernel of `size` rows and columns. Each pair is made once.
class PairsOfRows {
public:
    // Beside the rows lie pixels of an outside value, or else the nearest ones again.
    PairsOfRows(int size, int step, std::ptrdiff_t width, std::optional<std::uint8_t> outside)
        : half_(size / 2),
          pairs_(size / 2 + 1),
          beside_(std::ptrdiff_t{half_} * step),
          step_(step),
          width_(width),
          outside_(outside)
    {
    }

    // Raises 1303 and returns false when there is no memory.
    bool make() { return entries_.make(pairs_, beside_, width_, beside_, outside_.value_or(0) * 0x10001U); }

    // Goes on to rows y and y + 1 of the results, y + 2 next; sourceRow(y) finds rows.
    template <class SourceRow>
    void prepare(std::ptrdiff_t y, const SourceRow& sourceRow)
    {
        for (; made_ < y / 2 + pairs_; ++made_) {
            std::uint32_t* const entries = entries_.row(made_ % pairs_);
            const std::ptrdiff_t upper = 2 * made_ - half_;
            worker_.pair(sourceRow(upper), sourceRow(upper + 1), entries, width_);
            if (!outside_)
                repeatEnds(entries);
        }
        for (int p = 0; p < pairs_; ++p)
            around_[p] = entries_.row((y / 2 + p) % pairs_);
    }

    // The prepared pairs from column x on, the uppermost first.
    const std::uint32_t* const* from(std::ptrdiff_t x)
    {
        for (int p = 0; p < pairs_; ++p)
            from_[p] = around_[p] + x;
        return from_;
    }

private:
    static constexpr int most = (FixedKernel::largest + 1) / 2;

    void repeatEnds(std::uint32_t* entries) const
    {
        for (std::ptrdiff_t x = 0; x < beside_; ++x) {
            entries[-1 - x] = entries[step_ - 1 - x % step_];
            entries[width_ + x] = entries[width_ - step_ + x % step_];
        }
    }

    const FixedConvolutionWorkers& worker_ = workers<FixedConvolutionWorkers>();
    int half_, pairs_;
    std::ptrdiff_t beside_, step_, width_, made_ = 0;
    std::optional<std::uint8_t> outside_;
    WorkRows<std::uint32_t> entries_;
    const std::uint32_t *around_[most], *from_[most];
};

}  // namespace zkit
