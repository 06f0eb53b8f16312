// Arithmetic and logic between images and constants.
#include "operation.h"
#include "zkit/img.h"

namespace bench {

namespace {

constexpr ZC24 colorConstant = {constant, constant + 1, constant + 2};

using Code = ARITH_LOGIC_OPERATIONS;

void fill(Scene& scene) { ImgOper(ARITH_LOGIC_COPY, constant, scene.greyResult()); }

void fill16(Scene& scene) { ImgOper(ARITH_LOGIC_COPY, ZBW16(constant), scene.grey16Result()); }

void fillColor(Scene& scene) { ImgOper(ARITH_LOGIC_COPY, colorConstant, scene.colorResult()); }

template <Code code>
void image(Scene& scene)
{
    ImgOper(code, scene.grey(), scene.greyResult());
}

void greyToColor(Scene& scene) { ImgOper(ARITH_LOGIC_COPY, scene.grey(), scene.colorResult()); }

template <Code code>
void colorImage(Scene& scene)
{
    ImgOper(code, scene.color(), scene.colorResult());
}

template <Code code>
void images(Scene& scene)
{
    ImgOper(code, scene.grey(), scene.greyReference(), scene.greyResult());
}

template <Code code>
void maskAndImage(Scene& scene)
{
    ImgOper(code, scene.mask(), scene.grey(), scene.greyResult());
}

template <Code code>
void imageAndConstant(Scene& scene)
{
    ImgOper(code, scene.grey(), constant, scene.greyResult());
}

template <Code code>
void maskAndConstant(Scene& scene)
{
    ImgOper(code, scene.mask(), constant, scene.greyResult());
}

template <Code code>
void constantAndImage(Scene& scene)
{
    ImgOper(code, high, scene.grey(), scene.greyResult());
}

template <Code code>
void colorImages(Scene& scene)
{
    ImgOper(code, scene.color(), scene.colorReference(), scene.colorResult());
}

template <Code code>
void colorImageAndConstant(Scene& scene)
{
    ImgOper(code, scene.color(), colorConstant, scene.colorResult());
}

template <Code code>
void greyAndColor(Scene& scene)
{
    ImgOper(code, scene.grey(), scene.colorReference(), scene.colorResult());
}

template <Code code>
void imagesTo16(Scene& scene)
{
    ImgOper(code, scene.grey(), scene.greyReference(), scene.grey16Result());
}

template <Code code>
void images16(Scene& scene)
{
    ImgOper(code, scene.greySum(), scene.grey(), scene.grey16Result());
}

template <Code code>
void oper123(Scene& scene)
{
    ImgOper123(code, scene.grey(), scene.greyReference(), scene.greyResult());
}

template <Code code>
void oper1c2(Scene& scene)
{
    ImgOper1c2(code, scene.grey(), constant, scene.greyResult());
}

// "const" stands where the constant does: "BW8 const" is an image and a constant. What copies under a mask must keep
// the other pixels of the result, which is why it is read.
constexpr Operation table[] = {
    {"ImgOper", "const to BW8", 0, 1, fill},
    {"ImgOper", "const to BW16", 0, 2, fill16},
    {"ImgOper", "const to C24", 0, 3, fillColor},
    {"ImgOper", "BW8 copy", 1, 1, image<ARITH_LOGIC_COPY>},
    {"ImgOper", "BW8 invert", 1, 1, image<ARITH_LOGIC_INVERT>},
    {"ImgOper", "C24 copy", 3, 3, colorImage<ARITH_LOGIC_COPY>},
    {"ImgOper", "BW8 to C24 copy", 1, 3, greyToColor},

    {"ImgOper", "BW8 add", 2, 1, images<ARITH_LOGIC_ADD>},
    {"ImgOper", "BW8 subtract", 2, 1, images<ARITH_LOGIC_SUBTRACT>},
    {"ImgOper", "BW8 multiply", 2, 1, images<ARITH_LOGIC_MULTIPLY>},
    {"ImgOper", "BW8 divide", 2, 1, images<ARITH_LOGIC_DIVIDE>},
    {"ImgOper", "BW8 modulo", 2, 1, images<ARITH_LOGIC_MODULO>},
    {"ImgOper", "BW8 average", 2, 1, images<ARITH_LOGIC_AVERAGE>},
    {"ImgOper", "BW8 difference", 2, 1, images<ARITH_LOGIC_DIFFERENCE>},
    {"ImgOper", "BW8 scaled multiply", 2, 1, images<ARITH_LOGIC_SCALED_MULTIPLY>},
    {"ImgOper", "BW8 scaled divide", 2, 1, images<ARITH_LOGIC_SCALED_DIVIDE>},
    {"ImgOper", "BW8 and", 2, 1, images<ARITH_LOGIC_AND>},
    {"ImgOper", "BW8 or", 2, 1, images<ARITH_LOGIC_OR>},
    {"ImgOper", "BW8 xor", 2, 1, images<ARITH_LOGIC_XOR>},
    {"ImgOper", "BW8 nand", 2, 1, maskAndImage<ARITH_LOGIC_LOGICAL_NAND>},
    {"ImgOper", "BW8 min", 2, 1, images<ARITH_LOGIC_MIN>},
    {"ImgOper", "BW8 max", 2, 1, images<ARITH_LOGIC_MAX>},
    {"ImgOper", "BW8 copy where 0", 3, 1, maskAndImage<ARITH_LOGIC_COPY_WHERE_ZERO>},
    {"ImgOper", "BW8 copy where not 0", 3, 1, maskAndImage<ARITH_LOGIC_COPY_WHERE_NONZERO>},
    {"ImgOper", "BW8 equal", 2, 1, images<ARITH_LOGIC_EQUAL>},
    {"ImgOper", "BW8 greater or equal", 2, 1, images<ARITH_LOGIC_GREATER_OR_EQUAL>},
    {"ImgOper", "BW8 greater", 2, 1, images<ARITH_LOGIC_GREATER>},

    {"ImgOper", "BW8 const add", 1, 1, imageAndConstant<ARITH_LOGIC_ADD>},
    {"ImgOper", "BW8 const subtract", 1, 1, imageAndConstant<ARITH_LOGIC_SUBTRACT>},
    {"ImgOper", "BW8 const multiply", 1, 1, imageAndConstant<ARITH_LOGIC_MULTIPLY>},
    {"ImgOper", "BW8 const divide", 1, 1, imageAndConstant<ARITH_LOGIC_DIVIDE>},
    {"ImgOper", "BW8 const modulo", 1, 1, imageAndConstant<ARITH_LOGIC_MODULO>},
    {"ImgOper", "BW8 const shift left", 1, 1, imageAndConstant<ARITH_LOGIC_SHIFT_LEFT>},
    {"ImgOper", "BW8 const shift right", 1, 1, imageAndConstant<ARITH_LOGIC_SHIFT_RIGHT>},
    {"ImgOper", "BW8 const average", 1, 1, imageAndConstant<ARITH_LOGIC_AVERAGE>},
    {"ImgOper", "BW8 const difference", 1, 1, imageAndConstant<ARITH_LOGIC_DIFFERENCE>},
    {"ImgOper", "BW8 const scaled multiply", 1, 1, imageAndConstant<ARITH_LOGIC_SCALED_MULTIPLY>},
    {"ImgOper", "BW8 const scaled divide", 1, 1, imageAndConstant<ARITH_LOGIC_SCALED_DIVIDE>},
    {"ImgOper", "BW8 const and", 1, 1, imageAndConstant<ARITH_LOGIC_AND>},
    {"ImgOper", "BW8 const or", 1, 1, imageAndConstant<ARITH_LOGIC_OR>},
    {"ImgOper", "BW8 const xor", 1, 1, imageAndConstant<ARITH_LOGIC_XOR>},
    {"ImgOper", "BW8 const min", 1, 1, imageAndConstant<ARITH_LOGIC_MIN>},
    {"ImgOper", "BW8 const max", 1, 1, imageAndConstant<ARITH_LOGIC_MAX>},
    {"ImgOper", "BW8 const copy where 0", 2, 1, maskAndConstant<ARITH_LOGIC_COPY_WHERE_ZERO>},
    {"ImgOper", "BW8 const copy where not 0", 2, 1, maskAndConstant<ARITH_LOGIC_COPY_WHERE_NONZERO>},
    {"ImgOper", "BW8 const equal", 1, 1, imageAndConstant<ARITH_LOGIC_EQUAL>},
    {"ImgOper", "BW8 const greater or equal", 1, 1, imageAndConstant<ARITH_LOGIC_GREATER_OR_EQUAL>},
    {"ImgOper", "BW8 const greater", 1, 1, imageAndConstant<ARITH_LOGIC_GREATER>},
    {"ImgOper", "const BW8 subtract", 1, 1, constantAndImage<ARITH_LOGIC_SUBTRACT>},
    {"ImgOper", "const BW8 divide", 1, 1, constantAndImage<ARITH_LOGIC_DIVIDE>},

    {"ImgOper", "C24 add", 6, 3, colorImages<ARITH_LOGIC_ADD>},
    {"ImgOper", "C24 multiply", 6, 3, colorImages<ARITH_LOGIC_MULTIPLY>},
    {"ImgOper", "C24 divide", 6, 3, colorImages<ARITH_LOGIC_DIVIDE>},
    {"ImgOper", "C24 average", 6, 3, colorImages<ARITH_LOGIC_AVERAGE>},
    {"ImgOper", "C24 const add", 3, 3, colorImageAndConstant<ARITH_LOGIC_ADD>},
    {"ImgOper", "C24 const multiply", 3, 3, colorImageAndConstant<ARITH_LOGIC_MULTIPLY>},
    {"ImgOper", "BW8 C24 add", 4, 3, greyAndColor<ARITH_LOGIC_ADD>},
    {"ImgOper", "BW8 to BW16 add", 2, 2, imagesTo16<ARITH_LOGIC_ADD>},
    {"ImgOper", "BW8 to BW16 multiply", 2, 2, imagesTo16<ARITH_LOGIC_MULTIPLY>},
    {"ImgOper", "BW16 BW8 add", 3, 2, images16<ARITH_LOGIC_ADD>},
    {"ImgOper", "BW16 BW8 divide", 3, 2, images16<ARITH_LOGIC_DIVIDE>},

    {"ImgOper123", "BW8 add", 2, 1, oper123<ARITH_LOGIC_ADD>},
    {"ImgOper123", "BW8 multiply", 2, 1, oper123<ARITH_LOGIC_MULTIPLY>},
    {"ImgOper123", "BW8 divide", 2, 1, oper123<ARITH_LOGIC_DIVIDE>},
    {"ImgOper1c2", "BW8 const add", 1, 1, oper1c2<ARITH_LOGIC_ADD>},
};

}  // namespace

std::span<const Operation> arithmeticOperations() { return table; }

}  // namespace bench
