// The command `zkit measure`.
#pragma once

namespace CLI {
class App;
}

namespace zkit::tool {

/// Adds the command to the tool. It runs while the arguments are parsed and leaves the exit status in `status`, which
/// must outlive the parsing: 0, or 1 when a file failed.
void addMeasureCommand(CLI::App& tool, int& status);

}  // namespace zkit::tool
