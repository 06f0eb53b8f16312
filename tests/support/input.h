// Reading bytes, of a fuzzer or random ones, as arguments. From the end of the bytes on everything reads as zero, which
// is made the most ordinary choice everywhere, so that few bytes are needed to get somewhere.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <span>
#include <type_traits>

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

    // The next bytes as they lie.
    template <class T>
    T take()
    {
        static_assert(std::is_trivially_copyable_v<T>);
        std::uint8_t bytes[sizeof(T)] = {};
        const std::size_t count = std::min(sizeof(T), bytes_.size());
        std::copy_n(bytes_.begin(), count, bytes);
        bytes_ = bytes_.subspan(count);
        T value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }

    // Both included, at most 65536 numbers.
    int number(int low, int high)
    {
        const int count = high - low + 1;
        return low + (count <= 256 ? take<std::uint8_t>() : take<std::uint16_t>()) % count;
    }

    bool oneIn(int count) { return number(1, count) == count; }

    // From 0 to 40, sometimes any.
    template <class T>
    T integer()
    {
        if (!oneIn(8))
            return static_cast<T>((number(0, 40) + 1) % 41);
        const T values[] = {take<T>(), std::numeric_limits<T>::min(), std::numeric_limits<T>::max(),
                            static_cast<T>(number(-8, 300))};
        return values[number(0, 3)];
    }

    // Near 1, of a byte's range, of 16 bits and a little more, any bit pattern or what is hardly a number.
    float real()
    {
        using Limits = std::numeric_limits<float>;
        constexpr float values[] = {Limits::quiet_NaN(),
                                    Limits::infinity(),
                                    -Limits::infinity(),
                                    Limits::max(),
                                    Limits::lowest(),
                                    Limits::min(),
                                    0};
        constexpr float scales[] = {1.0F / 4096, 1.0F / 64, 1.5F};
        const int kind = number(0, 8) % 5;
        const float any = take<float>();
        if (kind > 2)
            return kind == 3 ? any : values[number(0, std::size(values) - 1)];
        return (kind == 0 ? 1.0F : 0.0F) + static_cast<float>(std::bit_cast<std::int32_t>(any) >> 16) * scales[kind];
    }

    // Fills pixels: with the input's own bytes again and again, or with noise in some of the bits, which may be none,
    // over a constant.
    void fill(std::span<std::uint8_t> pixels)
    {
        const auto seed = take<std::uint16_t>();
        const std::uint64_t noise = everyByte * take<std::uint8_t>(), constant = everyByte * take<std::uint8_t>();
        std::uint64_t state = seed;
        for (std::size_t i = 0; i < pixels.size(); i += sizeof state) {
            const std::uint64_t word = seed ? (random(state) & noise) | constant : next(i);
            std::memcpy(&pixels[i], &word, std::min(sizeof word, pixels.size() - i));
        }
    }

private:
    static constexpr std::uint64_t everyByte = 0x0101010101010101;

    static std::uint64_t random(std::uint64_t& state)
    {
        std::uint64_t z = (state += 0x9E3779B97F4A7C15);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        return z ^ (z >> 27);
    }

    // Eight bytes of the input from position i on, the input repeating itself.
    std::uint64_t next(std::size_t i) const
    {
        std::uint64_t word = 0;
        for (std::size_t k = 0; k < sizeof word && !bytes_.empty(); ++k)
            word |= static_cast<std::uint64_t>(bytes_[(i + k) % bytes_.size()]) << (8 * k);
        return word;
    }

    std::span<const std::uint8_t> bytes_;
};
