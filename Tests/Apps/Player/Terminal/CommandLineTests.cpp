#include "Apps/Player/Terminal/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

Command parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "zanto-player");
    return parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

/// What a wrong command says on standard error.
std::string complaint(const std::vector<const char*>& arguments) {
    ::testing::internal::CaptureStderr();
    const Command command = parse(arguments);
    const std::string text = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::get<ExitCode>(command), ExitCode::WrongUse);
    return text;
}

} // namespace

TEST(CommandLine, PlaysTheBuiltInPanoramaWithoutArguments) {
    EXPECT_EQ(std::get<PlayCommand>(parse({})).input, "");
}

TEST(CommandLine, PlaysAFileOrAnAddress) {
    EXPECT_EQ(std::get<PlayCommand>(parse({"a b.jpg"})).input, "a b.jpg");
    EXPECT_EQ(std::get<PlayCommand>(parse({"https://host/a.jpg"})).input, "https://host/a.jpg");
}

TEST(CommandLine, ReadsEveryRenderOption) {
    const auto render = std::get<RenderCommand>(
        parse({"render", "in.jpg", "--output", "out", "--size=640x360", "--scale", "2", "--mode",
               "side-by-side", "--time=1.5", "--actions", "a.jsonl", "--trace", "t.jsonl",
               "--touch-slop", "2.5", "--hot-spots=h.json"}));
    EXPECT_EQ(render.input, "in.jpg");
    EXPECT_EQ(render.output, "out");
    EXPECT_EQ(render.size, (platform::Size{640, 360}));
    EXPECT_EQ(render.scale, 2.0);
    EXPECT_EQ(render.mode, DisplayMode::SideBySide);
    EXPECT_EQ(render.timeSeconds, 1.5);
    EXPECT_EQ(render.actionsFile, "a.jsonl");
    EXPECT_EQ(render.traceFile, "t.jsonl");
    EXPECT_EQ(render.hotSpotsFile, "h.json");
    EXPECT_EQ(render.touchSlop.finger, 2.5);
    EXPECT_EQ(render.touchSlop.mouse, 2.5);
}

TEST(CommandLine, HasDefaultsForWhatMayBeLeftOut) {
    const auto render =
        std::get<RenderCommand>(parse({"render", "--output", "o.png", "--size", "1x1"}));
    EXPECT_EQ(render.input, "");
    EXPECT_EQ(render.scale, 1.0);
    EXPECT_EQ(render.mode, DisplayMode::Sphere);
    EXPECT_EQ(render.timeSeconds, 0.0);
    EXPECT_EQ(render.touchSlop.finger, 10.0);
    EXPECT_EQ(render.touchSlop.mouse, 3.0);
}

TEST(CommandLine, KnowsEveryMode) {
    const auto mode = [](const char* name) {
        return std::get<RenderCommand>(
                   parse({"render", "--output", "o", "--size", "1x1", "--mode", name}))
            .mode;
    };
    EXPECT_EQ(mode("plane"), DisplayMode::Plane);
    EXPECT_EQ(mode("sphere"), DisplayMode::Sphere);
    EXPECT_EQ(mode("little-planet"), DisplayMode::LittlePlanet);
    EXPECT_EQ(mode("side-by-side"), DisplayMode::SideBySide);
}

TEST(CommandLine, ReadsEveryOptionOfTheWindow) {
    const auto play =
        std::get<PlayCommand>(parse({"in.jpg", "--record", "r.jsonl", "--attitude-trace=t.txt",
                                     "--touch-slop", "5", "--hot-spots", "h.json"}));
    EXPECT_EQ(play.input, "in.jpg");
    EXPECT_EQ(play.recordFile, "r.jsonl");
    EXPECT_EQ(play.attitudeTraceFile, "t.txt");
    EXPECT_EQ(play.hotSpotsFile, "h.json");
    EXPECT_EQ(play.touchSlop.finger, 5.0);
    const auto plain = std::get<PlayCommand>(parse({}));
    EXPECT_EQ(plain.recordFile, "");
    EXPECT_EQ(plain.attitudeTraceFile, "");
    EXPECT_EQ(plain.hotSpotsFile, "");
    EXPECT_EQ(plain.touchSlop.finger, 10.0);
    EXPECT_EQ(plain.touchSlop.mouse, 3.0);
}

TEST(CommandLine, LetsADragBeginAtTheFirstMove) {
    const auto render = std::get<RenderCommand>(
        parse({"render", "--output", "o", "--size", "1x1", "--touch-slop=0"}));
    EXPECT_EQ(render.touchSlop.finger, 0.0);
    const auto play = std::get<PlayCommand>(parse({"--touch-slop", "0"}));
    EXPECT_EQ(play.touchSlop.finger, 0.0);
    EXPECT_EQ(play.touchSlop.mouse, 0.0);
}

