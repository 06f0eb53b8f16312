#include "manual.h"

#include <CLI/CLI.hpp>

#include <ostream>
#include <sstream>

namespace zkit::tool {
namespace {

std::string upperCase(std::string text)
{
    for (char& letter : text)
        letter = static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter);
    return text;
}

// Text as troff reads it: hyphens that can be copied, no line that is taken for a command.
std::string escaped(const std::string& text)
{
    std::string result;
    for (const char letter : text) {
        const bool starts = result.empty() || result.back() == '\n';
        if (starts && (letter == '.' || letter == '\''))
            result += "\\&";
        if (letter == '\\')
            result += "\\e";
        else if (letter == '-')
            result += "\\-";
        else
            result += letter;
    }
    return result;
}

// Paragraphs are parted by empty lines.
void writeParagraphs(std::ostream& out, const std::string& text)
{
    std::istringstream lines(text);
    bool parted = true;
    for (std::string line; std::getline(lines, line); parted = line.empty()) {
        if (line.empty())
            continue;
        out << (parted ? ".PP\n" : "") << escaped(line) << '\n';
    }
}

void writeOption(std::ostream& out, const CLI::Option& option)
{
    out << ".TP\n";
    if (option.get_positional()) {
        out << ".I " << escaped(option.get_name(true)) << '\n';
    } else {
        out << "\\fB" << escaped(option.get_name(false, true)) << "\\fR";
        if (option.get_expected_max() > 0 && !option.get_type_name().empty())
            out << " \\fI" << escaped(option.get_type_name()) << "\\fR";
        out << '\n';
    }
    out << escaped(option.get_description()) << '\n';
}

void writeOptions(std::ostream& out, const CLI::App& command)
{
    for (const CLI::Option* option :
         command.get_options([](const CLI::Option* any) { return !any->get_group().empty(); }))
        writeOption(out, *option);
}

void writeCommand(std::ostream& out, const CLI::App& tool, const CLI::App& command)
{
    out << ".SH " << upperCase(tool.get_name() + " " + command.get_name()) << '\n'
        << escaped(command.get_description()) << ".\n";
    writeOptions(out, command);
    writeParagraphs(out, command.get_footer());
}

std::vector<const CLI::App*> commandsOf(const CLI::App& tool)
{
    return tool.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

}  // namespace

void writeManual(std::ostream& out, const CLI::App& tool, const char* version)
{
    const std::string& name = tool.get_name();
    out << ".TH " << upperCase(name) << R"( 1 "" ")" << name << ' ' << version << "\" \"User Commands\"\n"
        << ".SH NAME\n"
        << name << " \\- " << escaped(tool.get_description()) << "\n.SH SYNOPSIS\n";
    for (const CLI::App* command : commandsOf(tool)) {
        out << ".B " << name << ' ' << command->get_name() << "\n[\\fIoption\\fR]...";
        for (const CLI::Option* option : command->get_options())
            if (option->get_positional())
                out << " \\fI" << option->get_name(true) << "\\fR" << (option->get_expected_max() > 1 ? "..." : "");
        out << "\n.br\n";
    }
    out << ".SH OPTIONS\n";
    writeOptions(out, tool);
    for (const CLI::App* command : commandsOf(tool))
        writeCommand(out, tool, *command);
}

}  // namespace zkit::tool
