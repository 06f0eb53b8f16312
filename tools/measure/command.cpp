#include "measure/command.h"

#include "measure/measure.h"
#include "measure/plot.h"
#include "measure/report.h"
#include "scene/scene.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <charconv>
#include <functional>
#include <iostream>

namespace zkit::tool {
namespace {

struct Arguments {
    MeasureRequest request;
    bool json = false;
    bool scene = false;
    std::string plot;
    std::vector<std::string> files;
};

Rectangle parseRectangle(const std::string& text)
{
    int numbers[4] = {};
    const char* next = text.data();
    const char* const end = next + text.size();
    for (int i = 0; i < 4; ++i) {
        if (i > 0 && (next == end || *next++ != ','))
            throw CLI::ValidationError("--roi", "wants four numbers x,y,w,h: " + text);
        const auto [stop, error] = std::from_chars(next, end, numbers[i]);
        if (error != std::errc())
            throw CLI::ValidationError("--roi", "wants four numbers x,y,w,h: " + text);
        next = stop;
    }
    if (next != end || numbers[2] < 1 || numbers[3] < 1)
        throw CLI::ValidationError("--roi", "wants four numbers x,y,w,h with a width and a height from 1 on: " + text);
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

// Measures pictures one after another; a failure of one does not stop the others.
class Session {
public:
    explicit Session(const Arguments& arguments) : arguments_(arguments) {}

    void add(const std::string& name, const std::function<Picture()>& picture)
    try {
        const Picture pixels = picture();
        const Measurement measurement = measure(pixels, arguments_.request);
        if (!arguments_.plot.empty())
            plotHistogram(pixels, arguments_.request, arguments_.plot);
        if (arguments_.json)
            results_.push_back(toJson(name, measurement));
        else
            writeText(std::cout, name, measurement);
    } catch (const std::exception& error) {
        failed_ = true;
        std::cerr << name << ": " << error.what() << std::endl;
        results_.push_back({{"file", name}, {"error", error.what()}});
    }

    // Ends the output and returns the exit status.
    int finish()
    {
        // A name that is not UTF-8 gets replacement characters.
        if (arguments_.json)
            std::cout << results_.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
        if (std::cout.flush())
            return failed_ ? 1 : 0;
        std::cerr << "zkit: the results could not be written" << std::endl;
        return 1;
    }

private:
    const Arguments& arguments_;
    nlohmann::ordered_json results_ = nlohmann::ordered_json::array();
    bool failed_ = false;
};

int run(const Arguments& arguments)
{
    Session session(arguments);
    if (arguments.scene)
        session.add("scene", renderScene);
    for (const std::string& file : arguments.files)
        session.add(file, [&] { return readPicture(file); });
    return session.finish();
}

constexpr const char* notes = R"(
Formats: PNG, TIFF, JPEG, BMP, PNM, told apart by their content.

Figures of grey pictures: minimum, maximum, mean and standard deviation; area, the pixels above the threshold;
centre of gravity and raw moments up to the second order (binary) of the pixels from the threshold on; the same
moments of all pixels weighed with their levels; focus, the root of the mean squared difference to the right-hand
and lower neighbour. Figures of colour pictures: mean, deviation, correlation and focus. Coordinates count from the
centre of the top-left pixel, of the region where there is one.

1-bit pictures are measured as levels 0 (black) and 1 (white).

The exit status is 0, 1 when a file could not be read or measured (the others still are), 2 for wrong usage.)";

}  // namespace

void addMeasureCommand(CLI::App& tool, int& status)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command = tool.add_subcommand("measure", "Measure pictures");
    command
        ->add_option_function<std::string>(
            "--roi", [arguments](const std::string& text) { arguments->request.region = parseRectangle(text); },
            "Measure the region of w x h pixels whose top-left pixel is (x, y)")
        ->type_name("x,y,w,h");
    command
        ->add_option("--threshold", arguments->request.threshold,
                     "Level that separates background from objects, by default 128, of 1-bit pictures 1, of 16-bit "
                     "pictures 32768; a picture whose levels end below it is an error")
        ->type_name("t")
        ->check(CLI::Range(0, 65535));
    command->add_flag("--json", arguments->json, "Print a JSON array with an object per picture");
    command->add_flag("--scene", arguments->scene, "Measure a built-in scene: bright parts on an uneven background");
    command->add_option("--plot", arguments->plot, "Draw the histogram of the picture, of which there must be only one")
        ->type_name("FILE.png|svg");
    command->add_option("FILE", arguments->files, "Pictures to be measured")->type_name("");
    command->footer(notes);
    command->callback([arguments, &status] {
        if (!arguments->scene && arguments->files.empty())
            throw CLI::RequiredError("FILE or --scene");
        if (!arguments->plot.empty() && arguments->files.size() + arguments->scene != 1)
            throw CLI::ValidationError("--plot", "is for one picture");
        status = run(*arguments);
    });
}

}  // namespace zkit::tool
