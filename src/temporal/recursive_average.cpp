// ImgSetRecursiveAverageLUT and ImgRecursiveAverage.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/numbers.h"
#include "frame/walk.h"
#include "simd/choice.h"
#include "temporal/recursive_average_workers.h"
#include "zkit/img/temporal.h"

#include <cmath>
#include <cstring>

using namespace zkit;

namespace {

constexpr int largest = 4095;  // difference

// e^-x for x >= 0, of additions, multiplications and divisions alone: the exponential functions of C libraries differ
// in the last bit, which might show after a truncation.
double decay(double x)
{
    if (x > 750)
        return 0;
    int doublings = 0;
    while (x > 0.25) {
        x /= 2;
        ++doublings;
    }
    double sum = 1;
    for (int k = 14; k > 0; --k)
        sum = 1 - x / k * sum;
    for (; doublings > 0; --doublings)
        sum *= sum;
    return sum;
}

void setBoth(ZBW16* table, int difference, double correction)
{
    const auto entry = static_cast<ZBW16>(truncated(correction));
    table[largest + difference] = entry;
    table[largest - difference] = static_cast<ZBW16>(-entry);
}

void fillLinear(ZBW16* table, double square)
{
    const double gain = 2 / (square + 1);
    double correction = 0.5;
    for (int i = 0; i <= largest; ++i, correction += gain)
        setBoth(table, i, correction);
}

void fillBent(ZBW16* table, double square, float width)
{
    const double c = std::abs(16 * width), m = c * (1 - square) / (1 + square), ratio = decay(2 / c);
    double u = 1;
    for (int i = 0; i <= largest; ++i, u *= ratio)
        setBoth(table, i, i + m * (1 - u) / (1 + u));
}

// Raises 1303 and returns false when there is no memory to keep overlapping regions apart.
bool follow(ZROI<ZBW8>* src, ZROI<ZBW16>* state, ZROI<ZBW8>* dst, const ZBW16* table)
{
    PointSource from[] = {PointSource(src), PointSource(state)};
    const Target states = target(state);
    Target to = target(dst);
    Stores stores{};
    if (!(from[0].separate.forPoints(from[0].plane, 1, states, 2) &&
          preparePoints(from, to, 1, Joining::allowed, stores)))
        return false;
    const auto row = workers<RecursiveAverageWorkers>().row;
    for (std::ptrdiff_t y = 0; y < to.height; ++y)
        row(from[0].row(y), states.data + y * states.pitch, to.data + y * to.pitch, to.width, table, stores);
    if (stores == Stores::streamed)
        endStreaming();
    return true;
}

// The same where dst shares memory with the state.
bool followApart(ZROI<ZBW8>* src, ZROI<ZBW16>* state, ZROI<ZBW8>* dst, const ZBW16* table)
{
    ZImage<ZBW8> apart(dst->GetWidth(), dst->GetHeight());
    return apart.GetPixelPtr(0, 0) && follow(src, state, &apart, table) &&
           pointRows(
               dst,
               [](auto in, auto out, auto count, Stores) { std::memcpy(out, in, static_cast<std::size_t>(count)); },
               &apart);
}

bool equalSizes(const ZGenericROI* region, const ZGenericROI* other)
{
    return region->GetWidth() == other->GetWidth() && region->GetHeight() == other->GetHeight();
}

}  // namespace

void ImgSetRecursiveAverageLUT(ZBW16Vector* lut, float reduction, float width)
{
    const CallFrame frame("ImgSetRecursiveAverageLUT");
    if (frame.clear() && require(lut, Z_ERROR_VECTOR_EMPTY)) {
        lut->SetNumElements(2 * largest + 1);
        if (lut->GetNumElements() == 2 * largest + 1) {
            const double square = static_cast<double>(reduction) * reduction;
            if (width == 0)
                fillLinear(lut->GetDataPtr(), square);
            else
                fillBent(lut->GetDataPtr(), square, width);
        }
    }
    frame.finish();
}

void ImgRecursiveAverage(ZROI<ZBW8>* src, ZROI<ZBW16>* state, ZROI<ZBW8>* dst, ZBW16Vector* lut)
{
    const CallFrame frame("ImgRecursiveAverage");
    if (frame.clear() && hasPixels(src) && hasPixels(state) && hasPixels(dst) &&
        require(equalSizes(dst, src) && equalSizes(state, src), Z_ERROR_BAD_IMAGE_SIZE) && placed(src) &&
        placed(state) && placed(dst) && require(lut, Z_ERROR_VECTOR_EMPTY) &&
        require(lut->GetNumElements() == 2 * largest + 1, Z_ERROR_VECTOR_ELEMENT_COUNT)) {
        const bool shared = overlap(bytes(source(state), 2), target(dst));
        static_cast<void>((shared ? followApart : follow)(src, state, dst, lut->GetDataPtr()));
    }
    frame.finish();
}
