// Sample values for pictures, and how they come back.
#pragma once

#include "picture/picture.h"

#include <filesystem>
#include <string>
#include <vector>

using Values = std::vector<int>;
using FileBytes = std::vector<unsigned char>;

/// Varied values from 0 to `greatest`, both of which occur.
Values pattern(int count, int greatest);

/// Rows of `perRow` samples packed as files hold them: most significant bit first, rows from whole bytes, samples of 16
/// bits in the machine's byte order.
FileBytes pack(const Values& samples, int perRow, int bits);

/// The pixel values of a picture, row by row; of a colour pixel red, green, blue.
Values valuesOf(const zkit::tool::Picture& picture);

/// The pixel type: "1", "8", "16" or "24" bits.
std::string typeOf(const zkit::tool::Picture& picture);

/// A directory that is gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    /// Writes a file and returns its path.
    std::filesystem::path write(const std::string& name, const FileBytes& bytes) const;

private:
    std::filesystem::path path_;
};

FileBytes bytesOf(const std::string& text);

/// Reads a picture from bytes through a file.
zkit::tool::Picture readBytes(const FileBytes& bytes);
