// What every operation does with regions that it cannot use and with an error that is pending. A row per operation.
#include "support/errors.h"
#include "support/images.h"
#include "zkit/img.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace {

// Calls an operation on a region of its pixel type; where it takes two, on the same one twice.
template <class T>
struct Row {
    const char* name;  // the last one of the trail
    std::function<void(ZROI<T>*)> call;
};

// Where the operations put their results.
struct Results {
    unsigned char minimum, maximum;
    int below, between, above;
    float f0, f1, f2, f3, f4, f5, f6, f7, f8;
};

Results results;
Results& r = results;
ZVector table(3), untyped;
ZBW32Vector sums;
ZBW8Vector entries;
ZPathVector positions;
ZBW8PathVector greyPath;
ZC24PathVector colourPath;
ZBW16Vector wideEntries;
ZC24Vector colours;
ZPeaksVector peaks;
ZKernel kernel(KERNEL_LOWPASS_1);

// A table for averages.
struct Corrections : ZBW16Vector {
    Corrections() { SetNumElements(8191); }
};
Corrections corrections;

// 256 empty bins.
struct NoPixels : ZBW8HistogramVector {
    NoPixels() : ZBW8HistogramVector(256)
    {
        while (GetNumElements() < 256)
            AddElement(0);
    }
};
NoPixels histogram;

// A usable region of another pixel type, as large as the given one.
template <class T>
ZROI<T>* beside(const ZGenericROI* region)
{
    static ZImage<T> image(8, 8);
    static ZROI<T> companion(&image, 0, 0, 8, 8);
    companion.SetPlacement(0, 0, region ? region->GetWidth() : 8, region ? region->GetHeight() : 8);
    return &companion;
}

// The whole region is the object.
template <class Path>
void follow(ZROI<ZBW8>* region, Path* path)
{
    ImgContour(region, CONTOUR_CLOCKWISE_ALONG_EDGE, 0, 0, CONTOUR_THRESHOLD_BELOW, 255, CONNEXITY_8, path);
}

// A map as large as the given region.
template <class T>
ZImage<T>* mapFor(const ZGenericROI* region)
{
    static ZImage<T> map(8, 8);
    map.SetPlacement(0, 0, region ? region->GetWidth() : 8, region ? region->GetHeight() : 8);
    return &map;
}

