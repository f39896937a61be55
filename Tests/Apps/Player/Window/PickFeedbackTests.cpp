#include "Apps/Player/Window/PickFeedback.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Interface/View.h"
#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

using namespace std::chrono_literals;
using platform::Point;

namespace {

constexpr std::array<int, 4> kGrey{90, 90, 90, 255};
constexpr std::array<int, 4> kMark{255, 153, 0, 255};
constexpr std::array<int, 4> kCross{255, 255, 255, 255};

/// A window over a grey picture with what shows picks, at second 0 of a clock that stands.
class PickFeedbackTest : public ::testing::Test {
protected:
    PickFeedbackTest() {
        scene_.show(flatPicture(64, 32, 90, 90, 90));
        platform::MainQueue::main().setClock(clock_);
        feedback_ = platform::make<PickFeedback>(scene_.host(), scene_.controller(), "mine");
    }

    /// What the pick printed.
    std::string pick(const Pick& pick) {
        ::testing::internal::CaptureStdout();
        feedback_->picked(pick);
        return ::testing::internal::GetCapturedStdout();
    }
    void lift(Point place) {
        feedback_->touch({platform::TouchPhase::Down, 1, place});
        feedback_->touch({platform::TouchPhase::Up, 1, place});
        feedback_->touch({platform::TouchPhase::Down, 1, {1, 1}});
    }
    /// Has a hot spot, out of sight, looked for at a place.
    void lookAt(double x, double y) {
        auto& controller = scene_.controller();
        controller.addHotSpots({ZNTHotSpot::hotSpotWithTextureImage(nullptr, 1.5F, 0)},
                               ZNTHotSpotPickingPoint::pickingPointForXPosition(x, y));
        controller.setEnableHotSpotAutoPicking(true);
        feedback_->update();
    }
    void advanceTo(platform::Instant instant) {
        clock_->advanceTo(instant);
        (void)scene_.embedded().runDueWork();
    }
    [[nodiscard]] std::string title() const { return SDL_GetWindowTitle(scene_.window()); }
    [[nodiscard]] std::array<int, 4> colour(int x, int y) {
        const auto picture = scene_.embedded().snapshot(1);
        return colourAt(*picture.value(), x, y);
    }
    [[nodiscard]] std::size_t viewsInFront() {
        return scene_.controller().view()->subviews().size() - 2;
    }

    SDLScene scene_;
    std::shared_ptr<platform::VirtualClock> clock_ = std::make_shared<platform::VirtualClock>();
    std::shared_ptr<PickFeedback> feedback_;
};

} // namespace

TEST_F(PickFeedbackTest, PrintsALineForEveryPick) {
    EXPECT_EQ(pick({"do\"or", 3, true}), "{\"pick\":\"do\\\"or\",\"index\":3,\"tap\":true}\n");
    EXPECT_EQ(pick({"", 0, false}), "{\"pick\":\"\",\"index\":0,\"tap\":false}\n");
}

TEST_F(PickFeedbackTest, NamesThePickInTheTitleForTwoSeconds) {
    pick({"door", 3, true});
    EXPECT_EQ(title(), "door – zanto-player");
    advanceTo(1990ms);
    EXPECT_EQ(title(), "door – zanto-player");
    advanceTo(2s);
    EXPECT_EQ(title(), "mine");
    pick({"", 3, true});
    EXPECT_EQ(title(), "hot spot 3 – zanto-player");
}

TEST_F(PickFeedbackTest, GivesTheTitleToALaterPickForItsOwnTwoSeconds) {
    pick({"door", 3, true});
    advanceTo(1500ms);
    pick({"window", 4, true});
    advanceTo(2500ms);
    EXPECT_EQ(title(), "window – zanto-player");
    advanceTo(3500ms);
    EXPECT_EQ(title(), "mine");
}

