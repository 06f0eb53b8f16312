#include "unwrap/command.h"

#include "unwrap/unwrap.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>
#include <numbers>
#include <optional>

namespace zkit::tool {
namespace {

struct Pair {
    float first = 0, second = 0;
};

struct Arguments {
    Pair centre, radii;
    std::optional<Pair> angles;
    int width = 0, height = 0;  // 0: as many pixels as the ring has
    std::string in, out;
};

// Two numbers "a,b" within the limits.
Pair parsePair(const std::string& option, const std::string& text, float least, float greatest)
{
    Pair pair;
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, pair.first);
    const bool separated = first.ec == std::errc() && first.ptr != end && *first.ptr == ',';
    const auto second = std::from_chars(separated ? first.ptr + 1 : end, end, pair.second);
    const auto isWithin = [=](float value) { return value >= least && value <= greatest; };
    if (second.ec != std::errc() || second.ptr != end || !isWithin(pair.first) || !isWithin(pair.second))
        throw CLI::ValidationError(option, "wants two numbers a,b from " + std::to_string(static_cast<int>(least)) +
                                               " to " + std::to_string(static_cast<int>(greatest)) + ": " + text);
    return pair;
}

// Without angles the whole circle, every direction once: the last column ends where the first one begins.
Ring ringOf(const Arguments& arguments)
{
    constexpr float circle = 360;
    const float outer = std::max(arguments.radii.first, arguments.radii.second);
    const float span = arguments.angles ? std::abs(arguments.angles->second - arguments.angles->first) : circle;
    const auto count = [](float length) { return std::clamp(static_cast<int>(std::lround(length)), 1, 65535); };
    const auto arc = static_cast<float>(std::numbers::pi) / 180 * span * outer;
    Ring ring{arguments.centre.first, arguments.centre.second, arguments.radii.first, arguments.radii.second};
    ring.width = arguments.width > 0 ? arguments.width : count(arc) + (arguments.angles ? 1 : 0);
    ring.height =
        arguments.height > 0 ? arguments.height : count(std::abs(arguments.radii.second - arguments.radii.first)) + 1;
    ring.firstAngle = arguments.angles ? arguments.angles->first : 0;
    ring.lastAngle = arguments.angles ? arguments.angles->second
                                      : circle * static_cast<float>(ring.width - 1) / static_cast<float>(ring.width);
    return ring;
}

int run(const Arguments& arguments)
try {
    writePicture(arguments.out, unwrap(readPicture(arguments.in), ringOf(arguments)));
    return 0;
} catch (const std::exception& error) {
    std::cerr << arguments.in << " to " << arguments.out << ": " << error.what() << std::endl;
    return 1;
}

constexpr const char* notes = R"(
The ring becomes a rectangle: each column is a direction, beginning at the x axis and turning clockwise, each row a
circle, from radius a at the top to radius b at the bottom. Every pixel of it is the picture's nearest one, black
outside the picture. Coordinates count from the centre of the top-left pixel. 1-bit pictures become grey, 16-bit ones
have to be converted first (zkit convert).

The exit status is 0, 1 when the picture was not unwrapped, 2 for wrong usage.)";

}  // namespace

void addUnwrapCommand(CLI::App& tool, int& status)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command = tool.add_subcommand("unwrap", "Turn a ring of a picture into a rectangle");
    const auto addPair = [&](const char* name, const char* description, float least, float greatest, auto assign) {
        return command
            ->add_option_function<std::string>(
                name, [=](const std::string& text) { assign(*arguments, parsePair(name, text, least, greatest)); },
                description)
            ->type_name("a,b");
    };
    addPair("--center,--centre", "The ring's centre x,y", -maxRingLength, maxRingLength,
            [](Arguments& to, Pair pair) { to.centre = pair; })
        ->type_name("x,y")
        ->required();
    addPair("--radii", "The radii of the top and of the bottom row", 0, maxRingLength, [](Arguments& to, Pair pair) {
        to.radii = pair;
    })->required();
    addPair("--angles", "The directions of the left and of the right column in degrees; by default the whole circle",
            -3600, 3600, [](Arguments& to, Pair pair) { to.angles = pair; });
    command->add_option("--width", arguments->width, "Columns, by default as many as the larger circle has pixels")
        ->type_name("n")
        ->check(CLI::Range(1, 65535).description(""));
    command->add_option("--height", arguments->height, "Rows, by default as many as there are pixels between the radii")
        ->type_name("n")
        ->check(CLI::Range(1, 65535).description(""));
    command->add_option("FILE", arguments->in, "The picture")->type_name("")->required();
    command->add_option("OUT", arguments->out, "The file to be written, in the format of its ending")
        ->type_name("")
        ->required();
    command->footer(notes);
    command->callback([arguments, &status] { status = run(*arguments); });
}

}  // namespace zkit::tool
