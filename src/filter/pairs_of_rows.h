// What convolutions in integers read: pairs of neighbouring rows, an entry of two pixels for every column.
#pragma once

#include "filter/fixed_convolution_workers.h"
#include "filter/work_rows.h"
#include "simd/choice.h"

namespace zkit {

// The pairs around two rows of results, for a kernel of `size` rows and columns. Each pair is made once.
class PairsOfRows {
public:
    PairsOfRows(int size, int step, std::ptrdiff_t width)
        : half_(size / 2), pairs_(size / 2 + 1), beside_(std::ptrdiff_t{half_} * step), step_(step), width_(width)
    {
    }

    // Raises 1303 and returns false when there is no memory. Beside the rows lie entries of `outside`.
    bool make(std::uint32_t outside) { return entries_.make(pairs_, beside_, width_, beside_, outside); }

    // Goes on to rows y and y + 1 of the results, y + 2 next: sourceRow(y) finds rows, complete(entries) may change
    // what lies beside those of a pair.
    template <class SourceRow, class Complete>
    void prepare(std::ptrdiff_t y, const SourceRow& sourceRow, const Complete& complete)
    {
        for (; made_ < y / 2 + pairs_; ++made_) {
            std::uint32_t* const entries = entries_.row(made_ % pairs_);
            const std::ptrdiff_t upper = 2 * made_ - half_;
            workers<FixedConvolutionWorkers>().pair(sourceRow(upper), sourceRow(upper + 1), entries, width_);
            complete(entries);
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

    // Repeats the nearest entry of each component beside a row.
    void repeatEnds(std::uint32_t* entries) const
    {
        for (std::ptrdiff_t x = 0; x < beside_; ++x) {
            entries[-1 - x] = entries[step_ - 1 - x % step_];
            entries[width_ + x] = entries[width_ - step_ + x % step_];
        }
    }

private:
    static constexpr int most = (FixedKernel::largest + 1) / 2;

    int half_, pairs_;
    std::ptrdiff_t beside_, step_, width_, made_ = 0;
    WorkRows<std::uint32_t> entries_;
    const std::uint32_t *around_[most], *from_[most];
};

}  // namespace zkit
