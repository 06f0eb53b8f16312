// ImgBinaryMoments, ImgWeighedMoments, ImgGravityCenter.
#include "analysis/moments_workers.h"
#include "frame/accumulate.h"
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "frame/planes.h"
#include "simd/choice.h"
#include "zkit/img/analysis.h"

#include <functional>

using namespace zkit;

namespace {

// Calls use(y, moments) for every row, with weight 1 for the pixels from the threshold on.
template <class Use>
void binaryRows(ZROI<ZBW8>* src, unsigned int threshold, Use use)
{
    if (threshold > 255)
        return;
    const Source plane = source(src);
    const auto moments = workers<MomentsWorkers>().binary;
    for (std::ptrdiff_t y = 0; y < plane.height; ++y)
        use(static_cast<std::uint32_t>(y),
            moments(plane.data + y * plane.pitch, plane.width, static_cast<std::uint8_t>(threshold)));
}

// The same with the grey levels as weights.
template <class Use>
void weighedRows(ZROI<ZBW8>* src, Use use)
{
    const Source plane = source(src);
    const auto moments = workers<MomentsWorkers>().weighed;
    for (std::ptrdiff_t y = 0; y < plane.height; ++y)
        use(static_cast<std::uint32_t>(y), moments(plane.data + y * plane.pitch, plane.width));
}

struct FirstOrder {
    float m00 = 0, m10 = 0, m01 = 0;

    void operator()(std::uint32_t y, RowMoments row)
    {
        accumulate(m00, row.w);
        accumulate(m10, row.wx);
        accumulate(m01, row.w * y);
    }
};

struct SecondOrder : FirstOrder {
    float m20 = 0, m02 = 0, differences = 0;  // the last: sum of w (x - y)^2

    void operator()(std::uint32_t y, RowMoments row)
    {
        FirstOrder::operator()(y, row);
        accumulate(m20, row.wxx);
        accumulate(m02, row.w * y * y);
        accumulate(differences, row.wxx - 2 * y * row.wx + row.w * y * y);
    }

    float m11() const { return static_cast<float>((static_cast<double>(m20) + m02 - differences) * 0.5); }
};

// The frame of all four: a pending error is not asked for and the name is recorded always, both intended.
// walk(moments) visits the rows.
template <class Moments, class Walk>
Moments measure(const char* name, ZROI<ZBW8>* src, Walk walk)
{
    const CallFrame frame(name);
    Moments moments;
    if (placed(src))
        walk(moments);
    return frame.trace(moments);
}

void store(const FirstOrder& moments, float& m00, float& m10, float& m01)
{
    m00 = moments.m00;
    m10 = moments.m10;
    m01 = moments.m01;
}

void store(const SecondOrder& moments, float& m00, float& m10, float& m01, float& m20, float& m11, float& m02)
{
    store(moments, m00, m10, m01);
    m20 = moments.m20;
    m11 = moments.m11();
    m02 = moments.m02;
}

}  // namespace

void ImgBinaryMoments(ZROI<ZBW8>* src, unsigned int threshold, float& m00, float& m10, float& m01)
{
    const auto walk = [=](auto& moments) { binaryRows(src, threshold, std::ref(moments)); };
    store(measure<FirstOrder>("ImgBinaryMoments (first order)", src, walk), m00, m10, m01);
}

void ImgBinaryMoments(ZROI<ZBW8>* src, unsigned int threshold, float& m00, float& m10, float& m01, float& m20,
                      float& m11, float& m02)
{
    const auto walk = [=](auto& moments) { binaryRows(src, threshold, std::ref(moments)); };
    store(measure<SecondOrder>("ImgBinaryMoments (second order)", src, walk), m00, m10, m01, m20, m11, m02);
}

void ImgWeighedMoments(ZROI<ZBW8>* src, float& m00, float& m10, float& m01)
{
    const auto walk = [=](auto& moments) { weighedRows(src, std::ref(moments)); };
    store(measure<FirstOrder>("ImgWeighedMoments (first order)", src, walk), m00, m10, m01);
}

void ImgWeighedMoments(ZROI<ZBW8>* src, float& m00, float& m10, float& m01, float& m20, float& m11, float& m02)
{
    const auto walk = [=](auto& moments) { weighedRows(src, std::ref(moments)); };
    store(measure<SecondOrder>("ImgWeighedMoments (second order)", src, walk), m00, m10, m01, m20, m11, m02);
}

short ImgGravityCenter(ZROI<ZBW8>* src, unsigned int threshold, float& x, float& y)
{
    const CallFrame frame("ImgGravityCenter");
    if (!(frame.clear() && placed(src)))
        return frame.trace();
    // The means of the counts per column and per row. Their sums are formed modulo 2^32, so that they can be had from
    // the moments of the rows without the counts themselves.
    std::uint32_t count = 0, columns = 0, rows = 0;
    binaryRows(src, threshold, [&](std::uint32_t row, RowMoments moments) {
        count += moments.w;
        columns += moments.wx;
        rows += moments.w * row;
    });
    const auto mean = [count](std::uint32_t sum) {
        return count == 0 ? 0.0F : static_cast<float>(sum / static_cast<double>(static_cast<std::int32_t>(count)));
    };
    x = mean(columns);
    y = mean(rows);
    return frame.finish();
}
