#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/Apps/Player/Window/PlayScene.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using namespace std::chrono_literals;
using platform::Point;
using testing::HasSubstr;
using testing::Not;

namespace {

/// The window over a light picture, with the controls faded again.
class PlayWindowTest : public ::testing::Test {
protected:
    PlayWindowTest() {
        scene_.open(scene_.greyFile("light.png", 240));
        // The watermark is read meanwhile.
        EXPECT_TRUE(
            scene_.becomesTrue([] { return platform::MainQueue::main().outstandingWork() == 0; }));
        scene_.pass(5s);
    }
    [[nodiscard]] bool showsControls() {
        return scene_.grey(PlayScene::kBar) < scene_.greyBeneath(PlayScene::kBar) - 80;
    }
    [[nodiscard]] std::string title() { return SDL_GetWindowTitle(scene_.scene().window()); }

    PlayScene scene_;
};

std::vector<std::uint8_t> bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

TEST(PlayWindowControls, AreThereAtFirst) {
    PlayScene scene;
    scene.open(scene.greyFile("light.png", 240));
    scene.pass(1s);
    EXPECT_LT(scene.grey(PlayScene::kBar), scene.greyBeneath(PlayScene::kBar) - 80);
}

TEST_F(PlayWindowTest, ShowsTheContentAloneOnceTheControlsHaveFaded) {
    EXPECT_TRUE(picturesMatch("controls-faded", *scene_.scene().windowPicture(),
                              *scene_.scene().embedded().snapshot(1).value()));
}

TEST_F(PlayWindowTest, DrawsNothingAndWaitsForNothingOnceTheyHaveFaded) {
    const int frames = scene_.host().framesPresented();
    scene_.pass(20s);
    EXPECT_EQ(scene_.host().framesPresented(), frames);
    EXPECT_FALSE(platform::MainQueue::main().nextDeadline());
}

TEST_F(PlayWindowTest, DrawsNothingWhileTheControlsRest) {
    scene_.movePointer(PlayScene::kPicture);
    scene_.pass(500ms);
    const int frames = scene_.host().framesPresented();
    scene_.movePointer({322, 104});
    scene_.pass(2s);
    EXPECT_EQ(scene_.host().framesPresented(), frames);
    EXPECT_TRUE(showsControls());
}

TEST_F(PlayWindowTest, ShowsTheControlsWhenThePointerMovesAndFadesThem) {
    EXPECT_FALSE(showsControls());
    scene_.movePointer(PlayScene::kPicture);
    scene_.pass(500ms);
    EXPECT_TRUE(showsControls());
    scene_.pass(3s);
    EXPECT_FALSE(showsControls());
}

TEST_F(PlayWindowTest, ShowsAndHidesTheControlsWithAFinger) {
    scene_.tapFinger(PlayScene::kPicture);
    scene_.pass(500ms);
    EXPECT_TRUE(showsControls());
    scene_.tapFinger(PlayScene::kPicture);
    scene_.pass(500ms);
    EXPECT_FALSE(showsControls());
}

TEST_F(PlayWindowTest, DoesWhatAButtonSaysAndLeavesTheLibraryOut) {
    std::vector<platform::TouchEvent> touches;
    scene_.host().setTouchListener(
        [&touches](const platform::TouchEvent& event) { touches.push_back(event); });
    scene_.movePointer(PlayScene::kPicture);
    scene_.pass(500ms);
    scene_.click(scene_.middleOf(Control::LittlePlanet));
    scene_.pass(100ms);
    EXPECT_EQ(scene_.controller().currentMode(), DisplayMode::LittlePlanet);
    scene_.tapFinger(scene_.middleOf(Control::Plane));
    scene_.pass(100ms);
    EXPECT_EQ(scene_.controller().currentMode(), DisplayMode::Plane);
    EXPECT_TRUE(touches.empty());
}

TEST_F(PlayWindowTest, MarksTheModeThatIsOn) {
    scene_.movePointer(PlayScene::kPicture);
    scene_.pass(500ms);
    const Point mark{scene_.middleOf(Control::Plane).x, scene_.middleOf(Control::Plane).y + 20};
    EXPECT_LT(scene_.grey(mark), 150);
    scene_.scene().pressKey(SDLK_1);
    scene_.pass(100ms);
    EXPECT_GT(scene_.grey(mark), 200);
}

TEST_F(PlayWindowTest, TakesScreenshotsWithoutTheControls) {
    std::filesystem::current_path(scene_.folder().path());
    scene_.movePointer(PlayScene::kPicture);
    scene_.pass(500ms);
    ::testing::internal::CaptureStdout();
    scene_.click(scene_.middleOf(Control::Screenshot));
    scene_.pass(500ms);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "zanto-player-1.png\n");
    std::filesystem::current_path("/");
    const auto picture =
        platform::Image::imageWithContentsOfFile(scene_.folder().pathOf("zanto-player-1.png"));
    ASSERT_NE(picture, nullptr);
    EXPECT_TRUE(picturesMatch("controls-screenshot", *picture,
                              *scene_.scene().embedded().snapshot(1).value()));
    const Point notice{320, 40};
    EXPECT_LT(scene_.grey(notice), 150) << "it says so";
    scene_.pass(8s);
    EXPECT_GT(scene_.grey(notice), 200) << "for a while";
}

