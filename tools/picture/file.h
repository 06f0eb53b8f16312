// Whole files.
#pragma once

#include <filesystem>
#include <vector>

namespace zkit::tool {

/// The bytes of a regular file, at least one and at most 2^31 - 1 of them. Throws PictureError for any other file, so
/// that a pipe or a device can neither block nor flood the reader.
std::vector<unsigned char> readFile(const std::filesystem::path& path);

}  // namespace zkit::tool
