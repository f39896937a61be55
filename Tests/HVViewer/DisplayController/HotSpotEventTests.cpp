#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/Support/HookRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

// How taps on the views become picks, and what the controller's hook is told.

using ::testing::ElementsAre;

namespace {

/// A player on screen, with a hot spot straight ahead and taps switched on.
struct Tapped {
    Tapped() {
        player->prepareImage(flatPicture(64, 32, 120, 120, 120));
        player->addHotSpots({spotAt(0, 0, "door")}, nullptr);
        player->setEnableHotSpotTapDetection(true);
        host->embedded().setRootViewController(player);
        host->embedded().appear();
        host->settle();
    }
    ~Tapped() { host->embedded().setRootViewController(nullptr); }
    Tapped(const Tapped&) = delete;
    Tapped& operator=(const Tapped&) = delete;

    std::vector<std::string> picksAt(platform::Point point) {
        player->take();
        for (const auto phase : {platform::TouchPhase::Down, platform::TouchPhase::Up})
            host->embedded().touch({phase, 1, point, platform::TouchKind::Finger, host->now()});
        host->settle();
        return player->take();
    }

    std::unique_ptr<zanto::HeadlessHost> host = makeHost({320, 180});
    std::shared_ptr<HookRecorder> player = platform::make<HookRecorder>();
};

/// What the hook is told of a notification with these entries.
std::vector<std::string> toldOf(platform::UserInfo info) {
    const auto host = makeHost({16, 9});
    const auto player = platform::make<HookRecorder>();
    info[ZNTHotSpotDrawerHotSpotNameKey] = std::string("x");
    platform::NotificationCenter::defaultCenter().post(ZNTHotSpotDrawerDetectHotSpotSelection,
                                                       std::move(info));
    host->settle();
    return player->take();
}

std::vector<std::string> toldOfIndex(platform::UserInfoValue index) {
    return toldOf({{ZNTHotSpotDrawerHotSpotIndexKey, std::move(index)}});
}

std::vector<std::string> toldOfTap(platform::UserInfoValue tap) {
    return toldOf({{ZNTHotSpotDrawerTapKey, std::move(tap)}});
}

} // namespace

TEST(HotSpotTap, CountsWholePointsTowardsZero) {
    Tapped scene;
    int last = 160;
    while (!scene.picksAt({static_cast<double>(last + 1), 90}).empty())
        ++last;
    EXPECT_LT(last, 200);
    EXPECT_THAT(scene.picksAt({last + 0.9, 90}), ElementsAre("picked door 0 tap"));
    int lowest = 90;
    while (!scene.picksAt({160, static_cast<double>(lowest + 1)}).empty())
        ++lowest;
    EXPECT_THAT(scene.picksAt({160, lowest + 0.9}), ElementsAre("picked door 0 tap"));
}

TEST(HotSpotTap, OfEitherViewIsOnePick) {
    Tapped scene;
    int frames = 0;
    const WhenPosted begin(ZNTHotSpotDrawerDisableDrawing, [&frames] { ++frames; });
    scene.player->setDisplayMode(DisplayMode::SideBySide);
    scene.host->settle();
    EXPECT_THAT(scene.picksAt({79, 90}), ElementsAre("picked door 0 tap"));
    EXPECT_EQ(frames, 1);
    (void)scene.picksAt({240, 90});
    EXPECT_EQ(frames, 2) << "looked for in the main view";
}

TEST(HotSpotTap, AddsARecogniserToEitherViewAtEachAppearance) {
    Tapped scene;
    const auto recognisers = [&scene] {
        return std::pair(scene.player->displayView()->gestureRecognizers().size(),
                         scene.player->virtualDisplayView()->gestureRecognizers().size());
    };
    const auto [main, second] = recognisers();
    EXPECT_EQ(main, second);
    scene.host->embedded().disappear();
    scene.host->embedded().appear();
    EXPECT_EQ(recognisers(), std::pair(main + 1, second + 1));
    scene.player->setEnableHotSpotTapDetection(false);
    scene.host->embedded().disappear();
    scene.host->embedded().appear();
    EXPECT_EQ(recognisers(), std::pair(main + 1, second + 1)) << "none is ever removed";
}

