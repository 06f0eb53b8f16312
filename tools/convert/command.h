// The command `zkit convert`.
#pragma once

namespace CLI {
class App;
}

namespace zkit::tool {

/// Adds the command to the tool, as addMeasureCommand.
void addConvertCommand(CLI::App& tool, int& status);

}  // namespace zkit::tool
