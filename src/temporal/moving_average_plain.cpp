#include "temporal/moving_average_workers.h"

namespace zkit::plain {
namespace {

std::uint32_t read(const std::uint8_t* numbers, std::ptrdiff_t i)
{
    return static_cast<std::uint32_t>(numbers[2 * i] | numbers[2 * i + 1] << 8);
}

void write(std::uint8_t* numbers, std::ptrdiff_t i, std::uint32_t number)
{
    numbers[2 * i] = static_cast<std::uint8_t>(number);
    numbers[2 * i + 1] = static_cast<std::uint8_t>(number >> 8);
}

void first(const AverageRows& rows, std::ptrdiff_t count, std::uint32_t times)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::uint8_t pixel = rows.src[i];
        write(rows.sum, i, times * pixel);
        rows.dst[i] = pixel;
        if (rows.kept)
            rows.kept[i] = pixel;
    }
}

void later(const AverageRows& rows, std::ptrdiff_t count, const Division& division, Stores)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::uint8_t pixel = rows.src[i], oldest = rows.oldest[i];
        const std::uint32_t sum = (read(rows.sum, i) + pixel) & 0xFFFF;
        rows.dst[i] = static_cast<std::uint8_t>(sum / division.by);
        write(rows.sum, i, sum - oldest);
        if (rows.kept)
            rows.kept[i] = pixel;
    }
}

}  // namespace
}  // namespace zkit::plain

const zkit::MovingAverageWorkers zkit::MovingAverageWorkers::plain = {plain::first, plain::later};
