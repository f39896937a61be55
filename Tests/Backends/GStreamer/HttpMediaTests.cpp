#include "Backends/GStreamer/PipelineLimits.h"
#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

using platform::ErrorCode;
using platform::fromSeconds;
using platform::Instant;
using platform::MediaPacing;
using platform::URL;
using testing::ElementsAre;
using testing::HasSubstr;
using tests::ClipOptions;
using tests::HttpReply;
using tests::OpenedPipeline;
using tests::QueueDriver;
using tests::testClip;

namespace {

using namespace std::chrono_literals;

/// A file whose index stands in front, as files on servers have it.
ClipOptions served(int frames) {
    return {.frames = frames, .more = {"-movflags", "+faststart"}};
}

/// Eight seconds with sound: enough for the library to tell plenty of data from little.
ClipOptions film() {
    ClipOptions options = served(240);
    options.size = {320, 160};
    options.sound = tests::ClipSound::Tone;
    return options;
}

std::vector<std::uint8_t> contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

OpenedPipeline hostPaced(const std::string& url) {
    return {*URL::URLWithString(url), MediaPacing::Host, QueueDriver::Time::Virtual};
}

OpenedPipeline machinePaced(const std::string& url) {
    return {*URL::URLWithString(url), MediaPacing::Machine, QueueDriver::Time::Real};
}

platform::Error refusalOf(const std::string& url) {
    OpenedPipeline opened = hostPaced(url);
    EXPECT_FALSE(opened.open());
    return opened.notes->error.value_or(platform::Error{});
}

class HttpMedia : public testing::Test {
protected:
    HttpMedia() { platform::pipelineLimits() = {.silence = 15s, .request = 5s, .retries = 1}; }
    ~HttpMedia() override { platform::pipelineLimits() = {}; }

    [[nodiscard]] std::string serve(const ClipOptions& options, const HttpReply& how = {}) {
        const std::string path = "/clip." + options.container;
        server.serveFile(path, testClip(options), how);
        return server.url(path);
    }
    tests::HttpServer server;
};

} // namespace

TEST_F(HttpMedia, IsPlayedFrameByFrame) {
    OpenedPipeline opened = hostPaced(serve(served(30)));
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.notes->media->duration, fromSeconds(1));
    opened.pipeline->play();
    for (int frame = 0; frame < 30; ++frame)
        ASSERT_EQ(opened.frameAtHostTime(tests::frameTime({}, frame) + fromSeconds(0.01)), frame);
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(2)));
    EXPECT_EQ(opened.notes->count("end"), 1);
}

TEST_F(HttpMedia, SaysWhoAsks) {
    OpenedPipeline opened = hostPaced(serve(served(5)));
    ASSERT_TRUE(opened.open());
    ASSERT_FALSE(server.requests().empty());
    EXPECT_EQ(server.requests().front().header("user-agent"), "ZantoPlayerFramework");
}

TEST_F(HttpMedia, IsSoughtInByParts) {
    OpenedPipeline opened = hostPaced(serve(served(90)));
    ASSERT_TRUE(opened.open());
    for (const int frame : {80, 5, 44}) {
        const Instant target = tests::frameTime({}, frame) + fromSeconds(0.01);
        ASSERT_TRUE(opened.seekAndWait(target));
        EXPECT_EQ(opened.frameAtItemTime(target), frame);
    }
}

TEST_F(HttpMedia, IsSoughtToItsLastFrameByATargetPastItsEnd) {
    ClipOptions webm{.frames = 90, .codec = tests::ClipCodec::VP9, .container = "webm"};
    ClipOptions mkv{.frames = 90, .container = "mkv"};
    for (const ClipOptions& options : {served(90), webm, mkv}) {
        OpenedPipeline opened = hostPaced(serve(options));
        ASSERT_TRUE(opened.open()) << options.container;
        ASSERT_TRUE(opened.seekAndWait(fromSeconds(60))) << options.container;
        EXPECT_EQ(opened.frameAtItemTime(opened.position()), 89) << options.container;
    }
}

TEST_F(HttpMedia, IsFollowedWhereItHasMoved) {
    const std::string url = serve(served(5));
    server.serve("/old.mp4", tests::redirectTo(url));
    EXPECT_TRUE(hostPaced(server.url("/old.mp4")).open());
}

TEST_F(HttpMedia, WithItsIndexAtTheEndIsPlayedToo) {
    OpenedPipeline opened = hostPaced(serve({.frames = 30}));
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.frameAtItemTime(fromSeconds(0.51)), 15);
}

