#include "point/combine.h"

#include "frame/checks.h"
#include "frame/walk.h"
#include "point/arithmetic_workers.h"
#include "point/convert_workers.h"
#include "simd/choice.h"
#include "zkit/img/arithmetic_codes.h"

#include <algorithm>
#include <cstring>

namespace zkit {

namespace {

// What is made of an operand at a time: it stays in the first-level cache until it is combined.
constexpr std::ptrdiff_t stretchBytes = 8192;

// The pixels of an operand as the destination has them.
class OperandRows {
public:
    OperandRows(const Operand& operand, std::ptrdiff_t pixelSize)
        : constant_(operand.isConstant()), convert_(operand.convert()), pixelSize_(pixelSize)
    {
        if (constant_)
            repeat(operand.pixel());
    }

    bool isMade() const { return constant_ || convert_; }

    // `count` pixels from column x on of the row that the operand's image has at `row`.
    const std::uint8_t* pixels(const std::uint8_t* row, std::ptrdiff_t x, std::ptrdiff_t count)
    {
        if (!isMade())
            return row + x * pixelSize_;
        if (convert_)
            convert_(row + x, made_, count, Stores::cached);
        return made_;
    }

private:
    // Fills with copies of a pixel, doubling what is there.
    void repeat(std::span<const std::uint8_t> pixel)
    {
        std::copy(pixel.begin(), pixel.end(), made_);
        for (std::size_t filled = pixel.size(); filled < sizeof made_; filled *= 2)
            std::memcpy(made_ + filled, made_, std::min(filled, sizeof made_ - filled));
    }

    bool constant_;
    Convert convert_;
    std::ptrdiff_t pixelSize_;
    alignas(64) std::uint8_t made_[stretchBytes];
};

}  // namespace

void greyToColour(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    workers<ConvertWorkers>().greyToColour(src, dst, count, stores);
}

void greyToWide(const std::uint8_t* src, std::uint8_t* dst, std::ptrdiff_t count, Stores stores)
{
    workers<ConvertWorkers>().greyToWide(src, dst, count, 0, stores);
}

void combine(int code, const Operand& a, const Operand& b, const ZGenericROI* dst)
{
    const int pixelSize = dst->GetPixelSize();
    const bool wide = pixelSize == sizeof(ZBW16);
    const auto& all = workers<ArithmeticWorkers>();
    const CombineRow combineRow = wide ? all.words[code] : all.bytes[code];
    const std::ptrdiff_t lanesPerPixel = wide ? 1 : pixelSize;

    const ZGenericROI *const imageA = a.imageOr(nullptr), *const imageB = b.imageOr(nullptr);
    OperandRows rowsA(a, pixelSize), rowsB(b, pixelSize);
    const std::ptrdiff_t made = stretchBytes / pixelSize / 64 * 64;
    const std::ptrdiff_t stretch = rowsA.isMade() || rowsB.isMade() ? made : PTRDIFF_MAX;
    bool zeroDivisor = false;

    const auto row = [&](auto rowA, auto rowB, std::uint8_t* out, std::ptrdiff_t count, Stores stores) {
        if (code == ARITH_LOGIC_COPY && a.convert()) {  // nothing is to be done but that
            a.convert()(rowA, out, count, stores);
            return;
        }
        for (std::ptrdiff_t x = 0; x < count;) {
            const std::ptrdiff_t pixels = std::min(stretch, count - x);
            zeroDivisor |= combineRow(rowsA.pixels(rowA, x, pixels), rowsB.pixels(rowB, x, pixels), out + x * pixelSize,
                                      pixels * lanesPerPixel, stores);
            x += pixels;
        }
    };
    if (pointRows(dst, row, imageA, imageB))
        require(!zeroDivisor, Z_ERROR_DIVISION_BY_ZERO_PIXEL);
}

}  // namespace zkit
