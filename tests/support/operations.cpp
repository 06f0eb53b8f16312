// A row for every form of every operation: its name at the end of the trail, its type where there are several, what a
// pending error means to it, and where it must give the same pixels if not everywhere.
#include "support/operation.h"

namespace {

using Grey = ZROI<ZBW8>*;
using Wide = ZROI<ZBW16>*;
using Colour = ZROI<ZC24>*;
using Bits = ZROI<ZBW1>*;
using Map = ZImage<ZBW16>*;
using Code = ARITH_LOGIC_OPERATIONS;
using GreyFilter = short(Grey, Grey);
using ColourFilter = void(Colour, Colour);

using enum Pending;

// Operations that reach beyond their regions always.
template <class... A>
Same beyond(A...)
{
    return Same::beyond;
}

// Squares of no size need no regions.
template <class Region, class... Borders>
Same squares(Region, Region, int n, Borders...)
{
    return n > 0 ? Same::everywhere : Same::beyond;
}

// A frame is filled from beside the region when it is moved by more than that is wide.
template <class T>
Same filling(ZROI<T>* src, ZROI<T>*, int shift, unsigned)
{
    const int width = src ? src->GetWidth() : 0;
    return shift > 0 && (shift > width || width < 2) ? Same::beyond : Same::everywhere;
}

// In place the median with a constant border differs from that between separate regions, as it is meant to.
Same medians(Grey src, Grey dst, int)
{
    return src && dst && src->GetPixelPtr(0, 0) == dst->GetPixelPtr(0, 0) ? Same::withAllWorkers : Same::everywhere;
}

// Gains from 0 to 4 in fixed point and offsets of 16 bits, both truncated; what is not a number counts as 0.
Same fixedPoint(Grey, Grey, float gain, float offset)
{
    const float fixed = gain * 32;
    return fixed <= -1 || fixed >= 129 || offset <= -32769 || offset >= 32768 ? Same::whereverItLies : Same::everywhere;
}

// An image as large as a region, unless that is strange.
template <class T>
class Like : public ZImage<T> {
public:
    explicit Like(const ZGenericROI* region)
        : ZImage<T>(region ? std::clamp(region->GetWidth(), 0, 200) : 1,
                    region ? std::clamp(region->GetHeight(), 0, 200) : 1)
    {
    }
};

// The state is both read and written: it is of its own here.
void follow(Grey src, Grey dst, unsigned seed, ZBW16Vector* table)
{
    Like<ZBW16> state(src);
    for (int y = 0; y < state.GetHeight(); ++y)
        for (int x = 0; x < state.GetWidth(); ++x)
            state.SetPixel(static_cast<ZBW16>((seed = seed * 1664525 + 1013904223) >> 16), x, y);
    ImgRecursiveAverage(src, &state, dst, table);
}

// Maps of any circle, of sizes that can be had, can be used.
void circle(float x, float y, int rows, float radiusA, float radiusB, int columns, float start, float end, Map mapX,
            Map mapY)
{
    ImgSetCircleWarp(x, y, rows % 200, radiusA, radiusB, columns % 200, start, end, mapX, mapY);
    if (ZGetError() != Z_OK || mapX == mapY)
        return;
    ZImage<ZBW8> src(60, 50), dst(mapX->GetWidth(), mapX->GetHeight());
    ImgWarp(&src, &dst, mapX, mapY, 0, 0);
    if (ZGetError() != Z_OK && ZGetError() != Z_ERROR_OUT_OF_MEMORY)
        throw std::logic_error("a map that cannot be used");
}

// The mean of two images, the first one black.
void average(Grey src, Grey dst, unsigned period, int holdsSource)
{
    Like<ZBW8> image(src);
    ZMovingAverage mean(period % 300, image.GetWidth(), image.GetHeight(), holdsSource % 2);
    if (holdsSource % 2)
        mean.GetSrcImage();
    else
        mean.Average(&image, &image);
    mean.Average(src, dst);
}

// A mean of what the object holds itself.
void averageHeld(Grey dst, unsigned period, unsigned level)
{
    Like<ZBW8> image(dst);
    ZMovingAverage mean(period % 300, image.GetWidth(), image.GetHeight(), 1);
    for (int i = 0; i < 3; ++i)
        if (ZImage<ZBW8>* const next = mean.GetSrcImage()) {
            next->SetPixel(static_cast<ZBW8>(level >> 8 * i), 0, 0);
            mean.Average(dst);
        }
}

}  // namespace

