// Point operations and conversions.
#include "operation.h"
#include "zkit/img.h"

namespace bench {

namespace {

struct Table {
    ZVector vector{3};

    Table()
    {
        auto* entries = static_cast<unsigned char*>(vector.GetDataPtr());
        for (int level = 0; level < 256; ++level)
            entries[level] = tableEntry(level);
    }
};

void lut(Scene& scene)
{
    static Table curve;
    ImgLut(scene.grey(), scene.greyResult(), &curve.vector);
}

template <int useTable>
void transform(Scene& scene)
{
    const auto curve = [](unsigned char level) { return tableEntry(level); };
    ImgTransform(scene.grey(), scene.greyResult(), curve, useTable);
}

void normalize(Scene& scene) { ImgNormalize(scene.grey(), scene.greyResult(), wantedMean, wantedDeviation); }

void gainOffset(Scene& scene) { ImgGainOffset(scene.grey(), scene.greyResult(), gain, offset); }

void steepGainOffset(Scene& scene) { ImgGainOffset(scene.grey(), scene.greyResult(), steepGain, offset); }

void gainOffsetColor(Scene& scene)
{
    ImgGainOffset(scene.color(), scene.colorResult(), {gain, 1.1f, 0.9f}, {offset, 3.f, 5.f});
}

void uniformize(Scene& scene) { ImgUniformize(scene.grey(), lightLevel, scene.greyReference(), scene.greyResult()); }

void uniformizeLightAndDark(Scene& scene)
{
    ImgUniformize(scene.grey(), lightLevel, scene.greyReference(), darkLevel, scene.dark(), scene.greyResult());
}

void threshold(Scene& scene) { ImgThreshold(scene.grey(), scene.greyResult(), high, 0, 255, 0); }

template <IMG_THRESHOLD_MODES mode>
void chosenThreshold(Scene& scene)
{
    ImgThreshold(scene.grey(), scene.greyResult(), static_cast<unsigned int>(mode), 0, 255, 0.5f);
}

void doubleThreshold(Scene& scene) { ImgDoubleThreshold(scene.grey(), scene.greyResult(), low, high, 0, 128, 255); }

void greyToBits(Scene& scene) { ImgThreshold(scene.grey(), scene.bitsResult(), high); }

void bitsToGrey(Scene& scene) { ImgThreshold(scene.bits(), scene.greyResult(), 0, 255); }

void colorRange(Scene& scene)
{
    ImgThreshold(scene.color(), scene.greyResult(), {0, low, 0}, {high, high, 255}, nullptr, 0, 255);
}

void autoThreshold(Scene& scene) { ImgAutoThreshold(scene.grey(), IMG_THRESHOLD_ISODATA, 0); }

void narrow(Scene& scene) { ImgConvert(scene.greySum(), scene.greyResult(), shift); }

void widen(Scene& scene) { ImgConvert(scene.grey(), scene.grey16Result(), shift); }

void greyToColor(Scene& scene) { ImgConvert(scene.grey(), scene.colorResult()); }

void colorToGrey(Scene& scene) { ImgConvert(scene.color(), scene.greyResult()); }

void to422(Scene& scene) { ImgConvertTo422(scene.grey(), scene.grey16Result()); }

constexpr Operation table[] = {
    {"ImgLut", "BW8", 1, 1, lut},
    {"ImgTransform", "BW8", 1, 1, transform<1>},
    {"ImgTransform", "BW8 function", 1, 1, transform<0>},
    {"ImgNormalize", "BW8", 2, 1, normalize},
    {"ImgGainOffset", "BW8", 1, 1, gainOffset},
    {"ImgGainOffset", "BW8 steep", 1, 1, steepGainOffset},
    {"ImgGainOffset", "C24", 3, 3, gainOffsetColor},
    {"ImgUniformize", "BW8 light", 2, 1, uniformize},
    {"ImgUniformize", "BW8 light, dark", 3, 1, uniformizeLightAndDark},
    {"ImgThreshold", "BW8", 1, 1, threshold},
    {"ImgThreshold", "BW8 isodata", 2, 1, chosenThreshold<IMG_THRESHOLD_ISODATA>},
    {"ImgThreshold", "BW8 entropy", 2, 1, chosenThreshold<IMG_THRESHOLD_MAX_ENTROPY>},
    {"ImgThreshold", "BW8 residue", 2, 1, chosenThreshold<IMG_THRESHOLD_MIN_RESIDUE>},
    {"ImgThreshold", "BW8 relative", 2, 1, chosenThreshold<IMG_THRESHOLD_RELATIVE>},
    {"ImgThreshold", "BW8 to BW1", 1, 0, greyToBits},
    {"ImgThreshold", "BW1 to BW8", 0, 1, bitsToGrey},
    {"ImgThreshold", "C24", 3, 1, colorRange},
    {"ImgDoubleThreshold", "BW8", 1, 1, doubleThreshold},
    {"ImgAutoThreshold", "BW8", 1, 0, autoThreshold},
    {"ImgConvert", "BW16 to BW8", 2, 1, narrow},
    {"ImgConvert", "BW8 to BW16", 1, 2, widen},
    {"ImgConvert", "BW8 to C24", 1, 3, greyToColor},
    {"ImgConvert", "C24 to BW8", 3, 1, colorToGrey},
    {"ImgConvertTo422", "BW8", 1, 2, to422},
};

}  // namespace

std::span<const Operation> pointOperations() { return table; }

}  // namespace bench
