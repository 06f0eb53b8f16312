#include "point/arithmetic_workers.h"
#include "point/combination.h"
#include "zkit/img/arithmetic_codes.h"

#include <cstring>
#include <utility>

namespace zkit::plain {
namespace {

template <class Pixel>
Pixel pixelAt(const std::uint8_t* row, std::ptrdiff_t i)
{
    Pixel pixel;
    std::memcpy(&pixel, row + i * static_cast<std::ptrdiff_t>(sizeof pixel), sizeof pixel);
    return pixel;
}

template <class Pixel, std::size_t code>
bool row(const std::uint8_t* a, const std::uint8_t* b, std::uint8_t* dst, std::ptrdiff_t count, Stores)
{
    constexpr bool divides = code == ARITH_LOGIC_DIVIDE || code == ARITH_LOGIC_MODULO;
    bool zeroDivisor = false;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const auto first = pixelAt<Pixel>(a, i), second = pixelAt<Pixel>(b, i);
        const auto pixel = static_cast<Pixel>(Meaning<Pixel>::ofCode[code](first, second, pixelAt<Pixel>(dst, i)));
        if constexpr (divides)
            zeroDivisor |= second == 0;
        std::memcpy(dst + i * static_cast<std::ptrdiff_t>(sizeof pixel), &pixel, sizeof pixel);
    }
    return zeroDivisor;
}

template <std::size_t... codes>
constexpr ArithmeticWorkers table(std::index_sequence<codes...>)
{
    return {{row<std::uint8_t, codes>...}, {row<std::uint16_t, codes>...}};
}

}  // namespace
}  // namespace zkit::plain

const zkit::ArithmeticWorkers zkit::ArithmeticWorkers::plain =
    zkit::plain::table(std::make_index_sequence<zkit::combinations>());
