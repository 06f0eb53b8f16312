// Linear filters, morphology and other operations on a neighbourhood of every pixel.
#include "support/operation.h"
#include "zkit/img/filter.h"
#include "zkit/img/morpho.h"

#include <climits>
#include <memory>

using Grey = ZROI<ZBW8>*;
using Colour = ZROI<ZC24>*;

// Half the side of a square; 0 and below, which need no region, are left out.
struct Reach {
    int n;
};

template <>
class Argument<Reach> {
public:
    Argument(Input& input, Layout&) : value_{choices[input.number(0, std::size(choices) - 1)]} {}
    Reach in(Arena&) const { return value_; }

private:
    static constexpr int choices[] = {1, 1, 1, 2, 2, 3, 4, 5, 7, 8, 15, 16, 31, 32, 33, 70, 300, INT_MAX};
    Reach value_;
};

// Kernels up to 9 x 9 with numbers of all kinds, some without enough coefficients.
template <>
class Argument<ZKernel*> {
public:
    Argument(Input& input, Layout&)
    {
        if (input.oneIn(32))
            return;
        kernel_ = std::make_unique<ZKernel>();
        const auto size = static_cast<short>(input.number(0, 9));
        kernel_->SetSizeX(size);
        kernel_->SetSizeY(input.oneIn(4) ? static_cast<short>(input.number(-1, 9)) : size);
        for (unsigned i = 0; i < kernel_->GetAllocatedSize() / sizeof(float); ++i)
            kernel_->GetDataPtr()[i] = input.real();
        kernel_->SetGain(input.real());
        kernel_->SetOffset(input.integer<unsigned>());
        kernel_->SetRectifier(static_cast<short>(input.number(-1, 4)));
        kernel_->SetOutsideValue(input.integer<unsigned>());
        if (input.oneIn(16))
            kernel_->SetSizeX(static_cast<short>(-size));
        ZClearError();
    }

    ZKernel* in(Arena&) const { return kernel_.get(); }

private:
    std::unique_ptr<ZKernel> kernel_;
};

namespace {

template <short (*operation)(Grey, Grey, int, int)>
short square(Grey src, Grey dst, Reach reach, int border)
{
    return operation(src, dst, reach.n, border);
}

template <short (*operation)(Grey, Grey, int, int, int)>
short square(Grey src, Grey dst, Reach reach, int border1, int border2)
{
    return operation(src, dst, reach.n, border1, border2);
}

template <void (*operation)(Colour, Colour, int, ZC24)>
void square(Colour src, Colour dst, Reach reach, ZC24 border)
{
    operation(src, dst, reach.n, border);
}

template <void (*operation)(Colour, Colour, int, ZC24, ZC24)>
void square(Colour src, Colour dst, Reach reach, ZC24 border1, ZC24 border2)
{
    operation(src, dst, reach.n, border1, border2);
}

// In place the median with a constant border differs from that between separate regions, as it is meant to.
short medianOfCopy(Grey src, Grey dst, int border)
{
    const bool inPlace = src && dst && src->GetPixelPtr(0, 0) && src->GetPixelPtr(0, 0) == dst->GetPixelPtr(0, 0) &&
                         src->GetWidth() == dst->GetWidth() && src->GetHeight() == dst->GetHeight();
    if (!inPlace)
        return ImgMedian(src, dst, border);
    ZImage<ZBW8> copy(src->GetWidth(), src->GetHeight());
    for (int y = 0; y < src->GetHeight(); ++y)
        for (int x = 0; x < src->GetWidth(); ++x)
            copy.SetPixel(src->GetPixel(x, y), x, y);
    return ImgMedian(&copy, dst, border);
}

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

    operation<short(Grey, Grey, ZKernel*)>("ImgConvolKernel", ImgConvolKernel),
    operation<void(Colour, Colour, ZKernel*)>("ImgConvolKernel (C24)", ImgConvolKernel),
    operation("ImgConvolSymmetricKernel", ImgConvolSymmetricKernel, ignored),

    operation<short(Grey, Grey, Reach, int)>("ImgErode", square<ImgErode>),
    operation<short(Grey, Grey, Reach, int)>("ImgDilate", square<ImgDilate>),
    operation<short(Grey, Grey, Reach, int, int)>("ImgOpen", square<ImgOpen>),
    operation<short(Grey, Grey, Reach, int, int)>("ImgClose", square<ImgClose>),
    operation<short(Grey, Grey, Reach, int, int)>("ImgWhiteTopHat", square<ImgWhiteTopHat>),
    operation<short(Grey, Grey, Reach, int, int)>("ImgBlackTopHat", square<ImgBlackTopHat>),
    operation<void(Colour, Colour, Reach, ZC24)>("ImgErode (C24)", square<ImgErode>),
    operation<void(Colour, Colour, Reach, ZC24)>("ImgDilate (C24)", square<ImgDilate>),
    operation<void(Colour, Colour, Reach, ZC24, ZC24)>("ImgOpen (C24)", square<ImgOpen>),
    operation<void(Colour, Colour, Reach, ZC24, ZC24)>("ImgClose (C24)", square<ImgClose>),
    operation<void(Colour, Colour, Reach, ZC24, ZC24)>("ImgWhiteTopHat (C24)", square<ImgWhiteTopHat>),
    operation<void(Colour, Colour, Reach, ZC24, ZC24)>("ImgBlackTopHat (C24)", square<ImgBlackTopHat>),

    operation<short(Grey, Grey, int)>("ImgMedian with a border", medianOfCopy),
    operation<void(Grey, Grey)>("ImgMedian", ImgMedian),
    operation<void(Colour, Colour, ZC24)>("ImgMedian (C24)", ImgMedian),
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const Operation& operation = operations[static_cast<std::size_t>(input.number(0, std::size(operations) - 1))];
    operation.fuzz(operation.name, input);
    return 0;
}
