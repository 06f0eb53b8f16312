// The command as its users run it: exit status, output, complaints.
#include "command.h"

#include <nlohmann/json.hpp>

TEST_F(Command, MeasuresFilesAsText)
{
    writeGrey("grey.png");
    folder_.write("colour.ppm", bytesOf("P3 2 1 255  1 2 3  5 4 3\n"));
    const CommandResult result = run("measure grey.png colour.ppm");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.complaints, "");
    for (const char* text : {"grey.png\n", "4 x 2 pixels", "8-bit grey", "3 pixels above 128", "colour.ppm\n",
                             "red 3, green 3, blue 3 levels", "none"})
        EXPECT_NE(result.output.find(text), std::string::npos) << text << " in\n" << result.output;
}

TEST_F(Command, MeasuresFilesAsJson)
{
    writeGrey("grey.png");
    folder_.write("uniform.ppm", bytesOf("P3 1 1 255  1 2 3\n"));
    const CommandResult result = run("measure --json --threshold 20 --roi 0,0,1,1 uniform.ppm grey.png missing.png");
    EXPECT_EQ(result.status, 1);
    const auto json = nlohmann::json::parse(result.output);
    ASSERT_EQ(json.size(), 3U);
    EXPECT_EQ(json[0]["mean"]["blue"], 3.0);
    EXPECT_TRUE(json[0]["correlation"]["red_green"].is_null());
    EXPECT_EQ(json[1]["file"], "grey.png");
    EXPECT_EQ(json[1]["region"]["width"], 1);
    EXPECT_EQ(json[1]["mean"], 10.0);
    EXPECT_EQ(json[1]["area"], 0);
    EXPECT_TRUE(json[1]["centre"]["x"].is_null());
    EXPECT_EQ(json[2], (nlohmann::json{{"file", "missing.png"}, {"error", "there is no such file"}}));

    const auto whole = nlohmann::json::parse(run("measure --json grey.png").output)[0];
    EXPECT_EQ(whole["type"], "8-bit grey");
    EXPECT_EQ(whole["threshold"], 128);
    EXPECT_EQ(whole["max"], 200);
    EXPECT_EQ(whole["mean"], 82.5);
    EXPECT_EQ(whole["weighed_moments"]["m00"], 660.0);
    EXPECT_EQ(whole["binary_moments"]["m11"], 5.0);
}

TEST_F(Command, OneLineForEachBadFileAndTheOthersAreMeasured)
{
    writeGrey("good.png");
    FileBytes truncated = writePng(drawing(9, 9, 8, 1), PNG_COLOR_TYPE_GRAY);
    truncated.resize(60);
    folder_.write("truncated.png", truncated);
    folder_.write("huge.pgm", bytesOf("P5 65535 65535 255\n"));
    const CommandResult result = run("measure missing.png truncated.png huge.pgm . good.png");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.complaints, "missing.png: there is no such file\n"
                                 "truncated.png: PNG: the file is truncated\n"
                                 "huge.pgm: the picture is too large: 65535 x 65535 pixels\n"
                                 ".: is a directory\n");
    EXPECT_EQ(result.output.substr(0, 9), "good.png\n");
}

TEST_F(Command, DrawsTheHistogram)
{
    writeGrey("grey.png");
    EXPECT_EQ(run("measure --plot plot.png grey.png").status, 0);
    EXPECT_EQ(contents("plot.png").substr(1, 3), "PNG");
    EXPECT_EQ(run("measure --plot plot.SVG --scene").status, 0);
    const std::string drawing = contents("plot.SVG");
    EXPECT_EQ(drawing.substr(drawing.size() - 7), "</svg>\n");

    for (const char* arguments : {"--plot plot.gif grey.png", "--plot missing/plot.png grey.png"}) {
        const CommandResult result = run(std::string("measure ") + arguments);
        EXPECT_EQ(result.status, 1) << arguments;
        EXPECT_EQ(result.complaints.find("grey.png: "), 0U) << result.complaints;
    }
    EXPECT_FALSE(std::filesystem::exists(folder_ / "plot.gif.part"));
    EXPECT_EQ(run("measure --plot plot.png grey.png --scene").status, 2);
}

TEST_F(Command, FailuresOfTheLibraryAreSentences)
{
    writeGrey("grey.png");
    const CommandResult result = run("measure --roi=-1,0,2,2 grey.png --scene");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.complaints, "scene: A region does not lie within its image. (ImgPixelStat)\n"
                                 "grey.png: A region does not lie within its image. (ImgPixelStat)\n");
    EXPECT_EQ(run("measure --threshold 300 grey.png").status, 1);
}

TEST_F(Command, NamesThatAreNotText)
{
    writeGrey("\xff.png");
    const CommandResult result = run("measure --json *.png \"two\nlines\"");
    EXPECT_EQ(nlohmann::json::parse(result.output)[0]["max"], 200);
}

TEST_F(Command, WrongUsageHelpAndVersion)
{
    for (const char* arguments :
         {"", "paint", "measure", "measure --roi 1,2,3 x", "measure --roi 1,2,3,4,5 x", "measure --roi 1,2,0,4 x",
          "measure --roi 1,2,a,4 x", "measure --roi 99999999999,0,1,1 x", "measure --threshold -1 x",
          "measure --threshold 65536 x", "measure --colour x"}) {
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.output, "") << arguments;
        EXPECT_NE(result.complaints, "") << arguments;
    }
    for (const char* arguments : {"--help", "measure --help", "inspect --help", "--version"}) {
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << arguments;
        EXPECT_NE(result.output.find("zkit"), std::string::npos) << arguments;
    }
}

TEST_F(Command, FailsWhenItsOutputIsLost) { EXPECT_EQ(run("measure --scene", "/dev/full").status, 1); }

TEST_F(Command, ManualHasWhatTheHelpHas)
{
    const std::string manual = run("man").output;
    for (const char* text : {".TH ZKIT 1", ".SH ZKIT INSPECT", "\\-\\-threshold\\fR \\fIt", "\nisodata (the default)",
                             ".SH ZKIT CONVERT", ".SH ZKIT UNWRAP", "The exit status is 0, 1"})
        EXPECT_NE(manual.find(text), std::string::npos) << text;
    EXPECT_EQ(run("--help").output.find(" man "), std::string::npos) << "is for the build only";
}
