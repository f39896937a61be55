#include "Tests/Apps/Player/ProgramRun.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/ScopedVariable.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

const std::string kPanorama = std::string(ZANTO_SOURCE_DIR) + "/Resources/panorama.jpg";

/// Renders an input that cannot be shown, and gives back the one line that says so.
std::string refusalOf(const std::string& input) {
    const tests::TemporaryFolder folder;
    const ProgramRun run =
        runPlayer("render '" + input + "' --size 64x64 --output " + folder.pathOf("out.png"));
    EXPECT_EQ(run.exitCode, 2) << input;
    EXPECT_FALSE(std::filesystem::exists(folder.pathOf("out.png"))) << input;
    return run.standardError;
}

} // namespace

TEST(Program, WritesAPictureOfAFile) {
    const tests::TemporaryFolder folder;
    const ProgramRun run = runPlayer("render " + kPanorama + " --size 64x64 --output " +
                                     folder.pathOf("deep/out.png"));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.standardError, "");
    EXPECT_EQ(folder.read("deep/out.png").substr(1, 3), "PNG");
}

TEST(Program, NamesAPictureInAFolderAfterItsInput) {
    const tests::TemporaryFolder folder;
    EXPECT_EQ(runPlayer("render --size 64x64 --output " + folder.pathOf("built-in")).exitCode, 0);
    EXPECT_TRUE(std::filesystem::exists(folder.pathOf("built-in/panorama.png")));
    const std::string copy = folder.addText("mine.jpg", "");
    std::filesystem::copy_file(kPanorama, copy, std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(runPlayer("render file://" + copy + " --size 64x64 --output " + folder.pathOf("file"))
                  .exitCode,
              0);
    EXPECT_TRUE(std::filesystem::exists(folder.pathOf("file/mine.png")));
}

TEST(Program, NamesContentThatCannotBeOpened) {
    const tests::TemporaryFolder folder;
    const std::string cut("\xff\xd8\xff\xe0", 4);
    std::filesystem::create_symlink("/proc/self/mem", folder.pathOf("unreadable.jpg"));
    const std::vector<std::pair<std::string, std::string>> cases{
        {folder.pathOf("missing.jpg"), "it is missing"},
        {folder.addText("empty.jpg", ""), "it is empty"},
        {folder.addText("text.png", "just some text"), "not a JPEG, PNG or WebP picture"},
        {folder.addText("cut.jpg", cut), "JPEG"},
        {folder.pathOf(""), "it is a folder"},
        {folder.pathOf("unreadable.jpg"), "cannot be read"},
        {folder.pathOf("missing.mp4"), "there is no such file"},
        {folder.addText("text.mp4", "just some text"), "not a video of a known kind"},
        {folder.addText("text", "just some text"), "not a video of a known kind"}};
    for (const auto& [input, cause] : cases) {
        const std::string message = refusalOf(input);
        EXPECT_NE(message.find(input), std::string::npos) << message;
        EXPECT_NE(message.find(cause), std::string::npos) << message;
        EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1) << message;
    }
}

TEST(Program, NamesAnAddressThatCannotBeOpened) {
    const tests::RefusingPort closed;
    for (const std::string& input : {closed.url("/panorama.jpg"), closed.url("/tour.mp4")}) {
        const std::string message = refusalOf(input);
        EXPECT_TRUE(message.starts_with("zanto-player: " + input + ": ")) << message;
        EXPECT_NE(message.find("refuses the connection"), std::string::npos) << message;
        EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1) << message;
    }
}

TEST(Program, SaysOnceThatAShaderDoesNotLink) {
    // Resources are looked up beside the library, so the program is given a copy of it.
    const tests::TemporaryFolder folder;
    const std::filesystem::path library(ZANTO_FRAMEWORK);
    const std::filesystem::path copies = folder.pathOf("lib/here");
    std::filesystem::create_directories(copies);
    std::filesystem::copy_file(library, copies / library.filename());
    for (const char* prefix : {"lib/share", "share"}) {
        const auto resources =
            std::filesystem::path(folder.pathOf(prefix)) / "ZantoPlayerFramework";
        std::filesystem::create_directories(resources);
        std::ofstream(resources / "FragmentPhotoShader.fsh") << "no shader";
    }
    const tests::ScopedVariable libraries("LD_LIBRARY_PATH", copies.string());
    const ProgramRun run =
        runPlayer("render " + kPanorama + " --size 64x64 --output " + folder.pathOf("out.png"));
    EXPECT_EQ(run.exitCode, 3);
    const std::string text = "ZNTProgram:125: Failed during linking process";
    const auto first = run.standardError.find(text);
    ASSERT_NE(first, std::string::npos) << run.standardError;
    EXPECT_EQ(run.standardError.find(text, first + 1), std::string::npos) << run.standardError;
}

TEST(Program, RefusesABadScriptBeforeItOpensAnything) {
    const tests::TemporaryFolder folder;
    const std::string script = folder.addText("bad.jsonl", "{\"at\":0,\"fly\":1}\n");
    const ProgramRun run = runPlayer("render /no/such/file --size 64x64 --output " +
                                     folder.pathOf("out") + " --actions " + script);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.standardError, "zanto-player: " + script + ":1: unknown action \"fly\"\n");
    EXPECT_FALSE(std::filesystem::exists(folder.pathOf("out")));
}

TEST(Program, SaysOnceThatAScriptResizesToNothing) {
    const tests::TemporaryFolder folder;
    const std::string script =
        folder.addText("small.jsonl", "{\"at\":0.1,\"resize\":[1,40]}\n"
                                      "{\"at\":0.2,\"snapshot\":\"a.png\"}\n");
    const ProgramRun run = runPlayer("render --size 64x32 --scale 0.1 --output " +
                                     folder.pathOf("out") + " --actions " + script);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.standardError, "zanto-player: " + script +
                                     ": the size of \"resize\" times --scale is less than a "
                                     "pixel a side\n");
}

TEST(Program, SaysWhereItCannotWrite) {
    const tests::TemporaryFolder folder;
    const std::string file = folder.addText("file", "");
    const ProgramRun picture = runPlayer("render --size 64x64 --output " + file + "/out.png");
    EXPECT_EQ(picture.exitCode, 1);
    EXPECT_EQ(picture.standardError, "zanto-player: " + file + "/out.png: cannot be written\n");
    const ProgramRun trace = runPlayer("render --size 64x64 --output " + folder.pathOf("o.png") +
                                       " --trace " + file + "/trace");
    EXPECT_EQ(trace.exitCode, 1);
    EXPECT_EQ(trace.standardError, "zanto-player: " + file + "/trace: cannot be written\n");
}

TEST(Program, LeavesWithOneForWrongUse) {
    EXPECT_EQ(runPlayer("render").exitCode, 1);
    EXPECT_EQ(runPlayer("--version").exitCode, 0);
}

TEST(Program, LeavesWithThreeAndOneLineWithoutAWindow) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", "nonexistent");
    const ProgramRun run = runPlayer("");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(std::count(run.standardError.begin(), run.standardError.end(), '\n'), 1)
        << run.standardError;
    EXPECT_NE(run.standardError.find("window"), std::string::npos) << run.standardError;
}

TEST(BuiltInPanorama, IsOfTheSizeItShouldBe) {
    EXPECT_LE(std::filesystem::file_size(kPanorama), 1U << 20U);
    EXPECT_LE(
        std::filesystem::file_size(std::string(ZANTO_SOURCE_DIR) + "/Resources/watermark.png"),
        64U << 10U);
}
