// ZColorLookup and the conversions between colour spaces; ZColorVector.
#include "core/vector_template.h"
#include "frame/vector_file.h"
#include "zkit/color.h"
#include "zkit/core/error.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

using Conversion = void (*)(const double in[3], double out[3]);

void identity(const double in[3], double out[3]) { std::copy_n(in, 3, out); }

void toYuv(const double in[3], double out[3])
{
    const double luma = 0.299 * in[0] + 0.587 * in[1] + 0.114 * in[2];
    out[0] = luma;
    out[1] = (in[2] - luma) / 1.772 + 128.0;
    out[2] = (in[0] - luma) / 1.402 + 128.0;
}

void fromYuv(const double in[3], double out[3])
{
    const double u = in[1] - 128.0, v = in[2] - 128.0;
    out[0] = in[0] + 1.402 * v;
    out[1] = in[0] - (0.114 * 1.772 * u + 0.299 * 1.402 * v) / 0.587;
    out[2] = in[0] + 1.772 * u;
}

void toHsv(const double in[3], double out[3])
{
    const double red = in[0], green = in[1], blue = in[2];
    const double most = std::max({red, green, blue}), range = most - std::min({red, green, blue});
    double sixth = 0.0;
    if (range > 0)
        sixth = most == red     ? (green - blue) / range
                : most == green ? 2.0 + (blue - red) / range
                                : 4.0 + (red - green) / range;
    out[0] = (sixth < 0 ? sixth + 6.0 : sixth) * 256.0 / 6.0;
    if (out[0] >= 255.5)  // rounds to a full turn
        out[0] = 0.0;
    out[1] = most > 0 ? 255.0 * range / most : 0.0;
    out[2] = most;
}

void fromHsv(const double in[3], double out[3])
{
    const double sixth = in[0] * 6.0 / 256.0, value = in[2], range = in[1] / 255.0 * value;
    const double least = value - range, fraction = sixth - std::floor(sixth);
    const double rising = least + range * fraction, falling = value - range * fraction;
    switch (static_cast<int>(sixth)) {
    case 0: out[0] = value, out[1] = rising, out[2] = least; break;
    case 1: out[0] = falling, out[1] = value, out[2] = least; break;
    case 2: out[0] = least, out[1] = value, out[2] = rising; break;
    case 3: out[0] = least, out[1] = falling, out[2] = value; break;
    case 4: out[0] = rising, out[1] = least, out[2] = value; break;
    default: out[0] = value, out[1] = least, out[2] = falling; break;
    }
}

// IEC 61966-2-1: linear light from and to the coded values, 0 to 1.
double linear(double coded) { return coded <= 0.04045 ? coded / 12.92 : std::pow((coded + 0.055) / 1.055, 2.4); }

double coded(double linear)
{
    return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055;
}

constexpr double whiteX = 0.95047, whiteZ = 1.08883;  // D65, Y = 1

// CIE 15: the cube root with a straight line near black.
double labFunction(double t) { return t > 216.0 / 24389.0 ? std::cbrt(t) : (24389.0 / 27.0 * t + 16.0) / 116.0; }

double labInverse(double f)
{
    const double cube = f * f * f;
    return cube > 216.0 / 24389.0 ? cube : (116.0 * f - 16.0) * 27.0 / 24389.0;
}

void toLab(const double in[3], double out[3])
{
    const double red = linear(in[0] / 255.0), green = linear(in[1] / 255.0), blue = linear(in[2] / 255.0);
    const double fx = labFunction((0.4124564 * red + 0.3575761 * green + 0.1804375 * blue) / whiteX);
    const double fy = labFunction(0.2126729 * red + 0.7151522 * green + 0.0721750 * blue);
    const double fz = labFunction((0.0193339 * red + 0.1191920 * green + 0.9503041 * blue) / whiteZ);
    out[0] = (116.0 * fy - 16.0) * 255.0 / 100.0;
    out[1] = 500.0 * (fx - fy) + 128.0;
    out[2] = 200.0 * (fy - fz) + 128.0;
}

void fromLab(const double in[3], double out[3])
{
    const double fy = (in[0] * 100.0 / 255.0 + 16.0) / 116.0;
    const double x = whiteX * labInverse(fy + (in[1] - 128.0) / 500.0);
    const double y = labInverse(fy);
    const double z = whiteZ * labInverse(fy - (in[2] - 128.0) / 200.0);
    out[0] = 255.0 * coded(3.2404542 * x - 1.5371385 * y - 0.4985314 * z);
    out[1] = 255.0 * coded(-0.9692660 * x + 1.8760108 * y + 0.0415560 * z);
    out[2] = 255.0 * coded(0.0556434 * x - 0.2040259 * y + 1.0572252 * z);
}

struct ColourSpace {
    Conversion forward, inverse;
};

constexpr ColourSpace colourSpaces[] = {{identity, identity}, {toYuv, fromYuv}, {toHsv, fromHsv}, {toLab, fromLab}};

unsigned char toByte(double value)
{
    return static_cast<unsigned char>(std::clamp(std::floor(value + 0.5), 0.0, 255.0));
}

}  // namespace

ZColorLookup::ZColorLookup(unsigned int space, int inverse) : convert_(identity)
{
    if (space < std::size(colourSpaces))
        convert_ = inverse ? colourSpaces[space].inverse : colourSpaces[space].forward;
    else
        ZSetError(Z_ERROR_ARGUMENT_1_OUT_OF_RANGE);
}

void ZColorLookup::Transform(ZC24 in, ZC24& out) const
{
    const double components[3] = {static_cast<double>(in.c2), static_cast<double>(in.c1), static_cast<double>(in.c0)};
    double converted[3];
    convert_(components, converted);
    out = {toByte(converted[2]), toByte(converted[1]), toByte(converted[0])};
}

template <>
constexpr zkit::ElementMark zkit::elementMark<ZColor> = {5, 'F'};  // the other types: analysis/vectors.cpp

template class ZVectorTemplate<ZColor>;

ZColorVector::ZColorVector(unsigned int maxElements) : ZVectorTemplate<ZColor>(maxElements) {}
