#include "Apps/Player/Controls/Keys.h"
#include "Apps/Player/Scripts/ActionWriter.h"
#include "Apps/Player/Window/WindowPlayer.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Platform/Motion/AttitudeSource.h"
#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

/// A window with its keys, in a current folder of its own.
class WindowKeys : public ::testing::Test {
protected:
    WindowKeys() {
        std::filesystem::current_path(folder_.path());
        scene_.show(directionPanorama(256));
    }
    ~WindowKeys() override { std::filesystem::current_path("/"); }

    /// Presses a key and takes the turn that it is for. What was printed.
    std::string press(SDL_Keycode key) {
        ::testing::internal::CaptureStdout();
        scene_.pressKey(key);
        scene_.settle();
        return ::testing::internal::GetCapturedStdout();
    }
    [[nodiscard]] DisplayMode mode() { return scene_.controller().currentMode(); }

    tests::TemporaryFolder folder_;
    SDLScene scene_;
};

} // namespace

TEST_F(WindowKeys, ChangeTheMode) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    press(SDLK_1);
    EXPECT_EQ(mode(), DisplayMode::Plane);
    press(SDLK_KP_3);
    EXPECT_EQ(mode(), DisplayMode::LittlePlanet);
    press(SDLK_4);
    EXPECT_EQ(mode(), DisplayMode::SideBySide);
    press(SDLK_2);
    EXPECT_EQ(mode(), DisplayMode::Sphere);
}

TEST_F(WindowKeys, LockDragsToTheSideAndFreeThem) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    press(SDLK_l);
    EXPECT_TRUE(scene_.controller().lockVerticalRotation());
    press(SDLK_l);
    EXPECT_FALSE(scene_.controller().lockVerticalRotation());
}

TEST_F(WindowKeys, FollowADeviceThatIsThere) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    scene_.embedded().setAttitude({0, 0, 0, 1});
    press(SDLK_g);
    EXPECT_TRUE(scene_.controller().deviceMotionIsOn());
    EXPECT_FALSE(scene_.host().emulatesDevice());
    press(SDLK_g);
    EXPECT_FALSE(scene_.controller().deviceMotionIsOn());
}

TEST_F(WindowKeys, FollowAnEmulatedDeviceWhereThereIsNone) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    ASSERT_FALSE(platform::AttitudeSource::shared().isAvailable());
    press(SDLK_g);
    EXPECT_TRUE(scene_.host().emulatesDevice());
    EXPECT_TRUE(scene_.controller().deviceMotionIsOn());
    press(SDLK_g);
    EXPECT_FALSE(scene_.host().emulatesDevice());
    EXPECT_FALSE(scene_.controller().deviceMotionIsOn());
}

TEST_F(WindowKeys, FollowNoDeviceOutsideTheSphere) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    for (const SDL_Keycode key : {SDLK_1, SDLK_3, SDLK_4}) {
        press(key);
        press(SDLK_g);
        EXPECT_FALSE(scene_.host().emulatesDevice()) << key;
        EXPECT_FALSE(scene_.controller().deviceMotionIsOn()) << key;
    }
}

TEST_F(WindowKeys, PickByLookingOrStop) {
    std::vector<std::string> told;
    const WindowPlayer player(scene_.host(), scene_.controller(), [&told](const auto& what) {
        told.push_back(describeAction(what).dump());
    });
    press(SDLK_a);
    EXPECT_FALSE(scene_.controller().enableHotSpotAutoPicking()) << "there are no hot spots";
    EXPECT_TRUE(told.empty());
    scene_.controller().addHotSpots(
        {ZNTHotSpot::hotSpotWithTextureImage(directionPanorama(16), 0, 0)},
        ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    const auto hotSpotDrawer = [this] {
        scene_.pressKey(SDLK_a);
        scene_.host().turn(platform::Instant::zero());
        scene_.host().turn(platform::Instant::zero());
        return scene_.controller().displayView()->glDrawer()->hotSpotGLDrawer();
    };
    const auto looking = hotSpotDrawer();
    EXPECT_TRUE(scene_.controller().enableHotSpotAutoPicking());
    EXPECT_TRUE(looking->isPickingAutomatically()) << "at once";
    const auto resting = hotSpotDrawer();
    EXPECT_FALSE(scene_.controller().enableHotSpotAutoPicking());
    EXPECT_FALSE(resting->isPickingAutomatically());
    EXPECT_EQ(told,
              (std::vector<std::string>{R"({"auto_picking":true})", R"({"auto_picking":false})"}));
}

TEST_F(WindowKeys, TellWhatTheyDoToTheCamera) {
    std::vector<std::string> told;
    const WindowPlayer player(scene_.host(), scene_.controller(), [&told](const auto& what) {
        told.push_back(describeAction(what).dump());
    });
    for (const SDL_Keycode key : {SDLK_4, SDLK_2, SDLK_g, SDLK_g, SDLK_l, SDLK_h, SDLK_f, SDLK_f})
        press(key);
    EXPECT_EQ(told,
              (std::vector<std::string>{R"({"mode":"side-by-side"})", R"({"mode":"sphere"})",
                                        R"({"device_motion":true})", R"({"device_motion":false})",
                                        R"({"lock_vertical":true})"}));
}

TEST_F(WindowKeys, TurnFullScreenOnAndOff) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    press(SDLK_f);
    EXPECT_TRUE(scene_.host().isFullScreen());
    press(SDLK_f);
    EXPECT_FALSE(scene_.host().isFullScreen());
    press(SDLK_f);
    press(SDLK_ESCAPE);
    EXPECT_FALSE(scene_.host().isFullScreen());
}

