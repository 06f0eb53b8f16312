#include "picture/file.h"

#include "picture/picture.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <system_error>

namespace zkit::tool {
namespace {

constexpr std::uintmax_t maxFileBytes = 0x7fffffff;

[[noreturn]] void refuse(const std::error_code& error) { throw PictureError("cannot be read: " + error.message()); }

std::size_t sizeOf(const std::filesystem::path& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        throw PictureError("there is no such file");
    if (error)
        refuse(error);
    if (std::filesystem::is_directory(status))
        throw PictureError("is a directory");
    if (!std::filesystem::is_regular_file(status))
        throw PictureError("is not a regular file");
    const auto size = std::filesystem::file_size(path, error);
    if (error)
        refuse(error);
    if (size == 0)
        throw PictureError("the file is empty");
    if (size > maxFileBytes)
        throw PictureError("the file is larger than 2 GiB");
    return static_cast<std::size_t>(size);
}

// While one lives, its thread is not interrupted.
class Uninterrupted {
public:
    Uninterrupted()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, &before_);
    }
    ~Uninterrupted() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;

private:
    sigset_t before_{};
};

}  // namespace

std::vector<unsigned char> readFile(const std::filesystem::path& path)
{
    const std::size_t size = sizeOf(path);
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        refuse({errno, std::generic_category()});
    std::vector<unsigned char> bytes(size);
    if (!stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
        throw PictureError("reading stopped before the end of the file");
    return bytes;
}

void writeFile(const std::filesystem::path& path, std::span<const unsigned char> bytes)
{
    const Uninterrupted writing;
    std::filesystem::path beside = path;
    beside += ".part";
    errno = 0;
    std::ofstream stream(beside, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    std::error_code failure;
    if (stream)
        std::filesystem::rename(beside, path, failure);
    else
        failure.assign(errno == 0 ? EIO : errno, std::generic_category());
    if (failure) {
        std::error_code ignored;
        std::filesystem::remove(beside, ignored);
        throw PictureError("cannot be written: " + failure.message());
    }
}

}  // namespace zkit::tool