const std::vector<Operation>& operations()
{
    static const std::vector<Operation> all = {
        operation<float(ZBW8HistogramVector*, IMG_HISTOGRAM_FEATURE, int, int)>("ImgAnalyseHistogram",
                                                                                ImgAnalyseHistogram),
        operation<short(ZVector*, int, int, int, int&)>("ImgAnalyseHistogram", ImgAnalyseHistogram),
        operation<short(ZVector*, int, int, int, float&)>("ImgAnalyseHistogram", ImgAnalyseHistogram),
        operation("ImgArea", ImgArea),
        operation("ImgAreaDoubleThreshold", ImgAreaDoubleThreshold),
        operation("ImgAutoAdaptiveThreshold", ImgAutoAdaptiveThreshold),
        operation("ImgHistogram", ImgAutoThreshold),
        operation<void(Grey, unsigned, float&, float&, float&)>("ImgBinaryMoments (first order)", ImgBinaryMoments,
                                                                ignored),
        operation<void(Grey, unsigned, float&, float&, float&, float&, float&, float&)>(
            "ImgBinaryMoments (second order)", ImgBinaryMoments, ignored),
        operation<short(Grey, Grey, int, int, int)>("ImgBlackTopHat", ImgBlackTopHat, stops, squares),
        operation<void(Colour, Colour, int, ZC24, ZC24)>("ImgBlackTopHat (C24)", ImgBlackTopHat, stops, squares),
        operation<short(Grey, Grey, int, int, int)>("ImgClose", ImgClose, stops, squares),
        operation<void(Colour, Colour, int, ZC24, ZC24)>("ImgClose (C24)", ImgClose, stops, squares),
        operation<void(Grey, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY, ZPathVector*)>(
            "ImgContour (ZPathVector)", ImgContour),
        operation<void(Grey, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY, ZBW8PathVector*)>(
            "ImgContour (ZBW8PathVector)", ImgContour),
        operation<short(Grey, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY, ZVector*)>(
            "ImgContour (ZVector)", ImgContour),
        operation<void(Wide, Grey, unsigned)>("ImgConvert (BW16 to BW8)", ImgConvert, replaced),
        operation<void(Grey, Wide, unsigned)>("ImgConvert (BW8 to BW16)", ImgConvert, replaced),
        operation<void(Grey, Colour)>("ImgConvert (BW8 to C24)", ImgConvert, replaced),
        operation<void(Colour, Grey)>("ImgConvert (C24 to BW8)", ImgConvert, replaced),
        operation("ImgConvertTo422 (BW8 to BW16)", ImgConvertTo422, replaced),
        operation<GreyFilter>("ImgConvolHighpass1", ImgConvolHighpass1, ignored),
        operation<ColourFilter>("ImgConvolHighpass1 (C24)", ImgConvolHighpass1),
        operation<GreyFilter>("ImgConvolHighpass2", ImgConvolHighpass2, ignored),
        operation<ColourFilter>("ImgConvolHighpass2 (C24)", ImgConvolHighpass2),
        operation<short(Grey, Grey, ZKernel*)>("ImgConvolKernel", ImgConvolKernel),
        operation<void(Colour, Colour, ZKernel*)>("ImgConvolKernel (C24)", ImgConvolKernel),
        operation<GreyFilter>("ImgConvolLaplacian4", ImgConvolLaplacian4, ignored),
        operation<ColourFilter>("ImgConvolLaplacian4 (C24)", ImgConvolLaplacian4),
        operation<GreyFilter>("ImgConvolLaplacian8", ImgConvolLaplacian8, ignored),
        operation<ColourFilter>("ImgConvolLaplacian8 (C24)", ImgConvolLaplacian8),
        operation<GreyFilter>("ImgConvolLowpass1", ImgConvolLowpass1, ignored),
        operation<ColourFilter>("ImgConvolLowpass1 (C24)", ImgConvolLowpass1),
        operation("ImgConvolLowpass1X", ImgConvolLowpass1X, ignored),
        operation("ImgConvolLowpass1Y", ImgConvolLowpass1Y, ignored),
        operation<GreyFilter>("ImgConvolLowpass2", ImgConvolLowpass2, ignored),
        operation<ColourFilter>("ImgConvolLowpass2 (C24)", ImgConvolLowpass2),
        operation<GreyFilter>("ImgConvolLowpass3", ImgConvolLowpass3, ignored),
        operation<ColourFilter>("ImgConvolLowpass3 (C24)", ImgConvolLowpass3),
        operation<GreyFilter>("ImgConvolPrewittX", ImgConvolPrewittX, ignored),
        operation<ColourFilter>("ImgConvolPrewittX (C24)", ImgConvolPrewittX),
        operation<GreyFilter>("ImgConvolPrewittXY", ImgConvolPrewittXY, ignored),
        operation<ColourFilter>("ImgConvolPrewittXY (C24)", ImgConvolPrewittXY),
        operation<GreyFilter>("ImgConvolPrewittY", ImgConvolPrewittY, ignored),
        operation<ColourFilter>("ImgConvolPrewittY (C24)", ImgConvolPrewittY),
        operation<void(Grey, Grey)>("ImgConvolRoberts", ImgConvolRoberts),
        operation<ColourFilter>("ImgConvolRoberts (C24)", ImgConvolRoberts),
        operation<GreyFilter>("ImgConvolSobelX", ImgConvolSobelX, ignored),
        operation<ColourFilter>("ImgConvolSobelX (C24)", ImgConvolSobelX),
        operation<GreyFilter>("ImgConvolSobelXY", ImgConvolSobelXY, ignored),
        operation<ColourFilter>("ImgConvolSobelXY (C24)", ImgConvolSobelXY),
        operation<GreyFilter>("ImgConvolSobelY", ImgConvolSobelY, ignored),
        operation<ColourFilter>("ImgConvolSobelY (C24)", ImgConvolSobelY),
        operation("ImgConvolSymmetricKernel", ImgConvolSymmetricKernel, ignored),
        operation<unsigned(Grey, int (*)(ZBW8&))>("ImgCount (BW8)", ImgCount),
        operation<unsigned(Colour, int (*)(ZC24&))>("ImgCount (C24)", ImgCount),
        operation<short(Grey, Grey, int, int)>("ImgDilate", ImgDilate, stops, squares),
        operation<void(Colour, Colour, int, ZC24)>("ImgDilate (C24)", ImgDilate, stops, squares),
        operation("ImgDoubleThreshold (BW8 to BW8)", ImgDoubleThreshold),
        operation("ImgEqualize", ImgEqualize),
        operation<short(Grey, Grey, int, int)>("ImgErode", ImgErode, stops, squares),
        operation<void(Colour, Colour, int, ZC24)>("ImgErode (C24)", ImgErode, stops, squares),
        operation<float(Grey)>("ImgFocusing (BW8)", ImgFocusing, stops, beyond),
        operation<float(Colour)>("ImgFocusing (C24)", ImgFocusing, stops, beyond),
        operation<void(Grey, Grey, float, float)>("ImgGainOffset", ImgGainOffset, stops, fixedPoint),
        operation<void(Colour, Colour, ZColor, ZColor)>("ImgGainOffset", ImgGainOffset),
        operation("ImgGetProfilePeaks", ImgGetProfilePeaks),
        operation("ImgGravityCenter", ImgGravityCenter),
        operation<void(Grey, ZBW8HistogramVector*)>("ImgHistogram", ImgHistogram),
        operation<void(Wide, ZBW8HistogramVector*, unsigned, unsigned, int)>("ImgHistogram (ZBW16)", ImgHistogram),
        operation<short(Grey, ZVector*)>("ImgHistogram (ZVector)", ImgHistogram),
        operation("ImgHistogramThreshold", ImgHistogramThreshold, replaced),
        operation("ImgHorizontalMirror (gray-level)", ImgHorizontalMirror, stops, beyond),
        operation<void(Grey, ZBW8Vector*, int, int, int, int)>("ImgImageToLineSegment (BW8)", ImgImageToLineSegment),
        operation<void(Colour, ZC24Vector*, int, int, int, int)>("ImgImageToLineSegment (C24)", ImgImageToLineSegment),
        operation<void(Wide, ZBW16Vector*, int, int, int, int)>("ImgImageToLineSegment (BW16)", ImgImageToLineSegment),
        operation<void(Grey, ZBW8PathVector*)>("ImgImageToPath (BW8)", ImgImageToPath),
        operation<void(Colour, ZC24PathVector*)>("ImgImageToPath (C24)", ImgImageToPath),
        operation<ZBW8(ZBW8HistogramVector*, unsigned, unsigned)>("ImgIsodataThreshold (ZBW8HistogramVector)",
                                                                  ImgIsodataThreshold, ignored),
        operation<unsigned(ZVector*, unsigned, unsigned)>("ImgIsodataThreshold (ZVector)", ImgIsodataThreshold,
                                                          ignored),
        operation<void(Grey, ZBW8Vector*, int, int, int, int)>("ImgLineSegmentToImage (BW8, vector)",
                                                               ImgLineSegmentToImage),
        operation<void(Grey, ZBW8, int, int, int, int)>("ImgLineSegmentToImage (BW8, const)", ImgLineSegmentToImage),
        operation<void(Colour, ZC24Vector*, int, int, int, int)>("ImgLineSegmentToImage (C24, vector)",
                                                                 ImgLineSegmentToImage),
        operation<void(Colour, ZC24, int, int, int, int)>("ImgLineSegmentToImage (C24, const)", ImgLineSegmentToImage),
        operation<short(Grey, Grey, ZVector*)>("ImgLut", ImgLut),
        operation<void(Grey, Grey, ZBW8Vector*)>("ImgLut", ImgLut),
        operation<void(Grey, int, int, int, int&)>("ImgMatchFrames (ZBW8)", ImgMatchFrames),
        operation<void(Colour, int, int, int, int&)>("ImgMatchFrames (ZC24)", ImgMatchFrames),
        operation("ImgMaxEntropyThreshold", ImgMaxEntropyThreshold, ignored),
        operation<short(Grey, Grey, int)>("ImgMedian", ImgMedian, stops, medians),
        operation<void(Grey, Grey)>("ImgMedian", ImgMedian),
        operation<void(Colour, Colour, ZC24)>("ImgMedian (C24)", ImgMedian),
        operation("ImgMinResidueThreshold", ImgMinResidueThreshold, ignored),
        operation("ImgNormalize", ImgNormalize),
        operation<short(Grey, Grey, int, int, int)>("ImgOpen", ImgOpen, stops, squares),
        operation<void(Colour, Colour, int, ZC24, ZC24)>("ImgOpen (C24)", ImgOpen, stops, squares),
        operation<void(Code, ZBW8, Grey)>("ImgOper (BW8 Const to Image)", ImgOper),
        operation<void(Code, Grey, Grey)>("ImgOper (BW8 Image to Image)", ImgOper),
        operation<void(Code, Grey, Colour)>("ImgOper (BW8 Image to C24 Image)", ImgOper),
        operation<void(Code, ZBW8, Grey, Grey)>("ImgOper (BW8 Const, Image to Image)", ImgOper),
        operation<void(Code, Grey, ZBW8, Grey)>("ImgOper (BW8 Image, Const to Image)", ImgOper),
        operation<void(Code, Grey, Grey, Grey)>("ImgOper (BW8 Image, Image to Image)", ImgOper),
        operation<void(Code, ZC24, Colour)>("ImgOper (C24 Const to Image)", ImgOper),
        operation<void(Code, Colour, Colour)>("ImgOper (C24 Image to Image)", ImgOper),
        operation<void(Code, ZC24, Colour, Colour)>("ImgOper (C24 Const, Image to Image)", ImgOper),
        operation<void(Code, Colour, ZC24, Colour)>("ImgOper (C24 Image, Const to Image)", ImgOper),
        operation<void(Code, Colour, Colour, Colour)>("ImgOper (C24 Image, Image to Image)", ImgOper),
        operation<void(Code, Grey, Colour, Colour)>("ImgOper (BW8 Image, C24 Image to C24 Image)", ImgOper),
        operation<void(Code, Colour, Grey, Colour)>("ImgOper (C24 Image, BW8 Image to C24 Image)", ImgOper),
        operation<void(Code, ZBW16, Wide)>("ImgOper (BW16 Const to BW16 Image)", ImgOper),
        operation<void(Code, Grey, Grey, Wide)>("ImgOper (BW8 Image and BW8 Image to BW16 Image)", ImgOper),
        operation<void(Code, Wide, Grey, Wide)>("ImgOper (BW16 Image and BW8 Image to BW16 IMage)", ImgOper),
        operation("ImgOper123", ImgOper123),
        operation("ImgOper1c2", ImgOper1c2),
        operation<void(Grey, ZBW8PathVector*)>("ImgPathToImage (BW8)", ImgPathToImage),
        operation<void(Colour, ZC24PathVector*)>("ImgPathToImage (C24)", ImgPathToImage),
        operation<short(Grey, float&)>("ImgPixelAverage (BW8)", ImgPixelAverage),
        operation<void(Colour, float&, float&, float&)>("ImgPixelAverage (C24)", ImgPixelAverage),
        operation<unsigned(Grey, Grey)>("ImgPixelCompare (BW8)", ImgPixelCompare),
        operation<unsigned(Colour, Colour)>("ImgPixelCompare (C24)", ImgPixelCompare),
        operation("ImgPixelCount", ImgPixelCount),
        operation("ImgPixelMax", ImgPixelMax),
        operation("ImgPixelMin", ImgPixelMin),
        operation("ImgPixelStat", ImgPixelStat),
        operation<short(Grey, float&, float&)>("ImgPixelStdDev", ImgPixelStdDev),
        operation<void(Colour, float&, float&, float&, float&, float&, float&, float&, float&, float&)>(
            "ImgPixelStdDev", ImgPixelStdDev),
        operation<short(Grey, float&, float&)>("ImgPixelVariance (BW8)", ImgPixelVariance),
        operation<void(Colour, float&, float&, float&, float&, float&, float&, float&, float&, float&)>(
            "ImgPixelVariance (C24)", ImgPixelVariance),
        operation("ImgProfileDerivative", ImgProfileDerivative),
        operation<void(Grey, ZBW32Vector*)>("ImgProjectOnAColumn (ZBW32Vector)", ImgProjectOnAColumn),
        operation<short(Grey, ZVector*)>("ImgProjectOnAColumn", ImgProjectOnAColumn),
        operation<void(Grey, ZBW32Vector*)>("ImgProjectOnARow (ZBW32Vector)", ImgProjectOnARow),
        operation<short(Grey, ZVector*)>("ImgProjectOnARow (ZVector)", ImgProjectOnARow),
        operation<void(Grey, Grey, int, unsigned)>("ImgRealignFrame (ZBW8)", ImgRealignFrame, stops, filling),
        operation<void(Colour, Colour, int, unsigned)>("ImgRealignFrame (ZC24)", ImgRealignFrame, stops, filling),
        operation<void(Grey, Grey, unsigned)>("ImgRebuildFrame (ZBW8)", ImgRebuildFrame),
        operation<void(Colour, Colour, unsigned)>("ImgRebuildFrame (ZC24)", ImgRebuildFrame),
        operation("ImgRecursiveAverage", ImgRecursiveAverage, stops, beyond),
        operation("ImgRecursiveAverage", follow),
        operation<void(Grey, Grey, float, float, float, float, int)>("ImgScaleRotate", ImgRegister),
        operation<void(Colour, Colour, float, float, float, float, int)>("ImgScaleRotate (C24)", ImgRegister),
        operation<void(Grey, Grey, float, float, float, float, float, float, float, float, int, int)>("ImgScaleRotate",
                                                                                                      ImgRegister),
        operation<void(Colour, Colour, float, float, float, float, float, float, float, float, int, int)>(
            "ImgScaleRotate (C24)", ImgRegister),
        operation<float(Grey, Grey, IMG_REFERENCE_NOISE)>("ImgRmsNoise (BW8 source and BW8 reference)", ImgRmsNoise),
        operation<float(Grey, Wide, unsigned, IMG_REFERENCE_NOISE)>("ImgRmsNoise (BW8 source and BW16 reference)",
                                                                    ImgRmsNoise),
        operation<short(Grey, float, float, float, float, float, float, float, Grey, int)>("ImgScaleRotate",
                                                                                           ImgScaleRotate),
        operation<void(Colour, float, float, float, float, float, float, float, Colour, int)>("ImgScaleRotate (C24)",
                                                                                              ImgScaleRotate),
        operation("ImgSetCircleWarp", circle),
        operation("ImgSetRecursiveAverageLUT", ImgSetRecursiveAverageLUT),
        operation<void(ZBW8HistogramVector*, ZBW8Vector*)>("ImgSetupEqualize (ZBW8HistogramVector)", ImgSetupEqualize),
        operation<void(ZVector*, ZVector*)>("ImgSetupEqualize (ZVector)", ImgSetupEqualize),
        operation<GreyFilter>("ImgShrink", ImgShrink),
        operation<ColourFilter>("ImgShrink (C24)", ImgShrink),
        operation<float(Grey, Grey, IMG_REFERENCE_NOISE)>("ImgSignalNoiseRatio (BW8 source and BW8 reference)",
                                                          ImgSignalNoiseRatio),
        operation<float(Grey, Wide, unsigned, IMG_REFERENCE_NOISE)>(
            "ImgSignalNoiseRatio (BW8 source and BW16 reference)", ImgSignalNoiseRatio),
        operation<void(Grey, Grey)>("ImgSwapFrames (ZBW8)", ImgSwapFrames),
        operation<ColourFilter>("ImgSwapFrames (ZC24)", ImgSwapFrames),
        operation<short(Grey, Grey, unsigned, ZBW8, ZBW8, float)>("ImgThreshold", ImgThreshold),
        operation<void(Grey, Bits, unsigned)>("ImgThreshold (BW8 to BW1)", ImgThreshold),
        operation<void(Bits, Grey, ZBW8, ZBW8)>("ImgThreshold (BW1 to BW8)", ImgThreshold),
        operation<void(Colour, Grey, ZC24, ZC24, ZColorLookup*, ZBW8, ZBW8)>("ImgThreshold (C24)", ImgThreshold),
        operation("ImgTransform", ImgTransform),
        operation<void(Grey, ZBW8, Grey, Grey)>("ImgUniformize (light background)", ImgUniformize),
        operation<void(Grey, ZBW8, Grey, ZBW8, Grey, Grey)>("ImgUniformize (light/dark background)", ImgUniformize),
        operation<void(Grey)>("ImgVerticalMirror (gray-level)", ImgVerticalMirror),
        operation<void(Colour)>("ImgVerticalMirror (color)", ImgVerticalMirror),
        operation<short(Grey, Grey, Map, Map, int, int)>("ImgWarp", ImgWarp),
        operation<void(Colour, Colour, Map, Map, int, int)>("ImgWarp (C24)", ImgWarp),
        operation<short(Grey, Grey, ZImage<ZBW32>*)>("ImgWarp", ImgWarp),
        operation<void(Grey, float&, float&, float&)>("ImgWeighedMoments (first order)", ImgWeighedMoments, ignored),
        operation<void(Grey, float&, float&, float&, float&, float&, float&)>("ImgWeighedMoments (second order)",
                                                                              ImgWeighedMoments, ignored),
        operation<short(Grey, Grey, int, int, int)>("ImgWhiteTopHat", ImgWhiteTopHat, stops, squares),
        operation<void(Colour, Colour, int, ZC24, ZC24)>("ImgWhiteTopHat (C24)", ImgWhiteTopHat, stops, squares),
        operation("ZMovingAverage::Average", average),
        operation("ZMovingAverage::Average", averageHeld),
    };
    return all;
}
