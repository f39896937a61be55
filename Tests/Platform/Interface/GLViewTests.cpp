#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Platform/Interface/GLView.h"
#include "Platform/Interface/ViewController.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PaintedView.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

using namespace platform;

namespace {

using Pixel = std::array<int, 4>;
constexpr Pixel kRed{255, 0, 0, 255};
constexpr Pixel kGreen{0, 255, 0, 255};
constexpr Pixel kBlack{0, 0, 0, 255};

/// Draws nothing at all, which leaves to be seen what was drawn before it.
class IdleDelegate : public GLViewDelegate {
public:
    void drawInRect(GLView& /*view*/, const Rect& /*rect*/) override {}
};

/// A painted view of 4 by 6 points at (2, 3) of a black window of 16 by 12, at 2 pixels a point.
struct Scene {
    Scene() {
        controller->view()->addSubview(painted.view);
        host->embedded().setRootViewController(controller);
        host->embedded().appear();
        host->settle();
    }
    [[nodiscard]] ImagePtr picture() {
        auto result = host->embedded().snapshot(2);
        return std::move(result).value();
    }

    std::unique_ptr<zanto::HeadlessHost> host = makeHost({16, 12}, 2);
    std::shared_ptr<ViewController> controller = make<ViewController>();
    PaintedView painted{{{2, 3}, {4, 6}}, kRedColor};
};

std::array<GLint, 4> boxOf(GLenum name) {
    std::array<GLint, 4> box{};
    glGetIntegerv(name, box.data());
    return box;
}

} // namespace

TEST(GLView, LetsItsDelegateDrawInItsBounds) {
    const Scene scene;
    EXPECT_EQ(scene.painted.painter->drawings, 1);
    EXPECT_EQ(scene.painted.painter->lastRect, (Rect{{0, 0}, {4, 6}}));
}

TEST(GLView, LimitsItsDelegateToItsPartOfTheFramebuffer) {
    Scene scene;
    const auto picture = scene.picture();
    for (int y = 0; y < 24; ++y) {
        for (int x = 0; x < 32; ++x) {
            const bool inside = x >= 4 && x < 12 && y >= 6 && y < 18;
            ASSERT_EQ(colourAt(*picture, x, y), inside ? kRed : kBlack) << x << ", " << y;
        }
    }
}

TEST(GLView, SetsFramebufferViewportAndScissorForItsDelegate) {
    Scene scene;
    auto created = OffscreenTarget::create({64, 64});
    ASSERT_TRUE(created.ok());
    const auto target = std::move(created).value();
    int checks = 0;
    scene.painted.painter->during = [&](GLView&) {
        const std::array<GLint, 4> expected{10 + 4, 20 + 6, 8, 12};
        EXPECT_EQ(boxOf(GL_VIEWPORT), expected);
        EXPECT_EQ(boxOf(GL_SCISSOR_BOX), expected);
        EXPECT_EQ(glIsEnabled(GL_SCISSOR_TEST), GL_TRUE);
        EXPECT_EQ(boxOf(GL_FRAMEBUFFER_BINDING)[0], static_cast<GLint>(target->framebuffer()));
        ++checks;
    };
    scene.host->embedded().draw(target->framebuffer(), {10, 20, 32, 24});
    EXPECT_EQ(checks, 1);
}

TEST(GLView, TakesTheApplicationsTestsOutOfItsDelegatesWay) {
    Scene scene;
    const std::array<GLenum, 4> tests{GL_BLEND, GL_CULL_FACE, GL_DEPTH_TEST, GL_STENCIL_TEST};
    for (const GLenum test : tests)
        glEnable(test);
    scene.painted.painter->during = [&](GLView&) {
        for (const GLenum test : tests)
            EXPECT_EQ(glIsEnabled(test), GL_FALSE) << test;
    };
    (void)scene.picture();
    EXPECT_EQ(scene.painted.painter->drawings, 2);
}

TEST(GLView, ShowsNothingWithoutADelegate) {
    Scene scene;
    scene.painted.painter.reset();
    EXPECT_EQ(colourAt(*scene.picture(), 4, 6), kBlack);
}

TEST(GLView, ShowsNothingWithoutAContext) {
    Scene scene;
    scene.painted.view->setContext(nullptr);
    EXPECT_EQ(colourAt(*scene.picture(), 4, 6), kBlack);
    EXPECT_EQ(scene.painted.painter->drawings, 1);
}