TEST(HotSpotList, OfAPictureIsShownByASwitchToSideBySide) {
    Tapped scene;
    const auto spot = spotAt(0, 0);
    scene.player->addHotSpots({spot}, nullptr);
    scene.host->settle();
    EXPECT_EQ(spot->textureName(), 0U);
    scene.player->setDisplayMode(DisplayMode::LittlePlanet);
    EXPECT_EQ(spot->textureName(), 0U);
    scene.player->setDisplayMode(DisplayMode::SideBySide);
    EXPECT_NE(spot->textureName(), 0U);
}

TEST(HotSpotSwitches, AreOffUntilTheHostSetsThem) {
    const auto host = makeHost({16, 9});
    const auto player = platform::make<HookRecorder>();
    EXPECT_FALSE(player->enableHotSpotTapDetection());
    EXPECT_FALSE(player->enableHotSpotAutoPicking());
    EXPECT_TRUE(player->hotSpots().empty());
    EXPECT_EQ(player->hotSpotPickingPoint(), nullptr);
}

TEST(HotSpotHook, ReadsTheIndexFromAnyNumber) {
    EXPECT_THAT(toldOfIndex(std::int64_t{-7}), ElementsAre("picked x -7"));
    EXPECT_THAT(toldOfIndex(7.9), ElementsAre("picked x 7"));
    EXPECT_THAT(toldOfIndex(-7.9), ElementsAre("picked x -7"));
    EXPECT_THAT(toldOfIndex(true), ElementsAre("picked x 1"));
    EXPECT_THAT(toldOfIndex(std::string("7")), ElementsAre("picked x 0")) << "no number";
    EXPECT_THAT(toldOfIndex(std::nan("")), ElementsAre("picked x 0"));
    EXPECT_THAT(toldOfIndex(std::numeric_limits<double>::infinity()),
                ElementsAre("picked x 9223372036854775807"));
    EXPECT_THAT(toldOfIndex(-1e300), ElementsAre("picked x -9223372036854775808"));
    EXPECT_THAT(toldOfIndex(9223372036854775808.0), ElementsAre("picked x 9223372036854775807"));
}

TEST(HotSpotHook, ReadsTheTapFromAnyNumber) {
    EXPECT_THAT(toldOfTap(true), ElementsAre("picked x 0 tap"));
    EXPECT_THAT(toldOfTap(false), ElementsAre("picked x 0"));
    EXPECT_THAT(toldOfTap(std::int64_t{2}), ElementsAre("picked x 0 tap"));
    EXPECT_THAT(toldOfTap(std::int64_t{0}), ElementsAre("picked x 0"));
    EXPECT_THAT(toldOfTap(0.5), ElementsAre("picked x 0 tap"));
    EXPECT_THAT(toldOfTap(0.0), ElementsAre("picked x 0"));
}

TEST(HotSpotHook, IsCalledForANotificationOfAnySender) {
    const auto host = makeHost({16, 9});
    const auto first = platform::make<HookRecorder>();
    const auto second = platform::make<HookRecorder>();
    platform::NotificationCenter::defaultCenter().post(
        ZNTHotSpotDrawerDetectHotSpotSelection,
        {{ZNTHotSpotDrawerHotSpotNameKey, std::string("door")},
         {ZNTHotSpotDrawerHotSpotIndexKey, std::int64_t{3}}},
        first.get());
    EXPECT_TRUE(first->hooks.empty()) << "in a later turn";
    host->settle();
    EXPECT_THAT(first->take(), ElementsAre("picked door 3"));
    EXPECT_THAT(second->take(), ElementsAre("picked door 3"));
}
