// The command-line tool.
#include "convert/command.h"
#include "inspect/command.h"
#include "manual.h"
#include "measure/command.h"
#include "unwrap/command.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>

int main(int argc, char** argv)
try {
    constexpr int usageError = 2;
    int status = 0;
    CLI::App tool("Machine-vision image processing with exactly defined results", "zkit");
    tool.set_version_flag("--version", "zkit " ZKIT_VERSION, "Print the version and exit");
    tool.require_subcommand(1);
    zkit::tool::addInspectCommand(tool, status);
    zkit::tool::addMeasureCommand(tool, status);
    zkit::tool::addUnwrapCommand(tool, status);
    zkit::tool::addConvertCommand(tool, status);
    // Prints the manual page; for the build, not for users.
    tool.add_subcommand("man")->group("")->callback([&] { zkit::tool::writeManual(std::cout, tool, ZKIT_VERSION); });
    try {
        tool.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return tool.exit(error) == 0 ? 0 : usageError;
    }
    return status;
} catch (const std::exception& error) {
    std::cerr << "zkit: " << error.what() << std::endl;
    return 1;
}
