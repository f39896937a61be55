#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

// What observers of a pick may do while it goes on: replace the list, take the picking point away,
// draw, pick, tear down, and release the controller.

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr double kTick = 0.33F;
constexpr std::array<const char*, 3> kNotifications{ZNTHotSpotDrawerDisableDrawing,
                                                    ZNTHotSpotDrawerEnableDrawing,
                                                    ZNTHotSpotDrawerDetectHotSpotSelection};

/// A player that looks at the middle of its view, where a hot spot is; its content has the colour
/// that stands for index 0.
struct Observed : HotSpotScene {
    Observed() : HotSpotScene(flatPicture(64, 32, 50, 255, 0)) {
        controller().setEnableHotSpotAutoPicking(true);
        showSpots({spotAt(0, 2, "behind"), spotAt(0, 0, "door")}, point);
    }
    void tap() { view().objectPickTestForPixelAtX(160, 90); }
    void tapSky() { view().objectPickTestForPixelAtX(10, 10); }

    std::shared_ptr<ZNTHotSpotPickingPoint> point =
        ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    SelectionListener selections;
};

/// Acts the first time only; copies count as one.
std::function<void()> once(std::function<void()> act) {
    return [act = std::move(act), done = std::make_shared<bool>(false)] {
        if (!std::exchange(*done, true))
            act();
    };
}

class DuringAPick : public ::testing::TestWithParam<const char*> {};

/// A player that ends itself when it is told of a pick.
class SelfEndingPlayer final : public ZNTDisplayViewController {
public:
    void detectPickedHotSpotObjectWithName(const std::string& /*name*/, std::int64_t /*forIndex*/,
                                           bool /*detectedByTap*/) override {
        end();
    }
    std::function<void()> end;
};

} // namespace

TEST_P(DuringAPick, ThePickingPointMayBeTakenAway) {
    Observed scene;
    scene.advance(kTick); // remembers the hot spot
    const WhenPosted meddler(GetParam(), [&scene] { scene.drawer().setPickingPoint(nullptr); });
    scene.advance(kTick);
    if (std::string(GetParam()) == ZNTHotSpotDrawerDetectHotSpotSelection)
        EXPECT_THAT(scene.selections.take(), ElementsAre(Selection{"door", 1, false}));
    else
        EXPECT_THAT(scene.selections.take(), IsEmpty()) << "the picking point is gone";
    EXPECT_EQ(scene.drawer().pickingPoint(), nullptr);
}

TEST_P(DuringAPick, TheControllerMayBeGivenAnotherListWithoutAPoint) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.player->setEnableHotSpotAutoPicking(true);
    s.play(tests::testClip({.frames = 90}));
    s.player->addHotSpots({spotAt(0, 0, "door")},
                          ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    s.host->settle();
    s.player->take();
    const WhenPosted meddler(GetParam(),
                             [&s] { s.player->addHotSpots({spotAt(0, 0, "gate")}, nullptr); });
    s.advance(1);
    if (std::string(GetParam()) == ZNTHotSpotDrawerDetectHotSpotSelection)
        EXPECT_THAT(s.player->take(), ElementsAre("picked door 0"));
    else
        EXPECT_THAT(s.player->take(), IsEmpty());
}

TEST_P(DuringAPick, TheDrawerMayBeTornDown) {
    Observed scene;
    const WhenPosted meddler(GetParam(), [&scene] { scene.drawer().tearDownGL(); });
    scene.tap();
    scene.tap();
    scene.advance(1);
    EXPECT_LE(scene.selections.take().size(), 1U);
    EXPECT_EQ(scene.view().glDrawer()->enableColoring(), 0);
}

TEST_P(DuringAPick, TheContentMayBeSetUpAnew) {
    Observed scene;
    const WhenPosted meddler(GetParam(),
                             once([&scene] { scene.controller().prepareDisplayView(); }));
    scene.tapSky();
    EXPECT_THAT(scene.selections.take(), IsEmpty());
    scene.host().settle();
    EXPECT_EQ(scene.view().glDrawer()->enableColoring(), 0);
    scene.tap();
    EXPECT_THAT(scene.selections.take(), ElementsAre(Selection{"door", 1, true}));
}

