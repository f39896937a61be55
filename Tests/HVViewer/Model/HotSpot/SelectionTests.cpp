#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Interface/TapGestureRecognizer.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/Support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <utility>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr double kTick = 0.33F;

/// A player whose hooks are noted.
class PickedPlayer final : public ZNTDisplayViewController {
public:
    void detectPickedHotSpotObjectWithName(const std::string& name, std::int64_t forIndex,
                                           bool detectedByTap) override {
        picks.push_back({name, forIndex, detectedByTap});
    }
    std::vector<Selection> picks;
};

/// Hot spots in rows round the sphere.
ZNTHotSpotDrawer::HotSpots manySpots(int count) {
    ZNTHotSpotDrawer::HotSpots spots;
    for (int i = 0; i < count; ++i) {
        const auto column = static_cast<float>(i % 60);
        const auto row = static_cast<float>(i / 60);
        spots.push_back(spotAt(0.1F + 0.05F * row, 6.283F * column / 60));
        spots.back()->setScale(0.2F);
    }
    return spots;
}

/// Ticks of automatic picking until something is reported, at most so many.
int ticksUntilReport(HotSpotScene& scene, SelectionListener& selections, int most) {
    for (int tick = 1; tick <= most; ++tick) {
        scene.advance(kTick);
        if (!selections.take().empty())
            return tick;
    }
    return 0;
}

/// Automatic picking at the middle of the screen, on the second of two hot spots.
struct Dwelling : HotSpotScene {
    explicit Dwelling(std::int64_t rejectRate) {
        point->setRejectRate(rejectRate);
        controller().setEnableHotSpotAutoPicking(true);
        showSpots({spotAt(0, 2), spotAt(0, 0, "middle")}, point);
    }
    std::shared_ptr<ZNTHotSpotPickingPoint> point =
        ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    SelectionListener selections;
};

} // namespace

TEST(Tap, ReportsTheHotSpotUnderItEveryTime) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.showSpots({spotAt(0, 2), spotAt(0, 0, "door")});
    scene.view().objectPickTestForPixelAtX(160, 90);
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_THAT(selections.take(),
                ElementsAre(Selection{"door", 1, true}, Selection{"door", 1, true}));
}

TEST(Tap, OnEmptySkyReportsNothing) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.showSpots({spotAt(0, 0)});
    scene.view().objectPickTestForPixelAtX(10, 10);
    scene.view().objectPickTestForPixelAtX(-5, 90);
    scene.view().objectPickTestForPixelAtX(320, 90);
    scene.showSpots({});
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_THAT(selections.take(), IsEmpty());
}

TEST(Tap, ReportsAHotSpotWithoutANameByItsIndex) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.showSpots({spotAt(0, 0)});
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_THAT(selections.take(), ElementsAre(Selection{"", 0, true}));
}

TEST(Tap, TakesTheMarkerInFront) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.showSpots({spotAt(0, 0, "below"), spotAt(0, 0.02F, "above")});
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_THAT(selections.take(), ElementsAre(Selection{"above", 1, true}));
}

TEST(Tap, CountsTransparentPartsOfAMarker) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.showSpots(
        {ZNTHotSpot::hotSpotWithTextureImage(flatPicture(4, 4, 255, 255, 255, 0), 0, 0)});
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_THAT(selections.take(), ElementsAre(Selection{"", 0, true}));
}

TEST(Tap, TellsIndicesUpTo205ApartAndTakesHigherOnesForThat) {
    HotSpotScene scene({320, 180});
    SelectionListener selections;
    auto spots = manySpots(300);
    // These three stand alone, high up.
    const auto stand = [&spots](std::size_t index, float horizontal) {
        spots[index]->setVerticalOffset(-0.25F);
        spots[index]->setHorizontalOffset(horizontal);
        spots[index]->setScale(0.5F);
    };
    stand(0, 0.3F);
    stand(205, 0);
    stand(250, -0.3F);
    scene.showSpots(spots);
    std::vector<Selection> seen;
    for (int x = 0; x < 320; x += 2) {
        for (int y = 0; y < 60; y += 6) {
            scene.view().objectPickTestForPixelAtX(x, y);
            for (const Selection& selection : selections.take())
                seen.push_back(selection);
        }
    }
    EXPECT_THAT(seen, ::testing::Contains(Selection{"", 0, true}));
    EXPECT_THAT(seen, ::testing::Contains(Selection{"", 205, true}));
    for (const Selection& selection : seen)
        EXPECT_LE(selection.index, 205);
}

TEST(AutomaticPicking, ReportsAfterTheFurtherLooksThatItWasGivenAndThenEverySoMany) {
    Dwelling scene(3);
    std::vector<int> reports;
    for (int tick = 1; tick <= 10; ++tick) {
        scene.advance(kTick);
        const auto selections = scene.selections.take();
        if (!selections.empty()) {
            EXPECT_THAT(selections, ElementsAre(Selection{"middle", 1, false}));
            reports.push_back(tick);
        }
    }
    EXPECT_THAT(reports, ElementsAre(4, 7, 10));
}

