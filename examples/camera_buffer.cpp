// A camera's buffer, used where it lies: rows with a pitch of their own, no copy.
#include <zkit/img.h>

#include <cstdio>
#include <vector>

namespace {

// What a camera's driver hands over: 8-bit pixels, each row followed by bytes that are not the picture's.
struct Frame {
    static constexpr int width = 1000, height = 750, pitch = 1024;
    std::vector<unsigned char> bytes = std::vector<unsigned char>(pitch * height, 0xee);

    void expose(unsigned char level)
    {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                bytes[static_cast<std::size_t>(y * pitch + x)] = static_cast<unsigned char>(level + x % 50);
    }
};

}  // namespace

int main()
{
    Frame frame;
    ZImage<ZBW8> picture;
    picture.Attach(frame.bytes.data(), Frame::width, Frame::height, Frame::pitch);

    // Operations work in the camera's buffer itself, also on every later exposure.
    for (const unsigned char level : {20, 60, 100}) {
        frame.expose(level);
        unsigned char min = 0, max = 0;
        float mean = 0;
        ImgPixelStat(&picture, min, max, mean);
        std::printf("levels from %d to %d, mean %g\n", min, max, mean);
        if (min != level || max != level + 49)
            return 1;
    }

    ImgOper(ARITH_LOGIC_INVERT, &picture, &picture);
    std::printf("first pixel inverted: %d, first byte after the row: 0x%x\n", frame.bytes[0],
                frame.bytes[Frame::width]);
    return ZGetError() == Z_OK && frame.bytes[0] == 155 && frame.bytes[Frame::width] == 0xee ? 0 : 1;
}
