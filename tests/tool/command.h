// The command as its users run it, in a folder of its own.
#pragma once

#include "writers.h"

#include <gtest/gtest.h>
#include <png.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

struct CommandResult {
    int status;
    std::string output, complaints;
};

class Command : public testing::Test {
protected:
    /// Runs the tool with arguments for the shell.
    CommandResult run(const std::string& arguments, const std::string& output = "output")
    {
        const std::string command =
            "cd '" + (folder_ / "").string() + "' && '" ZKIT_TOOL "' " + arguments + " >" + output + " 2>complaints";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents("output"), contents("complaints")};
    }

    void writeGrey(const std::string& name) const
    {
        folder_.write(name, writePng({4, 2, 8, 1, {10, 20, 30, 200, 0, 0, 200, 200}}, PNG_COLOR_TYPE_GRAY));
    }

    std::string contents(const std::string& name) const
    {
        std::ifstream stream(folder_ / name);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    bool exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    TemporaryFolder folder_;
};
