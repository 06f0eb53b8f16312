// What operations that need memory do without it. A row per operation.
#include "support/errors.h"
#include "support/failing_allocation.h"
#include "support/images.h"
#include "zkit/color.h"
#include "zkit/img.h"

#include <cstdio>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace {

struct Row {
    const char* name;
    std::set<short> codes;
    std::function<void()> call;
};

// Two regions of one image that overlap, for every pixel type.
template <class T>
struct Overlapping {
    ZImage<T> image{20, 20};
    ZROI<T> src{&image, 0, 0, 16, 16}, dst{&image, 1, 1, 16, 16};
};

Overlapping<ZBW8> grey;
Overlapping<ZBW16> wide;
Overlapping<ZC24> colour;

// Regions of a type of pixels in the memory of another.
template <class T, class Other>
ZROI<T>* over(Overlapping<Other>& other)
{
    static ZImage<T> image;
    image.Attach(other.image.GetPixelPtr(0, 0), 16, 16, other.image.GetRowPitch());
    return &image;
}

// The outline of a bar of 2 x 4 pixels.
template <class Path>
void followOutline(Path& outline)
{
    static ZImage<ZBW8> image(16, 16);
    for (int i = 0; i < 8; ++i)
        image.SetPixel(255, 2 + i % 4, 2 + i / 4);
    ImgContour(&image, CONTOUR_CLOCKWISE, 2, 2, CONTOUR_THRESHOLD_ABOVE, 200, CONNEXITY_8, &outline);
}

ZVector table(3);
ZKernel fixed(KERNEL_LOWPASS_1), floating(4, 4, 1, 0, 2, 0);
const std::string path = testing::TempDir() + "zkit_allocation_test";

const std::vector<Row> imageOperations = {
    {"ZImage", {1303}, [] { const ZImage<ZBW8> image(10, 10); }},
    {"ZImage::SetSize",
     {1303},
     [] {
         static ZImage<ZC24> image(3, 3);
         image.SetSize(image.GetWidth() % 5 + 1, 7);
     }},
    {"ZVector", {1303}, [] { const ZVector vector(2); }},
    {"ZVector::SetType",
     {1303},
     [] {
         static ZVector vector;
         vector.SetType(1, 10, 0);
         vector.SetStructure(2, 1, 10, 1);
         vector.Reallocate(100);
     }},
    {"ImgLut", {1303}, [] { ImgLut(&grey.src, &grey.dst, &table); }},
    {"ImgNormalize", {1303}, [] { ImgNormalize(&grey.src, &grey.dst, 100, 10); }},
    {"ImgGainOffset", {1303}, [] { ImgGainOffset(&grey.src, &grey.dst, 2, 1); }},
    {"ImgGainOffset (C24)",
     {1303},
     [] {
         ImgGainOffset(&colour.src, &colour.dst, {2, 2, 2}, {1, 1, 1});
     }},
    {"ImgTransform",
     {1303},
     [] {
         ImgTransform(
             &grey.src, &grey.dst, [](unsigned char pixel) -> unsigned char { return pixel; }, 1);
     }},
    {"ImgUniformize", {1303}, [] { ImgUniformize(&grey.src, 1, &grey.src, 0, &grey.src, &grey.dst); }},
    {"ImgOper1c2", {1303, 1601}, [] { ImgOper1c2(ARITH_LOGIC_ADD, &grey.src, 1, &grey.dst); }},
    {"ImgOper123", {1303}, [] { ImgOper123(ARITH_LOGIC_ADD, &grey.src, &grey.src, &grey.dst); }},
    {"ImgOper", {1303}, [] { ImgOper(ARITH_LOGIC_INVERT, &grey.src, &grey.dst); }},
    {"ImgOper (C24)", {1303}, [] { ImgOper(ARITH_LOGIC_ADD, &colour.src, &colour.dst, &colour.dst); }},
    {"ImgConvert (BW8 to BW16)", {1303}, [] { ImgConvert(over<ZBW8>(wide), &wide.dst, 0); }},
    {"ImgConvert (C24 to BW8)", {1303}, [] { ImgConvert(&colour.src, over<ZBW8>(colour)); }},
    {"ZKernel", {1303}, [] { const ZKernel kernel(KERNEL_SOBEL_X), other(5, 5, 1, 0, 2, 0); }},
    {"ZKernel::SetSizeX",
     {1303},
     [] {
         ZKernel kernel;
         kernel.SetSizeY(3);
         kernel.SetSizeX(3);
     }},
    {"ImgConvolKernel", {1303}, [] { ImgConvolKernel(&grey.src, &grey.dst, &fixed); }},
    {"ImgConvolKernel floating", {1303}, [] { ImgConvolKernel(&grey.src, &grey.dst, &floating); }},
    {"ImgConvolKernel (C24)", {1303}, [] { ImgConvolKernel(&colour.src, &colour.dst, &fixed); }},
    {"ImgConvolLowpass3", {1303}, [] { ImgConvolLowpass3(&grey.src, &grey.dst); }},
    {"ImgConvolLowpass3 in place", {1303}, [] { ImgConvolLowpass3(&grey.src, &grey.src); }},
    {"ImgConvolLowpass3 (C24)", {1303}, [] { ImgConvolLowpass3(&colour.src, &colour.dst); }},
    {"ImgConvolLowpass1X", {1303}, [] { ImgConvolLowpass1X(&grey.src, &grey.src); }},
    {"ImgConvolRoberts", {1303}, [] { ImgConvolRoberts(&grey.image, &grey.dst); }},
    {"ImgConvolRoberts (C24)", {1303}, [] { ImgConvolRoberts(&colour.image, &colour.dst); }},
    {"ClrGetComponent", {1303}, [] { ClrGetComponent(&colour.src, over<ZBW8>(colour), 0, nullptr); }},
    {"ClrSetComponent", {1303}, [] { ClrSetComponent(over<ZBW8>(colour), &colour.dst, 0); }},
};

