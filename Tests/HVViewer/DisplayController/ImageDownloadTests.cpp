#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "Platform/Foundation/DataTask.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using platform::URL;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Pixel = std::array<int, 4>;

std::vector<std::uint8_t> pngOf(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return platform::encodePng(*flatPicture(8, 4, red, green, blue)).value();
}

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

/// A host's own player that notes which hooks are called.
class NotingPlayer : public ZNTDisplayViewController {
public:
    void downloadImageStarted() override {
        note("started");
        if (onStart)
            onStart();
    }
    void downloadImageFinished() override { note("finished"); }
    void downloadImageFailedWithError(const platform::Error& error) override {
        note("failed: " + error.detail);
    }
    void note(const std::string& hook) { hooks.push_back(hook); }

    std::vector<std::string> hooks;
    std::function<void()> onStart;
};

/// A player on screen that has nothing yet, and a server.
class ControllerDownload : public testing::Test {
protected:
    ControllerDownload() {
        ::setenv("no_proxy", "*", 1);
        host_.embedded().setRootViewController(player_);
        host_.embedded().appear();
        settle();
    }

    void prepare(const std::string& path) {
        player_->prepareImageWithUrl(URL::URLWithString(server_.url(path)));
    }
    void settle() { host_.host().settle(); }
    Pixel colourShown() { return colourAt(*host_.snapshot(), 160, 60); }

    LogRecorder log_; // of a player that appears with nothing to show
    tests::HttpServer server_;
    HeadlessPlayer host_{{320, 180}};
    std::shared_ptr<NotingPlayer> player_ = platform::make<NotingPlayer>();
};

} // namespace

TEST_F(ControllerDownload, ShowsWhatHasCome) {
    server_.serve("/a.png", {.body = pngOf(0, 200, 0)});
    prepare("/a.png");
    EXPECT_THAT(player_->hooks, ElementsAre("started"));
    EXPECT_FALSE(player_->isReadyForDisplay());
    EXPECT_FALSE(player_->isLocalResource());
    settle();
    EXPECT_THAT(player_->hooks, ElementsAre("started", "finished"));
    EXPECT_TRUE(player_->isReadyForDisplay());
    EXPECT_TRUE(player_->isLocalResource());
    EXPECT_TRUE(player_->srcImage());
    EXPECT_EQ(colourShown(), (Pixel{0, 200, 0, 255}));
}

TEST_F(ControllerDownload, AnnouncesItselfBeforeItStarts) {
    std::shared_ptr<platform::DataTask> taskAtStart;
    player_->onStart = [&] { taskAtStart = player_->imageDownloadTask(); };
    prepare("/a.png");
    EXPECT_FALSE(taskAtStart);
    EXPECT_TRUE(player_->imageDownloadTask());
}

TEST_F(ControllerDownload, HandsThePictureOverBeforeItSaysSo) {
    class Looking : public NotingPlayer {
    public:
        void downloadImageFinished() override {
            note(displayView()->glDrawer() ? "shown" : "not shown");
        }
    };
    server_.serve("/a.png", {.body = pngOf(0, 200, 0)});
    player_ = platform::make<Looking>();
    host_.embedded().setRootViewController(player_);
    host_.embedded().appear();
    prepare("/a.png");
    settle();
    EXPECT_THAT(player_->hooks, ElementsAre("started", "shown"));
}

TEST_F(ControllerDownload, FinishesWithoutAPictureWhenWhatCameIsNone) {
    server_.serve("/text", {.body = bytesOf("no picture")});
    prepare("/text");
    settle();
    EXPECT_THAT(player_->hooks, ElementsAre("started", "finished"));
    EXPECT_FALSE(player_->srcImage());
    EXPECT_FALSE(player_->isReadyForDisplay());
    EXPECT_FALSE(player_->isLocalResource());
}

TEST_F(ControllerDownload, FailsWithItsCause) {
    const tests::RefusingPort port;
    const URL url = URL::URLWithString(port.url("/a.png")).value();
    player_->prepareImageWithUrl(url);
    settle();
    const std::string host = port.url("").substr(7);
    EXPECT_THAT(player_->hooks,
                ElementsAre("started", "failed: \"" + host + "\" refuses the connection"));
    EXPECT_FALSE(player_->isReadyForDisplay());
    EXPECT_EQ(player_->srcImageUrl(), url);
    EXPECT_FALSE(player_->imageDownloadTask());
}

TEST_F(ControllerDownload, MayBeAskedForAgainAfterAFailure) {
    server_.serve("/a.png", {.body = pngOf(0, 200, 0), .cutAfter = 3});
    prepare("/a.png");
    settle();
    server_.serve("/a.png", {.body = pngOf(0, 200, 0)});
    prepare("/a.png");
    settle();
    EXPECT_THAT(player_->hooks,
                ElementsAre("started", "failed: the connection was cut short after 3 bytes",
                            "started", "finished"));
    EXPECT_EQ(colourShown(), (Pixel{0, 200, 0, 255}));
}

TEST_F(ControllerDownload, IsTriedAgainByAReload) {
    player_->reloadContent();
    EXPECT_THAT(player_->hooks, IsEmpty()) << "the controller has no URL yet";
    server_.serve("/a.png", {.body = pngOf(0, 200, 0), .cutAfter = 3});
    prepare("/a.png");
    settle();
    server_.serve("/a.png", {.body = pngOf(0, 200, 0)});
    player_->reloadContent();
    settle();
    EXPECT_THAT(player_->hooks,
                ElementsAre("started", "failed: the connection was cut short after 3 bytes",
                            "started", "finished"));
    player_->reloadContent();
    EXPECT_EQ(player_->hooks.size(), 4U) << "the picture is there";
}

