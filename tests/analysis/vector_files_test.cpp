#include "support/errors.h"
#include "support/images.h"
#include "zkit/color.h"
#include "zkit/img/vectors.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>
#include <unistd.h>

namespace {

using Bytes = std::string;
using std::string_literals::operator""s;

// A file that is removed at the end of its block.
class TemporaryFile {
public:
    TemporaryFile() : path(testing::TempDir() + "zkit_vector_" + std::to_string(getpid())) {}
    explicit TemporaryFile(const Bytes& content) : TemporaryFile() { std::ofstream(path, std::ios::binary) << content; }
    ~TemporaryFile() { std::filesystem::remove(path); }

    Bytes content() const
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const std::string path;
};

Bytes number(unsigned value) { return {reinterpret_cast<const char*>(&value), sizeof value}; }

template <class T>
Bytes bytesOfVector(const ZVectorTemplate<T>& vector)
{
    return {reinterpret_cast<const char*>(vector.GetDataPtr()), vector.GetNumElements() * sizeof(T)};
}

template <class T>
void fillVector(ZVectorTemplate<T>& vector, unsigned count)
{
    Random random(5);
    vector.SetNumElements(count);
    for (std::size_t i = 0; i < count * sizeof(T); ++i)
        reinterpret_cast<unsigned char*>(vector.GetDataPtr())[i] = static_cast<unsigned char>(random(0, 255));
}

constexpr unsigned severalMiB = 700000;  // elements of a ZPathVector

class VectorFilesTest : public OperationTest {};

template <class Vector>
void expectRoundTrip(const Bytes& header)
{
    for (const unsigned count : {0U, 1U, 1000U, 300000U}) {
        SCOPED_TRACE(header.substr(3, 1) + std::to_string(count));
        const TemporaryFile file;
        Vector saved, loaded(7);
        fillVector(saved, count);
        saved.Save(file.path.c_str());
        EXPECT_TRUE(file.content() == header + number(count) + bytesOfVector(saved));
        std::ofstream(file.path, std::ios::binary | std::ios::app) << "surplus";
        loaded.Load(file.path.c_str());
        EXPECT_TRUE(bytesOfVector(loaded) == bytesOfVector(saved));
        EXPECT_EQ(loaded.GetMaxElements(), count);
        EXPECT_EQ(ZGetError(), Z_OK);
    }
}

TEST_F(VectorFilesTest, all_element_types_come_back_byte_by_byte)
{
    expectRoundTrip<ZBW8Vector>("Z\1\1A"s);
    expectRoundTrip<ZBW16Vector>("Z\2\1W"s);
    expectRoundTrip<ZBW32Vector>("Z\3\1U"s);
    expectRoundTrip<ZBW8HistogramVector>("Z\3\1U"s);
    expectRoundTrip<ZC24Vector>("Z\4\1R"s);
    expectRoundTrip<ZColorVector>("Z\5\1F"s);
    expectRoundTrip<ZPathVector>("Z\6\1B"s);
    expectRoundTrip<ZBW8PathVector>("Z\7\1C"s);
    expectRoundTrip<ZC24PathVector>("Z\10\1L"s);
    expectRoundTrip<ZPeaksVector>("Z\11\1M"s);
}

TEST_F(VectorFilesTest, damaged_files_end_in_their_code)
{
    constexpr unsigned unchanged = 2;
    const Bytes header = "Z\6\1B"s, zeros(3 << 20, '\0');
    struct {
        Bytes content;
        short code;
        unsigned elements;
    } const cases[] = {
        {"", 1103, unchanged},
        {"Z\6\1"s, 1103, unchanged},
        {header, 1103, unchanged},
        {header + "\1\0\0"s, 1103, unchanged},
        {"z\6\1B"s + number(0), 1105, unchanged},
        {"Z\7\1B"s + number(0), 1105, unchanged},
        {"Z\6\2B"s + number(0), 1105, unchanged},
        {"Z\6\1M"s + number(0), 1105, unchanged},
        {header + number(1), 1103, 1},
        {header + number(3) + "12341234123", 1103, 3},
        {header + number(1 << 18), 1103, 1 << 18},           // 1 MiB exactly
        {header + number((1 << 18) + 1) + "1234", 1103, 0},  // more than that
        {header + number((3 << 18) + 1) + zeros, 1103, 0},   // one more than there are
        {header + number(0xFFFFFFFF) + zeros, 1103, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.content.substr(0, 12)));
        const TemporaryFile file(c.content);
        ZPathVector vector(4);
        vector.SetNumElements(2);
        vector.Load(file.path.c_str());
        EXPECT_FAILURE(c.code, "ZVector::Load");
        EXPECT_EQ(vector.GetNumElements(), c.elements);
        const bool taken = c.elements != 0 && c.elements != unchanged;
        EXPECT_EQ(vector.GetMaxElements(), taken ? c.elements : 4U);
    }
}

TEST_F(VectorFilesTest, missing_elements_are_what_the_storage_held)
{
    const TemporaryFile file("Z\1\1A"s + number(4) + "ab");
    ZBW8Vector vector(4);
    for (const char letter : "WXYZ"s)
        vector.AddElement(static_cast<ZBW8>(letter));
    vector.Load(file.path.c_str());
    EXPECT_FAILURE(1103, "ZVector::Load");
    EXPECT_EQ(bytesOfVector(vector), "abYZ");

    ZBW8Vector fresh;
    fresh.Load(file.path.c_str());
    EXPECT_FAILURE(1103, "ZVector::Load");
    EXPECT_EQ(bytesOfVector(fresh), "ab\0\0"s);
}

