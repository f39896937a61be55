#include "Platform/Foundation/DataTask.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/HookRecorder.h"
#include "Tests/Support/HttpScripts.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/PictureFiles.h"
#include "Tests/Support/QueueDriver.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>

using platform::URL;
using testing::ElementsAre;
using tests::dripping;
using tests::httpAnswer;

namespace {

using Pixel = std::array<int, 4>;

const std::string kOfPictures = httpAnswer("Content-Length: 99999999\r\n");
const std::string kOfVideos = httpAnswer("Content-Type: video/mp4\r\nContent-Length: 99999999\r\n");

/// Of a video, whose index claims a megabyte.
const std::string kBeginning("\0\0\0\x10"
                             "ftypisom\0\0\2\0\0\x10\0\0moov",
                             24);

/// In real time, in which nothing waits for what is under way.
class DrippingServer : public testing::Test {
protected:
    DrippingServer() {
        ::setenv("no_proxy", "*", 1);
        host_->embedded().setRootViewController(player_);
        host_->embedded().appear();
        server_.serve("/good", {.body = tests::pngFile({8, 4, {0, 200, 0, 255}})});
    }
    ~DrippingServer() override { host_->embedded().setRootViewController(nullptr); }

    /// Goes on until that holds; false: not within the limit.
    bool runUntil(const std::function<bool()>& condition) {
        const auto limit = host_->now() + tests::QueueDriver::kLimit;
        while (!condition() && host_->now() < limit)
            host_->advanceTo(host_->now() + platform::fromSeconds(0.01));
        return condition();
    }
    void showPicture() {
        player_->prepareImage(flatPicture(8, 4, 200, 0, 0));
        host_->embedded().disappear();
        host_->embedded().appear();
    }
    /// Frames are drawn and blocks run, all of them while it drips.
    void expectTheLoopGoesOn() {
        const int framesBefore = host_->framesPresented();
        int turns = 0;
        EXPECT_TRUE(runUntil([&] {
            platform::MainQueue::main().async([&] { ++turns; });
            player_->displayView()->setNeedsDisplay();
            return host_->framesPresented() >= framesBefore + 10 && turns >= 10;
        }));
        host_->advanceTo(host_->now());
    }
    Pixel colourShown() { return colourAt(*host_->embedded().snapshot(1).value(), 160, 60); }
    /// By another player: a picture that is shown is not replaced.
    void expectNextPictureIsShown() {
        player_ = platform::make<HookRecorder>();
        host_->embedded().setRootViewController(player_);
        host_->embedded().appear();
        player_->prepareImageWithUrl(URL::URLWithString(server_.url("/good")));
        EXPECT_TRUE(runUntil([&] { return player_->heard("downloadImageFinished"); }));
        EXPECT_TRUE(runUntil([&] { return colourShown() == Pixel{0, 200, 0, 255}; }));
    }

    tests::HttpServer server_;
    std::unique_ptr<zanto::HeadlessHost> host_ =
        std::move(zanto::HeadlessHost::create(
                      {.size = {320, 180}, .time = zanto::HeadlessHostOptions::Time::Real})
                      .value());
    std::shared_ptr<HookRecorder> player_ = platform::make<HookRecorder>();
};

struct Drip {
    std::string name;
    tests::HttpScript script;
};

std::ostream& operator<<(std::ostream& out, const Drip& drip) {
    return out << drip.name;
}

class DrippingPicture : public DrippingServer, public testing::WithParamInterface<Drip> {};
class DrippingVideo : public DrippingServer, public testing::WithParamInterface<Drip> {};

std::string nameOf(const testing::TestParamInfo<Drip>& test) {
    return test.param.name;
}

const Drip kDrippingHead{"Head", dripping("HTTP/1.1 200 OK\r\n", "X: y\r\n")};

INSTANTIATE_TEST_SUITE_P(Drips, DrippingPicture,
                         testing::Values(kDrippingHead, Drip{"Noise", dripping(kOfPictures, "a")},
                                         Drip{"Pixels",
                                              dripping(kOfPictures + "\x89PNG\r\n\x1a\n", "a")}),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Drips, DrippingVideo,
                         testing::Values(kDrippingHead, Drip{"Noise", dripping(kOfVideos, "a")},
                                         Drip{"Index", dripping(kOfVideos + kBeginning,
                                                                std::string(64, '\0'))}),
                         nameOf);

} // namespace

TEST_P(DrippingPicture, LeavesTheLoopAloneAndMayBeCancelled) {
    server_.serve("/drip", {.script = GetParam().script});
    player_->prepareImageWithUrl(URL::URLWithString(server_.url("/drip")));
    showPicture();
    expectTheLoopGoesOn();
    EXPECT_THAT(player_->take(), ElementsAre("downloadImageStarted"));
    EXPECT_EQ(colourShown(), (Pixel{200, 0, 0, 255}));
    player_->imageDownloadTask()->cancel();
    EXPECT_TRUE(runUntil([&] { return !player_->hooks.empty(); }));
    EXPECT_THAT(player_->take(), ElementsAre("downloadImageFailedWithError"));
    EXPECT_EQ(player_->failure, "the download was cancelled");
    EXPECT_TRUE(server_.waitForOpenConnections(0));
    expectNextPictureIsShown();
}

TEST_P(DrippingVideo, LeavesTheLoopAloneAndIsLeftForAnother) {
    server_.serve("/drip.mp4", {.script = GetParam().script});
    showPicture();
    player_->prepareVideoWithUrl(URL::URLWithString(server_.url("/drip.mp4")));
    expectTheLoopGoesOn();
    EXPECT_FALSE(player_->heard("downloadVideoFailedWithError"));
    EXPECT_EQ(colourShown(), (Pixel{200, 0, 0, 255}));
    player_->prepareVideoWithUrl(URL::fileURLWithPath(tests::testClip()));
    EXPECT_TRUE(server_.waitForOpenConnections(0));
    EXPECT_TRUE(runUntil([&] { return player_->heard("videoDidEndPlaying"); }));
    EXPECT_FALSE(player_->heard("downloadVideoFailedWithError"));
}