TEST_F(PickFeedbackTest, MarksWhereATapWasFor700Milliseconds) {
    ASSERT_EQ(colour(40, 30), kGrey);
    lift({40, 30});
    pick({"door", 3, true});
    for (const auto& [x, y] : {std::pair(28, 18), {51, 18}, {28, 41}, {51, 41}})
        EXPECT_EQ(colour(x, y), kMark) << x << ' ' << y;
    for (const auto& [x, y] : {std::pair(27, 30), {52, 30}, {40, 17}, {40, 42}})
        EXPECT_EQ(colour(x, y), kGrey) << x << ' ' << y;
    advanceTo(690ms);
    EXPECT_EQ(colour(40, 30), kMark);
    advanceTo(700ms);
    EXPECT_EQ(colour(40, 30), kGrey);
    EXPECT_EQ(viewsInFront(), 0U);
}

TEST_F(PickFeedbackTest, MarksOnePickAtATime) {
    lift({40, 30});
    pick({"door", 3, true});
    advanceTo(500ms);
    lift({100, 60});
    pick({"door", 3, true});
    EXPECT_EQ(colour(40, 30), kGrey);
    advanceTo(1100ms);
    EXPECT_EQ(colour(100, 60), kMark);
    advanceTo(1200ms);
    EXPECT_EQ(colour(100, 60), kGrey);
}

TEST_F(PickFeedbackTest, MarksWhereAGazeLooks) {
    lookAt(0.25, 0.5);
    pick({"door", 3, false});
    EXPECT_EQ(colour(40, 45), kMark);
    scene_.controller().setDisplayMode(DisplayMode::SideBySide);
    feedback_->update();
    pick({"door", 3, false});
    EXPECT_EQ(colour(20, 45), kMark);
    EXPECT_EQ(colour(81 + 20, 45), kMark);
}

TEST_F(PickFeedbackTest, ShowsACrossWhileAutomaticPickingIsOn) {
    EXPECT_EQ(viewsInFront(), 0U);
    lookAt(0.5, 0.5);
    EXPECT_EQ(colour(80, 45), kCross);
    EXPECT_EQ(colour(73, 45), kCross);
    EXPECT_EQ(colour(80, 52), kCross);
    EXPECT_EQ(colour(71, 45), kGrey);
    EXPECT_EQ(colour(77, 42), kGrey);
    scene_.controller().setEnableHotSpotAutoPicking(false);
    feedback_->update();
    EXPECT_EQ(colour(80, 45), kGrey);
    scene_.controller().setEnableHotSpotAutoPicking(true);
    scene_.controller().addHotSpots({}, scene_.controller().hotSpotPickingPoint());
    feedback_->update();
    EXPECT_EQ(colour(80, 45), kGrey) << "there is nothing to pick";
    EXPECT_EQ(viewsInFront(), 0U);
}

TEST_F(PickFeedbackTest, MovesItsCrossWithTheWindow) {
    lookAt(0.5, 0.25);
    EXPECT_EQ(colour(80, 22), kCross);
    scene_.embedded().resize({100, 160}, 1);
    EXPECT_EQ(colour(50, 40), kCross);
    EXPECT_EQ(colour(80, 22), kGrey);
    EXPECT_EQ(viewsInFront(), 2U);
}

TEST_F(PickFeedbackTest, HasACrossInEachHalfSideBySide) {
    lookAt(0.5, 0.5);
    scene_.controller().setDisplayMode(DisplayMode::SideBySide);
    feedback_->update();
    EXPECT_EQ(colour(40, 45), kCross);
    EXPECT_EQ(colour(81 + 40, 45), kCross);
    EXPECT_EQ(viewsInFront(), 4U);
    scene_.controller().setDisplayMode(DisplayMode::Sphere);
    feedback_->update();
    EXPECT_NE(colour(40, 45), kCross);
    EXPECT_EQ(colour(80, 45), kCross);
}

TEST_F(PickFeedbackTest, TakesNoTouches) {
    const auto root = scene_.controller().view();
    const auto before = root->hitTest({80, 45});
    lookAt(0.5, 0.5);
    pick({"door", 3, false});
    ASSERT_EQ(viewsInFront(), 3U);
    EXPECT_EQ(root->hitTest({80, 45}), before);
}

TEST_F(PickFeedbackTest, LeavesNothingBehind) {
    lookAt(0.5, 0.5);
    pick({"door", 3, false});
    feedback_.reset();
    EXPECT_EQ(viewsInFront(), 0U);
    EXPECT_EQ(title(), "mine");
    advanceTo(5s);
    EXPECT_EQ(title(), "mine");
}
