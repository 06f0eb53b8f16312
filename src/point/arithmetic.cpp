// ImgOper1c2, ImgOper123 and the forms of ImgOper.
#include "frame/call_frame.h"
#include "frame/checks.h"
#include "point/combination.h"
#include "point/combine.h"
#include "zkit/img/point.h"

#include <algorithm>

using namespace zkit;

namespace {

// Sets of codes.
using Codes = std::uint32_t;

constexpr Codes from(int first, int last) { return (Codes{2} << last) - (Codes{1} << first); }
constexpr Codes only(int code) { return from(code, code); }

constexpr Codes shifts = from(ARITH_LOGIC_SHIFT_LEFT, ARITH_LOGIC_SHIFT_RIGHT);
constexpr Codes logical = from(ARITH_LOGIC_LOGICAL_NAND, ARITH_LOGIC_LOGICAL_XNOR);
constexpr Codes masked = from(ARITH_LOGIC_COPY_WHERE_ZERO, ARITH_LOGIC_COPY_WHERE_NONZERO);

constexpr Codes ofConstant = only(ARITH_LOGIC_COPY);
constexpr Codes ofImage = from(ARITH_LOGIC_COPY, ARITH_LOGIC_INVERT);
constexpr Codes ofConstantAndImage = from(ARITH_LOGIC_COPY, ARITH_LOGIC_LESS) & ~shifts & ~logical & ~masked;
constexpr Codes ofImageAndConstant = from(ARITH_LOGIC_COPY, ARITH_LOGIC_LESS) & ~logical;
constexpr Codes ofColourAndConstant = from(ARITH_LOGIC_ADD, ARITH_LOGIC_LESS) & ~logical;
constexpr Codes ofImages = from(ARITH_LOGIC_ADD, ARITH_LOGIC_LESS) & ~shifts;
constexpr Codes ofGreyAndColour = from(ARITH_LOGIC_ADD, ARITH_LOGIC_COPY_WHERE_NONZERO) & ~shifts;
constexpr Codes ofGreysToWide = from(ARITH_LOGIC_ADD, ARITH_LOGIC_DIVIDE);
constexpr Codes ofWideAndGrey = from(ARITH_LOGIC_ADD, ARITH_LOGIC_SUBTRACT_MODULO) & ~shifts;

constexpr Codes common = from(ARITH_LOGIC_ADD, ARITH_LOGIC_MODULO) | only(ARITH_LOGIC_AVERAGE) |
                         from(ARITH_LOGIC_AND, ARITH_LOGIC_XOR) | from(ARITH_LOGIC_MIN, ARITH_LOGIC_MAX);
constexpr Codes byTable = common | ofImage | shifts | only(ARITH_LOGIC_COPY_WHERE_NONZERO);

constexpr bool contains(Codes codes, int code) { return code >= 0 && code < combinations && (codes >> code & 1) != 0; }

bool accepted(int code, Codes codes) { return require(contains(codes, code), Z_ERROR_BAD_OPERATION); }

bool divisorNotZero(int code, const Operand& b)
{
    const bool divides = code == ARITH_LOGIC_DIVIDE || code == ARITH_LOGIC_MODULO;
    return require(!(divides && std::ranges::count(b.pixel(), 0) > 0), Z_ERROR_DIVISION_BY_ZERO);
}

// A form of ImgOper.
void oper(const char* name, int code, Codes codes, const Operand& a, const Operand& b, ZGenericROI* dst)
{
    const CallFrame frame(name);
    ZGenericROI *const first = a.imageOr(b.imageOr(dst)), *const second = b.imageOr(first);
    if (frame.clear() && pointRegions(dst, first, second) && accepted(code, codes) && divisorNotZero(code, b))
        combine(code, a, b, dst);
    frame.finish();
}

// The forms whose codes make nothing of a second operand.
void oper(const char* name, int code, Codes codes, const Operand& a, ZGenericROI* dst)
{
    oper(name, code, codes, a, Operand::constant(ZC24{}), dst);
}

// A form with a grey and a colour image. It tests the sizes itself, and a null pixel address leaves no name in the
// trail, which is intended.
void operOfBoth(const char* name, int code, const Operand& a, const Operand& b, ZGenericROI* dst)
{
    const CallFrame frame(name);
    ZGenericROI *const first = a.imageOr(nullptr), *const second = b.imageOr(nullptr);
    const auto equallyLarge = [dst](const ZGenericROI* region) {
        return region->GetWidth() == dst->GetWidth() && region->GetHeight() == dst->GetHeight();
    };
    if (frame.clear() && require(first && second && dst, Z_ERROR_NO_PIXELS) &&
        require(equallyLarge(first) && equallyLarge(second), Z_ERROR_BAD_IMAGE_SIZE)) {
        if (!(hasPixels(first) && hasPixels(second) && hasPixels(dst)))
            return;
        if (placed(first) && placed(second) && placed(dst) && accepted(code, ofGreyAndColour))
            combine(code, a, b, dst);
    }
    frame.finish();
}

// The table of what a code makes of every grey level and a constant. Copying where the level is 0 leaves 0.
void fillTable(std::uint8_t* table, int code, std::uint32_t constant)
{
    for (std::uint32_t level = 0; level < 256; ++level)
        table[level] = static_cast<std::uint8_t>(
            code == ARITH_LOGIC_SET ? constant : Meaning<ZBW8>::ofCode[code](level, constant, 0));
}

}  // namespace

