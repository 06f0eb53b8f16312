// The pictures that a command line names, and the names of what is drawn of them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zkit::tool {

struct Input {
    std::string name;     // as it is reported
    std::string drawing;  // what its drawings' names begin with, different for every input
    bool scene = false;   // the built-in one; else a file
};

/// The files named and, in the place of each folder, the files in it whose names end like a picture's, in the order of
/// their names. A folder without pictures stays in the list; reading it fails.
std::vector<Input> listInputs(const std::vector<std::string>& names, bool scene);

}  // namespace zkit::tool