TEST_F(ControllerDownload, IsBegunOnceMoreByAReloadWhileItIsUnderWay) {
    server_.serve("/a.png", {.body = pngOf(0, 200, 0)});
    prepare("/a.png");
    player_->reloadContent();
    settle();
    EXPECT_THAT(player_->hooks, ElementsAre("started", "started", "finished", "finished"));
}

TEST_F(ControllerDownload, IsNotBegunByReloadingAFileThatCannotBeRead) {
    player_->prepareImageWithUrl(URL::fileURLWithPath("/nowhere/a.png"));
    player_->reloadContent();
    EXPECT_EQ(log_.count("Data is already displaying. You can not change data"), 1);
    EXPECT_THAT(player_->hooks, IsEmpty());
}

TEST_F(ControllerDownload, DoesNotCoverAVideoThatCameMeanwhile) {
    server_.serve("/a.png", {.body = pngOf(0, 200, 0)});
    server_.serve("/page.png", {.body = bytesOf("no picture")});
    for (const std::string path : {"/a.png", "/page.png"}) {
        prepare(path);
        player_->prepareVideoWithUrl(URL::fileURLWithPath(tests::testClip()));
        settle();
        EXPECT_TRUE(player_->isReadyForDisplay()) << path;
        EXPECT_EQ(player_->contentType(), ContentType::Video);
        EXPECT_NE(colourShown(), (Pixel{0, 200, 0, 255})) << path;
        EXPECT_EQ(player_->hooks.back(), "finished");
        player_ = platform::make<NotingPlayer>();
        host_.embedded().setRootViewController(player_);
        host_.embedded().appear();
    }
}

TEST_F(ControllerDownload, ReplacesAPictureThatWasGivenMeanwhile) {
    server_.serve("/a.png", {.body = pngOf(0, 200, 0)});
    prepare("/a.png");
    player_->prepareImage(flatPicture(8, 4, 200, 0, 0));
    EXPECT_TRUE(player_->isReadyForDisplay());
    settle();
    EXPECT_EQ(colourShown(), (Pixel{0, 200, 0, 255}));
}

TEST_F(ControllerDownload, LeavesAnEarlierOneAlone) {
    server_.serve("/a.png", {.body = pngOf(200, 0, 0), .stallAfter = 5});
    server_.serve("/b.png", {.body = pngOf(0, 200, 0)});
    prepare("/a.png");
    ASSERT_TRUE(server_.waitUntilStalled());
    prepare("/b.png");
    server_.release();
    settle();
    EXPECT_THAT(player_->hooks, ElementsAre("started", "started", "finished", "finished"));
}

TEST_F(ControllerDownload, SaysThatItWasCancelled) {
    server_.serve("/a.png", {.body = pngOf(0, 200, 0), .stallAfter = 5});
    prepare("/a.png");
    ASSERT_TRUE(server_.waitUntilStalled());
    player_->imageDownloadTask()->cancel();
    settle();
    EXPECT_THAT(player_->hooks, ElementsAre("started", "failed: the download was cancelled"));
}

TEST_F(ControllerDownload, EndsWithItsControllerUnheard) {
    server_.serve("/a.png", {.body = pngOf(0, 200, 0), .stallAfter = 5});
    std::vector<std::string> hooks;
    class Leaving : public ZNTDisplayViewController {
    public:
        explicit Leaving(std::vector<std::string>& hooks) : hooks_(hooks) {}
        void downloadImageFinished() override { hooks_.emplace_back("finished"); }
        void downloadImageFailedWithError(const platform::Error&) override {
            hooks_.emplace_back("failed");
        }

    private:
        std::vector<std::string>& hooks_;
    };
    auto leaving = platform::make<Leaving>(hooks);
    leaving->prepareImageWithUrl(URL::URLWithString(server_.url("/a.png")));
    ASSERT_TRUE(server_.waitUntilStalled());
    const std::weak_ptr<platform::DataTask> task = leaving->imageDownloadTask();
    leaving.reset();
    EXPECT_TRUE(server_.waitForOpenConnections(0));
    settle();
    EXPECT_TRUE(task.expired());
    EXPECT_THAT(hooks, IsEmpty());
}

TEST_F(ControllerDownload, IsWhatAFileIsThatIsCalledRemote) {
    const tests::TemporaryFolder folder;
    const auto url = URL::fileURLWithPath(folder.add("a.png", pngOf(0, 200, 0)));
    player_->prepareImageWithUrl(url, false);
    EXPECT_FALSE(player_->isReadyForDisplay());
    settle();
    EXPECT_THAT(player_->hooks, ElementsAre("started", "finished"));
    EXPECT_EQ(colourShown(), (Pixel{0, 200, 0, 255}));
}

TEST_F(ControllerDownload, StandsStillInVirtualTimeUntilItHasCome) {
    server_.serve(
        "/a.png",
        {.body = pngOf(0, 200, 0), .dripBytes = 20, .dripPause = std::chrono::milliseconds(1)});
    const auto before = host_.host().now();
    prepare("/a.png");
    settle();
    EXPECT_EQ(host_.host().now(), before);
    EXPECT_TRUE(player_->srcImage());
}

TEST_F(ControllerDownload, IsShownAgainAfterALostContext) {
    server_.serve("/a.png", {.body = pngOf(0, 200, 0)});
    prepare("/a.png");
    EXPECT_EQ(colourShown(), (Pixel{0, 200, 0, 255}));
    ASSERT_TRUE(host_.host().replaceContext());
    EXPECT_EQ(colourShown(), (Pixel{0, 200, 0, 255}));
}
