#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Foundation/Assertion.h"
#include "Platform/Interface/Animation.h"
#include "Platform/Interface/View.h"
#include "Platform/Interface/ViewController.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

constexpr Instant kDuration = 300ms;

/// Notes where it is drawn.
class WatchedView : public View {
public:
    using View::View;
    std::vector<int> lefts;
    std::vector<int> widths;

protected:
    void drawContent(const DrawTarget& target) override {
        lefts.push_back(target.area.x);
        widths.push_back(target.area.width);
        View::drawContent(target);
    }
};

/// A window of 1000 by 10 points, and a view that is about to go from its left end to its right.
struct TravelScene {
    TravelScene() {
        view->setBackgroundColor({1, 1, 1, 1});
        controller->view()->addSubview(view);
        host->embedded().setRootViewController(controller);
        host->embedded().appear();
        host->settle();
        view->lefts.clear();
    }
    void travelTo(double x, Instant duration = kDuration) {
        View::animateWithDuration(duration, [&] { view->setFrame({{x, 0}, {100, 10}}); });
    }
    /// Where the view is in the frame of an instant from the start.
    int leftAt(Instant instant) {
        host->advanceTo(instant);
        return view->lefts.back();
    }
    [[nodiscard]] bool isAtRest() { return !host->embedded().runDueWork().nextDeadline; }

    std::unique_ptr<zanto::HeadlessHost> host = makeHost({1000, 10});
    std::shared_ptr<ViewController> controller = make<ViewController>();
    std::shared_ptr<WatchedView> view = make<WatchedView>(Rect{{}, {100, 10}});
};

} // namespace

TEST(FrameAnimation, IsSlowAtBothEnds) {
    const FrameAnimation animation{{{}, {10, 10}}, 1s, 1s};
    const Rect to{{100, 0}, {10, 10}};
    const auto x = [&](Instant now) { return animation.at(now, to).origin.x; };
    EXPECT_EQ(x(1s), 0);
    EXPECT_NEAR(x(1500ms), 50, 1e-9);
    EXPECT_EQ(x(2s), 100);
    EXPECT_LT(x(1100ms), 5);
    EXPECT_GT(x(1900ms), 95);
    for (Instant now = 1s; now < 2s; now += 10ms) {
        EXPECT_LT(x(now), x(now + 10ms));
        EXPECT_NEAR(x(now) + x(3s - now), 100, 1e-9) << "the same backwards";
    }
}

TEST(FrameAnimation, StaysAtItsEndsOutsideItsTime) {
    const FrameAnimation animation{{{1, 2}, {3, 4}}, 1s, 1s};
    const Rect to{{5, 6}, {7, 8}};
    EXPECT_EQ(animation.at(0s, to), animation.from);
    EXPECT_EQ(animation.at(9s, to), to);
    EXPECT_FALSE(animation.isOver(1999ms));
    EXPECT_TRUE(animation.isOver(2s));
}

TEST(FrameAnimation, ChangesPlaceAndSize) {
    const FrameAnimation animation{{{0, 20}, {100, 50}}, 0s, 2s};
    EXPECT_EQ(animation.at(1s, {{10, 40}, {50, 100}}), (Rect{{5, 30}, {75, 75}}));
}

TEST(AnimatedView, HasItsFinalFrameAtOnce) {
    TravelScene s;
    s.travelTo(600);
    EXPECT_EQ(s.view->frame(), (Rect{{600, 0}, {100, 10}}));
    EXPECT_EQ(s.controller->view()->hitTest({650, 5}), s.view);
    EXPECT_EQ(s.view->convertFromWindow({650, 5}), (Point{50, 5}));
}

TEST(AnimatedView, IsDrawnAtEveryFrameOnItsWay) {
    TravelScene s;
    s.travelTo(600);
    s.host->advanceTo(1s);
    const auto& lefts = s.view->lefts;
    // 0.3 s are 18 frames, and one more at each end.
    EXPECT_GE(lefts.size(), 18U);
    EXPECT_LE(lefts.size(), 20U);
    for (std::size_t i = 1; i < lefts.size(); ++i)
        EXPECT_GE(lefts[i], lefts[i - 1]);
    EXPECT_LT(lefts.front(), 600 / 18);
    EXPECT_EQ(lefts.back(), 600);
}

TEST(AnimatedView, IsSlowAtTheStartAndAtTheEnd) {
    TravelScene s;
    s.travelTo(600);
    const int middle = s.leftAt(150ms);
    EXPECT_NEAR(middle, 300, 1);
    s.host->advanceTo(1s);
    const auto& lefts = s.view->lefts;
    const int first = lefts[2] - lefts[1];
    const int last = lefts[lefts.size() - 1] - lefts[lefts.size() - 2];
    EXPECT_LT(first, 600 / 18);
    EXPECT_LT(last, 600 / 18);
}

TEST(AnimatedView, ArrivesAfterItsDurationAndRests) {
    TravelScene s;
    s.travelTo(600);
    EXPECT_LT(s.leftAt(283ms), 600);
    EXPECT_EQ(s.leftAt(317ms), 600);
    const int frames = s.host->framesPresented();
    EXPECT_TRUE(s.isAtRest());
    s.host->advanceTo(2s);
    EXPECT_EQ(s.host->framesPresented(), frames);
}

TEST(AnimatedView, ChangesItsSizeOnItsWay) {
    TravelScene s;
    View::animateWithDuration(kDuration, [&] { s.view->setFrame({{}, {500, 10}}); });
    s.host->advanceTo(150ms);
    EXPECT_NEAR(s.view->widths.back(), 300, 1);
    s.host->advanceTo(400ms);
    EXPECT_EQ(s.view->widths.back(), 500);
}