TEST_F(VectorFilesTest, files_that_cannot_be_opened)
{
    ZPathVector vector;
    const std::string directory = testing::TempDir(), missing = directory + "zkit_no_such_directory/file";
    for (const char* path : {missing.c_str(), "", static_cast<const char*>(nullptr)}) {
        vector.Load(path);
        EXPECT_FAILURE(1102, "ZVector::Load");
        vector.Save(path);
        EXPECT_FAILURE(1102, "ZVector::Save");
    }
    vector.Save(directory.c_str());
    EXPECT_FAILURE(1102, "ZVector::Save");
    vector.Load(directory.c_str());  // may be opened, not read
    EXPECT_FAILURE(1103, "ZVector::Load");
}

TEST_F(VectorFilesTest, a_pending_error_stops_loading_and_saving)
{
    const TemporaryFile file("Z\6\1B"s + number(1) + "1234");
    const Bytes before = file.content();
    ZPathVector vector;
    ZSetError(Z_ERROR_BAD_MODE);
    vector.Save(file.path.c_str());
    vector.Load(file.path.c_str());
    EXPECT_FAILURE(1009, "ZVector::Save", "ZVector::Load");
    EXPECT_EQ(file.content(), before);
    EXPECT_EQ(vector.GetNumElements(), 0U);
}

TEST_F(VectorFilesTest, a_full_device)
{
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "there is no /dev/full";
    ZPathVector vector;
    fillVector(vector, 10);
    vector.Save("/dev/full");  // fits the stream's buffer: fails on closing
    EXPECT_FAILURE(1106, "ZVector::Save");
    fillVector(vector, severalMiB);
    vector.Save("/dev/full");
    EXPECT_FAILURE(1104, "ZVector::Save");
}

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

TEST_F(VectorFilesTest, streams_hold_one_vector_after_the_other)
{
    const TemporaryFile file;
    ZPeaksVector peaks, otherPeaks;
    ZBW8Vector bytes, otherBytes;
    fillVector(peaks, 60000);
    fillVector(bytes, 3);
    Stream stream(std::fopen(file.path.c_str(), "w+b"), std::fclose);
    peaks.Serialize(stream.get(), 1);
    bytes.Serialize(stream.get(), -1);
    std::rewind(stream.get());
    otherPeaks.Serialize(stream.get(), 0);
    otherBytes.Serialize(stream.get(), 0);
    EXPECT_EQ(ZGetError(), Z_OK);
    EXPECT_TRUE(bytesOfVector(otherPeaks) == bytesOfVector(peaks));
    EXPECT_EQ(bytesOfVector(otherBytes), bytesOfVector(bytes));
    EXPECT_EQ(file.content(), number(60000) + bytesOfVector(peaks) + number(3) + bytesOfVector(bytes));

    otherBytes.Serialize(stream.get(), 0);  // at its end
    EXPECT_FAILURE(1103);
    EXPECT_EQ(otherBytes.GetNumElements(), 3U);
    std::rewind(stream.get());
    otherBytes.Serialize(stream.get(), 0);  // 60000 bytes, of the peaks
    EXPECT_EQ(otherBytes.GetNumElements(), 60000U);
    otherPeaks.Serialize(stream.get(), 0);  // announces any number
    EXPECT_EQ(otherPeaks.GetNumElements(), 0U);
    EXPECT_FAILURE(1103);

    stream.reset(std::fopen(file.path.c_str(), "rb"));
    std::setvbuf(stream.get(), nullptr, _IONBF, 0);
    bytes.Serialize(stream.get(), 1);
    EXPECT_FAILURE(1104);
    bytes.Serialize(nullptr, 1);
    EXPECT_FAILURE(1104);
    bytes.Serialize(nullptr, 0);
    EXPECT_FAILURE(1103);
    EXPECT_EQ(bytes.GetNumElements(), 3U);
    ZSetError(Z_ERROR_BAD_MODE);
    otherPeaks.Serialize(stream.get(), 0);
    EXPECT_FAILURE(1009);
    EXPECT_TRUE(bytesOfVector(otherPeaks) == bytesOfVector(peaks));
}

// Reads a vector from a pipe into which another thread writes.
void readFromPipe(const Bytes& content, ZPathVector& vector)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::thread writer([&] {
        const Stream out(fdopen(ends[1], "wb"), std::fclose);
        EXPECT_EQ(std::fwrite(content.data(), 1, content.size(), out.get()), content.size());
    });
    const Stream in(fdopen(ends[0], "rb"), std::fclose);
    vector.Serialize(in.get(), 0);
    writer.join();
}

TEST_F(VectorFilesTest, from_a_pipe_storage_grows_with_what_arrives)
{
    ZPathVector sent, received(3);
    fillVector(sent, severalMiB);
    const Bytes body = bytesOfVector(sent);
    readFromPipe(number(severalMiB) + body, received);
    EXPECT_EQ(ZGetError(), Z_OK);
    EXPECT_TRUE(bytesOfVector(received) == body);
    EXPECT_EQ(received.GetMaxElements(), severalMiB);

    ZPathVector little;
    readFromPipe(number(0xFFFFFFFF) + body, little);
    EXPECT_FAILURE(1103);
    EXPECT_EQ(little.GetNumElements(), 0U);
    EXPECT_LE(little.GetMaxElements(), 2 * severalMiB);
    readFromPipe(number(10) + body.substr(0, 6), little);
    EXPECT_FAILURE(1103);
    EXPECT_EQ(little.GetNumElements(), 10U);
    EXPECT_EQ(std::memcmp(little.GetDataPtr(), body.data(), 6), 0);
}

}  // namespace
