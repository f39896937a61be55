#include "Backends/GStreamer/PipelineLimits.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/HttpScripts.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/MemoryPeak.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

using platform::URL;
using tests::httpAnswer;
using tests::HttpConnection;
using tests::HttpReply;
using tests::saying;
using tests::sayingAndResetting;
using tests::sayingForEver;

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

/// 30 frames, one second, its index at the front.
std::string clip() {
    return tests::testClip({.more = {"-movflags", "+faststart"}});
}

std::string contents() {
    std::ifstream file(clip(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string bigEndian(std::uint64_t number, int bytes) {
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += static_cast<char>(number >> shift);
    return text;
}

const std::string kHead = httpAnswer("Content-Type: video/mp4\r\n");
const std::string kBeginning = bigEndian(16, 4) + "ftypisom\0\0\2\0"s;

std::string answer(const std::string& headers, const std::string& status = "200 OK") {
    return httpAnswer("Content-Type: video/mp4\r\n" + headers, contents(), status);
}

/// What a server sends, and a part of what is said of it.
struct Harm {
    std::string name;
    std::function<HttpReply()> reply;
    std::string words;
    /// The media library's reader of playlists leaves a connection behind now and then, for a
    /// while.
    bool isPlaylist = false;
};

std::ostream& operator<<(std::ostream& out, const Harm& harm) {
    return out << harm.name;
}

Harm script(const std::string& name, const tests::HttpScript& script, const std::string& words) {
    return {name, [script] { return HttpReply{.script = script}; }, words, false};
}

/// Made when it is needed: the clip is not there yet when tests are listed.
Harm late(const std::string& name, const std::function<std::string()>& text,
          const std::string& words) {
    return {name, [text] { return HttpReply{.script = saying(text())}; }, words, false};
}

std::vector<Harm> servers() {
    const std::string line = "X: " + std::string(100, 'a') + "\r\n";
    return {
        script("ClosingAtOnce", saying(""), ""),
        script("ResettingAtOnce", sayingAndResetting(""), ""),
        script("ClosingInTheHead", saying("HTTP/1.1 200 OK\r\nContent-Le"), ""),
        script("ResettingInTheHead", sayingAndResetting("HTTP/1.1 200 OK\r\nContent-Le"), ""),
        script("SpeakingSomethingElse", saying("SSH-2.0-Server\r\n"), ""),
        script("SpeakingNoise", saying("\0\xff\x80\r\n\r\n\x01"s), ""),
        script("WithNULInAHeader", saying(httpAnswer("X: a\0b\r\n"s, "no")), ""),
        script("WithoutAReason", saying("HTTP/1.1 500\r\nContent-Length: 0\r\n\r\n"), "status 500"),
        script("WithEndlessHeaderLines", sayingForEver("HTTP/1.1 200 OK\r\n", line), ""),
        script("WithAnEndlessHeaderLine", sayingForEver("HTTP/1.1 200 OK\r\nX: ", "a"), ""),
        script("ContinuingForEver", sayingForEver("", "HTTP/1.1 100 Continue\r\n\r\n"), ""),
        script("WithEndlessNoise", sayingForEver(kHead, "again"), ""),
        script("WithEndlessZeroes", sayingForEver(kHead, std::string(64, '\0')), ""),
        script("WithABrokenChunk",
               saying(httpAnswer("Transfer-Encoding: chunked\r\n", "5\r\nhello\r\nzz\r\n")), ""),
        script("With204", saying(httpAnswer("", "", "204 None")), ""),
        script("With304", saying(httpAnswer("", "", "304 Same")), "status 304"),
        script("With416", saying(httpAnswer("Content-Range: bytes */9\r\n", "", "416 No")),
               "status 416"),
        late(
            "TellingTooLittle", [] { return answer("Content-Length: 400\r\n"); }, ""),
        {"RedirectingForEver", [] { return tests::redirectTo("/harm.mp4"); },
         "redirect leads nowhere (status 302)"},
        {"RedirectingToAFile", [] { return tests::redirectTo("file://" + clip()); },
         "redirect leads nowhere (status 302)"},
        {"RedirectingToData", [] { return tests::redirectTo("data:video/mp4,a"); },
         "redirect leads nowhere (status 302)"},
    };
}

std::vector<Harm> files() {
    const auto ofBytes = [](std::string_view text) {
        return [bytes = bytesOf(text)] { return HttpReply{.body = bytes}; };
    };
    const auto playlist = [](const std::string& text) {
        return [bytes = bytesOf("#EXTM3U\n" + text)] {
            return HttpReply{.body = bytes, .contentType = "application/vnd.apple.mpegurl"};
        };
    };
    const std::string segment = "#EXTINF:1,\n/segment.ts\n";
    return {
        {"CutInItsHeader", [] { return HttpReply{.body = bytesOf(contents().substr(0, 200))}; },
         ""},
        {"OfABeginningAlone", ofBytes(kBeginning), ""},
        {"ClaimingGigabytes", ofBytes(kBeginning + bigEndian(0xFFFFFFF0, 4) + "moov"), ""},
        script("ClaimingGigabytesWithoutEnd",
               sayingForEver(kHead + kBeginning + bigEndian(0xFFFFFFF0, 4) + "moov",
                             std::string(64, '\0')),
               ""),
        script("ClaimingMoreThanAnyDisk",
               sayingForEver(kHead + kBeginning + bigEndian(1, 4) + "moov" +
                                 bigEndian(0x7FFFFFFFFFFFFFFF, 8),
                             std::string(64, '\0')),
               ""),
        {"PlaylistOfItself", playlist("#EXT-X-STREAM-INF:BANDWIDTH=9\n/harm.mp4\n"), "", true},
        {"PlaylistWithItselfAsSegment",
         playlist("#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n/harm.mp4\n#EXT-X-ENDLIST\n"), "", true},
        {"PlaylistOfNoise",
         playlist("#EXT-X-TARGETDURATION:1\n" + segment + segment + "#EXT-X-ENDLIST\n"), "", true},
        {"PlaylistOfNothing", playlist("#EXT-X-TARGETDURATION:1\n#EXT-X-ENDLIST\n"), "", true},
        script("EndlessPlaylist",
               sayingForEver(httpAnswer("Content-Type: application/vnd.apple.mpegurl\r\n",
                                        "#EXTM3U\n#EXT-X-TARGETDURATION:1\n"),
                             segment),
               "its playlist is too large"),
    };
}

/// A player that shows a video's frame, and is sent another video.
class HostileVideo : public testing::TestWithParam<Harm> {
protected:
    HostileVideo() {
        ::setenv("no_proxy", "*", 1);
        std::vector<std::uint8_t> noise(4096);
        std::uint32_t state = 1;
        for (auto& byte : noise)
            byte = static_cast<std::uint8_t>((state = state * 1664525 + 1013904223) >> 24U);
        server_.serve("/segment.ts", {.body = noise});
        server_.serveFile("/good.mp4", clip());
        scene_.play(clip());
        scene_.advance(0.5);
        scene_.player->take();
    }
    ~HostileVideo() override { platform::pipelineLimits() = {}; }

    void prepare(const std::string& path) {
        scene_.player->prepareVideoWithUrl(URL::URLWithString(server_.url(path)));
        scene_.host->settle();
    }

    tests::HttpServer server_;
    PlaybackScene scene_;
};

INSTANTIATE_TEST_SUITE_P(Servers, HostileVideo, testing::ValuesIn(servers()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Files, HostileVideo, testing::ValuesIn(files()),
                         [](const auto& test) { return test.param.name; });

} // namespace

TEST_P(HostileVideo, IsToldOnceAndLeavesWhatIsShown) {
    server_.serve("/harm.mp4", GetParam().reply());
    const bool isMeasured = tests::resetMemoryPeak() >= 0;
    const long before = tests::resetMemoryPeak();
    // Only where silence is what may end it is there a short limit to it.
    platform::pipelineLimits() = {.request = 5s, .retries = 0};
    if (GetParam().words.empty())
        platform::pipelineLimits().silence = 1500ms;
    prepare("/harm.mp4");
    platform::pipelineLimits() = {};
    const auto hooks = scene_.player->take();
    EXPECT_EQ(std::count(hooks.begin(), hooks.end(), "downloadVideoFailedWithError"), 1);
    EXPECT_NE(scene_.player->failure, "");
    EXPECT_THAT(scene_.player->failure, testing::HasSubstr(GetParam().words));
    EXPECT_EQ(scene_.shownFrame(), 15);
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
    EXPECT_TRUE(GetParam().isPlaylist || server_.waitForOpenConnections(0));
    if (isMeasured) {
        EXPECT_LT(tests::resetMemoryPeak() - before, 256 * 1024);
    }
    prepare("/good.mp4");
    scene_.advance(0.1);
    EXPECT_EQ(scene_.shownFrame(), 3) << scene_.player->failure;
}
