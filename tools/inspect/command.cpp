#include "inspect/command.h"

#include "convert/convert.h"
#include "inspect/batch.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <thread>

namespace zkit::tool {
namespace {

struct Arguments {
    BatchRequest request;
    std::string background;
    std::string drawings = "png";
    bool json = false, csv = false, scene = false;
    std::vector<std::string> files;
};

void makeFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    if (!folder.empty() && !std::filesystem::create_directories(folder, error) && error)
        throw PictureError(folder.string() + ": the folder cannot be made: " + error.message());
}

ImagePointer<ZBW8> readBackground(const Arguments& arguments)
try {
    return toGrey(readPicture(arguments.background), arguments.request.inspect.shift);
} catch (const std::exception& error) {
    throw PictureError(arguments.background + ": " + error.what());
}

int run(Arguments& arguments)
try {
    ImagePointer<ZBW8> background;
    if (!arguments.background.empty()) {
        background = readBackground(arguments);
        arguments.request.inspect.background = background.get();
    }
    makeFolder(arguments.request.overlays);
    makeFolder(arguments.request.plots);
    if (arguments.drawings != "png")
        arguments.request.endings = {".svg"};
    if (arguments.drawings == "both")
        arguments.request.endings = {".png", ".svg"};
    const auto writer = arguments.json ? jsonWriter() : arguments.csv ? csvWriter() : tableWriter();
    return inspectAll(listInputs(arguments.files, arguments.scene), arguments.request, *writer);
} catch (const PictureError& error) {
    std::cerr << error.what() << std::endl;
    return 1;
}

constexpr const char* notes = R"(
Every picture is turned into grey levels of 8 bits (of colours the mean of the components, of 16-bit levels the upper
bits that are in use), evened out when there is a background, filtered, and split by a threshold into objects and
background. What touches, also at a corner, is one object. The figures of an object:

box: its smallest rectangle. area: its pixels, without holes. centre: centre of gravity. angle (orientation): of the
long axis, in degrees counter-clockwise from the x axis. elong. (elongation): long axis divided by short one, from the
second-order moments. perimeter: length of the outer contour through the centres of its pixels. mean, dev.
(deviation): of its grey levels in the picture. At the edge: it touches the picture's edge, so that part of it may be
missing. Coordinates count from the centre of the top-left pixel.

Thresholds: isodata lies in the middle between the means of the two sides, entropy makes the entropy of both sides
greatest, residue the difference between them; relative:PART leaves a part of the pixels below it; adaptive:W or
adaptive:WxH follows the light, with an isodata threshold in every cell of W x H pixels, which should be larger than
the objects; a number from 0 to 255 is a level. Objects are the pixels from the threshold on, with --dark those below
it.

Of a folder the files are taken whose names end in .png, .tif, .tiff, .jpg, .jpeg, .bmp, .pbm, .pgm, .ppm or .pnm, in
the order of their names. Results come in the order of the files and are the same for every number of jobs. Drawings
are named after their pictures, NAME-overlay and NAME-histogram.

The exit status is 0, 1 when a picture failed (the others are still inspected), 2 for wrong usage. When interrupted the
command finishes the pictures in hand; no file is ever left half written.)";

void addSegmentation(CLI::App& command, const std::shared_ptr<Arguments>& arguments)
{
    InspectRequest& request = arguments->request.inspect;
    command
        .add_option("--background", arguments->background,
                    "The same scene without objects: evens out its light. Of the same size and kind as the pictures")
        ->type_name("FILE");
    command
        .add_option_function<unsigned>(
            "--bits", [arguments](unsigned bits) { arguments->request.inspect.shift = bits - 8; },
            "Bits in use of 16-bit levels, 8 to 16; by default those that a picture's greatest level needs")
        ->type_name("n")
        ->check(CLI::Range(8, 16).description(""));
    command.add_option("--median", request.medians, "Median filters of 3 x 3 pixels one after another, by default 1")
        ->type_name("n")
        ->check(CLI::Range(0, 100).description(""));
    command
        .add_option_function<std::string>(
            "--threshold",
            [arguments](const std::string& text) {
                const auto choice = parseThreshold(text);
                if (!choice)
                    throw CLI::ValidationError("--threshold", "is of no known kind: " + text);
                arguments->request.inspect.threshold = *choice;
            },
            "isodata (the default), entropy, residue, relative:PART, adaptive:W, adaptive:WxH or a level, see below")
        ->type_name("t");
    command.add_flag("--dark", request.dark, "Objects are darker than the background");
    command
        .add_option("--open", request.opening,
                    "Remove from the objects what is narrower than 2n + 1 pixels (opening), by default nothing")
        ->type_name("n")
        ->check(CLI::Range(0, 1000).description(""));
    command.add_option("--min-area", request.minArea, "Leave out objects of fewer pixels, by default none")
        ->type_name("n")
        ->check(CLI::Range(std::int64_t{0}, std::numeric_limits<std::int64_t>::max()).description(""));
    command.add_option("--max-area", request.maxArea, "Leave out objects of more pixels, by default none")
        ->type_name("n")
        ->check(CLI::Range(std::int64_t{0}, std::numeric_limits<std::int64_t>::max()).description(""));
}

void addResults(CLI::App& command, const std::shared_ptr<Arguments>& arguments)
{
    BatchRequest& request = arguments->request;
    CLI::Option* const json =
        command.add_flag("--json", arguments->json, "Print a JSON array with an object for each picture");
    command.add_flag("--csv", arguments->csv, "Print a line of comma-separated values for each object")->excludes(json);
    command
        .add_option("--overlay", request.overlays,
                    "Draw each picture with contours, centres and numbers over it into this folder")
        ->type_name("DIR");
    command.add_option("--plots", request.plots, "Draw each histogram with the threshold into this folder")
        ->type_name("DIR");
    command.add_option("--drawings", arguments->drawings, "The format of drawings: png (the default), svg or both")
        ->type_name("f")
        ->check(CLI::IsMember({"png", "svg", "both"}).description(""));
    request.jobs = std::max(1U, std::thread::hardware_concurrency());
    command.add_option("--jobs", request.jobs, "Threads, by default as many as the machine has processors")
        ->type_name("n")
        ->check(CLI::Range(1, 256).description(""));
    command.add_flag("--scene", arguments->scene, "Inspect a built-in scene: bright parts on an uneven background");
    command.add_option("FILE", arguments->files, "Pictures, and folders of pictures, to be inspected")->type_name("");
}

}  // namespace

void addInspectCommand(CLI::App& tool, int& status)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command = tool.add_subcommand("inspect", "Find the objects in pictures and measure them");
    addSegmentation(*command, arguments);
    addResults(*command, arguments);
    command->footer(notes);
    command->callback([arguments, &status] {
        if (!arguments->scene && arguments->files.empty())
            throw CLI::RequiredError("FILE or --scene");
        status = run(*arguments);
    });
}

}  // namespace zkit::tool
