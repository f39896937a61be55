#include "Tests/Platform/Interface/TouchScene.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

/// A view at 20, 10 that is 60 by 40 points large, with another of 30 by 20 at 10, 5 in it.
struct NestedScene : TouchScene {
    NestedScene() { outer->addSubview(inner); }
    std::shared_ptr<View> outer = add({{20, 10}, {60, 40}});
    std::shared_ptr<View> inner = make<View>(Rect{{10, 5}, {30, 20}});
};

} // namespace

TEST(HitTest, FindsTheInnermostView) {
    NestedScene s;
    EXPECT_EQ(s.root()->hitTest({35, 20}), s.inner);
    EXPECT_EQ(s.root()->hitTest({25, 12}), s.outer);
    EXPECT_EQ(s.root()->hitTest({5, 5}), s.root());
}

TEST(HitTest, TakesPointsOfTheViewsOwnCoordinates) {
    NestedScene s;
    EXPECT_EQ(s.outer->hitTest({10, 5}), s.inner);
    EXPECT_EQ(s.outer->hitTest({9, 5}), s.outer);
    EXPECT_EQ(s.inner->hitTest({0, 0}), s.inner);
}

TEST(HitTest, CountsTheTopLeftEdgesInAndTheOthersOut) {
    NestedScene s;
    EXPECT_EQ(s.root()->hitTest({30, 15}), s.inner);
    EXPECT_EQ(s.root()->hitTest({59.9, 34.9}), s.inner);
    EXPECT_EQ(s.root()->hitTest({60, 34}), s.outer);
    EXPECT_EQ(s.root()->hitTest({59, 35}), s.outer);
    EXPECT_EQ(s.root()->hitTest({29.9, 15}), s.outer);
}

TEST(HitTest, FindsNothingOutside) {
    NestedScene s;
    EXPECT_EQ(s.root()->hitTest({-0.1, 5}), nullptr);
    EXPECT_EQ(s.root()->hitTest({200, 5}), nullptr);
    EXPECT_EQ(s.outer->hitTest({5, 40}), nullptr);
}

TEST(HitTest, FindsNoPartThatSticksOutOfItsSuperview) {
    NestedScene s;
    s.inner->setFrame({{50, 30}, {30, 20}});
    EXPECT_EQ(s.root()->hitTest({75, 45}), s.inner);
    EXPECT_EQ(s.root()->hitTest({85, 45}), s.root());
}

TEST(HitTest, FindsTheLastOfOverlappingSubviews) {
    NestedScene s;
    const auto later = s.add({{0, 0}, {40, 100}});
    EXPECT_EQ(s.root()->hitTest({35, 20}), later);
    EXPECT_EQ(s.root()->hitTest({45, 20}), s.inner);
}

TEST(HitTest, FindsNothingHidden) {
    NestedScene s;
    s.inner->setHidden(true);
    EXPECT_EQ(s.root()->hitTest({35, 20}), s.outer);
    s.outer->setHidden(true);
    EXPECT_EQ(s.root()->hitTest({35, 20}), s.root());
    s.root()->setHidden(true);
    EXPECT_EQ(s.root()->hitTest({35, 20}), nullptr);
}

TEST(HitTest, PassesOverViewsThatTakeNoTouchesAndWhatIsInThem) {
    NestedScene s;
    EXPECT_TRUE(s.inner->isUserInteractionEnabled());
    s.inner->setUserInteractionEnabled(false);
    EXPECT_EQ(s.root()->hitTest({35, 20}), s.outer);
    s.inner->setUserInteractionEnabled(true);
    s.outer->setUserInteractionEnabled(false);
    EXPECT_EQ(s.root()->hitTest({35, 20}), s.root());
    const auto earlier = s.add({{0, 0}, {40, 100}});
    const auto inFront = s.add({{0, 0}, {40, 100}});
    inFront->setUserInteractionEnabled(false);
    EXPECT_EQ(s.root()->hitTest({35, 20}), earlier);
    s.root()->setUserInteractionEnabled(false);
    EXPECT_EQ(s.root()->hitTest({35, 20}), nullptr);
}

TEST(ConvertFromWindow, CountsFromTheViewsOwnCorner) {
    NestedScene s;
    EXPECT_EQ(s.root()->convertFromWindow({35, 20}), (Point{35, 20}));
    EXPECT_EQ(s.outer->convertFromWindow({35, 20}), (Point{15, 10}));
    EXPECT_EQ(s.inner->convertFromWindow({35, 20}), (Point{5, 5}));
    EXPECT_EQ(s.inner->convertFromWindow({0, 0}), (Point{-30, -15}));
}

TEST(IsShown, NeedsAVisibleWindowAndNothingHiddenAround) {
    NestedScene s;
    EXPECT_TRUE(s.inner->isShown());
    s.outer->setHidden(true);
    EXPECT_FALSE(s.inner->isShown());
    s.outer->setHidden(false);
    s.window().resignVisible();
    EXPECT_FALSE(s.inner->isShown());
    s.window().makeKeyAndVisible();
    s.inner->removeFromSuperview();
    EXPECT_FALSE(s.inner->isShown());
}