TEST_F(HttpMedia, OfAServerWithoutPartsIsPlayed) {
    OpenedPipeline opened = hostPaced(serve(served(30), {.takesRanges = false}));
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.frameAtItemTime(fromSeconds(0.51)), 15);
}

TEST_F(HttpMedia, OfAServerWithoutPartsStaysWhereItIsWhenSought) {
    const LogRecorder log;
    OpenedPipeline opened = hostPaced(serve(served(30), {.takesRanges = false}));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_EQ(opened.frameAtHostTime(fromSeconds(0.21)), 6);
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(0.8)));
    EXPECT_EQ(log.count("media: seek to 0.800000 s refused, the server does not hand out parts"),
              1);
    EXPECT_EQ(opened.position(), fromSeconds(0.21));
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(0.51)), 15);
}

TEST_F(HttpMedia, OfUnknownLengthIsPlayed) {
    for (const auto framing : {HttpReply::Framing::Chunked, HttpReply::Framing::UntilClose}) {
        OpenedPipeline opened =
            hostPaced(serve(served(30), {.framing = framing, .takesRanges = false}));
        ASSERT_TRUE(opened.open());
        opened.pipeline->play();
        EXPECT_EQ(opened.frameAtHostTime(fromSeconds(0.51)), 15);
        ASSERT_TRUE(opened.seekAndWait(fromSeconds(0.1)));
        ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(3)));
        EXPECT_EQ(opened.notes->count("end"), 1);
    }
}

TEST_F(HttpMedia, OfOtherContainersIsPlayed) {
    ClipOptions webm{.frames = 15, .codec = tests::ClipCodec::VP9, .container = "webm"};
    ClipOptions mkv{.frames = 15, .container = "mkv"};
    for (const ClipOptions& options : {webm, mkv}) {
        OpenedPipeline opened = hostPaced(serve(options));
        ASSERT_TRUE(opened.open()) << options.container;
        EXPECT_EQ(opened.frameAtItemTime(fromSeconds(0.21)), 6) << options.container;
    }
}

TEST_F(HttpMedia, IsMissingWhereTheServerHasNoSuchFile) {
    const auto error = refusalOf(server.url("/nothing.mp4"));
    EXPECT_EQ(error.code, ErrorCode::Missing);
    EXPECT_EQ(error.detail, "the server has no such file (status 404)");
}

TEST_F(HttpMedia, IsRefusedWithTheServersStatus) {
    for (const auto& [status, text] : {std::pair{403, "the server refuses access (status 403)"},
                                       {500, "the server answers with status 500"},
                                       {503, "the server answers with status 503"}}) {
        server.serve("/a.mp4", {.status = status});
        const auto error = refusalOf(server.url("/a.mp4"));
        EXPECT_EQ(error.code, ErrorCode::Unreadable);
        EXPECT_EQ(error.detail, text);
    }
}

TEST_F(HttpMedia, IsRefusedWhereNobodyListens) {
    const tests::RefusingPort port;
    const auto error = refusalOf(port.url("/a.mp4"));
    EXPECT_EQ(error.code, ErrorCode::Unreadable);
    EXPECT_EQ(error.detail, "the server refuses the connection");
}

TEST_F(HttpMedia, IsMissingWhereTheServersNameIsNotKnown) {
    const auto error = refusalOf("http://nobody.invalid/a.mp4");
    EXPECT_EQ(error.code, ErrorCode::Missing);
    EXPECT_EQ(error.detail, "the server's name is not known");
}

TEST_F(HttpMedia, IsRefusedWhereTheCertificateIsNotTrusted) {
    tests::HttpServer secure(tests::HttpServer::Transport::Tls);
    secure.serveFile("/a.mp4", testClip(served(5)));
    const auto error = refusalOf(secure.url("/a.mp4"));
    EXPECT_EQ(error.code, ErrorCode::Unreadable);
    EXPECT_THAT(error.detail, HasSubstr("the server's certificate is not trusted"));
}

TEST_F(HttpMedia, IsNoTextThatIsServedAsOne) {
    const std::string_view text = "Sorry, the video that you ask for is not here any longer.";
    server.serve("/a.mp4", {.body = {text.begin(), text.end()}, .contentType = "video/mp4"});
    const auto error = refusalOf(server.url("/a.mp4"));
    EXPECT_EQ(error.code, ErrorCode::Unsupported);
    EXPECT_EQ(error.detail, "it is not a video of a known kind");
}

