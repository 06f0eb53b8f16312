#include "inspect/batch.h"

#include "convert/convert.h"
#include "inspect/drawings.h"
#include "measure/plot.h"
#include "process/interruption.h"
#include "process/ordered.h"
#include "scene/scene.h"

#include <unistd.h>

#include <iostream>

namespace zkit::tool {
namespace {

struct Outcome {
    const Input* input = nullptr;
    std::unique_ptr<Inspection> inspection;  // null when it failed
    std::string failure;
};

void draw(const Picture& picture, ZImage<ZBW8>& grey, Inspection& inspection, const Input& input,
          const BatchRequest& request)
{
    for (const std::string& ending : request.endings) {
        if (!request.overlays.empty())
            drawOverlay(picture, grey, inspection, request.overlays / (input.drawing + "-overlay" + ending));
        if (!request.plots.empty())
            plotHistogram(inspection.histogram, inspection.threshold,
                          request.plots / (input.drawing + "-histogram" + ending));
    }
}

Outcome inspectInput(const Input& input, const BatchRequest& request)
{
    Outcome outcome{&input, nullptr, {}};
    try {
        const Picture picture = input.scene ? renderScene() : readPicture(input.name);
        const auto grey = toGrey(picture, request.inspect.shift);
        auto inspection = inspect(*grey, request.inspect);
        draw(picture, *grey, *inspection, input, request);
        for (Object& object : inspection->objects)  // waiting for its turn it needs no contours
            object.contour.reset();
        outcome.inspection = std::move(inspection);
    } catch (const std::bad_alloc&) {
        outcome.failure = "there is not enough memory for the picture";
    } catch (const std::exception& error) {
        outcome.failure = error.what();
    }
    return outcome;
}

// A line on the terminal that says how far the work has come; nothing where standard error is no terminal.
class Progress {
public:
    explicit Progress(std::size_t total) : total_(total), shown_(total > 1 && isatty(STDERR_FILENO) != 0) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void clear() const
    {
        if (shown_)
            std::cerr << "\r\033[K" << std::flush;
    }

    void show(std::size_t done) const
    {
        if (shown_)
            std::cerr << done << " of " << total_ << " pictures" << std::flush;
    }

private:
    std::size_t total_;
    bool shown_;
};

}  // namespace

int inspectAll(const std::vector<Input>& inputs, const BatchRequest& request, InspectionWriter& writer)
{
    const Interruption interruption;
    bool failed = false;
    {
        const Progress progress(inputs.size());
        std::size_t done = 0;
        const auto use = [&](const Outcome& outcome) {
            progress.clear();
            if (outcome.inspection) {
                writer.write(std::cout, outcome.input->name, *outcome.inspection);
            } else {
                failed = true;
                writer.writeFailure(std::cout, outcome.input->name, outcome.failure);
                std::cerr << outcome.input->name << ": " << outcome.failure << std::endl;
            }
            progress.show(++done);
        };
        writer.begin(std::cout);
        inOrder(
            inputs.size(), request.jobs, [&](std::size_t i) { return inspectInput(inputs[i], request); }, use,
            [] { return Interruption::requested() || !std::cout; });
        writer.end(std::cout);
    }
    std::cout.flush();
    Interruption::obey();
    if (std::cout)
        return failed ? 1 : 0;
    std::cerr << "zkit: the results could not be written" << std::endl;
    return 1;
}

}  // namespace zkit::tool
