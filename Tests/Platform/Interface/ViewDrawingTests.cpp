#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Interface/View.h"
#include "Platform/Interface/ViewController.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PaintedView.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

using namespace platform;

namespace {

using Pixel = std::array<int, 4>;
constexpr Pixel kRed{255, 0, 0, 255};
constexpr Pixel kGreen{0, 255, 0, 255};
constexpr Pixel kBlue{0, 0, 255, 255};

/// A red window of 16 by 12 points.
struct Scene {
    explicit Scene(double scale = 1) : host(makeHost({16, 12}, scale)) {
        controller->view()->setBackgroundColor(kRedColor);
        host->embedded().setRootViewController(controller);
    }
    std::shared_ptr<View> add(Rect frame, Color color) {
        auto view = make<View>(frame);
        view->setBackgroundColor(color);
        root().addSubview(view);
        return view;
    }
    [[nodiscard]] View& root() { return *controller->view(); }
    [[nodiscard]] ImagePtr picture(double scale = 1) {
        auto result = host->embedded().snapshot(scale);
        return std::move(result).value();
    }

    std::unique_ptr<zanto::HeadlessHost> host;
    std::shared_ptr<ViewController> controller = make<ViewController>();
};

/// Counts how often its own content is drawn.
class CountingView : public View {
public:
    using View::View;
    int drawings = 0;

protected:
    void drawContent(const DrawTarget& target) override {
        ++drawings;
        View::drawContent(target);
    }
};

} // namespace

TEST(DrawnView, FillsItsFrameWithItsBackground) {
    Scene scene;
    scene.add({{2, 3}, {4, 5}}, kGreenColor);
    const auto picture = scene.picture();
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 16; ++x) {
            const bool inside = x >= 2 && x < 6 && y >= 3 && y < 8;
            ASSERT_EQ(colourAt(*picture, x, y), inside ? kGreen : kRed) << x << ", " << y;
        }
    }
}

TEST(DrawnView, ScalesPointsToPixels) {
    Scene scene;
    scene.add({{2, 3}, {4, 5}}, kGreenColor);
    const auto picture = scene.picture(2);
    ASSERT_EQ(picture->widthPx(), 32);
    ASSERT_EQ(picture->heightPx(), 24);
    EXPECT_EQ(colourAt(*picture, 4, 6), kGreen);
    EXPECT_EQ(colourAt(*picture, 11, 15), kGreen);
    EXPECT_EQ(colourAt(*picture, 3, 6), kRed);
    EXPECT_EQ(colourAt(*picture, 12, 15), kRed);
}

TEST(DrawnView, ShowsTheLastSubviewInFront) {
    Scene scene;
    scene.add({{0, 0}, {8, 12}}, kGreenColor);
    scene.add({{4, 0}, {8, 12}}, kBlueColor);
    const auto picture = scene.picture();
    EXPECT_EQ(colourAt(*picture, 3, 0), kGreen);
    EXPECT_EQ(colourAt(*picture, 4, 0), kBlue);
    EXPECT_EQ(colourAt(*picture, 12, 0), kRed);
}

TEST(DrawnView, PlacesSubviewsInItsOwnCoordinates) {
    Scene scene;
    const auto outer = scene.add({{4, 4}, {8, 8}}, kGreenColor);
    const auto inner = make<View>(Rect{{1, 2}, {2, 2}});
    inner->setBackgroundColor(kBlueColor);
    outer->addSubview(inner);
    const auto picture = scene.picture();
    EXPECT_EQ(colourAt(*picture, 5, 6), kBlue);
    EXPECT_EQ(colourAt(*picture, 6, 7), kBlue);
    EXPECT_EQ(colourAt(*picture, 4, 6), kGreen);
    EXPECT_EQ(colourAt(*picture, 5, 8), kGreen);
}

TEST(DrawnView, ShowsWhatLiesBehindWithoutABackground) {
    Scene scene;
    const auto outer = scene.add({{4, 4}, {8, 8}}, kClearColor);
    const auto inner = make<View>(Rect{{0, 0}, {2, 2}});
    inner->setBackgroundColor(kBlueColor);
    outer->addSubview(inner);
    const auto picture = scene.picture();
    EXPECT_EQ(colourAt(*picture, 4, 4), kBlue);
    EXPECT_EQ(colourAt(*picture, 8, 8), kRed);
}

TEST(DrawnView, IsNotThereWhileHidden) {
    Scene scene;
    const auto outer = scene.add({{0, 0}, {8, 8}}, kGreenColor);
    const auto inner = make<View>(Rect{{0, 0}, {2, 2}});
    inner->setBackgroundColor(kBlueColor);
    outer->addSubview(inner);
    outer->setHidden(true);
    EXPECT_EQ(colourAt(*scene.picture(), 0, 0), kRed);
    outer->setHidden(false);
    EXPECT_EQ(colourAt(*scene.picture(), 0, 0), kBlue);
}

TEST(DrawnView, IsNotFilledWhereASubviewCoversItWhole) {
    const Scene scene;
    const auto parent = make<CountingView>(Rect{{}, {16, 12}});
    parent->setBackgroundColor(kRedColor);
    const auto cover = make<View>(Rect{{}, {16, 12}});
    cover->setBackgroundColor(kBlueColor);
    parent->addSubview(cover);
    const DrawTarget target{0, {0, 0, 16, 12}, 1};
    parent->draw(target);
    EXPECT_EQ(parent->drawings, 0);
    cover->setBackgroundColor({0, 0, 1, 0.5F});
    parent->draw(target);
    EXPECT_EQ(parent->drawings, 1);
    cover->setBackgroundColor(kBlueColor);
    cover->setHidden(true);
    parent->draw(target);
    EXPECT_EQ(parent->drawings, 2);
    cover->setHidden(false);
    cover->setFrame({{}, {16, 11}});
    parent->draw(target);
    EXPECT_EQ(parent->drawings, 3);
}

TEST(DrawnView, ForgetsItsRequestOnlyInAPassOfItsWindow) {
    Scene scene;
    scene.host->embedded().appear();
    const auto view = scene.add({{0, 0}, {8, 8}}, kGreenColor);
    (void)scene.picture();
    EXPECT_TRUE(view->needsDisplay());
    scene.host->settle();
    EXPECT_FALSE(view->needsDisplay());
}

TEST(DrawnView, KeepsItsRequestWhileHidden) {
    Scene scene;
    scene.host->embedded().appear();
    scene.host->settle();
    const auto view = scene.add({{0, 0}, {8, 8}}, kGreenColor);
    view->setHidden(true);
    scene.host->advanceTo(fromSeconds(1));
    const int before = scene.host->framesPresented();
    view->setHidden(false);
    scene.host->advanceTo(fromSeconds(2));
    EXPECT_EQ(scene.host->framesPresented(), before + 1);
}
