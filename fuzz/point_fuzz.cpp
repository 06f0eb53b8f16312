// Point operations and arithmetic.
#include "support/operation.h"
#include "zkit/img/point.h"

using Grey = ZROI<ZBW8>*;
using Deep = ZROI<ZBW16>*;
using Colour = ZROI<ZC24>*;
using Code = ARITH_LOGIC_OPERATIONS;
using Function = unsigned char (*)(unsigned char);

namespace {

unsigned char callsSoFar;

}  // namespace

template <>
class Argument<Function> {
public:
    Argument(Input& input, Layout&) : choice_(input.number(0, 3)) {}

    Function in(Arena&) const
    {
        callsSoFar = 0;
        static constexpr Function functions[] = {
            [](unsigned char level) { return static_cast<unsigned char>(level * 7 + 3); },
            // Tells in which order it is called.
            [](unsigned char level) { return static_cast<unsigned char>(level ^ ++callsSoFar); },
            [](unsigned char level) {
                ZSetError(Z_ERROR_DIVISION_BY_ZERO_PIXEL);
                return level;
            },
            nullptr};
        return functions[choice_];
    }

private:
    int choice_;
};

template <>
class Argument<ZVector*> {
public:
    Argument(Input& input, Layout&)
    {
        const int kind = input.number(0, 31);
        if (kind == 31)
            return;
        vector_ = std::make_unique<ZVector>(3);
        if (kind > 24) {
            const int lengths[] = {0, 1, 255, 256, 257};
            vector_->SetStructure(input.number(1, 4), input.number(0, 3), lengths[input.number(0, 4)],
                                  input.number(0, 4));
        }
        ZClearError();
        if (vector_->GetDataPtr())
            input.fill({static_cast<std::uint8_t*>(vector_->GetDataPtr()),
                        static_cast<std::size_t>(vector_->GetAllocatedSize())});
    }

    ZVector* in(Arena&) const { return vector_.get(); }

private:
    std::unique_ptr<ZVector> vector_;
};

template <>
class Argument<ZBW8Vector*> {
public:
    Argument(Input& input, Layout&)
    {
        const int kind = input.number(0, 31);
        if (kind == 31)
            return;
        vector_ = std::make_unique<ZBW8Vector>();
        vector_->SetNumElements(kind > 24 ? static_cast<unsigned>(input.number(0, 257)) : 256);
        input.fill({vector_->GetDataPtr(), vector_->GetNumElements()});
    }

    ZBW8Vector* in(Arena&) const { return vector_.get(); }

private:
    std::unique_ptr<ZBW8Vector> vector_;
};

namespace {

// Gains from 0 to 4 in fixed point and offsets of 16 bits, both truncated; what is not a number counts as 0.
bool fixedPointFits(Grey, Grey, float gain, float offset)
{
    const float fixed = gain * 32;
    return !(fixed <= -1 || fixed >= 129 || offset <= -32769 || offset >= 32768);
}

const Operation operations[] = {
    operation<short(Grey, Grey, ZVector*)>("ImgLut (vector)", ImgLut),
    operation<void(Grey, Grey, ZBW8Vector*)>("ImgLut (typed vector)", ImgLut),
    operation("ImgNormalize", ImgNormalize),
    operation<void(Grey, Grey, float, float)>("ImgGainOffset (BW8)", ImgGainOffset, Pending::stops, fixedPointFits),
    operation<void(Colour, Colour, ZColor, ZColor)>("ImgGainOffset (C24)", ImgGainOffset),
    operation("ImgTransform", ImgTransform),
    operation<void(Grey, ZBW8, Grey, Grey)>("ImgUniformize (light)", ImgUniformize),
    operation<void(Grey, ZBW8, Grey, ZBW8, Grey, Grey)>("ImgUniformize (light, dark)", ImgUniformize),

    operation<void(Deep, Grey, unsigned)>("ImgConvert (BW16 to BW8)", ImgConvert, Pending::replaced),
    operation<void(Grey, Deep, unsigned)>("ImgConvert (BW8 to BW16)", ImgConvert, Pending::replaced),
    operation("ImgConvertTo422", ImgConvertTo422, Pending::replaced),
    operation<void(Grey, Colour)>("ImgConvert (BW8 to C24)", ImgConvert, Pending::replaced),
    operation<void(Colour, Grey)>("ImgConvert (C24 to BW8)", ImgConvert, Pending::replaced),

    operation("ImgOper1c2", ImgOper1c2),
    operation("ImgOper123", ImgOper123),
    operation<void(Code, ZBW8, Grey)>("ImgOper (BW8 constant to BW8)", ImgOper),
    operation<void(Code, Grey, Grey)>("ImgOper (BW8 to BW8)", ImgOper),
    operation<void(Code, Grey, Colour)>("ImgOper (BW8 to C24)", ImgOper),
    operation<void(Code, ZBW8, Grey, Grey)>("ImgOper (BW8 constant, BW8 to BW8)", ImgOper),
    operation<void(Code, Grey, ZBW8, Grey)>("ImgOper (BW8, BW8 constant to BW8)", ImgOper),
    operation<void(Code, Grey, Grey, Grey)>("ImgOper (BW8, BW8 to BW8)", ImgOper),
    operation<void(Code, ZC24, Colour)>("ImgOper (C24 constant to C24)", ImgOper),
    operation<void(Code, Colour, Colour)>("ImgOper (C24 to C24)", ImgOper),
    operation<void(Code, ZC24, Colour, Colour)>("ImgOper (C24 constant, C24 to C24)", ImgOper),
    operation<void(Code, Colour, ZC24, Colour)>("ImgOper (C24, C24 constant to C24)", ImgOper),
    operation<void(Code, Colour, Colour, Colour)>("ImgOper (C24, C24 to C24)", ImgOper),
    operation<void(Code, Grey, Colour, Colour)>("ImgOper (BW8, C24 to C24)", ImgOper),
    operation<void(Code, Colour, Grey, Colour)>("ImgOper (C24, BW8 to C24)", ImgOper),
    operation<void(Code, ZBW16, Deep)>("ImgOper (BW16 constant to BW16)", ImgOper),
    operation<void(Code, Grey, Grey, Deep)>("ImgOper (BW8, BW8 to BW16)", ImgOper),
    operation<void(Code, Deep, Grey, Deep)>("ImgOper (BW16, BW8 to BW16)", ImgOper),
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const Operation& operation = operations[static_cast<std::size_t>(input.number(0, std::size(operations) - 1))];
    operation.fuzz(operation.name, input);
    return 0;
}
