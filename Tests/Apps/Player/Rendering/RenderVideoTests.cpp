#include "Tests/Apps/Player/Rendering/ScriptedRender.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/ShownFrame.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

/// Renders a video flat on a plane.
class RenderVideo : public ScriptedRender {
protected:
    [[nodiscard]] static RenderCommand commandFor(const std::string& input) {
        RenderCommand command;
        command.input = input;
        command.size = {256, 128};
        command.mode = DisplayMode::Plane;
        return command;
    }
    [[nodiscard]] std::optional<int> frameIn(const std::string& name) const {
        return tests::shownFrameNumber(*picture(name));
    }
    /// The names of the hooks but the ticks'.
    [[nodiscard]] std::vector<std::string> hooks() const {
        std::vector<std::string> names;
        for (const auto& record : trace()) {
            const std::string name = record.value("hook", "videoPlayedToTime");
            if (name != "videoPlayedToTime")
                names.push_back(name);
        }
        return names;
    }
    /// What goes to standard error for an input that is not opened.
    [[nodiscard]] std::string refusalOf(const std::string& input) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(renderScript("", commandFor(input)), ExitCode::ContentNotOpened) << input;
        return ::testing::internal::GetCapturedStderr();
    }
};

std::string clip() {
    return tests::testClip();
}

bool isOneLineNaming(const std::string& text, const std::string& input) {
    return text.find('\n') + 1 == text.size() && text.find(input) != std::string::npos;
}

} // namespace

TEST_F(RenderVideo, ShowsTheFrameThatBelongsToASecond) {
    ASSERT_EQ(renderScript(R"({"at":0,"snapshot":"0.png"}
{"at":0.1,"snapshot":"3.png"}
{"at":0.51,"snapshot":"15.png"}
{"at":0.9999,"snapshot":"29.png"}
)",
                           commandFor(clip())),
              ExitCode::Done);
    for (const int frame : {0, 3, 15, 29})
        EXPECT_EQ(frameIn(std::to_string(frame) + ".png"), frame);
}

TEST_F(RenderVideo, ShowsTheFrameOfTheTimeOption) {
    RenderCommand command = commandFor(clip());
    command.timeSeconds = 0.7;
    ASSERT_EQ(renderScript("", command), ExitCode::Done);
    const std::string name = std::filesystem::path(clip()).stem().string() + ".png";
    EXPECT_EQ(frameIn(name), 21);
}

TEST_F(RenderVideo, SaysThatTheTimeOptionIsPastTheEnd) {
    RenderCommand command = commandFor(clip());
    command.timeSeconds = 7.5;
    ::testing::internal::CaptureStderr();
    ASSERT_EQ(renderScript("", command), ExitCode::Done);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "zanto-player: --time 7.5: the video ends at 1 s and goes back to its start\n");
    EXPECT_EQ(frameIn(std::filesystem::path(clip()).stem().string() + ".png"), 0);
}

TEST_F(RenderVideo, PausesSeeksAndPlaysOn) {
    ASSERT_EQ(renderScript(R"({"at":0.2,"pause":true}
{"at":0.4,"snapshot":"paused.png"}
{"at":0.4,"seek":0.8}
{"at":0.4,"snapshot":"there.png"}
{"at":0.5,"seek":0.3}
{"at":0.5,"play":true}
{"at":0.6,"snapshot":"on.png"}
)",
                           commandFor(clip())),
              ExitCode::Done);
    EXPECT_EQ(frameIn("paused.png"), 6);
    EXPECT_EQ(frameIn("there.png"), 24);
    EXPECT_EQ(frameIn("on.png"), 12);
}

TEST_F(RenderVideo, TracesEveryHookInOrderWithItsArguments) {
    ASSERT_EQ(renderScript(R"({"at":2,"snapshot":"end.png"})", commandFor(clip())), ExitCode::Done);
    EXPECT_EQ(hooks(), (std::vector<std::string>{"videoStartedPlaying", "videoIsLoading",
                                                 "videoDidEndLoading", "videoDidEndPlaying",
                                                 "videoPaused"}));
    int ticks = 0;
    double last = -1;
    for (const auto& record : trace()) {
        if (record.value("hook", "") != "videoPlayedToTime")
            continue;
        ++ticks;
        const double seconds = record.at("seconds");
        if (seconds != 0) { // from the end it goes back to the start
            EXPECT_GE(seconds, last);
        }
        last = seconds;
    }
    EXPECT_GE(ticks, 60);
}

