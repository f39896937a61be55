#include "Platform/Foundation/MainQueue.h"
#include "Platform/Interface/View.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace platform;

namespace {

std::shared_ptr<View> makeView(Rect frame = {{}, {10, 10}}) {
    return make<View>(frame);
}

/// A view with three subviews, a, b and c.
struct Family {
    Family() {
        for (const auto& child : {a, b, c})
            parent->addSubview(child);
    }
    /// The subviews of a view in their order; a stranger is "?".
    [[nodiscard]] std::string in(const std::shared_ptr<View>& view) const {
        std::string names;
        for (const auto& child : view->subviews())
            names += child == a ? "a" : child == b ? "b" : child == c ? "c" : "?";
        return names;
    }

    std::shared_ptr<View> parent = makeView();
    std::shared_ptr<View> a = makeView();
    std::shared_ptr<View> b = makeView();
    std::shared_ptr<View> c = makeView();
};

/// Notes its moves.
class MovingView : public View {
public:
    using View::View;
    void willMoveToSuperview(View* newSuperview) override {
        View::willMoveToSuperview(newSuperview);
        moves.push_back(newSuperview);
        superviewsThen.push_back(superview().get());
    }

    std::vector<View*> moves;
    std::vector<View*> superviewsThen;
};

/// Puts the host's wake-up back to nothing.
struct WakeUpCounter {
    WakeUpCounter() {
        MainQueue::main().setWakeUp([this] { ++count; });
    }
    ~WakeUpCounter() { MainQueue::main().setWakeUp(nullptr); }
    WakeUpCounter(const WakeUpCounter&) = delete;
    WakeUpCounter& operator=(const WakeUpCounter&) = delete;
    int count = 0;
};

} // namespace

TEST(View, BeginsAsItsFrameSaysAndOtherwisePlain) {
    const auto view = makeView({{1, 2}, {3, 4}});
    EXPECT_EQ(view->frame(), (Rect{{1, 2}, {3, 4}}));
    EXPECT_EQ(view->bounds(), (Rect{{0, 0}, {3, 4}}));
    EXPECT_FALSE(view->isHidden());
    EXPECT_TRUE(view->isOpaque());
    EXPECT_TRUE(view->translatesAutoresizingMaskIntoConstraints());
    EXPECT_EQ(view->backgroundColor(), kClearColor);
    EXPECT_TRUE(view->subviews().empty());
    EXPECT_EQ(view->superview(), nullptr);
    EXPECT_EQ(view->window(), nullptr);
}

TEST(View, KeepsWhatItIsGiven) {
    const auto view = makeView();
    view->setFrame({{5, 6}, {7, 8}});
    view->setHidden(true);
    view->setOpaque(false);
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    view->setBackgroundColor({0.1F, 0.2F, 0.3F, 0.4F});
    EXPECT_EQ(view->frame(), (Rect{{5, 6}, {7, 8}}));
    EXPECT_TRUE(view->isHidden());
    EXPECT_FALSE(view->isOpaque());
    EXPECT_FALSE(view->translatesAutoresizingMaskIntoConstraints());
    EXPECT_EQ(view->backgroundColor(), (Color{0.1F, 0.2F, 0.3F, 0.4F}));
}

TEST(Subviews, StandInTheOrderOfAdding) {
    const Family family;
    EXPECT_EQ(family.in(family.parent), "abc");
    EXPECT_EQ(family.b->superview(), family.parent);
}

TEST(Subviews, AreInsertedAtTheirIndex) {
    const Family family;
    family.parent->insertSubview(makeView(), 0);
    EXPECT_EQ(family.in(family.parent), "?abc");
    family.parent->insertSubview(makeView(), 2);
    EXPECT_EQ(family.in(family.parent), "?a?bc");
    family.parent->insertSubview(makeView(), 99);
    EXPECT_EQ(family.in(family.parent), "?a?bc?");
}

TEST(Subviews, MoveFromOneSuperviewToAnother) {
    const Family family;
    const auto other = makeView();
    other->addSubview(family.a);
    EXPECT_EQ(family.in(family.parent), "bc");
    EXPECT_EQ(family.in(other), "a");
    EXPECT_EQ(family.a->superview(), other);
}

TEST(Subviews, MoveWithinTheirSuperview) {
    const Family family;
    family.parent->addSubview(family.a);
    EXPECT_EQ(family.in(family.parent), "bca");
    family.parent->insertSubview(family.c, 0);
    EXPECT_EQ(family.in(family.parent), "cba");
}

