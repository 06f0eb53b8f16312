// ZMovingAverage.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/walk.h"
#include "simd/choice.h"
#include "temporal/division.h"
#include "zkit/img/temporal.h"

#include <new>

using namespace zkit;

namespace {

// More images than any sequence needs, whose objects alone would use up the memory of a machine that promises too much.
constexpr unsigned int mostImages = 1 << 20;

// Whether the image has been made so large; it has raised its code otherwise.
bool sized(ZGenericROI& image, int width, int height)
{
    image.SetSize(width, height);
    return image.GetWidth() == width && image.GetHeight() == height;
}

bool equalSizes(const ZGenericROI* region, const ZGenericROI* other)
{
    return region->GetWidth() == other->GetWidth() && region->GetHeight() == other->GetHeight();
}

// The images of a step. `kept` is null when the newest one is in the ring already.
struct Step {
    ZROI<ZBW8>*src, *oldest, *kept, *dst;
    ZImage<ZBW16>* sum;
};

// Calls row(rows, count, stores) for every row. Raises 1303 and returns false when there is no memory to keep
// overlapping regions apart.
template <class Row>
bool eachRow(const Step& step, Row row)
{
    PointSource from[] = {PointSource(step.src), PointSource(step.oldest), PointSource(step.kept),
                          PointSource(step.sum)};
    Target to = target(step.dst);
    Stores stores{};
    if (!preparePoints(from, to, 1, Joining::allowed, stores))
        return false;
    const Target sum = target(step.sum), kept = step.kept ? target(step.kept) : Target{};
    for (std::ptrdiff_t y = 0; y < to.height; ++y)
        row(AverageRows{from[0].row(y), from[1].row(y), sum.data + y * sum.pitch, kept.data + y * kept.pitch,
                        to.data + y * to.pitch},
            to.width, stores);
    if (stores == Stores::streamed)
        endStreaming();
    return true;
}

bool start(const Step& step, unsigned int period)
{
    return eachRow(step, [=, worker = workers<MovingAverageWorkers>().first](
                             const AverageRows& rows, auto count, Stores) { worker(rows, count, period - 1); });
}

bool goOn(const Step& step, unsigned int period)
{
    return eachRow(step,
                   [division = divisionBy(period), worker = workers<MovingAverageWorkers>().later](
                       const AverageRows& rows, auto count, Stores stores) { worker(rows, count, division, stores); });
}

}  // namespace

ZMovingAverage::ZMovingAverage(unsigned int period, int width, int height, int holdsSource)
{
    SetSize(period, width, height, holdsSource);
}

ZMovingAverage::~ZMovingAverage() { delete[] Ring; }

void ZMovingAverage::clear()
{
    delete[] Ring;
    Ring = nullptr;
    Sum.SetSize(0, 0);
    Period = 0;
    Shift = Index = RingSize = HoldsSource = 0;
}

bool ZMovingAverage::allocate(int width, int height)
{
    if (RingSize > 0) {
        Ring = new (std::nothrow) ZImage<ZBW8>[static_cast<std::size_t>(RingSize)];
        if (!require(Ring != nullptr, Z_ERROR_OUT_OF_MEMORY))
            return false;
    }
    for (int i = 0; i < RingSize; ++i)
        if (!sized(Ring[i], width, height))
            return false;
    return sized(Sum, width, height);
}

void ZMovingAverage::SetSize(unsigned int period, int width, int height, int holdsSource)
{
    const CallFrame frame("ZMovingAverage::SetSize");
    if (frame.clear()) {
        clear();
        const unsigned int images = holdsSource ? period : period - 1;
        if (require(period > 0, Z_ERROR_ARGUMENT_1_OUT_OF_RANGE) &&
            require(images <= mostImages, Z_ERROR_OUT_OF_MEMORY)) {
            Period = period;
            Shift = divisionBy(period).shift;
            HoldsSource = holdsSource;
            RingSize = static_cast<int>(images);
            Index = -RingSize;
            if (!allocate(width, height))
                clear();
        }
    }
    frame.finish();
}

void ZMovingAverage::GetSize(unsigned int& period, int& width, int& height, int& holdsSource)
{
    period = Period;
    width = Sum.GetWidth();
    height = Sum.GetHeight();
    holdsSource = HoldsSource;
}

ZImage<ZBW8>* ZMovingAverage::newest() const
{
    return RingSize > 0 ? &Ring[Index >= 0 ? Index : RingSize + Index] : nullptr;
}

ZImage<ZBW8>* ZMovingAverage::oldest() const
{
    if (RingSize == 0)
        return nullptr;
    if (!HoldsSource)
        return &Ring[Index >= 1 ? Index : 0];
    return &Ring[Index < 0 || Index == RingSize - 1 ? 0 : Index + 1];
}

ZImage<ZBW8>* ZMovingAverage::GetSrcImage()
{
    const CallFrame frame("ZMovingAverage::GetSrcImage");
    if (!(frame.clear() && require(HoldsSource != 0, Z_ERROR_BAD_OPERATION)))
        return frame.trace<ZImage<ZBW8>*>(nullptr);
    return frame.finish(newest());
}

void ZMovingAverage::average(ZROI<ZBW8>* src, ZROI<ZBW8>* dst, bool holdsSource)
{
    const CallFrame frame("ZMovingAverage::Average");
    ZImage<ZBW8>*const slot = newest(), *const old = oldest();
    if (frame.clear() && require((HoldsSource != 0) == holdsSource, Z_ERROR_BAD_OPERATION) &&
        require((src || holdsSource) && dst, Z_ERROR_NO_PIXELS)) {
        ZROI<ZBW8>* const from = holdsSource ? slot : src;
        const bool ringFits = RingSize == 0 || (equalSizes(slot, &Sum) && equalSizes(old, &Sum));
        if (require(equalSizes(from, &Sum) && equalSizes(dst, &Sum) && ringFits, Z_ERROR_BAD_IMAGE_SIZE) &&
            placed(from) && placed(dst) && (RingSize == 0 || (placed(slot) && placed(old)))) {
            const Step step{from, old, holdsSource ? nullptr : slot, dst, &Sum};
            const bool done = Index == -RingSize ? start(step, Period) : goOn(step, Period);
            if (done && ++Index >= RingSize)
                Index = 0;
        }
    }
    frame.finish();
}

void ZMovingAverage::Average(ZROI<ZBW8>* src, ZROI<ZBW8>* dst) { average(src, dst, false); }

void ZMovingAverage::Average(ZROI<ZBW8>* dst) { average(nullptr, dst, true); }