TEST_F(PlayWindowTest, ShowsTheKeysUntilTheyAreAskedForAgainOrPutAway) {
    const Point corner{3, 3};
    ::testing::internal::CaptureStdout();
    scene_.scene().pressKey(SDLK_h);
    scene_.pass(100ms);
    EXPECT_LT(scene_.grey(corner), 160);
    scene_.scene().pressKey(SDLK_h);
    scene_.pass(100ms);
    EXPECT_GT(scene_.grey(corner), 200);
    scene_.scene().pressKey(SDLK_h);
    scene_.scene().pressKey(SDLK_ESCAPE);
    scene_.pass(100ms);
    EXPECT_GT(scene_.grey(corner), 200);
    EXPECT_TRUE(scene_.host().turn(0ms)) << "Escape has not ended the program";
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), HasSubstr("little planet"));
}

TEST_F(PlayWindowTest, ShowsAPictureThatIsDroppedInTheModeOfTheMoment) {
    scene_.scene().pressKey(SDLK_1);
    scene_.drop(scene_.greyFile("dark.png", 40));
    scene_.pass(5s);
    EXPECT_NEAR(scene_.grey(PlayScene::kPicture), 40, 3);
    EXPECT_EQ(scene_.controller().currentMode(), DisplayMode::Plane);
    EXPECT_EQ(title(), "dark.png – zanto-player");
}

TEST_F(PlayWindowTest, ActsOnWhatWasDroppedFromThenOn) {
    scene_.drop(scene_.greyFile("dark.png", 40));
    scene_.pass(100ms);
    const auto dropped = scene_.session().controller();
    scene_.scene().pressKey(SDLK_3);
    scene_.pass(100ms);
    EXPECT_EQ(dropped->currentMode(), DisplayMode::LittlePlanet);
}

TEST_F(PlayWindowTest, OpensTextThatIsDroppedWithoutTheSpaceAroundIt) {
    scene_.drop("  file://" + scene_.greyFile("dark.png", 40) + "\r\n", SDL_DROPTEXT);
    scene_.pass(5s);
    EXPECT_NEAR(scene_.grey(PlayScene::kPicture), 40, 3);
}

TEST_F(PlayWindowTest, KeepsWhatItShowsAndSaysWhyWhenADropCannotBeOpened) {
    const LogRecorder log;
    const auto before = scene_.session().controller();
    scene_.drop("/no/such/panorama.jpg");
    scene_.pass(1s);
    EXPECT_EQ(scene_.session().controller(), before);
    EXPECT_FALSE(scene_.session().hasFailed());
    EXPECT_NEAR(scene_.grey(PlayScene::kPicture), 240, 3);
    EXPECT_LT(scene_.grey({320, 16}), 150) << "the message";
    scene_.drop(scene_.greyFile("other.png", 240));
    scene_.pass(5s);
    EXPECT_GT(scene_.grey({320, 16}), 200) << "it goes with the next content";
}

