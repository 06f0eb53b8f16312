// Every operation with arguments that nobody should give it: it ends in a code or in a defined result, and the
// sanitizers see nothing. A row an overload; the arguments follow from its type.
#include "support/errors.h"
#include "support/images.h"
#include "zkit/color.h"
#include "zkit/img.h"

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <tuple>

namespace {

// An argument of a call, made anew for every call: by default a number or an enumeration.
template <class A>
struct Argument {
    explicit Argument(Random& random)
    {
        using Limits = std::numeric_limits<A>;
        if constexpr (std::is_floating_point_v<A>) {
            const A values[] = {Limits::quiet_NaN(),
                                Limits::infinity(),
                                -Limits::infinity(),
                                Limits::max(),
                                Limits::lowest(),
                                Limits::min(),
                                -1,
                                0,
                                1,
                                200};
            value = values[random(0, 9)];
        } else if constexpr (std::is_enum_v<A>)
            value = static_cast<A>(Argument<std::underlying_type_t<A>>(random).value);
        else {
            const int kind = random(0, 15), low = kind > 6 ? 0 : kind > 2 ? -7 : -300;
            value = kind == 0 ? Limits::min() : kind == 1 ? Limits::max() : static_cast<A>(random(low, 5 - low));
        }
    }

    A value;
};

// Results.
template <class A>
struct Argument<A&> {
    explicit Argument(Random& random) : stored(random), value(stored.value) {}
    Argument<A> stored;
    A& value;
};

template <>
struct Argument<ZC24> {
    explicit Argument(Random& random) : value{Argument<ZBW8>(random).value, 0, 255} {}
    ZC24 value;
};

template <>
struct Argument<ZColor> {
    explicit Argument(Random& random)
        : value(Argument<float>(random).value, Argument<float>(random).value, Argument<float>(random).value)
    {
    }
    ZColor value;
};

// Regions that can be used, mostly of one size, and others.
template <class T>
struct Argument<ZROI<T>*> {
    explicit Argument(Random& random) : image(random(0, 15) ? 9 : 0, 9)
    {
        const int edge = random(0, 3), tiny = random(0, 2);
        static constexpr int most = std::numeric_limits<int>::max(), least = std::numeric_limits<int>::min();
        const int sizes[][4] = {{0, 0, tiny, 1}, {9, 9, 0, 0},    {1, 1, 9, 1},     {4, 4, -1, 2},       {-1, 0, 3, 3},
                                {1, 1, most, 8}, {most, 1, 1, 8}, {1, least, 8, 8}, {least, 0, most, 1}, {0, 0, 9, 9}};
        const int* const size = sizes[random(0, 9)];
        region = random(0, 15) ? ZROI<T>(&image, edge, 1, 6, 8) : ZROI<T>(&image, size[0], size[1], size[2], size[3]);
        if (image.GetPixelPtr(0, 0))
            fill(image, random);
        value = random(0, 31) ? &region : nullptr;
    }
    Argument(const Argument&) = delete;

    ZImage<T> image;
    ZROI<T> region;
    ZROI<T>* value;
};

// Maps, mostly as large as the regions that can be used.
template <class T>
struct Argument<ZImage<T>*> {
    explicit Argument(Random& random) : image(random(0, 15) ? 6 : random(0, 9), random(0, 15) ? 8 : random(0, 9))
    {
        if (image.GetPixelPtr(0, 0))
            fill(image, random);
        value = random(0, 31) ? &image : nullptr;
    }
    Argument(const Argument&) = delete;

    ZImage<T> image;
    ZImage<T>* value;
};

template <>
struct Argument<ZVector*> {
    explicit Argument(Random& random) : vector(random(0, 4))
    {
        if (random(0, 2) == 0)
            vector.SetStructure(random(1, 8), random(0, 3), random(0, 300), random(0, 4));
        if (random(0, 7) == 0)
            vector.Reallocate(random(0, 40));
        value = random(0, 15) ? &vector : nullptr;
    }
    Argument(const Argument&) = delete;

