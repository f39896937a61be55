#include "Tests/Apps/Player/ProgramRun.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/ScopedVariable.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

TEST(Play, NamesContentThatCannotBeOpenedInOneLine) {
    // The program has opened a window by then: a driver that is unloaded shows as a leak.
    const tests::ScopedVariable sanitizer("ASAN_OPTIONS", "detect_leaks=0");
    const ProgramRun missing = runPlayer("/no/such/panorama.jpg");
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(missing.standardError, "zanto-player: image \"/no/such/panorama.jpg\" is not shown: "
                                     "it is missing (No such file or directory)\n");
    const tests::RefusingPort closed;
    for (const std::string& input :
         {closed.url("/panorama.jpg"), closed.url("/tour.mp4"), std::string("/no/such/tour.mp4")}) {
        const ProgramRun run = runPlayer(input);
        EXPECT_EQ(run.exitCode, 2) << input;
        EXPECT_TRUE(run.standardError.starts_with("zanto-player: " + input + ": "))
            << run.standardError;
        EXPECT_EQ(run.standardError.find('\n') + 1, run.standardError.size()) << run.standardError;
    }
}

TEST(Play, NamesTheMissingDisplayInOneLine) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", std::nullopt);
    const tests::ScopedVariable display("DISPLAY", std::nullopt);
    const tests::ScopedVariable wayland("WAYLAND_DISPLAY", std::nullopt);
    const ProgramRun run = runPlayer("");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.standardError, "zanto-player: no window: there is no display: neither DISPLAY "
                                 "nor WAYLAND_DISPLAY is set\n");
}

TEST(Play, NamesADriverThatDoesNotExistInOneLine) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", "nonexistent");
    const ProgramRun run = runPlayer("");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.standardError,
              "zanto-player: no window: SDL: opening the display failed: nonexistent not "
              "available\n");
}

TEST(Play, NamesARecordingThatCannotBeWrittenBeforeThereIsAWindow) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", "nonexistent");
    for (const std::string path : {"/no/such/folder/script.jsonl", "/"}) {
        const ProgramRun run = runPlayer("--record " + path);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.standardError, "zanto-player: " + path + ": cannot be written\n");
    }
}

TEST(Play, NamesWhatIsWrongWithHotSpotsBeforeThereIsAWindow) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", "nonexistent");
    const tests::TemporaryFolder folder;
    const std::vector<std::pair<std::string, std::string>> cases{
        {"/no/such/spots.json", ": there is no such file\n"},
        {folder.addText("syntax.json", "{\n\"hot_spots\": oops}"), ":2: this is not JSON\n"},
        {folder.addText("member.json", R"({"hot_spots":[{"image":"a.png","vertical":0}]})"),
         ": hot_spots[0].horizontal is missing\n"}};
    const std::string kept = folder.addText("kept.jsonl", "an earlier recording");
    for (const auto& [path, cause] : cases) {
        const ProgramRun run = runPlayer("--hot-spots " + path + " --record " + kept);
        EXPECT_EQ(run.exitCode, 1) << path;
        EXPECT_EQ(run.standardError, "zanto-player: " + path + cause);
    }
    EXPECT_EQ(folder.read("kept.jsonl"), "an earlier recording");
}

TEST(Play, NamesWhatIsWrongWithAnAttitudeTraceBeforeThereIsAWindow) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", "nonexistent");
    const tests::TemporaryFolder folder;
    const std::vector<std::pair<std::string, std::string>> cases{
        {"/no/such/trace.csv", ": there is no such file"},
        {"/", ": cannot be read"},
        {folder.addText("empty.csv", "seconds,x,y,z,w\n"), ": there is no attitude in it"},
        {folder.addText("wrong.csv", "0,0,0,0,1\n1,0,0,up,1\n"), ": line 2: z: "}};
    const std::string kept = folder.addText("kept.jsonl", "an earlier recording");
    for (const auto& [path, cause] : cases) {
        const ProgramRun run = runPlayer("--attitude-trace " + path + " --record " + kept);
        EXPECT_EQ(run.exitCode, 1) << path;
        EXPECT_EQ(run.standardError.find("zanto-player: " + path + cause), 0U) << run.standardError;
        EXPECT_EQ(run.standardError.find('\n'), run.standardError.size() - 1) << "one line";
    }
    EXPECT_EQ(folder.read("kept.jsonl"), "an earlier recording");
}