TEST_F(PlayWindowTest, ShowsHowFarADownloadIsAndGivesItUp) {
    tests::HttpServer server;
    const auto bytes = bytesOf(scene_.greyFile("remote.png", 40));
    server.serve("/remote.png", {.body = bytes, .stallAfter = bytes.size() / 2});
    const auto before = scene_.session().controller();
    scene_.drop(server.url("/remote.png"), SDL_DROPTEXT);
    ASSERT_TRUE(scene_.becomesTrue([&] {
        const auto progress = scene_.session().progress();
        return progress && progress->fraction && *progress->fraction > 0;
    }));
    EXPECT_NEAR(*scene_.session().progress()->fraction, 0.5, 0.1);
    scene_.pass(1s);
    EXPECT_LT(scene_.grey({320, 20}), 150) << "the notice";
    scene_.click(scene_.middleOf(Control::CancelLoading));
    scene_.pass(5s);
    EXPECT_FALSE(scene_.session().progress());
    EXPECT_EQ(scene_.session().controller(), before);
    EXPECT_GT(scene_.grey({320, 20}), 200);
    EXPECT_TRUE(server.waitForOpenConnections(0));
}

TEST_F(PlayWindowTest, ShowsADownloadOnceItHasArrived) {
    tests::HttpServer server;
    server.serve("/remote.png", {.body = bytesOf(scene_.greyFile("remote.png", 40))});
    const auto before = scene_.session().controller();
    scene_.drop(server.url("/remote.png"), SDL_DROPTEXT);
    ASSERT_TRUE(scene_.becomesTrue([&] { return scene_.session().controller() != before; }));
    scene_.pass(5s);
    EXPECT_NEAR(scene_.grey(PlayScene::kPicture), 40, 3);
}

TEST(PlayWindowFirst, QuitsWhenItCannotBeOpened) {
    const LogRecorder log;
    tests::HttpServer server;
    PlayScene scene;
    ::testing::internal::CaptureStderr();
    scene.open(server.url("/missing.png"));
    const bool hasQuit = scene.becomesTrue([&] { return !scene.host().turn(0ms); });
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr("missing.png: "));
    EXPECT_TRUE(hasQuit);
    EXPECT_TRUE(scene.session().hasFailed());
}

TEST(PlayWindowFirst, GivesWayToTheBuiltInPanoramaWhenItIsGivenUp) {
    tests::HttpServer server;
    server.serve("/remote.png", {.body = {1, 2, 3}, .isSilent = true});
    PlayScene scene;
    scene.open(server.url("/remote.png"));
    scene.pass(1s);
    ASSERT_TRUE(scene.session().progress());
    scene.click(scene.middleOf(Control::CancelLoading));
    scene.pass(1s);
    EXPECT_FALSE(scene.session().progress());
    EXPECT_FALSE(scene.session().hasFailed());
    EXPECT_NE(scene.controller().srcImage(), nullptr);
    EXPECT_STREQ(SDL_GetWindowTitle(scene.scene().window()), "zanto-player");
}