const std::vector<Row> vectorOperations = {
    {"ZVectorTemplate", {1303}, [] { const ZPathVector vector(5); }},
    {"AddElement",
     {1303},
     [] {
         ZBW16Vector vector;
         for (int i = 0; i < 20 && ZGetError() == Z_OK; ++i)
             vector.AddElement(1);
     }},
    {"SetNumElements",
     {1303},
     [] {
         ZPeaksVector vector;
         vector.SetNumElements(3);
         vector.SetMaxElements(7);
     }},
    {"Save",
     {1102, 0},
     [] {  // a stream without its buffer still writes
         static ZPathVector vector(1);
         vector.SetNumElements(1);
         vector.Save(path.c_str());
     }},
    {"Load",
     {1102, 1303, 0},
     [] {
         ZPathVector vector;
         vector.Load(path.c_str());
     }},
};

const std::vector<Row> otherOperations = {
    {"ImgHistogram",
     {1303},
     [] {
         ZBW8HistogramVector histogram;
         ImgHistogram(&grey.src, &histogram);
     }},
    {"ImgHistogram (ZBW16)",
     {1303},
     [] {
         ZBW8HistogramVector histogram;
         ImgHistogram(&wide.src, &histogram, 11, 8, 1);
     }},
    {"ImgHistogram (ZVector)",
     {1303},
     [] {
         ZVector histogram;
         ImgHistogram(&grey.src, &histogram);
     }},
    {"ImgSetupEqualize",
     {1303},
     [] {
         ZVector histogram(2), equalizing;
         if (ZGetError() == Z_OK)
             ImgSetupEqualize(&histogram, &equalizing);
     }},
    {"ImgEqualize", {1303}, [] { ImgEqualize(&grey.src, &grey.dst); }},
    {"ImgProjectOnARow",
     {1303},
     [] {
         ZBW32Vector sums;
         ImgProjectOnARow(&grey.src, &sums);
     }},
    {"ImgProjectOnAColumn",
     {1303},
     [] {
         ZVector sums;
         ImgProjectOnAColumn(&grey.src, &sums);
     }},
    {"ImgContour",
     {1303},
     [] {
         ZPathVector outline;
         followOutline(outline);
     }},
    {"ImgContour (ZVector)",
     {1303},
     [] {
         ZVector outline;
         if (outline.SetType(1, 1, 0) == Z_OK)
             followOutline(outline);
     }},
    {"ImgImageToLineSegment",
     {1303},
     [] {
         ZC24Vector profile;
         ImgImageToLineSegment(&colour.src, &profile, 0, 0, 9, 9);
     }},
    {"ImgGetProfilePeaks",
     {1303},
     [] {
         ZBW8Vector profile;
         ZPeaksVector peaks;
         for (int i = 0; i < 9 && ZGetError() == Z_OK; ++i)
             profile.AddElement(i % 2 ? 200 : 0);
         ImgGetProfilePeaks(&profile, &peaks, 0, 100, 0, 0);
     }},
    {"ImgProfileDerivative",
     {1303},
     [] {
         ZBW8Vector profile, slopes;
         ImgImageToLineSegment(&grey.src, &profile, 0, 0, 9, 0);
         ImgProfileDerivative(&profile, &slopes);
     }},
    {"ImgThreshold", {1303}, [] { ImgThreshold(&grey.src, &grey.dst, unsigned(IMG_THRESHOLD_ISODATA), 0, 255, 0.5F); }},
    {"ImgDoubleThreshold", {1303}, [] { ImgDoubleThreshold(&grey.src, &grey.dst, 9, 99, 0, 1, 2); }},
    {"ImgThreshold (C24)",
     {1303},
     [] {
         ImgThreshold(&colour.src, over<ZBW8>(colour), {}, {9, 9, 9}, nullptr, 0, 1);
     }},
    {"ImgAutoThreshold", {1303}, [] { ImgAutoThreshold(&grey.src, IMG_THRESHOLD_MAX_ENTROPY, 0.5F); }},
    {"ImgAutoAdaptiveThreshold",
     {1303},
     [] { ImgAutoAdaptiveThreshold(&grey.src, &grey.dst, IMG_THRESHOLD_ISODATA, 5, 5); }},
    {"ImgScaleRotate", {1303}, [] { ImgScaleRotate(&grey.src, 0, 0, 0, 0, 1, 1, 20, &grey.dst, 8); }},
    {"ImgScaleRotate (C24)", {1303}, [] { ImgScaleRotate(&colour.src, 0, 0, 0, 0, 1, 1, 20, &colour.dst, 0); }},
    {"ImgErode", {1303, 0}, [] { ImgErode(&grey.src, &grey.dst, 2, 255); }},
    {"ImgOpen", {0}, [] { ImgOpen(&grey.src, &grey.src, 2, 255, 0); }},  // without columns
    {"ImgDilate (C24)", {1303, 0}, [] { ImgDilate(&colour.src, &colour.dst, 1, {}); }},
    {"ImgWhiteTopHat (C24)", {1303, 0}, [] { ImgWhiteTopHat(&colour.src, &colour.dst, 2, {}, {}); }},
    {"ImgMedian", {1303}, [] { ImgMedian(&grey.src, &grey.dst, 0); }},
    {"ImgMedian in place", {1303}, [] { ImgMedian(&grey.src, &grey.src); }},
    {"ImgMedian (C24)", {1303}, [] { ImgMedian(&colour.src, &colour.src, {}); }},
    {"ImgShrink", {1303}, [] { ImgShrink(&grey.src, &grey.dst); }},
    {"ImgShrink (C24)", {1303}, [] { ImgShrink(&colour.src, &colour.dst); }},
};