TEST(AutomaticPicking, ReportsAtTheSecondLookByDefaultAndThenAtEvery) {
    Dwelling scene(1);
    std::vector<std::size_t> reports;
    for (int tick = 1; tick <= 4; ++tick) {
        scene.advance(kTick);
        reports.push_back(scene.selections.take().size());
    }
    EXPECT_THAT(reports, ElementsAre(0, 1, 1, 1));
}

TEST(AutomaticPicking, ReportsTheFirstHotSpotOneLookEarlier) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.controller().setEnableHotSpotAutoPicking(true);
    scene.showSpots({spotAt(0, 0)}, ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    EXPECT_EQ(ticksUntilReport(scene, selections, 5), 1);
}

TEST(AutomaticPicking, KeepsItsCountOverAMissAndOverAnotherList) {
    Dwelling scene(3);
    scene.advance(2 * kTick);
    scene.point->setHKoef(0.05); // sky
    scene.advance(5 * kTick);
    EXPECT_THAT(scene.selections.take(), IsEmpty());
    scene.point->setHKoef(0.5);
    EXPECT_EQ(ticksUntilReport(scene, scene.selections, 5), 2);
    scene.advance(kTick);
    scene.drawer().updateHotSpots({spotAt(0, 2), spotAt(0, 0)});
    scene.host().settle();
    EXPECT_EQ(ticksUntilReport(scene, scene.selections, 5), 2);
}

TEST(AutomaticPicking, StartsOverOnAnotherHotSpot) {
    Dwelling scene(2);
    scene.drawer().updateHotSpots({spotAt(0, 2), spotAt(0, 0.3F), spotAt(0, -0.3F)});
    const auto lookAt = [&scene](double fraction) {
        scene.point->setHKoef(fraction);
        scene.advance(kTick);
        return scene.selections.take().size();
    };
    const double left = 0.5 - 0.215;
    const double right = 0.5 + 0.215;
    EXPECT_EQ(lookAt(left), 0U);
    EXPECT_EQ(lookAt(left), 0U);
    EXPECT_EQ(lookAt(right), 0U);
    EXPECT_EQ(lookAt(right), 0U);
    EXPECT_EQ(lookAt(right), 1U);
}

TEST(AutomaticPicking, NeedsAPointAListAndToBeWanted) {
    HotSpotScene scene;
    scene.controller().setEnableHotSpotAutoPicking(true);
    scene.showSpots({spotAt(0, 0)});
    EXPECT_FALSE(scene.drawer().isPickingAutomatically()) << "no point";
    scene.drawer().setEnableAutoPickingTest(true);
    scene.host().settle();
    EXPECT_FALSE(scene.drawer().isPickingAutomatically());
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    scene.showSpots({}, point);
    EXPECT_FALSE(scene.drawer().isPickingAutomatically()) << "no list";
    scene.showSpots({spotAt(0, 0)}, point);
    EXPECT_TRUE(scene.drawer().isPickingAutomatically());
    scene.drawer().updateHotSpots({});
    scene.host().settle();
    EXPECT_FALSE(scene.drawer().isPickingAutomatically());
    scene.controller().setEnableHotSpotAutoPicking(false);
    scene.showSpots({spotAt(0, 0)}, point);
    EXPECT_FALSE(scene.drawer().isPickingAutomatically()) << "not wanted";
}