TEST(GLView, HoldsItsDelegateWeakly) {
    const Scene scene;
    EXPECT_EQ(scene.painted.painter.use_count(), 1);
}

TEST(GLView, KeepsItsContext) {
    const Scene scene;
    ASSERT_NE(scene.painted.view->context(), nullptr);
    scene.painted.view->setContext(nullptr);
    EXPECT_EQ(scene.painted.view->context(), nullptr);
}

TEST(GLView, SparesTheFillingOfWhatItCovers) {
    Scene scene;
    const auto idle = std::make_shared<IdleDelegate>();
    scene.controller->view()->setBackgroundColor(kGreenColor);
    scene.painted.view->setDelegate(idle);
    EXPECT_EQ(colourAt(*scene.picture(), 0, 0), kGreen);
    scene.painted.view->setFrame(scene.controller->view()->bounds());
    EXPECT_EQ(colourAt(*scene.picture(), 0, 0), kBlack);
}

TEST(GLView, LeavesTheFillingToItsSuperviewOnceItsContextIsLost) {
    Scene scene;
    scene.controller->view()->setBackgroundColor(kGreenColor);
    scene.painted.view->setFrame(scene.controller->view()->bounds());
    EXPECT_EQ(colourAt(*scene.picture(), 0, 0), kRed);
    ASSERT_TRUE(scene.host->replaceContext());
    EXPECT_EQ(colourAt(*scene.picture(), 0, 0), kGreen);
}

TEST(GLViewDisplay, AsksOnlyForADrawingWhileInNoWindow) {
    const auto host = makeHost({4, 4});
    const PaintedView painted({{}, {4, 4}}, kRedColor);
    painted.view->display();
    EXPECT_TRUE(painted.view->needsDisplay());
    EXPECT_EQ(painted.painter->drawings, 0);
}

TEST(GLViewSnapshot, DrawsTheViewAloneAtTheScreensScale) {
    const Scene scene;
    const ImagePtr picture = scene.painted.view->snapshot();
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->widthPx(), 8);
    EXPECT_EQ(picture->heightPx(), 12);
    EXPECT_EQ(picture->scale(), 2.0);
    EXPECT_EQ(picture->size(), (Size{4, 6}));
    EXPECT_EQ(colourAt(*picture, 0, 0), kRed);
    EXPECT_EQ(colourAt(*picture, 7, 11), kRed);
}

TEST(GLViewSnapshot, LeavesTheWindowAlone) {
    const Scene scene;
    const int presented = scene.host->framesPresented();
    const auto binding = boxOf(GL_FRAMEBUFFER_BINDING);
    ASSERT_NE(scene.painted.view->snapshot(), nullptr);
    EXPECT_EQ(boxOf(GL_FRAMEBUFFER_BINDING), binding);
    EXPECT_FALSE(scene.painted.view->needsDisplay());
    scene.painted.view->setNeedsDisplay();
    ASSERT_NE(scene.painted.view->snapshot(), nullptr);
    EXPECT_TRUE(scene.painted.view->needsDisplay());
    EXPECT_EQ(scene.host->framesPresented(), presented);
}

TEST(GLViewSnapshot, NeedsNoWindow) {
    const auto host = makeHost({4, 4});
    const PaintedView painted({{}, {3, 2}}, kRedColor);
    const ImagePtr picture = painted.view->snapshot();
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->widthPx(), 3);
    EXPECT_EQ(colourAt(*picture, 2, 1), kRed);
}

TEST(GLViewSnapshot, IsNullWithALogLineWithoutAContext) {
    const Scene scene;
    scene.painted.view->setContext(nullptr);
    const LogRecorder log;
    EXPECT_EQ(scene.painted.view->snapshot(), nullptr);
    EXPECT_EQ(log.count("snapshot: the view has no GL context"), 1);
}

TEST(GLViewSnapshot, IsNullWithALogLineBeyondWhatAFramebufferHolds) {
    const Scene scene;
    for (const Size size : {Size{0, 4}, Size{1e5, 4}}) {
        scene.painted.view->setFrame({{}, size});
        const LogRecorder log;
        EXPECT_EQ(scene.painted.view->snapshot(), nullptr);
        EXPECT_EQ(log.lines().size(), 1U);
        EXPECT_EQ(log.count("snapshot: "), 1);
    }
}