const std::vector<Row> temporalOperations = {
    {"ImgSwapFrames", {1303}, [] { ImgSwapFrames(&grey.src, &grey.dst); }},
    {"ImgRealignFrame", {1303}, [] { ImgRealignFrame(&grey.src, &grey.dst, 1, 0); }},
    {"ImgRealignFrame by more", {1303}, [] { ImgRealignFrame(&grey.src, &grey.src, 20, 0); }},
    {"ImgRebuildFrame", {1303}, [] { ImgRebuildFrame(&colour.src, &colour.dst, 0); }},
    {"ZMovingAverage",
     {1303},
     [] {
         ZMovingAverage average(3, 16, 16, 0);
         if (ZGetError() == Z_OK)
             average.Average(&grey.src, &grey.dst);
     }},
    {"ImgRecursiveAverage",
     {1303},
     [] {
         ZBW16Vector lut;
         ImgSetRecursiveAverageLUT(&lut, 2, 0);
         ImgRecursiveAverage(over<ZBW8>(wide), &wide.dst, &grey.dst, &lut);
         ImgRecursiveAverage(&grey.src, &wide.dst, over<ZBW8>(wide), &lut);
     }},
    {"ImgWarp",
     {1303},
     [] {
         static ZImage<ZBW16> map(16, 16);
         ImgWarp(&grey.src, &grey.dst, &map, &map, 0, 0);
         static ZImage<ZBW32> packed(16, 16);
         ImgWarp(&grey.src, &grey.dst, &packed);
     }},
    {"ImgSetCircleWarp",
     {1303},
     [] {
         ZImage<ZBW16> mapX, mapY;
         ImgSetCircleWarp(0, 0, 3, 1, 2, 3, 0, 90, &mapX, &mapY);
     }},
};

