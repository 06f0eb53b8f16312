// The command `inspect` over many files.
#include "command.h"

#include "convert/convert.h"
#include "scene/scene.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <thread>

namespace {

class InspectCommand : public Command {
protected:
    void SetUp() override
    {
        std::filesystem::create_directory(folder_ / "pictures");
        writeGrey("pictures/b.png");
        folder_.write("pictures/a.pgm", bytesOf("P2 3 3 255  9 9 9  9 200 9  9 9 9\n"));
        folder_.write("pictures/c.PNG", bytesOf("no picture\n"));
        folder_.write("pictures/notes.txt", bytesOf("not to be looked at\n"));
    }

    bool hasParts(const std::string& folder) const
    {
        const std::filesystem::directory_iterator files(folder_ / folder);
        return std::any_of(begin(files), end(files),
                           [](const auto& entry) { return entry.path().extension() == ".part"; });
    }
};

}  // namespace

TEST_F(InspectCommand, FoldersInOrderAndTheSameForAnyNumberOfJobs)
{
    const std::string arguments = "inspect --json --median 0 --threshold 100 b.png pictures missing.png --jobs ";
    writeGrey("b.png");
    const CommandResult result = run(arguments + "1");
    EXPECT_EQ(result.status, 1);
    const auto json = nlohmann::json::parse(result.output);
    ASSERT_EQ(json.size(), 5U);
    EXPECT_EQ(json[0]["file"], "b.png");
    EXPECT_EQ(json[1]["file"], "pictures/a.pgm");
    EXPECT_EQ(json[1]["threshold"], 100);
    ASSERT_EQ(json[1]["objects"].size(), 1U);
    EXPECT_EQ(json[1]["objects"][0]["centre"], (nlohmann::json{{"x", 1.0}, {"y", 1.0}}));
    EXPECT_EQ(json[1]["objects"][0]["touches_edge"], false);
    EXPECT_EQ(json[2]["objects"][0]["area"], 3);
    EXPECT_EQ(json[2]["objects"][0]["touches_edge"], true);
    EXPECT_EQ(json[3]["file"], "pictures/c.PNG");
    EXPECT_EQ(json[4]["error"], "there is no such file");
    EXPECT_EQ(std::ranges::count(result.complaints, '\n'), 2) << result.complaints;
    for (const char* jobs : {"2", "7", "256"}) {
        const CommandResult again = run(arguments + jobs);
        EXPECT_EQ(again.output, result.output) << jobs;
        EXPECT_EQ(again.complaints, result.complaints) << jobs;
    }
}

TEST_F(InspectCommand, TableAndCommaSeparatedValues)
{
    folder_.write("a \"b\",c.pgm", bytesOf("P2 3 3 255  9 9 9  9 200 9  9 9 9\n"));
    const CommandResult table = run("inspect --median 0 pictures/a.pgm --scene");
    EXPECT_EQ(table.status, 0);
    EXPECT_EQ(table.complaints, "") << "no progress where there is no terminal";
    EXPECT_NE(table.output.find("scene: 640 x 480 pixels, threshold 13"), std::string::npos);
    EXPECT_NE(table.output.find("\npictures/a.pgm: 3 x 3 pixels, threshold "), std::string::npos);
    const CommandResult csv = run("inspect --csv --threshold 9 --median 0 'a \"b\",c.pgm'");
    EXPECT_NE(csv.output.find("\n\"a \"\"b\"\",c.pgm\",1,0,0,3,3,9,1,1,0,1,8,30.2222"), std::string::npos)
        << csv.output;
    EXPECT_EQ(run("inspect --scene", "/dev/full").status, 1);
}

TEST_F(InspectCommand, DrawsOverlaysAndPlots)
{
    writeGrey("b.png");
    const CommandResult result =
        run("inspect --median 0 --overlay x/over --plots plots --drawings both b.png pictures/b.png pictures/a.pgm");
    EXPECT_EQ(result.status, 0) << result.complaints;
    for (const char* name : {"x/over/b-overlay.png", "x/over/b-2-overlay.png", "x/over/a-overlay.svg",
                             "plots/a-histogram.png", "plots/b-2-histogram.svg"})
        EXPECT_TRUE(exists(name)) << name;
    // The red cross in the middle of the only bright pixel, the green contour being that pixel itself.
    const auto overlay = valuesOf(zkit::tool::readPicture(folder_ / "x/over/a-overlay.png"));
    ASSERT_EQ(overlay.size(), 27U);
    EXPECT_GT(overlay[3], overlay[4] + 100);
    const std::string svg = contents("x/over/a-overlay.svg");
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");

    EXPECT_EQ(run("inspect --overlay b.png pictures/a.pgm").status, 1) << "a file in the place of the folder";
    EXPECT_EQ(run("inspect --background missing.png pictures/a.pgm").complaints,
              "missing.png: there is no such file\n");
}

// What is written is whole, also when the command is told to stop; it ends by that signal.
TEST_F(InspectCommand, Interrupted)
{
    std::filesystem::create_directory(folder_ / "many");
    zkit::tool::writePicture(folder_ / "many/0.pgm", zkit::tool::renderScene());
    for (int i = 1; i < 400; ++i)
        std::filesystem::create_hard_link(folder_ / "many/0.pgm", folder_ / ("many/" + std::to_string(i) + ".pgm"));
    const std::string command =
        "cd '" + (folder_ / "").string() +
        "' && { '" ZKIT_TOOL "' inspect --json --jobs 2 --overlay over many >output & pid=$!; "
        "while [ ! -e over/0-overlay.png ]; do sleep 0.01; done; kill -TERM $pid; wait $pid; } 2>errors";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 128 + SIGTERM);
    EXPECT_FALSE(hasParts("over"));
    const auto json = nlohmann::json::parse(contents("output"));
    EXPECT_LT(json.size(), 400U);
    const std::filesystem::directory_iterator drawings(folder_ / "over");
    EXPECT_EQ(static_cast<std::size_t>(std::distance(begin(drawings), end(drawings))), json.size());
}

TEST_F(InspectCommand, WrongUsage)
{
    for (const char* arguments :
         {"", "--threshold x a", "--json --csv a", "--jobs 0 a", "--median -1 a", "--bits 17 a", "--drawings gif a"})
        EXPECT_EQ(run(std::string("inspect ") + arguments).status, 2) << arguments;
}
