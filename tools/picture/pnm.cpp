// PNM: bitmaps (P1, P4), grey (P2, P5) and colour (P3, P6), as text or binary.
#include "picture/decoders.h"
#include "picture/images.h"
#include "picture/samples.h"

#include <cstdint>
#include <string>

namespace zkit::tool {
namespace {

constexpr std::uint32_t greatestSample = 65535;

// Walks over the text of a file. Comments run from # to the end of the line.
class TextReader {
public:
    explicit TextReader(Bytes file) : file_(file) {}

    std::uint32_t number()
    {
        skipSpace();
        const std::size_t first = position_;
        std::uint32_t value = 0;
        for (; position_ < file_.size() && isDigit(file_[position_]); ++position_) {
            value = value * 10 + (file_[position_] - '0');
            if (value > 1'000'000)
                throw PictureError("PNM: a number is too large");
        }
        if (position_ == first)
            fail("a number is missing");
        return value;
    }

    // A pixel of a bitmap: the next digit, which needs no space around it.
    bool bit()
    {
        skipSpace();
        if (position_ == file_.size() || (file_[position_] != '0' && file_[position_] != '1'))
            fail("a pixel is neither 0 nor 1");
        return file_[position_++] == '1';
    }

    // The one space that separates the header from binary pixels.
    void space()
    {
        if (position_ == file_.size() || !isSpace(file_[position_]))
            fail("the header does not end with a space");
        ++position_;
    }

    Bytes rest() const { return file_.subspan(position_); }

private:
    static bool isDigit(unsigned char character) { return character >= '0' && character <= '9'; }
    static bool isSpace(unsigned char character)
    {
        return character == ' ' || (character >= '\t' && character <= '\r');
    }

    void skipSpace()
    {
        bool inComment = false;
        for (; position_ < file_.size(); ++position_) {
            const unsigned char character = file_[position_];
            if (character == '\n' || character == '\r')
                inComment = false;
            else if (character == '#')
                inComment = true;
            else if (!inComment && !isSpace(character))
                return;
        }
    }

    [[noreturn]] void fail(const char* reason) const
    {
        throw PictureError(std::string("PNM: ") + (position_ == file_.size() ? "the file is truncated" : reason));
    }

    Bytes file_;
    std::size_t position_ = 2;  // after the signature
};

struct Header {
    int kind = 0;  // 1 to 6
    std::int64_t width = 0, height = 0;
    std::uint32_t greatest = 1;

    bool text() const { return kind <= 3; }
    bool bitmap() const { return kind == 1 || kind == 4; }
    bool colour() const { return kind == 3 || kind == 6; }

    // A lower bound of what the pixels take in the file.
    std::size_t pixelBytes() const
    {
        const auto columns = static_cast<std::size_t>(width), rows = static_cast<std::size_t>(height);
        if (kind == 4)
            return packedBytes(columns, 1) * rows;
        const std::size_t samples = columns * rows * (colour() ? 3 : 1);
        if (kind == 1)
            return samples;
        if (text())
            return 2 * samples - 1;
        return samples * (greatest > 255 ? 2 : 1);
    }
};

Header readHeader(TextReader& reader, int kind)
{
    Header header{kind};
    header.width = reader.number();
    header.height = reader.number();
    checkSize(header.width, header.height);
    if (!header.bitmap()) {
        header.greatest = reader.number();
        if (header.greatest < 1 || header.greatest > greatestSample)
            throw PictureError("PNM: the greatest level is not within 1 to 65535");
    }
    if (header.colour() && header.greatest > 255)
        throw PictureError("colour of 16 bits a component is not supported: it would lose information");
    if (!header.text())
        reader.space();
    if (header.pixelBytes() > reader.rest().size())
        throw PictureError("PNM: the file is truncated");
    return header;
}

// Bitmaps count 1 as black, ZBW1 as white; both begin with the most significant bit.
Picture readBitmap(TextReader& reader, const Header& header)
{
    auto image = newImage<ZBW1>(header.width, header.height);
    const int width = image->GetWidth(), height = image->GetHeight();
    const unsigned char* packed = reader.rest().data();
    for (int y = 0; y < height; ++y) {
        if (header.text()) {
            for (int x = 0; x < width; ++x)
                image->SetPixel({static_cast<unsigned char>(reader.bit() ? 0 : 1)}, x, y);
        } else {
            copyBits(packed, true, width, pixelAddress(*image, 0, y));
            packed += packedBytes(static_cast<std::size_t>(width), 1);
        }
    }
    return image;
}

// The samples of the pixels in the order of the file, each checked against the greatest level.
class SampleReader {
public:
    SampleReader(TextReader& reader, const Header& header)
        : reader_(reader), text_(header.text()), greatest_(header.greatest), next_(reader.rest().data())
    {
    }

    template <class Sample>
    Sample take()
    {
        const std::uint32_t sample = text_ ? reader_.number() : binary();
        if (sample > greatest_)
            throw PictureError("PNM: a level is above the greatest one");
        return static_cast<Sample>(sample);
    }

private:
    std::uint32_t binary()
    {
        const std::uint32_t first = *next_++;
        return greatest_ > 255 ? first << 8 | *next_++ : first;
    }

    TextReader& reader_;
    bool text_;
    std::uint32_t greatest_;
    const unsigned char* next_;
};

template <class T>
Picture readGrey(SampleReader samples, const Header& header)
{
    auto image = newImage<T>(header.width, header.height);
    for (int y = 0; y < image->GetHeight(); ++y) {
        T* row = static_cast<T*>(image->GetPixelPtr(0, y));
        for (int x = 0; x < image->GetWidth(); ++x)
            row[x] = samples.take<T>();
    }
    return image;
}

Picture readColour(SampleReader samples, const Header& header)
{
    auto image = newImage<ZC24>(header.width, header.height);
    for (int y = 0; y < image->GetHeight(); ++y) {
        unsigned char* row = pixelAddress(*image, 0, y);
        for (int x = 0; x < image->GetWidth(); ++x)
            for (int component = 0; component < 3; ++component)
                row[3 * x + 2 - component] = samples.take<unsigned char>();
    }
    return image;
}

}  // namespace

Picture decodePnm(Bytes file)
{
    TextReader reader(file);
    const Header header = readHeader(reader, file[1] - '0');
    if (header.bitmap())
        return readBitmap(reader, header);
    const SampleReader samples(reader, header);
    if (header.colour())
        return readColour(samples, header);
    return header.greatest > 255 ? readGrey<ZBW16>(samples, header) : readGrey<ZBW8>(samples, header);
}

}  // namespace zkit::tool
