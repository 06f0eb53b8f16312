// Linear filters, morphology and other operations on a neighbourhood of every pixel.
#include "support/operation.h"
#include "zkit/img/filter.h"

using Grey = ZROI<ZBW8>*;
using Colour = ZROI<ZC24>*;

namespace {

// What grey forms but that of Roberts do with a pending error.
constexpr Pending ignored = Pending::ignored;

const Operation operations[] = {
    operation<short(Grey, Grey)>("ImgConvolHighpass1", ImgConvolHighpass1, ignored),
    operation<short(Grey, Grey)>("ImgConvolHighpass2", ImgConvolHighpass2, ignored),
    operation<short(Grey, Grey)>("ImgConvolLowpass1", ImgConvolLowpass1, ignored),
    operation<short(Grey, Grey)>("ImgConvolLowpass2", ImgConvolLowpass2, ignored),
    operation<short(Grey, Grey)>("ImgConvolLowpass3", ImgConvolLowpass3, ignored),
    operation<short(Grey, Grey)>("ImgConvolSobelX", ImgConvolSobelX, ignored),
    operation<short(Grey, Grey)>("ImgConvolSobelY", ImgConvolSobelY, ignored),
    operation<short(Grey, Grey)>("ImgConvolSobelXY", ImgConvolSobelXY, ignored),
    operation<short(Grey, Grey)>("ImgConvolPrewittX", ImgConvolPrewittX, ignored),
    operation<short(Grey, Grey)>("ImgConvolPrewittY", ImgConvolPrewittY, ignored),
    operation<short(Grey, Grey)>("ImgConvolPrewittXY", ImgConvolPrewittXY, ignored),
    operation<short(Grey, Grey)>("ImgConvolLaplacian4", ImgConvolLaplacian4, ignored),
    operation<short(Grey, Grey)>("ImgConvolLaplacian8", ImgConvolLaplacian8, ignored),
    operation("ImgConvolLowpass1X", ImgConvolLowpass1X, ignored),
    operation("ImgConvolLowpass1Y", ImgConvolLowpass1Y, ignored),
    operation<void(Grey, Grey)>("ImgConvolRoberts", ImgConvolRoberts),

    operation<void(Colour, Colour)>("ImgConvolHighpass1 (C24)", ImgConvolHighpass1),
    operation<void(Colour, Colour)>("ImgConvolHighpass2 (C24)", ImgConvolHighpass2),
    operation<void(Colour, Colour)>("ImgConvolLowpass1 (C24)", ImgConvolLowpass1),
    operation<void(Colour, Colour)>("ImgConvolLowpass2 (C24)", ImgConvolLowpass2),
    operation<void(Colour, Colour)>("ImgConvolLowpass3 (C24)", ImgConvolLowpass3),
    operation<void(Colour, Colour)>("ImgConvolSobelX (C24)", ImgConvolSobelX),
    operation<void(Colour, Colour)>("ImgConvolSobelY (C24)", ImgConvolSobelY),
    operation<void(Colour, Colour)>("ImgConvolSobelXY (C24)", ImgConvolSobelXY),
    operation<void(Colour, Colour)>("ImgConvolPrewittX (C24)", ImgConvolPrewittX),
    operation<void(Colour, Colour)>("ImgConvolPrewittY (C24)", ImgConvolPrewittY),
    operation<void(Colour, Colour)>("ImgConvolPrewittXY (C24)", ImgConvolPrewittXY),
    operation<void(Colour, Colour)>("ImgConvolLaplacian4 (C24)", ImgConvolLaplacian4),
    operation<void(Colour, Colour)>("ImgConvolLaplacian8 (C24)", ImgConvolLaplacian8),
    operation<void(Colour, Colour)>("ImgConvolRoberts (C24)", ImgConvolRoberts),
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const Operation& operation = operations[static_cast<std::size_t>(input.number(0, std::size(operations) - 1))];
    operation.fuzz(operation.name, input);
    return 0;
}
