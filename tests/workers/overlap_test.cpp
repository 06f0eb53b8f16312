#include "frame/overlap.h"
#include "support/images.h"

#include <gtest/gtest.h>

using namespace zkit;

namespace {

// Marks the bytes of both planes and looks for one marked twice.
bool overlapByMarking(const std::uint8_t* base, std::size_t size, const Source& src, const Target& dst)
{
    std::vector<int> marks(size);
    for (std::ptrdiff_t y = 0; y < src.height; ++y)
        for (std::ptrdiff_t x = 0; x < src.width; ++x)
            marks[static_cast<std::size_t>(src.data + y * src.pitch + x - base)] |= 1;
    for (std::ptrdiff_t y = 0; y < dst.height; ++y)
        for (std::ptrdiff_t x = 0; x < dst.width; ++x)
            if (marks[static_cast<std::size_t>(dst.data + y * dst.pitch + x - base)])
                return true;
    return false;
}

TEST(Overlap, regions_of_one_buffer_are_told_apart_exactly)
{
    std::vector<std::uint8_t> buffer(400);
    Random random(3);
    int overlapping = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::ptrdiff_t pitch = 20, width = random(0, 12), height = random(0, 6);
        const int sx = random(0, 20 - static_cast<int>(width)), dx = random(0, 20 - static_cast<int>(width));
        const int sy = random(0, 20 - static_cast<int>(height)), dy = random(0, 20 - static_cast<int>(height));
        Source src{buffer.data() + sy * pitch + sx, pitch, width, height};
        Target dst{buffer.data() + dy * pitch + dx, pitch, width, height};
        if (i % 2 && height > 0) {  // the same rows from the bottom up
            src.data += pitch * (height - 1);
            src.pitch = -pitch;
        }
        const bool expected = overlapByMarking(buffer.data(), buffer.size(), src, dst);
        overlapping += expected;
        ASSERT_EQ(overlap(src, dst), expected)
            << width << 'x' << height << " at " << sx << ',' << sy << " and " << dx << ',' << dy;
    }
    EXPECT_GT(overlapping, 1000);
}

}  // namespace