const std::vector<Row<ZBW8>> greyOperations = {
    {"ImgPixelMin", [](auto roi) { ImgPixelMin(roi, r.minimum); }},
    {"ImgPixelMax", [](auto roi) { ImgPixelMax(roi, r.maximum); }},
    {"ImgPixelAverage (BW8)", [](auto roi) { ImgPixelAverage(roi, r.f0); }},
    {"ImgPixelStat", [](auto roi) { ImgPixelStat(roi, r.minimum, r.maximum, r.f0); }},
    {"ImgPixelVariance (BW8)", [](auto roi) { ImgPixelVariance(roi, r.f0, r.f1); }},
    {"ImgPixelStdDev", [](auto roi) { ImgPixelStdDev(roi, r.f0, r.f1); }},
    {"ImgPixelCount", [](auto roi) { ImgPixelCount(roi, 1, 2, r.below, r.between, r.above); }},
    {"ImgArea", [](auto roi) { ImgArea(roi, 1, r.above); }},
    {"ImgAreaDoubleThreshold", [](auto roi) { ImgAreaDoubleThreshold(roi, 1, 2, r.between); }},
    {"ImgCount (BW8)", [](auto roi) { ImgCount(roi, [](ZBW8&) { return 1; }); }},
    {"ImgPixelCompare (BW8)", [](auto roi) { ImgPixelCompare(roi, roi); }},
    {"ImgGravityCenter", [](auto roi) { ImgGravityCenter(roi, 1, r.f0, r.f1); }},
    {"ImgFocusing (BW8)", [](auto roi) { ImgFocusing(roi); }},
    {"ImgSignalNoiseRatio (BW8 source and BW8 reference)",
     [](auto roi) { ImgSignalNoiseRatio(roi, roi, IMG_REFERENCE_NOISELESS); }},
    {"ImgRmsNoise (BW8 source and BW8 reference)", [](auto roi) { ImgRmsNoise(roi, roi, IMG_REFERENCE_NOISELESS); }},
    {"ImgLut", [](auto roi) { ImgLut(roi, roi, &table); }},
    {"ImgNormalize", [](auto roi) { ImgNormalize(roi, roi, 100, 10); }},
    {"ImgGainOffset", [](auto roi) { ImgGainOffset(roi, roi, 2, 1); }},
    {"ImgTransform",
     [](auto roi) {
         ImgTransform(
             roi, roi, [](unsigned char) -> unsigned char { return 1; }, 0);
     }},
    {"ImgUniformize (light background)", [](auto roi) { ImgUniformize(roi, 1, roi, roi); }},
    {"ImgUniformize (light/dark background)", [](auto roi) { ImgUniformize(roi, 1, roi, 0, roi, roi); }},
    {"ImgThreshold", [](auto roi) { ImgThreshold(roi, roi, 9, 0, 255, 0); }},
    {"ImgThreshold (BW8 to BW1)", [](auto roi) { ImgThreshold(roi, beside<ZBW1>(roi), 9); }},
    {"ImgThreshold (BW1 to BW8)", [](auto roi) { ImgThreshold(beside<ZBW1>(roi), roi, 0, 255); }},
    {"ImgDoubleThreshold (BW8 to BW8)", [](auto roi) { ImgDoubleThreshold(roi, roi, 1, 2, 3, 4, 5); }},
    {"ImgHistogram", [](auto roi) { ImgAutoThreshold(roi, IMG_THRESHOLD_ISODATA, 0); }},  // it has no name of its own
    {"ImgAutoAdaptiveThreshold", [](auto roi) { ImgAutoAdaptiveThreshold(roi, roi, IMG_THRESHOLD_ISODATA, 4, 0); }},
    {"ImgOper1c2", [](auto roi) { ImgOper1c2(ARITH_LOGIC_ADD, roi, 1, roi); }},
    {"ImgOper123", [](auto roi) { ImgOper123(ARITH_LOGIC_ADD, roi, roi, roi); }},
    {"ImgOper (BW8 Const to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_COPY, 1, roi); }},
    {"ImgOper (BW8 Image to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_INVERT, roi, roi); }},
    {"ImgOper (BW8 Const, Image to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_ADD, 1, roi, roi); }},
    {"ImgOper (BW8 Image, Const to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_ADD, roi, 1, roi); }},
    {"ImgOper (BW8 Image, Image to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_ADD, roi, roi, roi); }},
    {"ImgOper (BW8 Image to C24 Image)", [](auto roi) { ImgOper(ARITH_LOGIC_COPY, roi, beside<ZC24>(roi)); }},
    {"ImgOper (BW8 Image and BW8 Image to BW16 Image)",
     [](auto roi) { ImgOper(ARITH_LOGIC_ADD, roi, roi, beside<ZBW16>(roi)); }},
    {"ImgOper (BW16 Image and BW8 Image to BW16 IMage)",
     [](auto roi) { ImgOper(ARITH_LOGIC_ADD, beside<ZBW16>(roi), roi, beside<ZBW16>(roi)); }},
    {"ImgConvert (BW8 to BW16)", [](auto roi) { ImgConvert(roi, beside<ZBW16>(roi), 0); }},
    {"ImgConvert (BW8 to C24)", [](auto roi) { ImgConvert(roi, beside<ZC24>(roi)); }},
    {"ImgConvert (BW16 to BW8)", [](auto roi) { ImgConvert(beside<ZBW16>(roi), roi, 0); }},
    {"ImgConvertTo422 (BW8 to BW16)", [](auto roi) { ImgConvertTo422(roi, beside<ZBW16>(roi)); }},
    {"ImgScaleRotate", [](auto roi) { ImgScaleRotate(roi, 0, 0, 0, 0, 1, 1, 0, roi, 0); }},
    {"ImgScaleRotate", [](auto roi) { ImgRegister(roi, roi, 0, 0, 0, 0, 0); }},
    {"ImgScaleRotate", [](auto roi) { ImgRegister(roi, roi, 0, 0, 1, 1, 0, 0, 1, 1, 0, 1); }},
    {"ImgConvolRoberts", [](auto roi) { ImgConvolRoberts(roi, roi); }},
    {"ImgShrink", [](auto roi) { ImgShrink(roi, roi); }},
    {"ImgConvolKernel", [](auto roi) { ImgConvolKernel(roi, roi, &kernel); }},
    {"ImgVerticalMirror (gray-level)", [](auto roi) { ImgVerticalMirror(roi); }},
    {"ImgHorizontalMirror (gray-level)", [](auto roi) { ImgHorizontalMirror(roi); }},
    {"ImgErode", [](auto roi) { ImgErode(roi, roi, 2, 255); }},
    {"ImgDilate", [](auto roi) { ImgDilate(roi, roi, 2, 0); }},
    {"ImgOpen", [](auto roi) { ImgOpen(roi, roi, 2, 255, 0); }},
    {"ImgClose", [](auto roi) { ImgClose(roi, roi, 2, 0, 255); }},
    {"ImgWhiteTopHat", [](auto roi) { ImgWhiteTopHat(roi, beside<ZBW8>(roi), 2, 255, 0); }},
    {"ImgBlackTopHat", [](auto roi) { ImgBlackTopHat(roi, beside<ZBW8>(roi), 2, 0, 255); }},
    {"ImgMedian", [](auto roi) { ImgMedian(roi, roi, 0); }},
    {"ImgMedian", [](auto roi) { ImgMedian(roi, roi); }},
    {"ImgWarp", [](auto roi) { ImgWarp(roi, roi, mapFor<ZBW16>(roi), mapFor<ZBW16>(roi), 0, 0); }},
    {"ImgWarp", [](auto roi) { ImgWarp(roi, roi, mapFor<ZBW32>(roi)); }},
    {"ImgSwapFrames (ZBW8)", [](auto roi) { ImgSwapFrames(roi, roi); }},
    {"ImgRealignFrame (ZBW8)", [](auto roi) { ImgRealignFrame(roi, roi, 1, 0); }},
    {"ImgRebuildFrame (ZBW8)", [](auto roi) { ImgRebuildFrame(roi, roi, 0); }},
    {"ImgMatchFrames (ZBW8)", [](auto roi) { ImgMatchFrames(roi, 0, -1, 1, r.between); }},
    {"ImgRecursiveAverage", [](auto roi) { ImgRecursiveAverage(roi, beside<ZBW16>(roi), roi, &corrections); }},
    {"ImgHistogram", [](auto roi) { ImgHistogram(roi, &histogram); }},
    {"ImgHistogram (ZVector)", [](auto roi) { ImgHistogram(roi, &untyped); }},
    {"ImgEqualize", [](auto roi) { ImgEqualize(roi, roi); }},
    {"ImgProjectOnARow (ZBW32Vector)", [](auto roi) { ImgProjectOnARow(roi, &sums); }},
    {"ImgProjectOnAColumn (ZBW32Vector)", [](auto roi) { ImgProjectOnAColumn(roi, &sums); }},
    {"ImgProjectOnARow (ZVector)", [](auto roi) { ImgProjectOnARow(roi, &untyped); }},
    {"ImgProjectOnAColumn", [](auto roi) { ImgProjectOnAColumn(roi, &untyped); }},
    {"ImgContour (ZPathVector)", [](auto roi) { follow(roi, &positions); }},
    {"ImgContour (ZBW8PathVector)", [](auto roi) { follow(roi, &greyPath); }},
    {"ImgImageToPath (BW8)", [](auto roi) { ImgImageToPath(roi, &greyPath); }},
    {"ImgPathToImage (BW8)", [](auto roi) { ImgPathToImage(roi, &greyPath); }},
    {"ImgImageToLineSegment (BW8)", [](auto roi) { ImgImageToLineSegment(roi, &entries, 0, 0, 7, 7); }},
    {"ImgLineSegmentToImage (BW8, vector)", [](auto roi) { ImgLineSegmentToImage(roi, &entries, 0, 0, 7, 7); }},
    {"ImgLineSegmentToImage (BW8, const)",
     [](auto roi) { ImgLineSegmentToImage(roi, static_cast<ZBW8>(1), 0, 0, 7, 7); }},
};

const std::vector<Row<ZBW16>> wideOperations = {
    {"ImgHistogram (ZBW16)", [](auto roi) { ImgHistogram(roi, &histogram, 7, 8, 1); }},
    {"ImgImageToLineSegment (BW16)", [](auto roi) { ImgImageToLineSegment(roi, &wideEntries, 0, 0, 7, 7); }},
};

// Whose vector is too small for the outline of a whole region.
const std::vector<Row<ZBW8>> incomplete = {
    {"ImgContour (ZVector)", [](auto roi) { follow(roi, &untyped); }},
};

// Operations on vectors alone.
const std::vector<Row<ZBW8>> vectorOperations = {
    {"ImgSetupEqualize (ZBW8HistogramVector)", [](auto) { ImgSetupEqualize(&histogram, &entries); }},
    {"ImgSetupEqualize (ZVector)", [](auto) { ImgSetupEqualize(&untyped, &table); }},
    {"ImgAnalyseHistogram", [](auto) { ImgAnalyseHistogram(&histogram, IMG_HISTOGRAM_PIXEL_COUNT, 0, 255); }},
    {"ImgAnalyseHistogram", [](auto) { ImgAnalyseHistogram(&untyped, 0, 255, 6, r.between); }},
    {"ImgAnalyseHistogram", [](auto) { ImgAnalyseHistogram(&untyped, 0, 255, 7, r.f0); }},
    {"ImgHistogramThreshold",
     [threshold = 9U](auto) mutable { ImgHistogramThreshold(&histogram, threshold, r.f0, r.f1, 0, 0, 255); }},
    {"ImgSetRecursiveAverageLUT", [](auto) { ImgSetRecursiveAverageLUT(&corrections, 1, 0); }},
    {"ImgSetCircleWarp",
     [](auto roi) { ImgSetCircleWarp(0, 0, 8, 1, 1, 8, 0, 0, mapFor<ZBW16>(roi), mapFor<ZBW16>(roi)); }},
    {"ImgIsodataThreshold (ZVector)", [](auto) { ImgIsodataThreshold(&untyped, 0, 255); }},
    {"ImgGetProfilePeaks", [](auto) { ImgGetProfilePeaks(&entries, &peaks, 0, 0, 0, 0); }},
    {"ImgProfileDerivative", [](auto) { ImgProfileDerivative(&entries, &entries); }},
};

const std::vector<Row<ZC24>> colourOperations = {
    {"ImgPixelAverage (C24)", [](auto roi) { ImgPixelAverage(roi, r.f0, r.f1, r.f2); }},
    {"ImgPixelVariance (C24)",
     [](auto roi) { ImgPixelVariance(roi, r.f0, r.f1, r.f2, r.f3, r.f4, r.f5, r.f6, r.f7, r.f8); }},
    {"ImgPixelStdDev", [](auto roi) { ImgPixelStdDev(roi, r.f0, r.f1, r.f2, r.f3, r.f4, r.f5, r.f6, r.f7, r.f8); }},
    {"ImgCount (C24)", [](auto roi) { ImgCount(roi, [](ZC24&) { return 1; }); }},
    {"ImgPixelCompare (C24)", [](auto roi) { ImgPixelCompare(roi, roi); }},
    {"ImgFocusing (C24)", [](auto roi) { ImgFocusing(roi); }},
    {"ImgGainOffset",
     [](auto roi) {
         ImgGainOffset(roi, roi, {2, 2, 2}, {1, 1, 1});
     }},
    {"ImgOper (C24 Const to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_COPY, ZC24{}, roi); }},
    {"ImgOper (C24 Image to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_INVERT, roi, roi); }},
    {"ImgOper (C24 Const, Image to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_ADD, ZC24{}, roi, roi); }},
    {"ImgOper (C24 Image, Const to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_ADD, roi, ZC24{}, roi); }},
    {"ImgOper (C24 Image, Image to Image)", [](auto roi) { ImgOper(ARITH_LOGIC_ADD, roi, roi, roi); }},
    {"ImgConvert (C24 to BW8)", [](auto roi) { ImgConvert(roi, beside<ZBW8>(roi)); }},
    {"ImgThreshold (C24)", [](auto roi) { ImgThreshold(roi, beside<ZBW8>(roi), {}, {}, nullptr, 1, 2); }},
    {"ImgConvolKernel (C24)", [](auto roi) { ImgConvolKernel(roi, roi, &kernel); }},
    {"ImgConvolHighpass1 (C24)", [](auto roi) { ImgConvolHighpass1(roi, roi); }},
    {"ImgConvolHighpass2 (C24)", [](auto roi) { ImgConvolHighpass2(roi, roi); }},
    {"ImgConvolLowpass1 (C24)", [](auto roi) { ImgConvolLowpass1(roi, roi); }},
    {"ImgConvolLowpass2 (C24)", [](auto roi) { ImgConvolLowpass2(roi, roi); }},
    {"ImgConvolLowpass3 (C24)", [](auto roi) { ImgConvolLowpass3(roi, roi); }},
    {"ImgConvolSobelX (C24)", [](auto roi) { ImgConvolSobelX(roi, roi); }},
    {"ImgConvolSobelY (C24)", [](auto roi) { ImgConvolSobelY(roi, roi); }},
    {"ImgConvolSobelXY (C24)", [](auto roi) { ImgConvolSobelXY(roi, roi); }},
    {"ImgConvolPrewittX (C24)", [](auto roi) { ImgConvolPrewittX(roi, roi); }},
    {"ImgConvolPrewittY (C24)", [](auto roi) { ImgConvolPrewittY(roi, roi); }},
    {"ImgConvolPrewittXY (C24)", [](auto roi) { ImgConvolPrewittXY(roi, roi); }},
    {"ImgConvolLaplacian4 (C24)", [](auto roi) { ImgConvolLaplacian4(roi, roi); }},
    {"ImgConvolLaplacian8 (C24)", [](auto roi) { ImgConvolLaplacian8(roi, roi); }},
    {"ImgConvolRoberts (C24)", [](auto roi) { ImgConvolRoberts(roi, roi); }},
    {"ImgScaleRotate (C24)", [](auto roi) { ImgScaleRotate(roi, 0, 0, 0, 0, 1, 1, 0, roi, 0); }},
    {"ImgScaleRotate (C24)", [](auto roi) { ImgRegister(roi, roi, 0, 0, 0, 0, 0); }},
    {"ImgScaleRotate (C24)", [](auto roi) { ImgRegister(roi, roi, 0, 0, 1, 1, 0, 0, 1, 1, 0, 1); }},
    {"ImgShrink (C24)", [](auto roi) { ImgShrink(roi, roi); }},
    {"ImgErode (C24)", [](auto roi) { ImgErode(roi, roi, 2, {}); }},
    {"ImgDilate (C24)", [](auto roi) { ImgDilate(roi, roi, 2, {}); }},
    {"ImgOpen (C24)", [](auto roi) { ImgOpen(roi, roi, 2, {}, {}); }},
    {"ImgClose (C24)", [](auto roi) { ImgClose(roi, roi, 2, {}, {}); }},
    {"ImgWhiteTopHat (C24)", [](auto roi) { ImgWhiteTopHat(roi, roi, 2, {}, {}); }},
    {"ImgBlackTopHat (C24)", [](auto roi) { ImgBlackTopHat(roi, roi, 2, {}, {}); }},
    {"ImgMedian (C24)", [](auto roi) { ImgMedian(roi, roi, {}); }},
    {"ImgWarp (C24)", [](auto roi) { ImgWarp(roi, roi, mapFor<ZBW16>(roi), mapFor<ZBW16>(roi), 0, 0); }},
    {"ImgSwapFrames (ZC24)", [](auto roi) { ImgSwapFrames(roi, roi); }},
    {"ImgRealignFrame (ZC24)", [](auto roi) { ImgRealignFrame(roi, roi, 1, 0); }},
    {"ImgRebuildFrame (ZC24)", [](auto roi) { ImgRebuildFrame(roi, roi, 0); }},
    {"ImgMatchFrames (ZC24)", [](auto roi) { ImgMatchFrames(roi, 0, -1, 1, r.between); }},
    {"ImgVerticalMirror (color)", [](auto roi) { ImgVerticalMirror(roi); }},
    {"ImgImageToPath (C24)", [](auto roi) { ImgImageToPath(roi, &colourPath); }},
    {"ImgPathToImage (C24)", [](auto roi) { ImgPathToImage(roi, &colourPath); }},
    {"ImgImageToLineSegment (C24)", [](auto roi) { ImgImageToLineSegment(roi, &colours, 0, 0, 7, 7); }},
    {"ImgLineSegmentToImage (C24, vector)", [](auto roi) { ImgLineSegmentToImage(roi, &colours, 0, 0, 7, 7); }},
    {"ImgLineSegmentToImage (C24, const)", [](auto roi) { ImgLineSegmentToImage(roi, ZC24{}, 0, 0, 7, 7); }},
};

// Operations that run while an error is pending.
const std::vector<Row<ZBW8>> unstoppable = {
    {"ImgBinaryMoments (first order)", [](auto roi) { ImgBinaryMoments(roi, 1, r.f0, r.f1, r.f2); }},
    {"ImgBinaryMoments (second order)", [](auto roi) { ImgBinaryMoments(roi, 1, r.f0, r.f1, r.f2, r.f3, r.f4, r.f5); }},
    {"ImgWeighedMoments (first order)", [](auto roi) { ImgWeighedMoments(roi, r.f0, r.f1, r.f2); }},
    {"ImgWeighedMoments (second order)", [](auto roi) { ImgWeighedMoments(roi, r.f0, r.f1, r.f2, r.f3, r.f4, r.f5); }},
    {"ImgConvolSymmetricKernel", [](auto roi) { ImgConvolSymmetricKernel(roi, roi, &kernel); }},
    {"ImgConvolHighpass1", [](auto roi) { ImgConvolHighpass1(roi, roi); }},
    {"ImgConvolHighpass2", [](auto roi) { ImgConvolHighpass2(roi, roi); }},
    {"ImgConvolLowpass1", [](auto roi) { ImgConvolLowpass1(roi, roi); }},
    {"ImgConvolLowpass2", [](auto roi) { ImgConvolLowpass2(roi, roi); }},
    {"ImgConvolLowpass3", [](auto roi) { ImgConvolLowpass3(roi, roi); }},
    {"ImgConvolSobelX", [](auto roi) { ImgConvolSobelX(roi, roi); }},
    {"ImgConvolSobelY", [](auto roi) { ImgConvolSobelY(roi, roi); }},
    {"ImgConvolSobelXY", [](auto roi) { ImgConvolSobelXY(roi, roi); }},
    {"ImgConvolPrewittX", [](auto roi) { ImgConvolPrewittX(roi, roi); }},
    {"ImgConvolPrewittY", [](auto roi) { ImgConvolPrewittY(roi, roi); }},
    {"ImgConvolPrewittXY", [](auto roi) { ImgConvolPrewittXY(roi, roi); }},
    {"ImgConvolLaplacian4", [](auto roi) { ImgConvolLaplacian4(roi, roi); }},
    {"ImgConvolLaplacian8", [](auto roi) { ImgConvolLaplacian8(roi, roi); }},
    {"ImgConvolLowpass1X", [](auto roi) { ImgConvolLowpass1X(roi, roi); }},
    {"ImgConvolLowpass1Y", [](auto roi) { ImgConvolLowpass1Y(roi, roi); }},
};

class ContractTest : public OperationTest {};

// Expects that no result is written while it lives.
class UntouchedResults {
public:
    explicit UntouchedResults(bool expected) : expected_(expected) { std::memset(&results, pattern, sizeof results); }
    ~UntouchedResults()
    {
        const auto* bytes = reinterpret_cast<const unsigned char*>(&results);
        const bool untouched = std::all_of(bytes, bytes + sizeof results, [](int byte) { return byte == pattern; });
        EXPECT_TRUE(untouched || !expected_);
    }

private:
    static constexpr int pattern = 0x5A;
    bool expected_;
};

template <class T>
void expectUnusableRegionsRefused(const std::vector<Row<T>>& rows, bool keepsResults = true)
{
    ZImage<T> image(8, 8), empty;
    ZROI<T> nowhere, outside(&image, 4, 4, 5, 4), backwards(&image, 4, 4, -1, 2);
    const std::pair<ZROI<T>*, short> regions[] = {
        {nullptr, 1400}, {&empty, 1400}, {&nowhere, 1400}, {&outside, 1401}, {&backwards, 1401}};
    for (const auto& row : rows)
        for (const auto& [region, code] : regions) {
            SCOPED_TRACE(row.name);
            const UntouchedResults untouched(keepsResults);
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
    expectUnusableRegionsRefused(wideOperations);
    expectUnusableRegionsRefused(incomplete);
    expectUnusableRegionsRefused(unstoppable, false);  // moments are 0 then
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
        const UntouchedResults untouched(true);
        row.call(&image);
        EXPECT_FAILURE(1009, row.name);
        EXPECT_EQ(bytesOf(image), before);
    }
}

TEST_F(ContractTest, a_pending_error_stops_operations)
{
    expectStoppedByPendingError(greyOperations);
    expectStoppedByPendingError(colourOperations);
    expectStoppedByPendingError(wideOperations);
    expectStoppedByPendingError(incomplete);
    expectStoppedByPendingError(vectorOperations);
}

TEST_F(ContractTest, some_do_not_look_at_a_pending_error)
{
    ZSetError(Z_ERROR_BAD_MODE);
    EXPECT_EQ(ImgIsodataThreshold(&histogram, 0, 255), 128);
    EXPECT_EQ(ImgMinResidueThreshold(&histogram, r.f0, r.f1), 0);
    EXPECT_EQ(ImgMaxEntropyThreshold(&histogram, r.f0, r.f1), 0);
    EXPECT_FAILURE(1009);
}

TEST_F(ContractTest, operations_succeed_silently)
{
    ZImage<ZBW8> grey(8, 8);
    ZImage<ZC24> colour(8, 8);
    ZImage<ZBW16> wide(8, 8);
    for (const auto& row : greyOperations)
        row.call(&grey);
    for (const auto& row : wideOperations)
        row.call(&wide);
    for (const auto& row : vectorOperations)
        row.call(&grey);
    for (const auto& row : colourOperations)
        row.call(&colour);
    EXPECT_FAILURE(0, "ImgPixelStdDev", "ImgPixelStdDev");  // the grey form records its name always, also inside
}

}  // namespace
