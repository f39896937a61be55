#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/View.h"
#include "Platform/Interface/ViewController.h"
#include "Tests/Support/RecordingController.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace platform;

namespace {

class OwnViewController : public ViewController {
protected:
    std::shared_ptr<View> loadView() override { return make<View>(Rect{{}, {1, 2}}); }
};

} // namespace

TEST(ViewController, LoadsItsViewAtTheFirstCall) {
    const auto controller = make<RecordingController>();
    EXPECT_FALSE(controller->isViewLoaded());
    const auto view = controller->view();
    EXPECT_TRUE(controller->isViewLoaded());
    EXPECT_EQ(controller->view(), view);
    EXPECT_EQ(controller->events, std::vector<std::string>{"did load"});
}

TEST(ViewController, HasItsViewWhenItIsToldOfIt) {
    const auto controller = make<RecordingController>();
    std::shared_ptr<View> seen;
    controller->onEvent = [&](const std::string&) { seen = controller->view(); };
    EXPECT_EQ(controller->view(), seen);
}

TEST(ViewController, MakesABlackViewOfTheScreensSize) {
    Screen::mainScreen().setSize({30, 20}, 1);
    const auto view = make<ViewController>()->view();
    EXPECT_EQ(view->frame(), (Rect{{}, {30, 20}}));
    EXPECT_EQ(view->backgroundColor(), kBlackColor);
}

TEST(ViewController, MakesTheViewOfASubclass) {
    EXPECT_EQ(make<OwnViewController>()->view()->frame(), (Rect{{}, {1, 2}}));
}

TEST(ViewController, IsTheSameFromAnArchiveOrANib) {
    EXPECT_EQ(make<ViewController>(Coder{})->view()->backgroundColor(), kBlackColor);
    EXPECT_EQ(make<ViewController>("Name", nullptr)->view()->backgroundColor(), kBlackColor);
}