TEST_F(WindowKeys, Quit) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    scene_.pressKey(SDLK_q);
    scene_.host().run();
    EXPECT_FALSE(scene_.host().turn(std::nullopt));
}

TEST_F(WindowKeys, QuitByEscapeOutsideFullScreen) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    scene_.pressKey(SDLK_ESCAPE);
    scene_.host().run();
    EXPECT_FALSE(scene_.host().turn(std::nullopt));
}

TEST_F(WindowKeys, PrintTheirHelp) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    EXPECT_EQ(press(SDLK_h), keyHelp());
}

TEST_F(WindowKeys, PutTheirHelpAwayWithoutPrintingIt) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    press(SDLK_h);
    EXPECT_TRUE(player.showsHelp());
    EXPECT_EQ(press(SDLK_h), "");
    EXPECT_FALSE(player.showsHelp());
}

TEST_F(WindowKeys, PutTheirHelpAwayByEscapeBeforeAnythingElse) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    press(SDLK_f);
    press(SDLK_h);
    press(SDLK_ESCAPE);
    EXPECT_FALSE(player.showsHelp());
    EXPECT_TRUE(scene_.host().isFullScreen());
}

TEST_F(WindowKeys, ActOnAnotherControllerOnceItIsTheOne) {
    WindowPlayer player(scene_.host(), scene_.controller());
    const auto other = platform::make<ZNTDisplayViewController>();
    scene_.embedded().setRootViewController(other);
    player.setController(*other);
    press(SDLK_3);
    EXPECT_EQ(other->currentMode(), DisplayMode::LittlePlanet);
    EXPECT_EQ(mode(), DisplayMode::Sphere);
}

TEST_F(WindowKeys, SayWhatBecameOfAScreenshot) {
    WindowPlayer player(scene_.host(), scene_.controller());
    std::vector<std::pair<std::string, WindowPlayer::Lasting>> said;
    player.setNoticeListener([&said](const std::string& text, WindowPlayer::Lasting lasting) {
        said.emplace_back(text, lasting);
    });
    press(SDLK_s);
    ASSERT_EQ(said.size(), 1U);
    EXPECT_EQ(said[0].first, "Saved as zanto-player-1.png");
    EXPECT_EQ(said[0].second, WindowPlayer::Lasting::Briefly);
}

TEST_F(WindowKeys, WriteScreenshotsUnderTheNextFreeName) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    const std::string taken = folder_.addText("zanto-player-2.png", "mine");
    EXPECT_EQ(press(SDLK_s), "zanto-player-1.png\n");
    EXPECT_EQ(press(SDLK_s), "zanto-player-3.png\n");
    EXPECT_EQ(folder_.read("zanto-player-2.png"), "mine");
    const auto picture =
        platform::Image::imageWithContentsOfFile(folder_.pathOf("zanto-player-1.png"));
    ASSERT_NE(picture, nullptr);
    EXPECT_TRUE(picturesMatch("window-screenshot", *picture, *scene_.windowPicture()));
}

TEST_F(WindowKeys, GoOnAfterAScreenshotThatCannotBeWritten) {
    const WindowPlayer player(scene_.host(), scene_.controller());
    std::filesystem::remove(folder_.path());
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(press(SDLK_s), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "zanto-player: screenshot: zanto-player-1.png: cannot be written\n");
    press(SDLK_1);
    EXPECT_EQ(mode(), DisplayMode::Plane);
}

TEST_F(WindowKeys, AreSilentOnceThePlayerHasGone) {
    { const WindowPlayer player(scene_.host(), scene_.controller()); }
    press(SDLK_1);
    EXPECT_EQ(mode(), DisplayMode::Sphere);
}