short ImgOper1c2(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* src, ZBW8 c, ZROI<ZBW8>* dst)
{
    const CallFrame frame("ImgOper1c2");
    if (!(frame.clear() && sameSize(src, dst)))
        return frame.trace();
    ZVector table(3);
    if (!(require(table.GetDataPtr(), Z_ERROR_VECTOR_EMPTY) &&
          (operation == ARITH_LOGIC_SET || accepted(operation, byTable)) &&
          divisorNotZero(operation, Operand::constant(c))))
        return frame.trace();
    fillTable(static_cast<std::uint8_t*>(table.GetDataPtr()), operation, c);
    ImgLut(src, dst, &table);
    return frame.finish();
}

short ImgOper123(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* a, ZROI<ZBW8>* b, ZROI<ZBW8>* dst)
{
    const CallFrame frame("ImgOper123");
    if (!(frame.clear() && sameSize(a, b) && sameSize(a, dst) && hasPixels(a) && hasPixels(b) && hasPixels(dst) &&
          placed(a) && placed(b) && placed(dst) && accepted(operation, from(ARITH_LOGIC_ADD, ARITH_LOGIC_MAX)) &&
          require(contains(common, operation), Z_ERROR_UNKNOWN)))
        return frame.trace();
    combine(operation, Operand(a), Operand(b), dst);
    return frame.finish();
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZBW8 c, ZROI<ZBW8>* dst)
{
    oper("ImgOper (BW8 Const to Image)", operation, ofConstant, Operand::constant(c), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    oper("ImgOper (BW8 Image to Image)", operation, ofImage, Operand(src), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* src, ZROI<ZC24>* dst)
{
    oper("ImgOper (BW8 Image to C24 Image)", operation, ofImage, Operand(src, greyToColour), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZBW8 c, ZROI<ZBW8>* src, ZROI<ZBW8>* dst)
{
    oper("ImgOper (BW8 Const, Image to Image)", operation, ofConstantAndImage, Operand::constant(c), Operand(src), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* src, ZBW8 c, ZROI<ZBW8>* dst)
{
    oper("ImgOper (BW8 Image, Const to Image)", operation, ofImageAndConstant, Operand(src), Operand::constant(c), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* a, ZROI<ZBW8>* b, ZROI<ZBW8>* dst)
{
    oper("ImgOper (BW8 Image, Image to Image)", operation, ofImages, Operand(a), Operand(b), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZC24 c, ZROI<ZC24>* dst)
{
    oper("ImgOper (C24 Const to Image)", operation, ofConstant, Operand::constant(c), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZC24>* src, ZROI<ZC24>* dst)
{
    oper("ImgOper (C24 Image to Image)", operation, ofImage, Operand(src), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZC24 c, ZROI<ZC24>* src, ZROI<ZC24>* dst)
{
    oper("ImgOper (C24 Const, Image to Image)", operation, ofConstantAndImage, Operand::constant(c), Operand(src), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZC24>* src, ZC24 c, ZROI<ZC24>* dst)
{
    oper("ImgOper (C24 Image, Const to Image)", operation, ofColourAndConstant, Operand(src), Operand::constant(c),
         dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZC24>* a, ZROI<ZC24>* b, ZROI<ZC24>* dst)
{
    oper("ImgOper (C24 Image, Image to Image)", operation, ofImages, Operand(a), Operand(b), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* a, ZROI<ZC24>* b, ZROI<ZC24>* dst)
{
    operOfBoth("ImgOper (BW8 Image, C24 Image to C24 Image)", operation, Operand(a, greyToColour), Operand(b), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZC24>* a, ZROI<ZBW8>* b, ZROI<ZC24>* dst)
{
    operOfBoth("ImgOper (C24 Image, BW8 Image to C24 Image)", operation, Operand(a), Operand(b, greyToColour), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZBW16 c, ZROI<ZBW16>* dst)
{
    oper("ImgOper (BW16 Const to BW16 Image)", operation, ofConstant, Operand::constant(c), dst);
}

void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* a, ZROI<ZBW8>* b, ZROI<ZBW16>* dst)
{
    oper("ImgOper (BW8 Image and BW8 Image to BW16 Image)", operation, ofGreysToWide, Operand(a, greyToWide),
         Operand(b, greyToWide), dst);
}

// The last word of the name is spelt as intended.
void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW16>* a, ZROI<ZBW8>* b, ZROI<ZBW16>* dst)
{
    oper("ImgOper (BW16 Image and BW8 Image to BW16 IMage)", operation, ofWideAndGrey, Operand(a),
         Operand(b, greyToWide), dst);
}
