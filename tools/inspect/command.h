// The command `zkit inspect`.
#pragma once

namespace CLI {
class App;
}

namespace zkit::tool {

/// Adds the command to the tool, as addMeasureCommand.
void addInspectCommand(CLI::App& tool, int& status);

}  // namespace zkit::tool
