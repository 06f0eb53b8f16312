// ImgGetProfilePeaks and ImgProfileDerivative.
#include "zkit/img/profile.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/numbers.h"

#include <algorithm>
#include <cstdint>
#include <span>

using namespace zkit;

namespace {

// Wraps.
std::int32_t negated(std::int32_t value) { return static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(value)); }

// A run of samples on one side of a threshold, as far as it has been seen.
class Run {
public:
    enum Side { none, peak, valley };

    Run(Side side, unsigned int start, unsigned int threshold) : side_(side), start_(start), threshold_(threshold) {}

    Side side() const { return side_; }

    void add(unsigned int sample)
    {
        const std::uint32_t excess = sample - threshold_;
        const auto signedExcess = static_cast<std::int32_t>(excess);
        area_ += excess;
        amplitude_ = side_ == peak ? std::max(amplitude_, signedExcess) : std::min(amplitude_, signedExcess);
        partialSums_ += static_cast<std::int32_t>(area_);
    }

    // Whether a run that has ended is taken; one at the begin of the profile is not.
    bool counts(unsigned int minAmplitude, unsigned int minArea) const
    {
        const auto area = static_cast<std::int32_t>(area_);
        return side_ != none && start_ != 0 &&
               (side_ == peak ? amplitude_ : negated(amplitude_)) >= static_cast<std::int32_t>(minAmplitude) &&
               (side_ == peak ? area : negated(area)) >= static_cast<std::int32_t>(minArea);
    }

    ZPeak until(unsigned int end) const
    {
        const auto area = static_cast<std::int32_t>(area_);
        const double last = end;
        const double center = area == 0 ? (last + start_ - 1) * 0.5
                                        : last - static_cast<double>(partialSums_) / static_cast<double>(area);
        return {start_, end - start_, static_cast<float>(center), amplitude_, area};
    }

private:
    Side side_;
    unsigned int start_, threshold_;
    std::uint32_t area_ = 0;
    std::int32_t amplitude_ = 0;
    std::int64_t partialSums_ = 0;  // the sum of the areas after each sample
};

}  // namespace

void ImgGetProfilePeaks(ZBW8Vector* profile, ZPeaksVector* peaks, unsigned int low, unsigned int high,
                        unsigned int minAmplitude, unsigned int minArea)
{
    const CallFrame frame("ImgGetProfilePeaks");
    if (frame.clear() && require(low <= high, Z_ERROR_INCONSISTENT_ARGUMENTS) &&
        require(profile && peaks, Z_ERROR_VECTOR_EMPTY)) {
        peaks->Empty();
        Run run(Run::none, 0, 0);
        for (unsigned int i = 0; i < profile->GetNumElements(); ++i) {
            const unsigned int sample = profile->GetDataPtr()[i];
            const Run::Side side = sample > high ? Run::peak : sample < low ? Run::valley : Run::none;
            if (side != run.side()) {
                if (run.counts(minAmplitude, minArea)) {
                    peaks->AddElement(run.until(i));
                    if (!frame.clear())
                        break;
                }
                run = Run(side, i, side == Run::peak ? high : low);
            }
            if (side != Run::none)
                run.add(sample);
        }
    }
    frame.finish();
}

void ImgProfileDerivative(ZBW8Vector* src, ZBW8Vector* dst)
{
    const CallFrame frame("ImgProfileDerivative");
    if (frame.clear() && require(src && dst, Z_ERROR_VECTOR_EMPTY)) {
        const unsigned int count = src->GetNumElements();
        dst->SetNumElements(count);
        if (count > 0 && dst->GetNumElements() == count) {
            const std::span samples(src->GetDataPtr(), count), slopes(dst->GetDataPtr(), count);
            int before = samples[0], here = samples[0];
            for (std::size_t i = 0; i + 1 < count; ++i) {
                const int after = samples[i + 1];
                slopes[i] = i == 0 ? clipped(after - here + 128) : static_cast<ZBW8>(((after - before) >> 1) + 128);
                before = here;
                here = after;
            }
            slopes[count - 1] = clipped(here - before + 128);
        }
    }
    frame.finish();
}