TEST(AutomaticPicking, DoesNotStartAgainAfterTheTeardown) {
    HotSpotScene scene;
    scene.controller().setEnableHotSpotAutoPicking(true);
    scene.showSpots({spotAt(0, 0)}, ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    scene.drawer().updateHotSpots({spotAt(0, 0)});
    scene.drawer().tearDownGL();
    scene.host().settle();
    EXPECT_FALSE(scene.drawer().isPickingAutomatically());
    SelectionListener selections;
    scene.advance(2);
    EXPECT_THAT(selections.take(), IsEmpty());
}

TEST(AutomaticPicking, LooksNowhereForAPointOutsideTheScreen) {
    HotSpotScene scene;
    SelectionListener selections;
    scene.controller().setEnableHotSpotAutoPicking(true);
    for (const double fraction : {-0.5, 1.5, std::nan("")}) {
        const LogRecorder log;
        scene.showSpots({spotAt(0, 0)},
                        ZNTHotSpotPickingPoint::pickingPointForXPosition(fraction, 0.5));
        scene.advance(2);
        EXPECT_GE(log.count("is not within 0 to 1; automatic picking finds nothing there"), 1);
    }
    EXPECT_THAT(selections.take(), IsEmpty());
}

TEST(HotSpotHook, IsCalledInALaterTurnOnEveryController) {
    HotSpotScene scene;
    const auto other = platform::make<PickedPlayer>();
    scene.showSpots({spotAt(0, 0, "door")});
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_THAT(other->picks, IsEmpty());
    scene.host().settle();
    EXPECT_THAT(other->picks, ElementsAre(Selection{"door", 0, true}));
}

TEST(HotSpotHook, IsCalledForATapOnceTapsAreDetectedAtAnAppearance) {
    const auto host = makeHost({320, 180});
    const auto player = platform::make<PickedPlayer>();
    player->prepareImage(flatPicture(64, 32, 120, 120, 120));
    const auto edge = spotAt(0, 0.61F, "edge");
    edge->setScale(2);
    player->addHotSpots({spotAt(0, 0, "door"), edge}, nullptr);
    host->embedded().setRootViewController(player);
    host->embedded().appear();
    host->settle();
    const auto tap = [&host](platform::Point point) {
        host->embedded().touch(
            {platform::TouchPhase::Down, 1, point, platform::TouchKind::Finger, host->now()});
        host->embedded().touch(
            {platform::TouchPhase::Up, 1, point, platform::TouchKind::Finger, host->now()});
        host->settle();
    };
    player->setEnableHotSpotTapDetection(true);
    tap({160, 90});
    EXPECT_THAT(player->picks, IsEmpty()) << "from the next appearance on";
    EXPECT_EQ(player->displayView()->gestureRecognizers().size(), 2U) << "a drag's and a pinch's";
    for (int appearance = 1; appearance <= 2; ++appearance) {
        host->embedded().disappear();
        host->embedded().appear();
        host->settle();
        player->picks.clear();
        tap({160, 90});
        EXPECT_THAT(player->picks, ElementsAre(Selection{"door", 0, true}));
    }
    EXPECT_EQ(player->displayView()->gestureRecognizers().size(), 4U)
        << "each appearance adds one to either view";
    player->picks.clear();
    host->embedded().touch(
        {platform::TouchPhase::Down, 1, {4, 90}, platform::TouchKind::Finger, host->now()});
    host->embedded().touch(
        {platform::TouchPhase::Up, 1, {-4, 90}, platform::TouchKind::Finger, host->now()});
    host->settle();
    EXPECT_THAT(player->picks, ElementsAre(Selection{"edge", 1, true}))
        << "left of the view counts as its edge";
    player->picks.clear();
    player->setDisplayMode(DisplayMode::SideBySide);
    host->settle();
    tap({79, 90});
    EXPECT_THAT(player->picks, ElementsAre(Selection{"door", 0, true}));
    player->picks.clear();
    tap({240, 90});
    EXPECT_THAT(player->picks, IsEmpty()) << "read in the main view's points, where nothing is";
    host->embedded().setRootViewController(nullptr);
}

TEST(HotSpotHook, HearsNothingOnceTheControllerHasGone) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0)});
    auto other = platform::make<PickedPlayer>();
    scene.view().objectPickTestForPixelAtX(160, 90);
    const std::weak_ptr<PickedPlayer> gone = std::exchange(other, nullptr);
    EXPECT_TRUE(gone.expired()) << "what is queued does not hold it";
    scene.host().settle();
}

TEST(HotSpotHook, TakesWhatANotificationLacksForNothing) {
    const auto host = makeHost({320, 180});
    const auto player = platform::make<PickedPlayer>();
    auto& center = platform::NotificationCenter::defaultCenter();
    center.post(ZNTHotSpotDrawerDetectHotSpotSelection);
    center.post(ZNTHotSpotDrawerDetectHotSpotSelection,
                {{ZNTHotSpotDrawerHotSpotNameKey, std::string("door")}});
    center.post(
        ZNTHotSpotDrawerDetectHotSpotSelection,
        {{ZNTHotSpotDrawerHotSpotIndexKey, std::int64_t{7}}, {ZNTHotSpotDrawerTapKey, true}});
    host->settle();
    EXPECT_THAT(player->picks, ElementsAre(Selection{"", 0, false}, Selection{"door", 0, false},
                                           Selection{"", 7, true}));
}

TEST(HotSpots, AreOnlyKeptUntilAPictureIsShownNext) {
    HotSpotScene scene;
    scene.showSpots({});
    const auto before = scene.snapshot();
    const auto spot = spotAt(0, 0);
    scene.controller().addHotSpots({spot}, nullptr);
    scene.host().settle();
    EXPECT_EQ(spot->textureName(), 0U);
    EXPECT_EQ(scene.controller().hotSpots().size(), 1U);
    scene.embedded().disappear();
    scene.embedded().appear();
    scene.host().settle();
    EXPECT_NE(spot->textureName(), 0U);
}

TEST(HotSpots, LookForTheGazeInTheLeftHalfWhileSideBySide) {
    HotSpotScene scene;
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    scene.showSpots({spotAt(0, 0)}, point);
    EXPECT_FALSE(point->sbsModeActive());
    scene.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_TRUE(point->sbsModeActive());
    const auto later = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    scene.controller().addHotSpots({}, later);
    scene.controller().setDisplayMode(DisplayMode::Sphere);
    EXPECT_FALSE(point->sbsModeActive()) << "which the view still looks at";
    EXPECT_FALSE(later->sbsModeActive());
}
