// Files whose failures are recorded: every step returns false when it fails, so that steps are chained with &&.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace zkit {

// A file that is closed at the end of its block.
class File {
public:
    File() = default;
    ~File();
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool open(const char* path, const char* mode);  // 1102
    bool close();                                   // 1106
    std::FILE* stream() const { return stream_; }

private:
    std::FILE* stream_ = nullptr;
};

// The address may be null when there are no bytes.
bool readBytes(std::FILE* stream, void* data, std::size_t bytes);         // 1103, also without a stream
bool writeBytes(std::FILE* stream, const void* data, std::size_t bytes);  // 1104, also without a stream

// Storage of this size is taken whatever a file announces.
constexpr std::size_t harmlessBytes = 1 << 20;

// How storage is taken for what a file announces: a damaged file may announce anything.
enum class Storage {
    atOnce,     // the file holds as much, or it is little
    notAtAll,   // the file holds less
    asItComes,  // nobody knows, the stream cannot be sought
};
Storage storageFor(std::FILE* stream, std::uint64_t announcedBytes);

}  // namespace zkit
