// Whole files.
#pragma once

#include <filesystem>
#include <span>
#include <vector>

namespace zkit::tool {

/// The bytes of a regular file, at least one and at most 2^31 - 1 of them. Throws PictureError for any other file, so
/// that a pipe or a device can neither block nor flood the reader.
std::vector<unsigned char> readFile(const std::filesystem::path& path);

/// Writes a file: first another one beside it, of the same name and .part, then put in its place, so that there is
/// never half a file; interrupting the process (SIGINT, SIGTERM, SIGHUP) takes effect afterwards. Throws PictureError.
void writeFile(const std::filesystem::path& path, std::span<const unsigned char> bytes);

}  // namespace zkit::tool