TEST_P(DuringAPick, TheControllerMayBeReleased) {
    for (const bool tap : {true, false}) {
        Observed scene;
        const std::weak_ptr<ZNTDisplayView> view = scene.controller().displayView();
        const WhenPosted meddler(GetParam(), once([&scene] { scene.releaseController(); }));
        if (tap)
            scene.tap();
        scene.advance(3 * kTick);
        EXPECT_TRUE(view.expired());
    }
}

INSTANTIATE_TEST_SUITE_P(Observers, DuringAPick, ::testing::ValuesIn(kNotifications),
                         [](const auto& notification) { return std::string(notification.param); });

TEST(PickObservers, HaveTheHotSpotReportedThatWasDrawn) {
    Observed scene;
    {
        const WhenPosted meddler(ZNTHotSpotDrawerDisableDrawing, [&scene] {
            scene.drawer().updateHotSpots({spotAt(0, 0, "before the drawing")});
        });
        scene.tap();
    }
    EXPECT_THAT(scene.selections.take(), ElementsAre(Selection{"before the drawing", 0, true}));
    const auto door = spotAt(0, 0, "door");
    scene.drawer().updateHotSpots({spotAt(0, 2), door});
    const WhenPosted meddler(ZNTHotSpotDrawerEnableDrawing, [&scene, &door] {
        scene.drawer().updateHotSpots({door, spotAt(0, 2, "after the drawing")});
    });
    scene.tap();
    EXPECT_THAT(scene.selections.take(), ElementsAre(Selection{"door", 1, true}))
        << "with the index that it was drawn with";
}

TEST(PickObservers, WhoDrawAFrameDoNotHaveTheContentTakenForAHotSpot) {
    Observed scene;
    const WhenPosted meddler(ZNTHotSpotDrawerDisableDrawing,
                             [&scene] { (void)scene.view().snapshot(); });
    scene.tapSky();
    EXPECT_THAT(scene.selections.take(), IsEmpty());
    EXPECT_EQ(scene.view().glDrawer()->enableColoring(), 0);
}

TEST(PickObservers, MayPickThemselves) {
    for (const char* notification : kNotifications) {
        Observed scene;
        const WhenPosted meddler(notification, once([&scene] { scene.tapSky(); }));
        scene.tap();
        // A pick before the drawing takes the picking colours; what comes later takes nothing.
        const bool isLost = notification == kNotifications[0];
        EXPECT_EQ(scene.selections.take().size(), isLost ? 0U : 1U) << notification;
        EXPECT_FALSE(scene.drawer().enableColor());
        EXPECT_EQ(scene.view().glDrawer()->enableColoring(), 0);
        scene.tap();
        EXPECT_THAT(scene.selections.take(), ElementsAre(Selection{"door", 1, true}));
    }
}

TEST(PickObservers, MayReleaseTheControllerInItsHook) {
    for (const bool tap : {true, false}) {
        const auto host = makeHost({320, 180});
        auto player = platform::make<SelfEndingPlayer>();
        const std::weak_ptr<SelfEndingPlayer> held = player;
        player->end = [&host, &player] {
            host->embedded().setRootViewController(nullptr);
            player.reset();
        };
        player->prepareImage(flatPicture(64, 32, 50, 255, 0));
        host->embedded().setRootViewController(player);
        player->setEnableHotSpotAutoPicking(!tap);
        player->addHotSpots({spotAt(0, 0)},
                            ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
        host->embedded().appear();
        host->settle();
        if (tap)
            player->displayView()->objectPickTestForPixelAtX(160, 90);
        host->advanceTo(host->now() + platform::fromSeconds(1));
        EXPECT_TRUE(held.expired()) << (tap ? "tap" : "gaze");
    }
}
