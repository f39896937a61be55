// A host may let go of the last reference to its controller inside any hook and any lifecycle call.

#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/HttpServer.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace {

/// A controller that is released inside the hook under test; only the scene refers to it.
class ControllerRelease : public ::testing::Test {
protected:
    /// Has the controller released inside its next hook of that name.
    void releaseIn(const std::string& hook) {
        scene_.player->onHook = [this, hook](const std::string& heard) {
            if (heard != hook || !scene_.player)
                return;
            controller_ = scene_.player;
            scene_.release();
        };
    }
    void expectReleased() {
        EXPECT_EQ(scene_.player, nullptr) << "the hook was called";
        EXPECT_TRUE(controller_.expired());
        scene_.host->settle();
        scene_.advance(1);
        EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
    }
    /// The controller without another reference to it, as a host's own pointer has it.
    [[nodiscard]] HookRecorder& player() { return *scene_.player; }
    [[nodiscard]] std::optional<platform::URL> address(const std::string& path) const {
        return platform::URL::URLWithString(server_.url(path));
    }
    void servePicture() {
        server_.serve("/a.png",
                      {.body = platform::encodePng(*flatPicture(8, 4, 0, 200, 0)).value()});
    }

    tests::HttpServer server_;
    PlaybackScene scene_;

private:
    std::weak_ptr<HookRecorder> controller_;
};

/// Lets go of itself, through `release`, inside the lifecycle call of that name.
class LeavingController : public ZNTDisplayViewController {
public:
    LeavingController(std::string where, const std::function<void()>& release)
        : where_(std::move(where)), release_(release) {}
    void viewWillAppear(bool animated) override {
        ZNTDisplayViewController::viewWillAppear(animated);
        leaveIf("viewWillAppear");
    }
    void viewDidAppear(bool animated) override {
        ZNTDisplayViewController::viewDidAppear(animated);
        leaveIf("viewDidAppear");
    }
    void viewWillDisappear(bool animated) override {
        ZNTDisplayViewController::viewWillDisappear(animated);
        leaveIf("viewWillDisappear");
    }
    void viewDidDisappear(bool animated) override {
        ZNTDisplayViewController::viewDidDisappear(animated);
        leaveIf("viewDidDisappear");
    }
    void viewWillTransitionToSize(platform::Size size,
                                  const platform::TransitionCoordinator& transition) override {
        ZNTDisplayViewController::viewWillTransitionToSize(size, transition);
        leaveIf("viewWillTransitionToSize");
    }

private:
    void leaveIf(const std::string& here) {
        if (here == where_)
            release_();
    }

    std::string where_;
    const std::function<void()>& release_;
};

} // namespace

TEST_F(ControllerRelease, IsAllowedWhenAPreparedVideoPausesTheEarlierOne) {
    scene_.play(streamableClip());
    releaseIn("videoPaused");
    player().prepareVideoWithUrl(urlOf(streamableClip()));
    expectReleased();
}

TEST_F(ControllerRelease, IsAllowedWhenAReloadedVideoPausesTheEarlierOne) {
    scene_.play(streamableClip());
    releaseIn("videoPaused");
    player().reloadContent();
    expectReleased();
}

TEST_F(ControllerRelease, IsAllowedInsideThePauseThatTheHostAsksFor) {
    scene_.play(streamableClip());
    releaseIn("videoPaused");
    player().pause();
    expectReleased();
}

TEST_F(ControllerRelease, IsAllowedInsideThePlayThatTheHostAsksFor) {
    scene_.play(streamableClip());
    player().pause();
    scene_.host->settle();
    releaseIn("videoStartedPlaying");
    player().play();
    expectReleased();
}

TEST_F(ControllerRelease, IsAllowedWhenADownloadStarts) {
    servePicture();
    releaseIn("downloadImageStarted");
    player().prepareImageWithUrl(address("/a.png"));
    expectReleased();
}

TEST_F(ControllerRelease, IsAllowedWhenAReloadStartsADownload) {
    const tests::RefusingPort port;
    scene_.appear();
    player().prepareImageWithUrl(platform::URL::URLWithString(port.url("/a.png")));
    scene_.host->settle();
    releaseIn("downloadImageStarted");
    player().reloadContent();
    expectReleased();
}

TEST_F(ControllerRelease, IsAllowedWhenADownloadFinishes) {
    servePicture();
    scene_.appear();
    releaseIn("downloadImageFinished");
    player().prepareImageWithUrl(address("/a.png"));
    scene_.host->settle();
    expectReleased();
}

TEST_F(ControllerRelease, IsAllowedWhenADownloadFails) {
    const tests::RefusingPort port;
    releaseIn("downloadImageFailedWithError");
    player().prepareImageWithUrl(platform::URL::URLWithString(port.url("/a.png")));
    scene_.host->settle();
    expectReleased();
}

TEST_F(ControllerRelease, IsAllowedWhenAHotSpotIsTapped) {
    const auto spot = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
    spot->setHotSpotName("door");
    player().setDisplayMode(DisplayMode::Sphere);
    player().setEnableHotSpotTapDetection(true);
    player().addHotSpots({spot}, nullptr);
    player().prepareImage(flatPicture(64, 32, 120, 120, 120));
    scene_.appear();
    releaseIn("picked door 0 tap");
    for (const auto phase : {platform::TouchPhase::Down, platform::TouchPhase::Up})
        scene_.host->embedded().touch(
            {phase, 1, {128, 64}, platform::TouchKind::Finger, scene_.host->now()});
    scene_.host->settle();
    expectReleased();
}

TEST(ControllerLeaving, IsAllowedInEveryLifecycleCall) {
    for (const std::string where : {"viewWillAppear", "viewDidAppear", "viewWillDisappear",
                                    "viewDidDisappear", "viewWillTransitionToSize"}) {
        const auto host = makeHost({64, 32});
        std::shared_ptr<LeavingController> player;
        const std::function<void()> release = [&] {
            host->embedded().setRootViewController(nullptr);
            player.reset();
        };
        player = platform::make<LeavingController>(where, release);
        const std::weak_ptr<LeavingController> controller = player;
        player->prepareImage(flatPicture(8, 4, 120, 120, 120));
        host->embedded().setRootViewController(player);
        host->embedded().appear();
        host->embedded().resize({32, 64}, 1);
        host->embedded().disappear();
        EXPECT_EQ(player, nullptr) << where;
        EXPECT_TRUE(controller.expired()) << where;
        host->settle();
    }
}
