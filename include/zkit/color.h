// zkit::color: components of colour regions and conversion between colour spaces.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/pixel.h"
#include "zkit/core/roi.h"
#include "zkit/core/vector.h"
#include "zkit/export.h"

/// What ZColorLookup converts to. All components are 0 to 255.
enum Z_COLOR_SPACES : unsigned int {
    Z_COLOR_RGB = 0,  ///< red, green, blue as they are
    Z_COLOR_YUV = 1,  ///< luma and the two colour differences around 128: ITU-R BT.601, full range (as in JPEG)
    Z_COLOR_HSV = 2,  ///< hue (a full turn is 256), saturation, value
    Z_COLOR_LAB = 3   ///< CIE 1976 L*a*b* of sRGB at D65: L* scaled to 0..255, a* + 128, b* + 128
};

/// Converts colours from red, green, blue to another colour space, or back. Component 0 of a colour (byte 2 of a ZC24)
/// is red, luma, hue or L*; component 1 is green, U, saturation or a*; component 2 is blue, V, value or b*.
///
/// With m and M the smallest and the greatest of red, green, blue:
/// - luma = 0.299 R + 0.587 G + 0.114 B, U = (B - luma) / 1.772 + 128, V = (R - luma) / 1.402 + 128;
/// - value = M, saturation = 255 (M - m) / M, hue = 256/6 of 0 + (G - B)/(M - m) when red is greatest, 2 + (B - R)/
///   (M - m) when green is, 4 + (R - G)/(M - m) when blue is, modulo 256; of equal components the first named counts
///   as the greatest. Grey has hue and saturation 0;
/// - L*a*b* follows IEC 61966-2-1 (sRGB) and CIE 15.
/// The way back inverts these. Every component is computed in double precision, rounded to the nearest integer (halves
/// up) and clipped to 0..255; hue 256 becomes 0.
class ZKIT_COLOR_API ZColorLookup {
public:
    /// @param space    one of Z_COLOR_SPACES; any other raises 1011 and leaves colours as they are
    /// @param inverse  0 converts from red, green, blue to the space, any other value back
    explicit ZColorLookup(unsigned int space = Z_COLOR_RGB, int inverse = 0);

    /// Converts one colour; `in` and `out` may be the same.
    void Transform(ZC24 in, ZC24& out) const;

private:
    void (*convert_)(const double in[3], double out[3]);
};

extern template class ZKIT_COLOR_API ZVectorTemplate<ZColor>;

/// A vector of colours (see ZVectorTemplate), e.g. the corners of a region in a colour space.
class ZKIT_COLOR_API ZColorVector : public ZVectorTemplate<ZColor> {
public:
    explicit ZColorVector(unsigned int maxElements = 0);
    using ZVectorTemplate<ZColor>::operator=;
};

/// Copies one component of a colour region: dst(x, y) = byte 2 - component of src(x, y), converted by `lookup` first
/// unless that is null.
/// @param component  0, 1 or 2 (else 1013)
/// Errors, in this order: a pending error; 1400 null region; 1400 no pixels or 1401 region outside its image, of src
/// and then of dst; 1402 sizes differ; 1013; 1303 overlapping regions cannot be kept apart. dst is then unchanged.
/// Returns 0 or the code; the trail then has "ClrGetComponent".
ZKIT_COLOR_API short ClrGetComponent(ZROI<ZC24>* src, ZROI<ZBW8>* dst, unsigned int component, ZColorLookup* lookup);

/// Writes one component of a colour region: byte 2 - component of dst(x, y) = src(x, y); the other two keep their
/// values.
/// @param component  0, 1 or 2 (else 1013)
/// Errors as for ClrGetComponent, the trail has "ClrSetComponent".
ZKIT_COLOR_API short ClrSetComponent(ZROI<ZBW8>* src, ZROI<ZC24>* dst, unsigned int component);
