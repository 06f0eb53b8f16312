// Files and streams of typed vectors that hold anything.
#include "zkit/color.h"
#include "zkit/img/vectors.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using Bytes = std::string;

constexpr std::size_t headerSize = 4, countSize = 4;
constexpr std::uint64_t harmlessBytes = 1 << 20;  // are taken whatever a file announces

void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

// A file in memory with a path.
class MemoryFile {
public:
    MemoryFile() : descriptor_(memfd_create("vector", 0)), path_("/proc/self/fd/" + std::to_string(descriptor_)) {}
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    const char* path() const { return path_.c_str(); }

    void set(const Bytes& content) const
    {
        require(ftruncate(descriptor_, 0) == 0 &&
                    pwrite(descriptor_, content.data(), content.size(), 0) == static_cast<ssize_t>(content.size()),
                "the file cannot be prepared");
    }

    Bytes content() const
    {
        Bytes bytes(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
        require(pread(descriptor_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()),
                "the file cannot be read");
        return bytes;
    }

private:
    int descriptor_;
    std::string path_;
};

short takeCode()
{
    const short code = ZGetError();
    ZClearError();
    return code;
}

template <class T>
Bytes bytesOf(const ZVectorTemplate<T>& vector)
{
    return {reinterpret_cast<const char*>(vector.GetDataPtr()), vector.GetNumElements() * sizeof(T)};
}

// What reading a count and elements must have made of a vector of `before` elements, its capacity as great.
template <class T>
void checkRead(const ZVectorTemplate<T>& vector, unsigned before, short code, const Bytes& body)
{
    require(vector.GetNumElements() <= vector.GetMaxElements(), "more elements than storage");
    if (body.size() < countSize) {
        require(code == Z_ERROR_FILE_READ && vector.GetNumElements() == before, "a count that is incomplete");
        return;
    }
    unsigned announced = 0;
    std::memcpy(&announced, body.data(), countSize);
    const std::uint64_t bytes = std::uint64_t{announced} * sizeof(T);
    const bool complete = bytes <= body.size() - countSize;
    require(code == (complete ? Z_OK : Z_ERROR_FILE_READ), "the wrong code");
    if (!complete && bytes > harmlessBytes && announced != before) {
        require(vector.GetNumElements() == 0 && vector.GetMaxElements() == before, "storage for what is not there");
        return;
    }
    require(vector.GetNumElements() == announced && vector.GetMaxElements() == announced, "the wrong count");
    const Bytes elements = body.substr(countSize, static_cast<std::size_t>(bytes));
    require(bytesOf(vector).compare(0, elements.size(), elements) == 0, "other elements");
}

template <class Vector>
void readStream(Vector& vector, Bytes body)
{
    const unsigned before = vector.GetNumElements();
    std::FILE* const in = fmemopen(body.data(), body.size(), "rb");
    vector.Serialize(in, 0);
    std::fclose(in);
    const short code = takeCode();
    checkRead(vector, before, code, body);
    if (code != Z_OK)
        return;
    char* written = nullptr;
    std::size_t size = 0;
    std::FILE* const out = open_memstream(&written, &size);
    vector.Serialize(out, 1);
    std::fclose(out);
    require(takeCode() == Z_OK && size <= body.size() && std::memcmp(written, body.data(), size) == 0,
            "a stream is written as it was not read");
    std::free(written);
}

template <class Vector>
void readFile(Vector& vector, bool headed, const Bytes& rest)
{
    static const MemoryFile file;
    Vector().Save(file.path());
    const Bytes header = file.content().substr(0, headerSize), content = headed ? header + rest : rest;
    file.set(content);
    const unsigned before = vector.GetNumElements();
    vector.Load(file.path());
    const short code = takeCode();
    if (content.substr(0, headerSize) == header)
        checkRead(vector, before, code, content.substr(headerSize));
    else
        require(code == (content.size() < headerSize ? Z_ERROR_FILE_READ : Z_ERROR_FILE_BAD_CONTENT) &&
                    vector.GetNumElements() == before,
                "a header that is not the vector's");
    if (code != Z_OK)
        return;
    vector.Save(file.path());
    const Bytes saved = file.content();
    require(takeCode() == Z_OK && saved == content.substr(0, saved.size()), "a file is written as it was not read");
}

// Into vectors that hold something already.
template <class Vector>
void read(unsigned held, bool headed, const Bytes& content)
{
    Vector streamed, loaded;
    streamed.SetNumElements(held);
    loaded.SetNumElements(held);
    readStream(streamed, content);
    readFile(loaded, headed, content);
}

constexpr void (*readers[])(unsigned held, bool headed, const Bytes& content) = {
    read<ZBW8Vector>,  read<ZBW16Vector>,    read<ZBW32Vector>,    read<ZC24Vector>,   read<ZColorVector>,
    read<ZPathVector>, read<ZBW8PathVector>, read<ZC24PathVector>, read<ZPeaksVector>, read<ZBW8HistogramVector>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size >= 2)
        readers[data[0] % std::size(readers)](data[1] / 2U % 8, data[1] % 2 == 0,
                                              Bytes(reinterpret_cast<const char*>(data + 2), size - 2));
    return 0;
}
