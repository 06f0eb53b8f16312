#include "point/arithmetic_workers.h"
#include "point/combination.h"

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
void row(const std::uint8_t* a, const std::uint8_t* b, std::uint8_t* dst, std::ptrdiff_t count, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const auto pixel = static_cast<Pixel>(
            Meaning<Pixel>::ofCode[code](pixelAt<Pixel>(a, i), pixelAt<Pixel>(b, i), pixelAt<Pixel>(dst, i)));
        std::memcpy(dst + i * static_cast<std::ptrdiff_t>(sizeof pixel), &pixel, sizeof pixel);
    }
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
