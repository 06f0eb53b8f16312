// What every operation does with regions that it cannot use and with an error that is pending. A row per operation.
#include "support/errors.h"
#include "support/images.h"
#include "zkit/img.h"

#include <functional>

namespace {

// Calls an operation on a region of its pixel type; where it takes two, on the same one twice.
template <class T>
struct Row {
    const char* name;  // the last one of the trail
    std::function<void(ZROI<T>*)> call;
};

unsigned char minimum, maximum;
float f0, f1, f2, f3, f4, f5, f6, f7, f8;
int below, between, above;
ZVector table(3);

const std::vector<Row<ZBW8>> greyOperations = {
    {"ImgPixelMin", [](auto r) { ImgPixelMin(r, minimum); }},
    {"ImgPixelMax", [](auto r) { ImgPixelMax(r, maximum); }},
    {"ImgPixelAverage (BW8)", [](auto r) { ImgPixelAverage(r, f0); }},
    {"ImgPixelStat", [](auto r) { ImgPixelStat(r, minimum, maximum, f0); }},
    {"ImgPixelVariance (BW8)", [](auto r) { ImgPixelVariance(r, f0, f1); }},
    {"ImgPixelStdDev", [](auto r) { ImgPixelStdDev(r, f0, f1); }},
    {"ImgPixelCount", [](auto r) { ImgPixelCount(r, 1, 2, below, between, above); }},
    {"ImgArea", [](auto r) { ImgArea(r, 1, above); }},
    {"ImgAreaDoubleThreshold", [](auto r) { ImgAreaDoubleThreshold(r, 1, 2, between); }},
    {"ImgCount (BW8)", [](auto r) { ImgCount(r, [](ZBW8&) { return 1; }); }},
    {"ImgPixelCompare (BW8)", [](auto r) { ImgPixelCompare(r, r); }},
    {"ImgGravityCenter", [](auto r) { ImgGravityCenter(r, 1, f0, f1); }},
    {"ImgFocusing (BW8)", [](auto r) { ImgFocusing(r); }},
    {"ImgSignalNoiseRatio (BW8 source and BW8 reference)",
     [](auto r) { ImgSignalNoiseRatio(r, r, IMG_REFERENCE_NOISELESS); }},
    {"ImgRmsNoise (BW8 source and BW8 reference)", [](auto r) { ImgRmsNoise(r, r, IMG_REFERENCE_NOISELESS); }},
    {"ImgLut", [](auto r) { ImgLut(r, r, &table); }},
};

const std::vector<Row<ZC24>> colourOperations = {
    {"ImgPixelAverage (C24)", [](auto r) { ImgPixelAverage(r, f0, f1, f2); }},
    {"ImgPixelVariance (C24)", [](auto r) { ImgPixelVariance(r, f0, f1, f2, f3, f4, f5, f6, f7, f8); }},
    {"ImgPixelStdDev", [](auto r) { ImgPixelStdDev(r, f0, f1, f2, f3, f4, f5, f6, f7, f8); }},
    {"ImgCount (C24)", [](auto r) { ImgCount(r, [](ZC24&) { return 1; }); }},
    {"ImgPixelCompare (C24)", [](auto r) { ImgPixelCompare(r, r); }},
    {"ImgFocusing (C24)", [](auto r) { ImgFocusing(r); }},
    {"ImgConvolLowpass3 (C24)", [](auto r) { ImgConvolLowpass3(r, r); }},
};

// Operations that run while an error is pending.
const std::vector<Row<ZBW8>> unstoppable = {
    {"ImgBinaryMoments (first order)", [](auto r) { ImgBinaryMoments(r, 1, f0, f1, f2); }},
    {"ImgBinaryMoments (second order)", [](auto r) { ImgBinaryMoments(r, 1, f0, f1, f2, f3, f4, f5); }},
    {"ImgWeighedMoments (first order)", [](auto r) { ImgWeighedMoments(r, f0, f1, f2); }},
    {"ImgWeighedMoments (second order)", [](auto r) { ImgWeighedMoments(r, f0, f1, f2, f3, f4, f5); }},
    {"ImgConvolLowpass3", [](auto r) { ImgConvolLowpass3(r, r); }},
};

class ContractTest : public OperationTest {};

template <class T>
void expectUnusableRegionsRefused(const std::vector<Row<T>>& rows)
{
    ZImage<T> image(8, 8), empty;
    ZROI<T> nowhere, outside(&image, 4, 4, 5, 4), backwards(&image, 4, 4, -1, 2);
    const std::pair<ZROI<T>*, short> regions[] = {
        {nullptr, 1400}, {&empty, 1400}, {&nowhere, 1400}, {&outside, 1401}, {&backwards, 1401}};
    for (const auto& row : rows)
        for (const auto& [region, code] : regions) {
            SCOPED_TRACE(row.name);
            row.call(region);
            const Failure failure = takeFailure();
            EXPECT_EQ(failure.code, code);
            ASSERT_FALSE(failure.trail.empty());
            EXPECT_EQ(failure.trail.back(), row.name);
        }
}

TEST_F(ContractTest, unusable_regions_are_refused)
{
    expectUnusableRegionsRefused(greyOperations);
    expectUnusableRegionsRefused(colourOperations);
    expectUnusableRegionsRefused(unstoppable);
}

template <class T>
void expectStoppedByPendingError(const std::vector<Row<T>>& rows)
{
    ZImage<T> image(8, 8);
    std::memset(image.GetPixelPtr(0, 0), 200, 8);
    const std::vector<std::uint8_t> before = bytesOf(image);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ZSetError(Z_ERROR_BAD_MODE);
        f0 = f1 = -5;
        above = between = -5;
        row.call(&image);
        EXPECT_FAILURE(1009, row.name);
        EXPECT_EQ(f0, -5);
        EXPECT_EQ(f1, -5);
        EXPECT_EQ(above, -5);
        EXPECT_EQ(between, -5);
        EXPECT_EQ(bytesOf(image), before);
    }
}

TEST_F(ContractTest, a_pending_error_stops_operations)
{
    expectStoppedByPendingError(greyOperations);
    expectStoppedByPendingError(colourOperations);
}

TEST_F(ContractTest, operations_succeed_silently)
{
    ZImage<ZBW8> grey(8, 8);
    ZImage<ZC24> colour(8, 8);
    for (const auto& row : greyOperations)
        row.call(&grey);
    for (const auto& row : colourOperations)
        row.call(&colour);
    EXPECT_FAILURE(0, "ImgPixelStdDev");  // the grey form records its name always
}

}  // namespace
