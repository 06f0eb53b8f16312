// The command `zkit unwrap`.
#pragma once

namespace CLI {
class App;
}

namespace zkit::tool {

/// Adds the command to the tool, as addMeasureCommand.
void addUnwrapCommand(CLI::App& tool, int& status);

}  // namespace zkit::tool