void expectAll(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        expectFailingAllocations(row.codes, row.call);
    }
}

class AllocationTest : public OperationTest {
protected:
    void SetUp() override
    {
        OperationTest::SetUp();
        if (!allocationsCanFail())
            GTEST_SKIP() << "allocations cannot be made to fail here";
    }
};

TEST_F(AllocationTest, operations_on_images) { expectAll(imageOperations); }

TEST_F(AllocationTest, histograms_thresholds_and_geometry) { expectAll(otherOperations); }

TEST_F(AllocationTest, sequences_and_warping) { expectAll(temporalOperations); }

// Nothing is raised, and only the neighbours to the left and right count.
TEST_F(AllocationTest, morphology_leaves_columns_out)
{
    ZImage<ZBW8> src, dst(4, 3);
    draw(src, "9999 9199 9999");
    withBothWorkers([&] {
        const FailingAllocation first(0);
        EXPECT_EQ(ImgErode(&src, &dst, 2, 255), 0);
    });
    EXPECT_EQ(bytesOf(dst), (std::vector<std::uint8_t>{9, 9, 9, 9, 1, 1, 1, 1, 9, 9, 9, 9}));
}

TEST_F(AllocationTest, vectors)
{
    expectAll(vectorOperations);
    std::remove(path.c_str());
}

TEST_F(AllocationTest, a_vector_that_cannot_grow)
{
    ZBW8Vector vector(1);
    vector.AddElement(9);
    const auto failing = [](auto call) {
        const FailingAllocation failure(0);
        call();
    };
    failing([&] { vector.AddElement(1); });
    EXPECT_FAILURE(1303, "ZVector::SetMaxElements", "ZVector::AddElement");
    failing([&] { vector.SetMaxElements(0x7FFFFFFF); });
    EXPECT_FAILURE(1303, "ZVector::SetMaxElements");
    EXPECT_EQ(vector.GetNumElements(), 1U);
    EXPECT_EQ(vector.GetMaxElements(), 1U);
    EXPECT_EQ(vector[0], 9);
    failing([&] { vector.SetNumElements(2); });
    EXPECT_FAILURE(1303, "ZVector::SetMaxElements", "ZVector::SetNumElements");
    EXPECT_EQ(vector.GetNumElements(), 0U);
    EXPECT_EQ(vector.GetMaxElements(), 1U);

    vector.AddElement(9);
    std::string content("\2\0\0\0ab", 6);
    std::FILE* const stream = fmemopen(content.data(), content.size(), "rb");
    std::setvbuf(stream, nullptr, _IONBF, 0);
    failing([&] { vector.Serialize(stream, 0); });
    EXPECT_FAILURE(1303, "ZVector::SetMaxElements", "ZVector::SetNumElements");
    EXPECT_EQ(vector.GetNumElements(), 0U);
    std::rewind(stream);
    vector.Serialize(stream, 0);
    EXPECT_EQ(vector[1], 'b');
    std::fclose(stream);
}

}  // namespace