TEST(CommandLine, AnswersHelpAndVersionOnStandardOutput) {
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(std::get<ExitCode>(parse({"--version"})), ExitCode::Done);
    EXPECT_EQ(std::get<ExitCode>(parse({"--help"})), ExitCode::Done);
    EXPECT_EQ(std::get<ExitCode>(parse({"render", "--help"})), ExitCode::Done);
    const std::string text = ::testing::internal::GetCapturedStdout();
    EXPECT_NE(text.find("zanto-player 1.0\n"), std::string::npos);
    EXPECT_NE(text.find("--size"), std::string::npos);
}

TEST(CommandLine, ShowsAnExampleOfEveryOptionInItsHelp) {
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(std::get<ExitCode>(parse({"--help"})), ExitCode::Done);
    const std::string window = ::testing::internal::GetCapturedStdout();
    for (const char* option : {"--touch-slop", "--hot-spots", "--record", "--attitude-trace"})
        EXPECT_NE(window.find(std::string("Example: ") + option), std::string::npos) << option;
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(std::get<ExitCode>(parse({"render", "--help"})), ExitCode::Done);
    const std::string render = ::testing::internal::GetCapturedStdout();
    for (const char* option : {"--output", "--size", "--scale", "--mode", "--time", "--actions",
                               "--trace", "--touch-slop", "--hot-spots"})
        EXPECT_NE(render.find(std::string("Example: ") + option), std::string::npos) << option;
}

TEST(CommandLine, NamesWhatIsWrongInOneLine) {
    EXPECT_EQ(complaint({"--bogus"}),
              "zanto-player: The following argument was not expected: --bogus\n");
    EXPECT_EQ(complaint({"render", "--size", "1x1"}), "zanto-player: --output is required\n");
    EXPECT_EQ(complaint({"render", "--output", "o"}), "zanto-player: --size is required\n");
    EXPECT_EQ(complaint({"a.jpg", "render", "--output", "o", "--size", "1x1"}),
              "zanto-player: \"a.jpg\" stands before render; input and options are given after "
              "it\n");
    EXPECT_EQ(complaint({"--record", "r", "render", "--output", "o", "--size", "1x1"}),
              "zanto-player: \"--record\" stands before render; input and options are given after "
              "it\n");
    EXPECT_EQ(complaint({"--hot-spots", "h", "render", "--output", "o", "--size", "1x1"}),
              "zanto-player: \"--hot-spots\" stands before render; input and options are given "
              "after it\n");
    EXPECT_EQ(complaint({"render", "--output", "o", "--size", "9000x1", "--scale", "2"}),
              "zanto-player: --size times --scale is over 16384 pixels a side\n");
    for (const char* size : {"3x3", "100x3", "3x100"})
        EXPECT_EQ(complaint({"render", "--output", "o", "--size", size, "--scale", "0.1"}),
                  "zanto-player: --size times --scale is less than a pixel a side\n");
}

TEST(CommandLine, RefusesAnInputThatNamesNothing) {
    EXPECT_EQ(complaint({""}), "zanto-player: INPUT: names nothing\n");
}

TEST(CommandLine, KeepsPicturesAsPNGOnly) {
    EXPECT_EQ(complaint({"render", "--output", "p.jpg", "--size", "1x1"}),
              "zanto-player: --output: pictures are written as .png, not .jpg\n");
}

TEST(CommandLine, RefusesSizesThatAreNone) {
    for (const char* size :
         {"640", "640x", "x360", "0x10", "10x0", "-5x5", "640x360x2", "axb", ""}) {
        const std::string text = complaint({"render", "--output", "o", "--size", size});
        EXPECT_EQ(text, "zanto-player: --size: \"" + std::string(size) +
                            "\" is not a size such as 640x360\n");
    }
}

TEST(CommandLine, RefusesUnknownModesAndValues) {
    EXPECT_EQ(complaint({"render", "--output", "o", "--size", "1x1", "--mode", "1"}),
              "zanto-player: --mode: unknown mode \"1\"\n");
    const std::vector<std::pair<const char*, std::vector<const char*>>> numbers{
        {"--scale", {"0", "17", "nan", "inf", "x"}},
        {"--time", {"-1", "1000001", "nan", "inf", "x"}},
        {"--touch-slop", {"-1", "nan", "inf", "x"}}};
    for (const auto& [option, values] : numbers) {
        for (const char* value : values)
            EXPECT_NE(
                complaint({"render", "--output", "o", "--size", "1x1", option, value}).find(option),
                std::string::npos)
                << option << value;
    }
    EXPECT_EQ(complaint({"--touch-slop=-1"}),
              "zanto-player: --touch-slop: not between 0 and 16384\n");
}
