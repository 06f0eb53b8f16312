// The manual page.
#pragma once

#include <iosfwd>

namespace CLI {
class App;
}

namespace zkit::tool {

/// Writes the manual page of the tool, for man, from what its help says.
void writeManual(std::ostream& out, const CLI::App& tool, const char* version);

}  // namespace zkit::tool
