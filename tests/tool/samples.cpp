#include "samples.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>

Values pattern(int count, int greatest)
{
    Values values;
    std::uint32_t state = 12345;
    for (int i = 0; i < count; ++i) {
        state = state * 1664525 + 1013904223;
        values.push_back(i == 0   ? greatest
                         : i == 1 ? 0
                                  : static_cast<int>((state >> 8) % static_cast<unsigned>(greatest + 1)));
    }
    return values;
}

FileBytes pack(const Values& samples, int perRow, int bits)
{
    FileBytes bytes;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (bits == 16) {
            const auto sample = static_cast<std::uint16_t>(samples[i]);
            bytes.resize(bytes.size() + 2);
            std::memcpy(bytes.data() + bytes.size() - 2, &sample, 2);
            continue;
        }
        const int bit = static_cast<int>(i) % perRow * bits % 8;
        if (bit == 0)
            bytes.push_back(0);
        bytes.back() = static_cast<unsigned char>(bytes.back() | samples[i] << (8 - bits - bit));
    }
    return bytes;
}

Values valuesOf(const zkit::tool::Picture& picture)
{
    Values values;
    const auto add = [&](auto pixel) {
        if constexpr (std::is_same_v<decltype(pixel), ZC24>)
            values.insert(values.end(), {pixel.c2, pixel.c1, pixel.c0});
        else if constexpr (std::is_same_v<decltype(pixel), ZBW1>)
            values.push_back(pixel.bits);
        else
            values.push_back(pixel);
    };
    std::visit(
        [&](const auto& image) {
            for (int y = 0; y < image->GetHeight(); ++y)
                for (int x = 0; x < image->GetWidth(); ++x)
                    add(image->GetPixel(x, y));
        },
        picture);
    return values;
}

std::string typeOf(const zkit::tool::Picture& picture)
{
    constexpr const char* types[] = {"1", "8", "16", "24"};
    return types[picture.index()];
}

TemporaryFolder::TemporaryFolder()
{
    std::string path = (std::filesystem::temp_directory_path() / "zkit-test-XXXXXX").string();
    path_ = mkdtemp(path.data());
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryFolder::write(const std::string& name, const FileBytes& bytes) const
{
    std::ofstream(path_ / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return path_ / name;
}

FileBytes bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

zkit::tool::Picture readBytes(const FileBytes& bytes)
{
    static const TemporaryFolder folder;
    return zkit::tool::readPicture(folder.write("picture", bytes));
}