    ZVector vector;
    ZVector* value;
};

template <class Vector>
requires requires(Vector vector) { vector.SetNumElements(0); }
struct Argument<Vector*> {
    explicit Argument(Random& random)
    {
        const unsigned int counts[] = {0, 1, 2, 8, 255, 256, 257, 8191};
        vector.SetNumElements(counts[random(0, 7)]);
        for (unsigned int i = 0; i < vector.GetNumElements() * sizeof *vector.GetDataPtr(); ++i)
            reinterpret_cast<std::uint8_t*>(vector.GetDataPtr())[i] = static_cast<std::uint8_t>(random(0, 255));
        value = random(0, 15) ? &vector : nullptr;
    }
    Argument(const Argument&) = delete;

    Vector vector;
    Vector* value;
};

template <>
struct Argument<ZColorLookup*> {
    explicit Argument(Random&) {}
    ZColorLookup* value = nullptr;
};

// Kernels of any size, some without coefficients for it.
template <>
struct Argument<ZKernel*> {
    explicit Argument(Random& random)
    {
        kernel.SetSizeX(static_cast<short>(random(-1, 9)));
        kernel.SetSizeY(random(0, 1) ? kernel.GetSizeX() : static_cast<short>(random(0, 9)));
        if (random(0, 31) == 0)
            kernel.SetSizeX(std::numeric_limits<short>::min());
        for (unsigned int i = 0; i < kernel.GetAllocatedSize() / sizeof(float); ++i)
            kernel.GetDataPtr()[i] = Argument<float>(random).value;
        kernel.SetGain(Argument<float>(random).value);
        kernel.SetOffset(Argument<unsigned int>(random).value);
        kernel.SetRectifier(static_cast<short>(random(-1, 4)));
        kernel.SetOutsideValue(Argument<unsigned int>(random).value);
        value = random(0, 15) ? &kernel : nullptr;
    }
    Argument(const Argument&) = delete;