TEST(PlayWindowRecording, HasWhatControlsAndDropsDoAndNotTheirTouches) {
    PlayScene scene;
    const std::string script = scene.folder().pathOf("script.jsonl");
    const std::string dark = scene.greyFile("dark.png", 40);
    scene.record(script);
    scene.open(scene.greyFile("light.png", 240));
    scene.movePointer(PlayScene::kPicture);
    scene.pass(500ms);
    scene.click(scene.middleOf(Control::LittlePlanet));
    scene.drop(dark);
    scene.pass(100ms);
    scene.endRecording();
    const std::string lines = scene.folder().read("script.jsonl");
    EXPECT_THAT(lines, HasSubstr(R"("mode":"little-planet")"));
    EXPECT_THAT(lines, HasSubstr(R"("image":")" + dark));
    EXPECT_THAT(lines, Not(HasSubstr("touch")));
}

TEST(PlayWindowVideo, IsPausedSoughtAndMadeQuietByTheControls) {
    PlayScene scene(PlayScene::Time::Real);
    scene.open(tests::testClip({.frames = 150}));
    const auto player = [&] { return scene.controller().streamer()->player(); };
    ASSERT_TRUE(scene.becomesTrue(
        [&] { return player()->timeControlStatus() == platform::TimeControlStatus::Playing; }));
    scene.click(scene.middleOf(Control::Playback));
    EXPECT_TRUE(scene.becomesTrue(
        [&] { return player()->timeControlStatus() == platform::TimeControlStatus::Paused; }));
    scene.click(scene.middleOf(Control::SeekBar));
    EXPECT_TRUE(
        scene.becomesTrue([&] { return std::abs(player()->currentTime().seconds() - 2.5) < 0.2; }));
    scene.click(scene.middleOf(Control::Mute));
    EXPECT_TRUE(scene.becomesTrue([&] { return player()->volume() == 0; }));
}

TEST(PlayWindowVideo, IsPausedSoughtAndMadeQuietByKeys) {
    PlayScene scene(PlayScene::Time::Real);
    scene.open(tests::testClip({.framesPerSecond = 5, .frames = 200}));
    const auto player = [&] { return scene.controller().streamer()->player(); };
    const auto isAt = [&](double seconds) {
        return std::abs(player()->currentTime().seconds() - seconds) < 0.2;
    };
    ASSERT_TRUE(scene.becomesTrue(
        [&] { return player()->timeControlStatus() == platform::TimeControlStatus::Playing; }));
    scene.scene().pressKey(SDLK_SPACE);
    ASSERT_TRUE(scene.becomesTrue(
        [&] { return player()->timeControlStatus() == platform::TimeControlStatus::Paused; }));
    const double pausedAt = player()->currentTime().seconds();
    scene.scene().pressKey(SDLK_RIGHTBRACKET);
    EXPECT_TRUE(scene.becomesTrue([&] { return isAt(pausedAt + 10); }));
    scene.scene().pressKey(SDLK_LEFTBRACKET);
    EXPECT_TRUE(scene.becomesTrue([&] { return isAt(pausedAt); }));
    scene.scene().pressKey(SDLK_LEFTBRACKET);
    EXPECT_TRUE(scene.becomesTrue([&] { return isAt(0); }));

    const float volume = player()->volume();
    scene.scene().pressKey(SDLK_9);
    EXPECT_TRUE(scene.becomesTrue([&] { return player()->volume() < volume; }));
    scene.scene().pressKey(SDLK_0);
    EXPECT_TRUE(scene.becomesTrue([&] { return player()->volume() == volume; }));
    scene.scene().pressKey(SDLK_m);
    EXPECT_TRUE(scene.becomesTrue([&] { return player()->volume() == 0; }));
    scene.scene().pressKey(SDLK_m);
    EXPECT_TRUE(scene.becomesTrue([&] { return player()->volume() == volume; }));
    scene.scene().pressKey(SDLK_SPACE);
    EXPECT_TRUE(scene.becomesTrue(
        [&] { return player()->timeControlStatus() == platform::TimeControlStatus::Playing; }));
}

TEST(PlayWindowVideo, StaysStillWhenItIsSoughtAfterItsEnd) {
    PlayScene scene(PlayScene::Time::Real);
    scene.open(tests::testClip({.framesPerSecond = 30, .frames = 60}));
    const auto streamer = scene.controller().streamer();
    bool hasPlayed = false;
    ASSERT_TRUE(scene.becomesTrue([&] {
        const auto status = streamer->player()->timeControlStatus();
        hasPlayed = hasPlayed || status == platform::TimeControlStatus::Playing;
        return hasPlayed && status == platform::TimeControlStatus::Paused;
    }));
    scene.click(scene.middleOf(Control::SeekBar));
    EXPECT_TRUE(scene.becomesTrue(
        [&] { return std::abs(streamer->player()->currentTime().seconds() - 1) < 0.1; }));
    EXPECT_EQ(streamer->player()->timeControlStatus(), platform::TimeControlStatus::Paused);
}

TEST(PlayWindowVideo, ComesBackToTheVolumeFromBeforeASlideToNothing) {
    PlayScene scene(PlayScene::Time::Real);
    scene.open(tests::testClip({.frames = 150}));
    const auto player = [&] { return scene.controller().streamer()->player(); };
    ASSERT_TRUE(scene.becomesTrue(
        [&] { return player()->timeControlStatus() == platform::TimeControlStatus::Playing; }));
    WindowPlayer window(scene.host(), scene.controller());
    for (const double volume : {0.3, 0.25, 0.1, 0.0})
        window.setVolume(volume);
    window.perform(WindowAction::ToggleMute);
    EXPECT_EQ(player()->volume(), 0.25F);
}

TEST(PlayWindowVideo, TakesThePlaceOfAPicture) {
    PlayScene scene(PlayScene::Time::Real);
    scene.open(scene.greyFile("light.png", 240));
    const auto before = scene.session().controller();
    scene.drop(tests::testClip({.frames = 150}));
    ASSERT_TRUE(scene.becomesTrue([&] { return scene.session().controller() != before; }));
    EXPECT_TRUE(scene.becomesTrue([&] {
        const auto player = scene.controller().streamer()->player();
        return player->timeControlStatus() == platform::TimeControlStatus::Playing;
    }));
}
