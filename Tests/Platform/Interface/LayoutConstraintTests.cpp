#include "Platform/Foundation/Assertion.h"
#include "Platform/Interface/LayoutConstraint.h"
#include "Platform/Interface/View.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace platform;

namespace {

/// A view of 101 by 40 points that holds views `a`, `b` and `c`.
struct Scene {
    Scene() {
        for (const auto& [name, view] : views)
            parent->addSubview(view);
    }
    std::vector<std::shared_ptr<LayoutConstraint>> activate(const std::string& format) {
        auto constraints = LayoutConstraint::constraintsWithVisualFormat(format, 0, views);
        LayoutConstraint::activateConstraints(constraints);
        return constraints;
    }
    [[nodiscard]] Rect frame(const std::string& name) const { return views.at(name)->frame(); }

    std::shared_ptr<View> parent = make<View>(Rect{{3, 4}, {101, 40}});
    std::map<std::string, std::shared_ptr<View>> views{{"a", make<View>(Rect{{1, 2}, {3, 4}})},
                                                       {"b", make<View>(Rect{{1, 2}, {3, 4}})},
                                                       {"c", make<View>(Rect{{1, 2}, {3, 4}})}};
};

void expectRefused(const std::string& format) {
    const LogRecorder log;
    const Scene scene;
    EXPECT_THROW((void)LayoutConstraint::constraintsWithVisualFormat(format, 0, scene.views),
                 AssertionFailure)
        << format;
    EXPECT_EQ(log.count(format), 1) << format;
}

} // namespace

TEST(LayoutConstraint, StretchesAViewFromEdgeToEdge) {
    Scene scene;
    scene.activate("|[a]|");
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a"), (Rect{{0, 2}, {101, 4}}));
    EXPECT_EQ(scene.frame("b"), (Rect{{1, 2}, {3, 4}}));
}

TEST(LayoutConstraint, TakesHForTheUsualAxis) {
    Scene scene;
    scene.activate("H:|[a]|");
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a"), (Rect{{0, 2}, {101, 4}}));
}

TEST(LayoutConstraint, StretchesAViewFromTopToBottom) {
    Scene scene;
    scene.activate("V:|[a]|");
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a"), (Rect{{1, 0}, {3, 40}}));
}

TEST(LayoutConstraint, SharesTheLengthEquallyWithAGapBetween) {
    Scene scene;
    scene.activate("|[a(==b)]-2-[b]|");
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a"), (Rect{{0, 2}, {49.5, 4}}));
    EXPECT_EQ(scene.frame("b"), (Rect{{51.5, 2}, {49.5, 4}}));
}

TEST(LayoutConstraint, SharesTheLengthAmongThree) {
    Scene scene;
    scene.activate("V:|[a]-5-[b]-5-[c]|");
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a"), (Rect{{1, 0}, {3, 10}}));
    EXPECT_EQ(scene.frame("b"), (Rect{{1, 15}, {3, 10}}));
    EXPECT_EQ(scene.frame("c"), (Rect{{1, 30}, {3, 10}}));
}

TEST(LayoutConstraint, LeavesNoNegativeLength) {
    Scene scene;
    scene.parent->setFrame({{}, {1, 1}});
    scene.activate("|[a(==b)]-2-[b]|");
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a").size.width, 0);
    EXPECT_EQ(scene.frame("b").size.width, 0);
}

TEST(LayoutConstraint, FollowsTheSuperviewsSize) {
    Scene scene;
    scene.activate("|[a]|");
    scene.parent->layoutIfNeeded();
    scene.parent->setFrame({{}, {10, 10}});
    EXPECT_EQ(scene.frame("a").size.width, 101);
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a").size.width, 10);
}

TEST(LayoutConstraint, TakesEffectAtTheNextLayoutOnly) {
    Scene scene;
    scene.activate("|[a]|");
    EXPECT_EQ(scene.frame("a"), (Rect{{1, 2}, {3, 4}}));
}

TEST(LayoutConstraint, HasNoEffectBeforeItIsActive) {
    Scene scene;
    const auto constraints = LayoutConstraint::constraintsWithVisualFormat("|[a]|", 0, scene.views);
    ASSERT_EQ(constraints.size(), 1U);
    EXPECT_FALSE(constraints.front()->isActive());
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a"), (Rect{{1, 2}, {3, 4}}));
}

TEST(LayoutConstraint, HasNoEffectOnceDeactivated) {
    Scene scene;
    const auto constraints = scene.activate("|[a]|");
    EXPECT_TRUE(constraints.front()->isActive());
    LayoutConstraint::deactivateConstraints(constraints);
    EXPECT_FALSE(constraints.front()->isActive());
    LayoutConstraint::deactivateConstraints(constraints);
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a"), (Rect{{1, 2}, {3, 4}}));
}

TEST(LayoutConstraint, IsActiveOnceHoweverOftenActivated) {
    Scene scene;
    const auto constraints = scene.activate("|[a]|");
    LayoutConstraint::activateConstraints(constraints);
    LayoutConstraint::deactivateConstraints(constraints);
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a"), (Rect{{1, 2}, {3, 4}}));
}

TEST(LayoutConstraint, IsHeldByTheSuperviewWhileActive) {
    Scene scene;
    scene.activate("|[a]|").clear();
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a").size.width, 101);
}

TEST(LayoutConstraint, HoldsItsViewsWeakly) {
    Scene scene;
    const auto constraints = scene.activate("|[a]-2-[b]|");
    scene.views.at("b")->removeFromSuperview();
    const std::weak_ptr<View> gone = scene.views.at("b");
    scene.views.erase("b");
    EXPECT_TRUE(gone.expired());
    scene.parent->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a").size.width, 49.5);
}

TEST(LayoutConstraint, IsLaidOutAllTheWayDown) {
    Scene scene;
    const auto outer = make<View>(Rect{{}, {200, 100}});
    outer->addSubview(scene.parent);
    const auto constraints =
        LayoutConstraint::constraintsWithVisualFormat("|[parent]|", 0, {{"parent", scene.parent}});
    LayoutConstraint::activateConstraints(constraints);
    scene.activate("|[a]|");
    outer->layoutIfNeeded();
    EXPECT_EQ(scene.frame("a").size.width, 200);
}

TEST(VisualFormat, IsRefusedWhenItIsNoneOfTheKnownOnes) {
    for (const char* format : {"", "a", "[a]", "|a|", "|[a]", "[a]|", "|[]|", "X:|[a]|", "|[a][b]|",
                               "|[a]--[b]|", "|[a]-x-[b]|", "|[a]-2x-[b]|", "|[a]--2-[b]|",
                               "|[a]-2-|", "|-2-[a]|", "|[a(>=b)]|", "|[a]| ", "HV:|[a]|"})
        expectRefused(format);
}

TEST(VisualFormat, IsRefusedWhenItNamesAnUnknownView) {
    for (const char* format : {"|[x]|", "|[a]-2-[x]|", "|[a(==x)]-2-[b]|"})
        expectRefused(format);
}

TEST(VisualFormat, IsRefusedWhenItsGapsDifferOrAreNoNumberOfPoints) {
    expectRefused("|[a]-2-[b]-3-[c]|");
    expectRefused("|[a]-" + std::string(400, '9') + "-[b]|");
}

TEST(VisualFormat, IsRefusedWhenAViewIsNull) {
    const LogRecorder log;
    EXPECT_THROW((void)LayoutConstraint::constraintsWithVisualFormat("|[a]|", 0, {{"a", nullptr}}),
                 AssertionFailure);
}
