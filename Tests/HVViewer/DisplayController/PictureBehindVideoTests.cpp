// A picture stays on screen until the first frame of a video that was prepared after it.

#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <array>

using platform::URL;

namespace {

using Pixel = std::array<int, 4>;
constexpr Pixel kGreen{0, 200, 0, 255};

/// A green picture on screen, and a video after it that gives no frame yet.
class PictureBehindVideo : public ::testing::Test {
protected:
    PictureBehindVideo() { server_.serve("/silent.mp4", {.isSilent = true}); }

    void showPicture() {
        scene_.player->prepareImage(flatPicture(8, 4, 0, 200, 0));
        scene_.appear();
        expectPicture();
    }
    void prepareVideoThatFails() {
        scene_.player->prepareVideoWithUrl(urlOf("/nowhere/missing.mp4"));
        scene_.host->settle();
        EXPECT_TRUE(scene_.player->heard("downloadVideoFailedWithError"));
    }
    void expectPicture() { EXPECT_EQ(colourAt(*snapshot(), 128, 64), kGreen); }
    /// Without waiting for the work under way, which never ends while a server is silent.
    [[nodiscard]] platform::ImagePtr snapshot() {
        return scene_.host->embedded().snapshot(1).value();
    }
    void expectPictureOnBothSides() {
        const auto both = snapshot();
        EXPECT_EQ(colourAt(*both, 63, 64), kGreen);
        EXPECT_EQ(colourAt(*both, 192, 64), kGreen);
    }

    tests::HttpServer server_;
    PlaybackScene scene_;
};

} // namespace

TEST_F(PictureBehindVideo, StaysOnScreenWhenTheContextIsLost) {
    showPicture();
    prepareVideoThatFails();
    ASSERT_TRUE(scene_.host->replaceContext());
    scene_.host->settle();
    expectPicture();
}

TEST_F(PictureBehindVideo, StaysOnScreenWhenTheViewAppearsAgain) {
    showPicture();
    prepareVideoThatFails();
    scene_.host->embedded().disappear();
    scene_.appear();
    expectPicture();
}

TEST_F(PictureBehindVideo, IsShownSideBySideOnBothSides) {
    showPicture();
    prepareVideoThatFails();
    scene_.player->setDisplayMode(DisplayMode::SideBySide);
    scene_.host->settle();
    expectPictureOnBothSides();
}

TEST_F(PictureBehindVideo, IsShownSideBySideOnBothSidesWhileTheVideoLoads) {
    showPicture();
    scene_.player->prepareVideoWithUrl(URL::URLWithString(server_.url("/silent.mp4")));
    ASSERT_TRUE(server_.waitUntilStalled());
    scene_.player->setDisplayMode(DisplayMode::SideBySide);
    scene_.host->embedded().runDueWork();
    expectPictureOnBothSides();
}

TEST_F(PictureBehindVideo, IsShownWhenItArrivesAfterTheVideoHasFailed) {
    server_.serve("/a.png", {.body = platform::encodePng(*flatPicture(8, 4, 0, 200, 0)).value(),
                             .stallAfter = 5});
    scene_.appear();
    scene_.player->prepareImageWithUrl(URL::URLWithString(server_.url("/a.png")));
    ASSERT_TRUE(server_.waitUntilStalled());
    scene_.player->prepareVideoWithUrl(urlOf("/nowhere/missing.mp4"));
    server_.release();
    scene_.host->settle();
    EXPECT_TRUE(scene_.player->heard("downloadVideoFailedWithError"));
    expectPicture();
}

TEST_F(PictureBehindVideo, GivesWayToTheFirstFrameOnBothSides) {
    showPicture();
    scene_.player->setDisplayMode(DisplayMode::SideBySide);
    scene_.player->prepareVideoWithUrl(urlOf(tests::testClip()));
    scene_.host->settle();
    const auto both = scene_.snapshot();
    EXPECT_NE(colourAt(*both, 63, 64), kGreen);
    EXPECT_NE(colourAt(*both, 192, 64), kGreen);
    scene_.player->setDisplayMode(DisplayMode::Plane);
    scene_.player->prepareDisplayView();
    EXPECT_EQ(scene_.shownFrame(), 0) << "a picture does not cover a frame";
}

TEST_F(PictureBehindVideo, IsNotShownInPlaceOfTheLastFrameOfAnEarlierVideo) {
    showPicture();
    scene_.player->prepareVideoWithUrl(urlOf(tests::testClip()));
    scene_.host->settle();
    scene_.advance(0.5);
    prepareVideoThatFails();
    ASSERT_TRUE(scene_.host->replaceContext());
    scene_.host->settle();
    EXPECT_EQ(scene_.shownFrame(), 15);
}

TEST_F(PictureBehindVideo, ThatFailedToDownloadDoesNotKeepAReloadFromTheVideo) {
    const tests::RefusingPort port;
    HookRecorder& player = *scene_.player;
    scene_.appear();
    const auto address = URL::URLWithString(port.url("/a.png"));
    player.prepareImageWithUrl(address);
    scene_.host->settle();
    player.prepareVideoWithUrl(urlOf(tests::testClip()));
    scene_.host->settle();
    scene_.advance(0.5);
    player.take();
    const auto streamer = player.streamer();
    const LogRecorder log;
    player.reloadContent();
    EXPECT_NE(player.streamer(), streamer);
    EXPECT_EQ(log.count("already displaying"), 0);
    EXPECT_EQ(player.srcImageUrl(), address);
    scene_.host->settle();
    EXPECT_EQ(scene_.shownFrame(), 0);
}

TEST_F(PictureBehindVideo, ThatIsNoFileDoesNotKeepAReloadFromTheVideo) {
    HookRecorder& player = *scene_.player;
    player.prepareImageWithUrl(urlOf("/nowhere/a.png"));
    scene_.play(tests::testClip());
    scene_.advance(0.5);
    player.reloadContent();
    scene_.host->settle();
    EXPECT_EQ(scene_.shownFrame(), 0);
}
