// The command-line tool.
#include "measure/command.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>

int main(int argc, char** argv)
try {
    constexpr int usageError = 2;
    int status = 0;
    CLI::App tool("Machine-vision image processing with exactly defined results", "zkit");
    tool.set_version_flag("--version", "zkit " ZKIT_VERSION);
    tool.require_subcommand(1);
    zkit::tool::addMeasureCommand(tool, status);
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