TEST(Subviews, MayBeMovedByTheSuperviewsOwnList) {
    const Family family;
    family.parent->addSubview(family.parent->subviews().front());
    EXPECT_EQ(family.in(family.parent), "bca");
    family.parent->insertSubview(family.parent->subviews().back(), 0);
    EXPECT_EQ(family.in(family.parent), "abc");
}

TEST(Subviews, MayBeMovedByAnotherViewsList) {
    const Family family;
    const auto other = makeView();
    while (!family.parent->subviews().empty())
        other->addSubview(family.parent->subviews().back());
    EXPECT_EQ(family.in(other), "cba");
}

TEST(Subviews, LeaveTheirSuperview) {
    const Family family;
    family.b->removeFromSuperview();
    family.b->removeFromSuperview();
    EXPECT_EQ(family.in(family.parent), "ac");
    EXPECT_EQ(family.b->superview(), nullptr);
}

TEST(Subviews, AreHeldByTheirSuperviewOnly) {
    Family family;
    const std::weak_ptr<View> child = family.a;
    family.a.reset();
    EXPECT_FALSE(child.expired());
    family.parent.reset();
    EXPECT_TRUE(child.expired());
    EXPECT_EQ(family.b->superview(), nullptr);
}

TEST(Subviews, MayLeaveWhenTheirSuperviewHoldsTheLastReference) {
    Family family;
    View* const child = family.a.get();
    family.a.reset();
    child->removeFromSuperview();
    EXPECT_EQ(family.in(family.parent), "bc");
}

TEST(View, IsToldBeforeItMoves) {
    const auto parent = makeView();
    const auto other = makeView();
    const auto view = make<MovingView>(Rect{});
    parent->addSubview(view);
    other->addSubview(view);
    view->removeFromSuperview();
    EXPECT_EQ(view->moves, (std::vector<View*>{parent.get(), nullptr, other.get(), nullptr}));
    EXPECT_EQ(view->superviewsThen,
              (std::vector<View*>{nullptr, parent.get(), nullptr, other.get()}));
}

TEST(View, AsksToBeDrawnAtFirst) {
    EXPECT_TRUE(makeView()->needsDisplay());
}

TEST(View, WakesTheHostWhenItAsksToBeDrawn) {
    const auto view = makeView();
    const WakeUpCounter wakeUps;
    view->setNeedsDisplay();
    EXPECT_EQ(wakeUps.count, 1);
}

TEST(View, AsksForItsSubviewsToo) {
    const Family family;
    family.parent->setHidden(true);
    EXPECT_FALSE(family.parent->needsDisplay());
    EXPECT_TRUE(family.a->needsDisplay());
}

TEST(View, AsksForNothingByAChangeThatIsNone) {
    const auto view = makeView({{1, 2}, {3, 4}});
    const WakeUpCounter wakeUps;
    view->setFrame({{1, 2}, {3, 4}});
    view->setHidden(false);
    view->setBackgroundColor(kClearColor);
    EXPECT_EQ(wakeUps.count, 0);
    view->setFrame({{1, 2}, {3, 5}});
    EXPECT_EQ(wakeUps.count, 1);
    view->setBackgroundColor(kBlackColor);
    EXPECT_EQ(wakeUps.count, 2);
}

TEST(TargetOfSubview, IsItsPartCountedFromTheBottom) {
    const DrawTarget target{7, {100, 200, 64, 48}, 2};
    const auto view = makeView({{3, 4}, {5, 6}});
    const DrawTarget part = View::targetOfSubview(*view, target);
    EXPECT_EQ(part.framebuffer, 7U);
    EXPECT_EQ(part.area, (RectPx{106, 200 + 48 - 20, 10, 12}));
    EXPECT_EQ(part.scale, 2.0);
}

TEST(TargetOfSubview, LetsNeighboursMeetWithoutAGap) {
    const DrawTarget target{0, {0, 0, 101, 33}, 1};
    const double width = 101 / 7.0;
    int right = 0;
    for (int i = 0; i < 7; ++i) {
        const auto view = makeView({{i * width, 0}, {width, 33}});
        const RectPx area = View::targetOfSubview(*view, target).area;
        EXPECT_EQ(area.x, right);
        EXPECT_EQ(area.height, 33);
        right = area.x + area.width;
    }
    EXPECT_EQ(right, 101);
}
