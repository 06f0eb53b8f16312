#include "frame/file.h"

#include "frame/checks.h"

namespace zkit {

File::~File()
{
    if (stream_)
        std::fclose(stream_);
}

bool File::open(const char* path, const char* mode)
{
    stream_ = path ? std::fopen(path, mode) : nullptr;
    return require(stream_, Z_ERROR_FILE_OPEN);
}

bool File::close()
{
    std::FILE* const closing = stream_;
    stream_ = nullptr;
    return require(std::fclose(closing) == 0, Z_ERROR_FILE_CLOSE);
}

bool readBytes(std::FILE* stream, void* data, std::size_t bytes)
{
    return require(stream && (bytes == 0 || std::fread(data, 1, bytes, stream) == bytes), Z_ERROR_FILE_READ);
}

bool writeBytes(std::FILE* stream, const void* data, std::size_t bytes)
{
    return require(stream && (bytes == 0 || std::fwrite(data, 1, bytes, stream) == bytes), Z_ERROR_FILE_WRITE);
}

Storage storageFor(std::FILE* stream, std::uint64_t announcedBytes)
{
    if (announcedBytes <= harmlessBytes)
        return Storage::atOnce;
    const auto position = ftello(stream);
    if (position < 0 || fseeko(stream, 0, SEEK_END) != 0)
        return Storage::asItComes;
    const auto end = ftello(stream);
    if (fseeko(stream, position, SEEK_SET) != 0 || end < position)
        return Storage::notAtAll;
    return static_cast<std::uint64_t>(end - position) >= announcedBytes ? Storage::atOnce : Storage::notAtAll;
}

}  // namespace zkit