TEST_F(RenderVideo, GivesTheSameBytesEveryTime) {
    const std::string script = R"({"at":0,"mode":"sphere"}
{"at":0.1,"touch":"down","id":1,"x":100,"y":60}
{"at":0.2,"touch":"move","id":1,"x":130,"y":60}
{"at":0.2,"touch":"up","id":1,"x":130,"y":60}
{"at":0.4,"seek":0.1}
{"at":0.6,"snapshot":"a.png"}
)";
    ASSERT_EQ(renderScript(script, commandFor(clip())), ExitCode::Done);
    const std::string picture = folder_.read("out/a.png");
    const auto firstTrace = trace();
    ASSERT_EQ(renderScript(script, commandFor(clip())), ExitCode::Done);
    EXPECT_EQ(folder_.read("out/a.png"), picture);
    EXPECT_EQ(trace(), firstTrace);
    EXPECT_FALSE(picture.empty());
}

TEST_F(RenderVideo, ReplacesAPictureByAVideoOfTheScript) {
    const std::string script = R"({"at":0.5,"video":")" + clip() + R"("}
{"at":0.7,"snapshot":"video.png"}
{"at":0.8,"image":"/nowhere/p.jpg"}
{"at":0.8,"reload":true}
{"at":0.9,"snapshot":"again.png"}
{"at":1.0,"appear":true}
{"at":1.0,"snapshot":"appeared.png"}
)";
    RenderCommand command = commandFor("");
    ASSERT_EQ(renderScript(script, command), ExitCode::Done);
    EXPECT_EQ(frameIn("video.png"), 6);
    EXPECT_EQ(frameIn("again.png"), 3) << "from the start again";
    EXPECT_EQ(frameIn("appeared.png"), 6);
}

TEST_F(RenderVideo, PicksHotSpotsByTapAndByLook) {
    const std::string icon = std::string(ZANTO_SOURCE_DIR) + "/Examples/hot-spots/north.png";
    const std::string script = R"({"at":0,"tap_detection":true}
{"at":0.1,"hot_spots":[{"name":"door","image":")" +
                               icon +
                               R"(","vertical":0,"horizontal":0}]}
{"at":0.2,"tap":[128,64]}
{"at":0.3,"auto_picking":true}
{"at":1.1,"auto_picking":false}
{"at":1.9,"snapshot":"a.png"}
)";
    RenderCommand command = commandFor(tests::testClip({.frames = 60}));
    command.mode = DisplayMode::Sphere;
    ASSERT_EQ(renderScript(script, command), ExitCode::Done);
    std::vector<bool> taps;
    for (const auto& record : trace()) {
        if (record.value("hook", "") == "detectPickedHotSpotObjectWithName")
            taps.push_back(record.at("tap"));
    }
    EXPECT_EQ(taps, (std::vector<bool>{true, false, false})) << "a tap, and two looks of 0.33 s";
}

TEST_F(RenderVideo, PlaysAnAddress) {
    tests::HttpServer server;
    server.serveFile("/clip.mp4", clip());
    ASSERT_EQ(renderScript(R"({"at":0.5,"snapshot":"a.png"})", commandFor(server.url("/clip.mp4"))),
              ExitCode::Done);
    EXPECT_EQ(frameIn("a.png"), 15);
}

TEST_F(RenderVideo, NamesWhatCannotBeOpenedInOneLine) {
    tests::HttpServer server;
    const tests::RefusingPort closed;
    const std::string page = "<html>not a video</html>";
    server.serve("/page.mp4", {.body = {page.begin(), page.end()}});
    for (const std::string& input :
         {folder_.pathOf("missing.mp4"),
          folder_.addText("text.mp4", "hello, this is text, not a video\n"),
          folder_.addText("empty.mp4", ""), server.url("/absent.mp4"), server.url("/page.mp4"),
          closed.url("/clip.mp4")})
        EXPECT_TRUE(isOneLineNaming(refusalOf(input), input)) << refusalOf(input);
    EXPECT_NE(refusalOf(server.url("/absent.mp4")).find("404"), std::string::npos);
}

TEST_F(RenderVideo, TakesAFileForWhatItsEndingOrItsFirstBytesSay) {
    const std::string nameless = folder_.pathOf("clip");
    std::filesystem::copy_file(clip(), nameless);
    ASSERT_EQ(renderScript(R"({"at":0.5,"snapshot":"a.png"})", commandFor(nameless)),
              ExitCode::Done);
    EXPECT_EQ(frameIn("a.png"), 15);
}