    ZKernel kernel;
    ZKernel* value;
};

template <class Pixel>
struct Argument<int (*)(Pixel&)> {
    explicit Argument(Random& random) : value(random(0, 3) ? +[](Pixel&) { return 1; } : nullptr) {}
    int (*value)(Pixel&);
};

template <>
struct Argument<ZBW8 (*)(ZBW8)> {
    explicit Argument(Random& random) : value(random(0, 3) ? +[](ZBW8 level) { return level; } : nullptr) {}
    ZBW8 (*value)(ZBW8);
};

// What an argument is made from, once for each of them.
template <class A>
std::reference_wrapper<Random> from(Random& random)
{
    return random;
}

struct Row {
    const char* name;
    std::function<void(Random&)> call;
};

template <class Result, class... A>
Row row(const char* name, Result (*operation)(A...))
{
    return {name, [operation](Random& random) {
                const std::tuple<Argument<A>...> arguments{from<A>(random)...};
                ZClearError();  // of the making of arguments
                std::apply([operation](const auto&... a) { operation(a.value...); }, arguments);
            }};
}

// For one of several overloads.
template <class Signature>
Row row(const char* name, Signature* operation)
{
    return row(name, operation);
}

using Grey = ZROI<ZBW8>*;
using Wide = ZROI<ZBW16>*;
using Colour = ZROI<ZC24>*;
using Bits = ZROI<ZBW1>*;
using Map = ZImage<ZBW16>*;
using Code = ARITH_LOGIC_OPERATIONS;

const Row rows[] = {
    row<float(ZBW8HistogramVector*, IMG_HISTOGRAM_FEATURE, int, int)>("ImgAnalyseHistogram", ImgAnalyseHistogram),
    row<short(ZVector*, int, int, int, int&)>("ImgAnalyseHistogram", ImgAnalyseHistogram),
    row<short(ZVector*, int, int, int, float&)>("ImgAnalyseHistogram", ImgAnalyseHistogram),
    row("ImgArea", ImgArea),
    row("ImgAreaDoubleThreshold", ImgAreaDoubleThreshold),
    row("ImgAutoAdaptiveThreshold", ImgAutoAdaptiveThreshold),
    row("ImgAutoThreshold", ImgAutoThreshold),
    row<void(Grey, unsigned, float&, float&, float&)>("ImgBinaryMoments", ImgBinaryMoments),
    row<void(Grey, unsigned, float&, float&, float&, float&, float&, float&)>("ImgBinaryMoments", ImgBinaryMoments),
    row<short(Grey, Grey, int, int, int)>("ImgBlackTopHat", ImgBlackTopHat),
    row<void(Colour, Colour, int, ZC24, ZC24)>("ImgBlackTopHat", ImgBlackTopHat),
    row<short(Grey, Grey, int, int, int)>("ImgClose", ImgClose),
    row<void(Colour, Colour, int, ZC24, ZC24)>("ImgClose", ImgClose),
    row<void(Grey, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY, ZPathVector*)>("ImgContour",
                                                                                                  ImgContour),
    row<void(Grey, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY, ZBW8PathVector*)>("ImgContour",
                                                                                                     ImgContour),
    row<short(Grey, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY, ZVector*)>("ImgContour",
                                                                                               ImgContour),
    row<void(Wide, Grey, unsigned)>("ImgConvert", ImgConvert),
    row<void(Grey, Wide, unsigned)>("ImgConvert", ImgConvert),
    row<void(Grey, Colour)>("ImgConvert", ImgConvert),
    row<void(Colour, Grey)>("ImgConvert", ImgConvert),
    row("ImgConvertTo422", ImgConvertTo422),
    row<short(Grey, Grey)>("ImgConvolHighpass1", ImgConvolHighpass1),
    row<void(Colour, Colour)>("ImgConvolHighpass1", ImgConvolHighpass1),
    row<short(Grey, Grey)>("ImgConvolHighpass2", ImgConvolHighpass2),
    row<void(Colour, Colour)>("ImgConvolHighpass2", ImgConvolHighpass2),
    row<short(Grey, Grey, ZKernel*)>("ImgConvolKernel", ImgConvolKernel),
    row<void(Colour, Colour, ZKernel*)>("ImgConvolKernel", ImgConvolKernel),
    row<short(Grey, Grey)>("ImgConvolLaplacian4", ImgConvolLaplacian4),
    row<void(Colour, Colour)>("ImgConvolLaplacian4", ImgConvolLaplacian4),
    row<short(Grey, Grey)>("ImgConvolLaplacian8", ImgConvolLaplacian8),
    row<void(Colour, Colour)>("ImgConvolLaplacian8", ImgConvolLaplacian8),
    row<short(Grey, Grey)>("ImgConvolLowpass1", ImgConvolLowpass1),
    row<void(Colour, Colour)>("ImgConvolLowpass1", ImgConvolLowpass1),
    row("ImgConvolLowpass1X", ImgConvolLowpass1X),
    row("ImgConvolLowpass1Y", ImgConvolLowpass1Y),
    row<short(Grey, Grey)>("ImgConvolLowpass2", ImgConvolLowpass2),
    row<void(Colour, Colour)>("ImgConvolLowpass2", ImgConvolLowpass2),
    row<short(Grey, Grey)>("ImgConvolLowpass3", ImgConvolLowpass3),
    row<void(Colour, Colour)>("ImgConvolLowpass3", ImgConvolLowpass3),
    row<short(Grey, Grey)>("ImgConvolPrewittX", ImgConvolPrewittX),
    row<void(Colour, Colour)>("ImgConvolPrewittX", ImgConvolPrewittX),
    row<short(Grey, Grey)>("ImgConvolPrewittXY", ImgConvolPrewittXY),
    row<void(Colour, Colour)>("ImgConvolPrewittXY", ImgConvolPrewittXY),
    row<short(Grey, Grey)>("ImgConvolPrewittY", ImgConvolPrewittY),
    row<void(Colour, Colour)>("ImgConvolPrewittY", ImgConvolPrewittY),
    row<void(Grey, Grey)>("ImgConvolRoberts", ImgConvolRoberts),
    row<void(Colour, Colour)>("ImgConvolRoberts", ImgConvolRoberts),
    row<short(Grey, Grey)>("ImgConvolSobelX", ImgConvolSobelX),
    row<void(Colour, Colour)>("ImgConvolSobelX", ImgConvolSobelX),
    row<short(Grey, Grey)>("ImgConvolSobelXY", ImgConvolSobelXY),
    row<void(Colour, Colour)>("ImgConvolSobelXY", ImgConvolSobelXY),
    row<short(Grey, Grey)>("ImgConvolSobelY", ImgConvolSobelY),
    row<void(Colour, Colour)>("ImgConvolSobelY", ImgConvolSobelY),
    row("ImgConvolSymmetricKernel", ImgConvolSymmetricKernel),
    row<unsigned(Grey, int (*)(ZBW8&))>("ImgCount", ImgCount),
    row<unsigned(Colour, int (*)(ZC24&))>("ImgCount", ImgCount),
    row<short(Grey, Grey, int, int)>("ImgDilate", ImgDilate),
    row<void(Colour, Colour, int, ZC24)>("ImgDilate", ImgDilate),
    row("ImgDoubleThreshold", ImgDoubleThreshold),
    row("ImgEqualize", ImgEqualize),
    row<short(Grey, Grey, int, int)>("ImgErode", ImgErode),
    row<void(Colour, Colour, int, ZC24)>("ImgErode", ImgErode),
    row<float(Grey)>("ImgFocusing", ImgFocusing),
    row<float(Colour)>("ImgFocusing", ImgFocusing),
    row<void(Grey, Grey, float, float)>("ImgGainOffset", ImgGainOffset),
    row<void(Colour, Colour, ZColor, ZColor)>("ImgGainOffset", ImgGainOffset),
    row("ImgGetProfilePeaks", ImgGetProfilePeaks),
    row("ImgGravityCenter", ImgGravityCenter),
    row<void(Grey, ZBW8HistogramVector*)>("ImgHistogram", ImgHistogram),
    row<void(Wide, ZBW8HistogramVector*, unsigned, unsigned, int)>("ImgHistogram", ImgHistogram),
    row<short(Grey, ZVector*)>("ImgHistogram", ImgHistogram),
    row("ImgHistogramThreshold", ImgHistogramThreshold),
    row("ImgHorizontalMirror", ImgHorizontalMirror),
    row<void(Grey, ZBW8Vector*, int, int, int, int)>("ImgImageToLineSegment", ImgImageToLineSegment),
    row<void(Colour, ZC24Vector*, int, int, int, int)>("ImgImageToLineSegment", ImgImageToLineSegment),
    row<void(Wide, ZBW16Vector*, int, int, int, int)>("ImgImageToLineSegment", ImgImageToLineSegment),
    row<void(Grey, ZBW8PathVector*)>("ImgImageToPath", ImgImageToPath),
    row<void(Colour, ZC24PathVector*)>("ImgImageToPath", ImgImageToPath),
    row<ZBW8(ZBW8HistogramVector*, unsigned, unsigned)>("ImgIsodataThreshold", ImgIsodataThreshold),
    row<unsigned(ZVector*, unsigned, unsigned)>("ImgIsodataThreshold", ImgIsodataThreshold),
    row<void(Grey, ZBW8Vector*, int, int, int, int)>("ImgLineSegmentToImage", ImgLineSegmentToImage),
    row<void(Grey, ZBW8, int, int, int, int)>("ImgLineSegmentToImage", ImgLineSegmentToImage),
    row<void(Colour, ZC24Vector*, int, int, int, int)>("ImgLineSegmentToImage", ImgLineSegmentToImage),
    row<void(Colour, ZC24, int, int, int, int)>("ImgLineSegmentToImage", ImgLineSegmentToImage),
    row<short(Grey, Grey, ZVector*)>("ImgLut", ImgLut),
    row<void(Grey, Grey, ZBW8Vector*)>("ImgLut", ImgLut),
    row<void(Grey, int, int, int, int&)>("ImgMatchFrames", ImgMatchFrames),
    row<void(Colour, int, int, int, int&)>("ImgMatchFrames", ImgMatchFrames),
    row("ImgMaxEntropyThreshold", ImgMaxEntropyThreshold),
    row<short(Grey, Grey, int)>("ImgMedian", ImgMedian),
    row<void(Grey, Grey)>("ImgMedian", ImgMedian),
    row<void(Colour, Colour, ZC24)>("ImgMedian", ImgMedian),
    row("ImgMinResidueThreshold", ImgMinResidueThreshold),
    row("ImgNormalize", ImgNormalize),
    row<short(Grey, Grey, int, int, int)>("ImgOpen", ImgOpen),
    row<void(Colour, Colour, int, ZC24, ZC24)>("ImgOpen", ImgOpen),
    row<void(Code, ZBW8, Grey)>("ImgOper", ImgOper),
    row<void(Code, Grey, Grey)>("ImgOper", ImgOper),
    row<void(Code, Grey, Colour)>("ImgOper", ImgOper),
    row<void(Code, ZBW8, Grey, Grey)>("ImgOper", ImgOper),
    row<void(Code, Grey, ZBW8, Grey)>("ImgOper", ImgOper),
    row<void(Code, Grey, Grey, Grey)>("ImgOper", ImgOper),
    row<void(Code, ZC24, Colour)>("ImgOper", ImgOper),
    row<void(Code, Colour, Colour)>("ImgOper", ImgOper),
    row<void(Code, ZC24, Colour, Colour)>("ImgOper", ImgOper),
    row<void(Code, Colour, ZC24, Colour)>("ImgOper", ImgOper),
    row<void(Code, Colour, Colour, Colour)>("ImgOper", ImgOper),
    row<void(Code, Grey, Colour, Colour)>("ImgOper", ImgOper),
    row<void(Code, Colour, Grey, Colour)>("ImgOper", ImgOper),
    row<void(Code, ZBW16, Wide)>("ImgOper", ImgOper),
    row<void(Code, Grey, Grey, Wide)>("ImgOper", ImgOper),
    row<void(Code, Wide, Grey, Wide)>("ImgOper", ImgOper),
    row("ImgOper123", ImgOper123),
    row("ImgOper1c2", ImgOper1c2),
    row<void(Grey, ZBW8PathVector*)>("ImgPathToImage", ImgPathToImage),
    row<void(Colour, ZC24PathVector*)>("ImgPathToImage", ImgPathToImage),
    row<short(Grey, float&)>("ImgPixelAverage", ImgPixelAverage),
    row<void(Colour, float&, float&, float&)>("ImgPixelAverage", ImgPixelAverage),
    row<unsigned(Grey, Grey)>("ImgPixelCompare", ImgPixelCompare),
    row<unsigned(Colour, Colour)>("ImgPixelCompare", ImgPixelCompare),
    row("ImgPixelCount", ImgPixelCount),
    row("ImgPixelMax", ImgPixelMax),
    row("ImgPixelMin", ImgPixelMin),
    row("ImgPixelStat", ImgPixelStat),
    row<short(Grey, float&, float&)>("ImgPixelStdDev", ImgPixelStdDev),
    row<void(Colour, float&, float&, float&, float&, float&, float&, float&, float&, float&)>("ImgPixelStdDev",
                                                                                              ImgPixelStdDev),
    row<short(Grey, float&, float&)>("ImgPixelVariance", ImgPixelVariance),
    row<void(Colour, float&, float&, float&, float&, float&, float&, float&, float&, float&)>("ImgPixelVariance",
                                                                                              ImgPixelVariance),
    row("ImgProfileDerivative", ImgProfileDerivative),
    row<void(Grey, ZBW32Vector*)>("ImgProjectOnAColumn", ImgProjectOnAColumn),
    row<short(Grey, ZVector*)>("ImgProjectOnAColumn", ImgProjectOnAColumn),
    row<void(Grey, ZBW32Vector*)>("ImgProjectOnARow", ImgProjectOnARow),
    row<short(Grey, ZVector*)>("ImgProjectOnARow", ImgProjectOnARow),
    row<void(Grey, Grey, int, unsigned)>("ImgRealignFrame", ImgRealignFrame),
    row<void(Colour, Colour, int, unsigned)>("ImgRealignFrame", ImgRealignFrame),
    row<void(Grey, Grey, unsigned)>("ImgRebuildFrame", ImgRebuildFrame),
    row<void(Colour, Colour, unsigned)>("ImgRebuildFrame", ImgRebuildFrame),
    row("ImgRecursiveAverage", ImgRecursiveAverage),
    row<void(Grey, Grey, float, float, float, float, int)>("ImgRegister", ImgRegister),
    row<void(Colour, Colour, float, float, float, float, int)>("ImgRegister", ImgRegister),
    row<void(Grey, Grey, float, float, float, float, float, float, float, float, int, int)>("ImgRegister", ImgRegister),
    row<void(Colour, Colour, float, float, float, float, float, float, float, float, int, int)>("ImgRegister",
                                                                                                ImgRegister),
    row<float(Grey, Grey, IMG_REFERENCE_NOISE)>("ImgRmsNoise", ImgRmsNoise),
    row<float(Grey, Wide, unsigned, IMG_REFERENCE_NOISE)>("ImgRmsNoise", ImgRmsNoise),
    row<short(Grey, float, float, float, float, float, float, float, Grey, int)>("ImgScaleRotate", ImgScaleRotate),
    row<void(Colour, float, float, float, float, float, float, float, Colour, int)>("ImgScaleRotate", ImgScaleRotate),
    row("ImgSetCircleWarp", ImgSetCircleWarp),
    row("ImgSetRecursiveAverageLUT", ImgSetRecursiveAverageLUT),
    row<void(ZBW8HistogramVector*, ZBW8Vector*)>("ImgSetupEqualize", ImgSetupEqualize),
    row<void(ZVector*, ZVector*)>("ImgSetupEqualize", ImgSetupEqualize),
    row<short(Grey, Grey)>("ImgShrink", ImgShrink),
    row<void(Colour, Colour)>("ImgShrink", ImgShrink),
    row<float(Grey, Grey, IMG_REFERENCE_NOISE)>("ImgSignalNoiseRatio", ImgSignalNoiseRatio),
    row<float(Grey, Wide, unsigned, IMG_REFERENCE_NOISE)>("ImgSignalNoiseRatio", ImgSignalNoiseRatio),
    row<void(Grey, Grey)>("ImgSwapFrames", ImgSwapFrames),
    row<void(Colour, Colour)>("ImgSwapFrames", ImgSwapFrames),
    row<short(Grey, Grey, unsigned, ZBW8, ZBW8, float)>("ImgThreshold", ImgThreshold),
    row<void(Grey, Bits, unsigned)>("ImgThreshold", ImgThreshold),
    row<void(Bits, Grey, ZBW8, ZBW8)>("ImgThreshold", ImgThreshold),
    row<void(Colour, Grey, ZC24, ZC24, ZColorLookup*, ZBW8, ZBW8)>("ImgThreshold", ImgThreshold),
    row("ImgTransform", ImgTransform),
    row<void(Grey, ZBW8, Grey, Grey)>("ImgUniformize", ImgUniformize),
    row<void(Grey, ZBW8, Grey, ZBW8, Grey, Grey)>("ImgUniformize", ImgUniformize),
    row<void(Grey)>("ImgVerticalMirror", ImgVerticalMirror),
    row<void(Colour)>("ImgVerticalMirror", ImgVerticalMirror),
    row<short(Grey, Grey, Map, Map, int, int)>("ImgWarp", ImgWarp),
    row<void(Colour, Colour, Map, Map, int, int)>("ImgWarp", ImgWarp),
    row<short(Grey, Grey, ZImage<ZBW32>*)>("ImgWarp", ImgWarp),
    row<void(Grey, float&, float&, float&)>("ImgWeighedMoments", ImgWeighedMoments),
    row<void(Grey, float&, float&, float&, float&, float&, float&)>("ImgWeighedMoments", ImgWeighedMoments),
    row<short(Grey, Grey, int, int, int)>("ImgWhiteTopHat", ImgWhiteTopHat),
    row<void(Colour, Colour, int, ZC24, ZC24)>("ImgWhiteTopHat", ImgWhiteTopHat),
};

class HostileTest : public OperationTest {};

TEST_F(HostileTest, moving_averages_of_any_size)
{
    Random random(67);
    ZMovingAverage average;
    for (int round = 0; round < 2000; ++round) {
        SCOPED_TRACE(round);
        ZSetMMX(round % 2);
        const Argument<int> width(random), holds(random);
        if (random(0, 3) == 0)
            average.SetSize(Argument<unsigned int>(random).value, random(0, 3) ? 6 : width.value, 8, holds.value % 2);
        const Argument<Grey> src(random), dst(random);
        ZClearError();
        if (random(0, 1))
            average.Average(src.value, dst.value);
        else
            average.Average(dst.value);
        takeFailure();
        EXPECT_TRUE(average.GetSrcImage() || takeFailure().code != Z_OK);
    }
    ZSetMMX(1);
}

TEST_F(HostileTest, every_operation_ends_in_a_code_or_a_result)
{
    Random random(66);
    for (const Row& row : rows)
        for (int round = 0; round < 300; ++round) {
            SCOPED_TRACE(testing::Message() << row.name << " round " << round);
            ZSetMMX(round % 2);
            row.call(random);
            const short code = takeFailure().code;
            EXPECT_TRUE(code == Z_OK || code >= Z_ERROR_BAD_OPERATION) << code;
        }
    ZSetMMX(1);
}

}  // namespace
