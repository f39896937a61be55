#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Interface/GLView.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string_view>
#include <utility>

// When automatic picking looks: each look at the first hot spot of a list is reported.

namespace {

using std::chrono::nanoseconds;

/// 0.33 as a float holds it.
constexpr nanoseconds kInterval{330'000'013};

struct LookedAt : HotSpotScene {
    LookedAt() {
        controller().setEnableHotSpotAutoPicking(true);
        showSpots({spotAt(0, 0)}, point);
    }
    std::size_t looksUntil(platform::Instant instant) {
        host().advanceTo(instant);
        return selections.take().size();
    }

    std::shared_ptr<ZNTHotSpotPickingPoint> point =
        ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    SelectionListener selections;
};

std::shared_ptr<ZNTHotSpot> failing() {
    return ZNTHotSpot::hotSpotWithTextureNamed("missing", 0, 0);
}

} // namespace

TEST(PickingTimer, LooksEvery033SecondsAsAFloatHoldsThem) {
    LookedAt scene;
    const auto start = scene.host().now();
    EXPECT_EQ(scene.looksUntil(start + kInterval - nanoseconds(1)), 0U);
    EXPECT_EQ(scene.looksUntil(start + kInterval), 1U);
    EXPECT_EQ(scene.looksUntil(start + 2 * kInterval - nanoseconds(1)), 0U);
    EXPECT_EQ(scene.looksUntil(start + 2 * kInterval), 1U);
}

TEST(PickingTimer, StartsAnewWithEveryList) {
    LookedAt scene;
    scene.advance(0.2);
    scene.drawer().updateHotSpots({spotAt(0, 0)});
    EXPECT_TRUE(scene.drawer().isPickingAutomatically()) << "the earlier one, until a later turn";
    const auto restart = scene.host().now();
    EXPECT_EQ(scene.looksUntil(restart + kInterval - nanoseconds(1)), 0U);
    EXPECT_EQ(scene.looksUntil(restart + kInterval), 1U);
}

TEST(PickingTimer, StartsAnewWithTheSwitchAndStopsWithIt) {
    LookedAt scene;
    scene.advance(0.2);
    scene.drawer().setEnableAutoPickingTest(true);
    const auto restart = scene.host().now();
    EXPECT_EQ(scene.looksUntil(restart + kInterval - nanoseconds(1)), 0U);
    EXPECT_EQ(scene.looksUntil(restart + kInterval), 1U);
    scene.drawer().setEnableAutoPickingTest(false);
    EXPECT_FALSE(scene.drawer().enableAutoPickingTest());
    EXPECT_TRUE(scene.drawer().isPickingAutomatically()) << "until a later turn";
    scene.host().settle();
    EXPECT_FALSE(scene.drawer().isPickingAutomatically());
    EXPECT_EQ(scene.looksUntil(restart + 4 * kInterval), 0U);
}

TEST(PickingTimer, GoesByTheListThatWasGivenAndNotByWhatIsShownOfIt) {
    const LogRecorder log;
    LookedAt scene;
    scene.drawer().updateHotSpots({failing()});
    scene.host().settle();
    EXPECT_TRUE(scene.drawer().hotSpots().empty());
    EXPECT_TRUE(scene.drawer().isPickingAutomatically());
    scene.drawer().setEnableAutoPickingTest(true);
    scene.host().settle();
    EXPECT_FALSE(scene.drawer().isPickingAutomatically()) << "the switch goes by what is shown";
}

TEST(PickingTimer, StartsAnewAlsoForAListThatIsNotTaken) {
    LookedAt scene;
    scene.point->setHKoef(2); // each start warns of it
    bool hasTried = false;
    int warnings = 0;
    const auto previous = platform::setLogSink([&](platform::LogLevel, std::string_view line) {
        warnings += line.find("is not within 0 to 1") == std::string_view::npos ? 0 : 1;
        if (!std::exchange(hasTried, true))
            scene.drawer().updateHotSpots({spotAt(0, 1)});
    });
    scene.drawer().updateHotSpots({nullptr, spotAt(0, 0)});
    scene.host().settle();
    platform::setLogSink(previous);
    EXPECT_EQ(warnings, 2);
}

TEST(PickingTimer, StopsAtOnceWithTheTeardown) {
    LookedAt scene;
    scene.drawer().tearDownGL();
    EXPECT_FALSE(scene.drawer().isPickingAutomatically());
}

TEST(PickingTimer, RunsForADrawerThatNobodySwitched) {
    const auto host = makeHost({64, 36});
    const auto context = platform::GLContext::create();
    const auto view = platform::make<platform::GLView>(platform::Rect{{}, {64, 36}});
    const auto drawer = platform::make<ZNTHotSpotDrawer>(
        context, view, ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    // A handle that was current last and is gone leaves none behind; the drawer has its own.
    platform::GLContext::setCurrentContext(platform::GLContext::create());
    drawer->updateHotSpots({spotAt(0, 0)});
    EXPECT_EQ(drawer->hotSpots().size(), 1U);
    EXPECT_FALSE(drawer->isPickingAutomatically()) << "in a later turn";
    host->settle();
    EXPECT_TRUE(drawer->isPickingAutomatically());
}

TEST(PickingTimer, LooksOnlyWhereThereAreAListAndAPoint) {
    HotSpotScene scene;
    int frames = 0;
    const WhenPosted begin(ZNTHotSpotDrawerDisableDrawing, [&frames] { ++frames; });
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    scene.showSpots({}, point);
    scene.drawer().objecPickTestForPickingPoint();
    EXPECT_EQ(frames, 0) << "no list";
    scene.showSpots({spotAt(0, 0)});
    scene.drawer().objecPickTestForPickingPoint();
    EXPECT_EQ(frames, 0) << "no point";
    scene.drawer().setPickingPoint(point);
    scene.drawer().objecPickTestForPickingPoint();
    EXPECT_EQ(frames, 1);
}

TEST(PickingTimer, CountsEachLookAndStartsOverAfterAReport) {
    LookedAt scene;
    scene.point->setRejectRate(3);
    scene.showSpots({spotAt(0, 2), spotAt(0, 0)}, scene.point);
    const auto look = [&scene] {
        scene.drawer().objecPickTestForPickingPoint();
        return std::pair(scene.drawer().pickingHotSpotIndex(), scene.drawer().pickingOccurency());
    };
    using State = std::pair<std::uint32_t, std::int64_t>;
    EXPECT_EQ(look(), State(1, 0)) << "remembers it";
    EXPECT_EQ(look(), State(1, 1));
    EXPECT_EQ(look(), State(1, 2));
    EXPECT_TRUE(scene.selections.take().empty());
    EXPECT_EQ(look(), State(1, 0));
    EXPECT_EQ(scene.selections.take(), (std::vector<Selection>{{"", 1, false}}));
    EXPECT_EQ(look(), State(1, 1));
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_EQ(scene.drawer().pickingOccurency(), 1) << "a tap does not count";
}