TEST_F(HttpMedia, IsCorruptWhereTheAnswerIsEmpty) {
    server.serve("/a.mp4", {.contentType = "video/mp4"});
    EXPECT_FALSE(refusalOf(server.url("/a.mp4")).detail.empty());
}

TEST_F(HttpMedia, FailsWhereTheServerIsSilent) {
    platform::pipelineLimits() = {.silence = 500ms, .request = 60s, .retries = 0};
    const tests::SilentPort port;
    const auto error = refusalOf(port.url("http", "/a.mp4"));
    EXPECT_EQ(error.code, ErrorCode::Unreadable);
    EXPECT_EQ(error.detail, "no data came in time");
}

TEST_F(HttpMedia, FailsWhereTheServerStallsWhileItIsOpened) {
    platform::pipelineLimits() = {.silence = 500ms, .request = 60s, .retries = 0};
    const auto error = refusalOf(serve(served(30), {.stallAfter = 200}));
    EXPECT_EQ(error.code, ErrorCode::Unreadable);
    EXPECT_EQ(error.detail, "no data came in time");
}

TEST_F(HttpMedia, FailsWhereTheServerStallsWhileItIsDecoded) {
    platform::pipelineLimits() = {.silence = 60s, .request = 60s, .retries = 0};
    const std::size_t size = contentsOf(testClip(served(90))).size();
    OpenedPipeline opened = hostPaced(serve(served(90), {.stallAfter = size / 2}));
    ASSERT_TRUE(opened.open());
    platform::pipelineLimits().silence = 500ms;
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(4)));
    ASSERT_TRUE(opened.notes->error);
    EXPECT_EQ(opened.notes->error->detail, "no data came in time");
}

TEST_F(HttpMedia, GoesOnWhenAStalledServerDoes) {
    const std::size_t size = contentsOf(testClip(served(90))).size();
    OpenedPipeline opened = hostPaced(serve(served(90), {.stallAfter = size / 2}));
    ASSERT_TRUE(opened.open());
    EXPECT_FALSE(opened.pipeline->isDecodedTo(fromSeconds(2.9)));
    ASSERT_TRUE(server.waitUntilStalled());
    server.release();
    EXPECT_EQ(opened.frameAtItemTime(fromSeconds(2.91)), 87);
}

TEST_F(HttpMedia, ThatIsCutIsAskedForAgainFromThere) {
    const std::size_t size = contentsOf(testClip(served(90))).size();
    OpenedPipeline opened = hostPaced(serve(served(90), {.cutAfter = size * 3 / 4}));
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.frameAtItemTime(fromSeconds(2.91)), 87);
}

TEST_F(HttpMedia, ThatIsCutForGoodFails) {
    const std::size_t size = contentsOf(testClip(served(90))).size();
    OpenedPipeline opened =
        hostPaced(serve(served(90), {.takesRanges = false, .cutAfter = size / 2}));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(4)));
    ASSERT_TRUE(opened.notes->error);
    EXPECT_EQ(opened.notes->error->code, ErrorCode::Unreadable);
    EXPECT_EQ(opened.notes->error->detail, "the connection was cut");
}

TEST_F(HttpMedia, EndsAtOnceHoweverItStalls) {
    platform::pipelineLimits() = {.silence = 600s, .request = 600s, .retries = 0};
    OpenedPipeline opened = hostPaced(serve(served(30), {.isSilent = true}));
    ASSERT_TRUE(server.waitUntilStalled());
    opened.pipeline.reset(); // a wait for the server would outlast every limit of a test
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
    EXPECT_TRUE(server.waitForOpenConnections(0));
}

TEST_F(HttpMedia, PacedByTheMachineStallsAndGoesOn) {
    const std::size_t size = contentsOf(testClip(film())).size();
    OpenedPipeline opened = machinePaced(serve(film(), {.stallAfter = size * 2 / 3}));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("stall") > 0; }));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "stall"));
    const Instant held = opened.position();
    ASSERT_TRUE(server.waitUntilStalled());
    EXPECT_EQ(opened.position(), held);
    server.release();
    ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("start") > 1; }));
    EXPECT_GE(opened.position(), held);
}

TEST_F(HttpMedia, PacedByTheMachineWaitsForDataBeforeItStarts) {
    const std::size_t size = contentsOf(testClip(film())).size();
    OpenedPipeline opened = machinePaced(serve(film(), {.stallAfter = size / 3}));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(server.waitUntilStalled());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready"));
    server.release();
    ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("start") > 0; }));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start"));
}