TEST(AnimatedView, GoesElsewhereFromWhereItIsSeen) {
    TravelScene s;
    s.travelTo(600);
    const int before = s.leftAt(150ms);
    s.travelTo(0);
    EXPECT_EQ(s.view->frame().origin.x, 0);
    EXPECT_NEAR(s.leftAt(167ms), before, 5) << "no jump";
    EXPECT_NEAR(s.leftAt(300ms), before / 2, 2);
    EXPECT_GT(s.leftAt(433ms), 0) << "it takes the whole time again";
    EXPECT_EQ(s.leftAt(500ms), 0);
    EXPECT_TRUE(s.isAtRest());
}

TEST(AnimatedView, JumpsWhenItsFrameIsSetWithoutAnAnimation) {
    TravelScene s;
    s.travelTo(600);
    s.host->advanceTo(150ms);
    s.view->setFrame({{800, 0}, {100, 10}});
    EXPECT_EQ(s.leftAt(167ms), 800);
    EXPECT_TRUE(s.isAtRest());
}

TEST(AnimatedView, GoesOnWhenTheSameFrameIsSetAgain) {
    TravelScene s;
    s.travelTo(600);
    s.host->advanceTo(150ms);
    s.view->setFrame({{600, 0}, {100, 10}});
    EXPECT_LT(s.leftAt(167ms), 400);
    EXPECT_EQ(s.leftAt(317ms), 600);
}

TEST(AnimatedView, IsShownAtItsEndInASnapshot) {
    TravelScene s;
    s.travelTo(600);
    const auto picture = s.host->embedded().snapshot(1);
    ASSERT_TRUE(picture.ok());
    EXPECT_EQ(colourAt(*picture.value(), 599, 5)[0], 0);
    EXPECT_EQ(colourAt(*picture.value(), 600, 5)[0], 255);
    EXPECT_EQ(colourAt(*picture.value(), 50, 5)[0], 0);
    s.view->lefts.clear();
    EXPECT_LT(s.leftAt(50ms), 300) << "and the window goes on with its animation";
    EXPECT_EQ(s.leftAt(400ms), 600);
}

TEST(AnimatedView, MovesOnlyWhereTheBlockChangesAFrame) {
    TravelScene s;
    const int frames = s.host->framesPresented();
    View::animateWithDuration(kDuration, [&] { s.view->setFrame(s.view->frame()); });
    s.host->advanceTo(1s);
    EXPECT_EQ(s.host->framesPresented(), frames);
}

TEST(AnimatedView, TakesNoTimeWithoutADuration) {
    TravelScene s;
    s.travelTo(600, 0s);
    EXPECT_EQ(s.leftAt(17ms), 600);
    EXPECT_TRUE(s.isAtRest());
}

TEST(AnimatedView, DoesNotTravelWhileItIsHidden) {
    TravelScene s;
    s.view->setHidden(true);
    s.travelTo(600);
    s.view->setHidden(false);
    EXPECT_EQ(s.leftAt(17ms), 600);
    EXPECT_TRUE(s.isAtRest());
}

TEST(AnimatedView, DoesNotTravelInAWindowThatIsNotVisible) {
    TravelScene s;
    s.host->embedded().disappear();
    s.travelTo(600);
    s.host->embedded().appear();
    EXPECT_EQ(s.leftAt(17ms), 600);
    EXPECT_TRUE(s.isAtRest());
}

TEST(AnimatedView, AsksForNothingWhenItIsHiddenOnItsWay) {
    TravelScene s;
    s.travelTo(600);
    s.host->advanceTo(100ms);
    s.view->setHidden(true);
    s.host->advanceTo(120ms);
    EXPECT_TRUE(s.isAtRest());
    s.host->advanceTo(1s);
    s.view->setHidden(false);
    EXPECT_EQ(s.leftAt(1100ms), 600);
    EXPECT_TRUE(s.isAtRest());
}

TEST(AnimatedView, HasWhatIsBehindItDrawnUntilItCoversThat) {
    TravelScene s;
    const auto behind = make<WatchedView>(Rect{{}, {1000, 10}});
    s.controller->view()->addSubview(behind);
    behind->addSubview(s.view);
    View::animateWithDuration(kDuration, [&] { s.view->setFrame({{}, {1000, 10}}); });
    s.host->advanceTo(400ms);
    // It was covered by its subview's frame all the time, and in the last pass by what it shows.
    EXPECT_GE(behind->lefts.size(), 18U);
    const auto drawings = behind->lefts.size();
    s.view->setNeedsDisplay();
    s.host->advanceTo(500ms);
    EXPECT_EQ(s.view->widths.back(), 1000);
    EXPECT_EQ(behind->lefts.size(), drawings);
}

TEST(Animations, MayBeNested) {
    TravelScene s;
    const auto other = make<WatchedView>(Rect{{}, {100, 10}});
    s.controller->view()->addSubview(other);
    View::animateWithDuration(kDuration, [&] {
        View::animateWithDuration(1s, [&] { s.view->setFrame({{600, 0}, {100, 10}}); });
        other->setFrame({{600, 0}, {100, 10}});
    });
    EXPECT_NEAR(s.leftAt(500ms), 300, 1);
    EXPECT_EQ(other->lefts.back(), 600);
}

TEST(Animations, EndWithABlockThatFails) {
    TravelScene s;
    EXPECT_THROW(
        View::animateWithDuration(kDuration, [] { throw AssertionFailure("File", 1, "broken"); }),
        AssertionFailure);
    s.view->setFrame({{600, 0}, {100, 10}});
    EXPECT_EQ(s.leftAt(17ms), 600);
}
