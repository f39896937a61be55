// How a mode switch goes: what is laid out and drawn in which order, and what running gestures,
// coasts and a missing screen make of it.

#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Interface/GLView.h"
#include "Platform/Interface/LayoutConstraint.h"
#include "Tests/HVViewer/DisplayController/ShownPanorama.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>
#include <vector>

using namespace std::chrono_literals;
using platform::Rect;
using platform::TouchPhase;

namespace {

/// A view in front of the others that does something the next time it is drawn, once.
class Intruder final : public platform::Object, public platform::GLViewDelegate {
public:
    explicit Intruder(platform::View& root)
        : view_(platform::make<platform::GLView>(Rect{{0, 0}, {1, 1}})) {
        root.addSubview(view_);
    }
    void onNextDraw(std::function<void()> action) {
        action_ = std::move(action);
        view_->setDelegate(weak(this));
        view_->setContext(platform::GLContext::create());
        view_->setNeedsDisplay();
    }
    void drawInRect(platform::GLView& /*view*/, const Rect& /*rect*/) override {
        if (const auto action = std::exchange(action_, nullptr))
            action();
    }

private:
    std::shared_ptr<platform::GLView> view_;
    std::function<void()> action_;
};

/// What a display view was drawn with, each time. Lies inside it.
class DrawLog final : public platform::View {
public:
    struct Entry {
        DisplayMode mode;
        double scale;
        platform::Size size;
        friend bool operator==(const Entry&, const Entry&) = default;
    };

    explicit DrawLog(const ZNTDisplayView& watched) : View({{0, 0}, {1, 1}}), watched_(watched) {}

    std::vector<Entry> entries;

protected:
    void drawContent(const platform::DrawTarget& /*target*/) override {
        const SceneCameraInputs& inputs = watched_.cameraInputs();
        entries.push_back({inputs.mode, inputs.scale, inputs.size});
    }

private:
    const ZNTDisplayView& watched_;
};

std::vector<unsigned> optionsOf(const ZNTDisplayViewController::Constraints& constraints) {
    std::vector<unsigned> options;
    for (const auto& constraint : constraints)
        options.push_back(constraint->options());
    return options;
}

} // namespace

TEST(ModeLayout, PutsTheSecondViewBeneathTheMainOne) {
    HeadlessPlayer player({322, 180});
    const auto& views = player.controller().view()->subviews();
    ASSERT_EQ(views.size(), 2U);
    EXPECT_EQ(views[0], player.controller().virtualDisplayView());
    EXPECT_EQ(views[1], player.controller().displayView());
    for (const auto& view : views) {
        EXPECT_EQ(view->frame(), (Rect{{}, {322, 180}}));
        EXPECT_FALSE(view->translatesAutoresizingMaskIntoConstraints());
    }
}

TEST(ModeLayout, SaysHowItsViewsLineUp) {
    HeadlessPlayer player({322, 180});
    EXPECT_EQ(optionsOf(player.controller().singleModeConstraints()),
              (std::vector<unsigned>{24, 96}));
    EXPECT_EQ(optionsOf(player.controller().virtualModeConstraints()),
              (std::vector<unsigned>{24, 24, 1024}));
}

TEST(ModeLayout, TakesThreeTenthsOfASecond) {
    for (const DisplayMode mode : {DisplayMode::SideBySide, DisplayMode::Sphere}) {
        ShownPanorama player;
        if (mode == DisplayMode::Sphere)
            player.controller().setDisplayMode(DisplayMode::SideBySide);
        player.advance(1s);
        player.controller().setDisplayMode(mode);
        player.advance(290ms);
        const int moving = player.host().framesPresented();
        player.advance(15ms);
        const int arrived = player.host().framesPresented();
        EXPECT_EQ(arrived, moving + 1) << "the frame at 0.3 s";
        player.advance(1s);
        EXPECT_EQ(player.host().framesPresented(), arrived);
    }
}

TEST(ModeLayout, IsThatOfTwoViewsWhereTheModeWasNotedBeforeLoading) {
    const auto host = makeHost({322, 180});
    const auto controller = platform::make<ZNTDisplayViewController>();
    controller->setDisplayMode(DisplayMode::SideBySide);
    host->embedded().setRootViewController(controller);
    EXPECT_EQ(controller->displayView()->frame(), (Rect{{}, {160, 180}}));
    EXPECT_EQ(controller->virtualDisplayView()->frame(), (Rect{{162, 0}, {160, 180}}));
    EXPECT_TRUE(controller->virtualDisplayView()->isHidden());
    controller->setDisplayMode(DisplayMode::SideBySide);
    EXPECT_TRUE(controller->virtualDisplayView()->isHidden()) << "it is the present mode";
    host->embedded().setRootViewController(nullptr);
}

TEST(ModeLayout, AnnouncesANewSizeToTheMainViewOnly) {
    ShownPanorama player;
    player.embedded().resize({180, 322}, 1);
    EXPECT_EQ(player.view().newSize(), (platform::Size{180, 322}));
    EXPECT_EQ(player.second().newSize(), platform::Size{});
}

TEST(ModeSwitch, DrawsTheSecondViewAndThenTheMainOneFirstInItsOldMode) {
    ShownPanorama player;
    const auto intruder = platform::make<Intruder>(*player.controller().view());
    const auto main = platform::make<DrawLog>(player.view());
    const auto second = platform::make<DrawLog>(player.second());
    player.view().addSubview(main);
    player.second().addSubview(second);
    player.advance(1s);
    bool ran = false;
    intruder->onNextDraw([&] {
        const auto earlier = player.view().glDrawer();
        player.view().interractor()->setScale(1.5);
        main->entries.clear();
        player.controller().setDisplayMode(DisplayMode::SideBySide);
        ran = true;
        EXPECT_NE(player.view().glDrawer(), earlier) << "the picture was prepared";
        const DrawLog::Entry beforeLayout{DisplayMode::SideBySide, 1.0, {322, 180}};
        EXPECT_EQ(second->entries, (std::vector{beforeLayout, beforeLayout}))
            << "as its rendering starts, and for being shown";
        EXPECT_EQ(main->entries,
                  (std::vector<DrawLog::Entry>{{DisplayMode::Sphere, 1.5, {160, 180}},
                                               {DisplayMode::SideBySide, 1.0, {160, 180}}}));
    });
    player.advance(1s);
    EXPECT_TRUE(ran);
}

TEST(ModeSwitch, DrawsTheMainViewInTheSameOrderOnTheWayBack) {
    ShownPanorama player;
    const auto intruder = platform::make<Intruder>(*player.controller().view());
    const auto main = platform::make<DrawLog>(player.view());
    player.view().addSubview(main);
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.advance(1s);
    bool ran = false;
    intruder->onNextDraw([&] {
        player.view().interractor()->setScale(1.5);
        main->entries.clear();
        player.controller().setDisplayMode(DisplayMode::LittlePlanet);
        ran = true;
        ASSERT_EQ(main->entries.size(), 2U);
        EXPECT_EQ(main->entries[0].mode, DisplayMode::SideBySide);
        EXPECT_EQ(main->entries[0].size, (platform::Size{322, 180}));
        EXPECT_EQ(main->entries[0].scale, 1.5);
        EXPECT_EQ(main->entries[1].mode, DisplayMode::LittlePlanet);
    });
    player.advance(1s);
    EXPECT_TRUE(ran);
}

TEST(ModeSwitch, EndsADragThatIsHeld) {
    ShownPanorama player;
    player.touch(TouchPhase::Down, {100, 90});
    player.touch(TouchPhase::Move, {120, 90});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.touch(TouchPhase::Move, {20, 20});
    player.controller().setDisplayMode(DisplayMode::Sphere);
    player.advance(1s);
    const auto fresh = player.snapshot();
    player.touch(TouchPhase::Move, {21, 20});
    player.touch(TouchPhase::Up, {21, 20});
    player.advance(1s);
    EXPECT_TRUE(picturesAreEqual("drag-over-modes", *player.snapshot(), *fresh));
    player.touch(TouchPhase::Down, {100, 90});
    player.touch(TouchPhase::Move, {120, 90});
    player.touch(TouchPhase::Move, {140, 90});
    player.advance(1s);
    EXPECT_FALSE(picturesAreEqual("drag-after-modes", *player.snapshot(), *fresh));
}

TEST(CoastOverModes, ShowsTheSameInBothHalvesAndGoesOnAfterThem) {
    for (const bool steers : {false, true}) {
        ShownPanorama player;
        if (steers)
            player.embedded().setAttitude({0.5, 0.5, 0.5, 0.5});
        player.flick();
        player.advance(50ms);
        player.controller().setDisplayMode(DisplayMode::SideBySide);
        for (int i = 0; i < 4; ++i) {
            player.advance(50ms);
            if (steers)
                player.embedded().setAttitude({0.5, 0.5, 0.5, 0.5});
        }
        player.advance(100ms);
        EXPECT_GT(player.view().interractor()->panVelocity().x, 0.05) << "it coasts";
        const auto picture = player.snapshot();
        EXPECT_TRUE(picturesMatch("coast-halves", *columnsOf(*picture, 162, 160),
                                  *columnsOf(*picture, 0, 160)));
        player.controller().turnOnDeviceMotionInterraction(false);
        player.controller().setDisplayMode(DisplayMode::LittlePlanet);
        const GLKMatrix4 fresh = player.view().interractor()->rotationMatrix();
        player.advance(50ms);
        const GLKMatrix4 after = player.view().interractor()->rotationMatrix();
        EXPECT_FALSE(std::equal(std::begin(fresh.m), std::end(fresh.m), std::begin(after.m)));
    }
}

TEST(DisplayMode, KeepsItsCameraWhileThereIsNoScreen) {
    ShownPanorama player;
    const ZNTInterractor& camera = *player.view().interractor();
    player.flick();
    const double velocity = camera.panVelocity().x;
    ASSERT_GT(velocity, 50);
    player.embedded().resize({0, 0}, 1);
    const GLKMatrix4 kept = camera.rotationMatrix();
    player.advance(100ms);
    EXPECT_LT(camera.panVelocity().x, velocity * 0.8) << "the coast runs on";
    EXPECT_GT(camera.panVelocity().x, 0.05);
    EXPECT_TRUE(std::equal(std::begin(kept.m), std::end(kept.m), camera.rotationMatrix().m));
    player.embedded().resize({322, 180}, 1);
    player.advance(1s);
    EXPECT_FALSE(containsNaN(camera.rotationMatrix()));
    EXPECT_FALSE(containsNaN(camera.viewMatrix()));
    EXPECT_NE(colourAt(*player.snapshot(), 80, 90), (std::array{0, 0, 0, 255}));
}

TEST(DisplayMode, KeepsTheFlatPictureWhereItIsWhileThereIsNoScreen) {
    ShownPanorama player;
    player.controller().setDisplayMode(DisplayMode::Plane);
    ZNTInterractor& camera = *player.view().interractor();
    camera.setScale(2.0);
    player.touch(TouchPhase::Down, {100, 90});
    player.touch(TouchPhase::Move, {120, 90});
    player.touch(TouchPhase::Move, {138, 81});
    const GLKMatrix4 kept = camera.translationMatrix();
    ASSERT_GT(kept.m[12], 0);
    ASSERT_GT(kept.m[13], 0);
    player.embedded().resize({0, 0}, 1);
    player.touch(TouchPhase::Move, {150, 75});
    EXPECT_TRUE(std::equal(std::begin(kept.m), std::end(kept.m), camera.translationMatrix().m))
        << "the drag moves nothing";
    player.advance(1s);
    EXPECT_TRUE(std::equal(std::begin(kept.m), std::end(kept.m), camera.translationMatrix().m))
        << "and the resize draws nothing back";
    player.embedded().resize({322, 180}, 1);
    player.advance(1s);
    EXPECT_TRUE(std::equal(std::begin(kept.m), std::end(kept.m), camera.translationMatrix().m));
    EXPECT_NE(colourAt(*player.snapshot(), 160, 90), (std::array{0, 0, 0, 255}));
}

TEST(Interractor, LetsGoOfTheHotSpotsWithTheirView) {
    ShownPanorama player;
    const auto camera = player.view().interractor();
    ASSERT_TRUE(camera->controlDrawer());
    EXPECT_EQ(camera->controlDrawer(), player.view().glDrawer()->hotSpotGLDrawer());
    player.releaseController();
    player.advance(1s);
    EXPECT_FALSE(camera->controlDrawer());
}

TEST(Interractor, IgnoresTouchesAtPlacesThatNoScreenHas) {
    for (const DisplayMode mode : {DisplayMode::Sphere, DisplayMode::Plane}) {
        ShownPanorama player;
        player.controller().setDisplayMode(mode);
        player.view().interractor()->setScale(1.5);
        const ZNTInterractor& camera = *player.view().interractor();
        player.touch(TouchPhase::Down, {100, 90});
        player.touch(TouchPhase::Move, {120, 90});
        for (const double far : {1e308, -1e308}) {
            player.advance(10ms);
            player.touch(TouchPhase::Move, {far, far});
        }
        player.touch(TouchPhase::Move, {110, 80});
        player.touch(TouchPhase::Up, {1e308, -1e308});
        player.advance(1s);
        EXPECT_FALSE(containsNaN(camera.rotationMatrix()));
        EXPECT_FALSE(containsNaN(camera.viewMatrix()));
        EXPECT_FALSE(containsNaN(camera.translationMatrix()));
        EXPECT_EQ(camera.panVelocity(), platform::Point{});
        EXPECT_NE(colourAt(*player.snapshot(), 160, 90), (std::array{0, 0, 0, 255}));
    }
}
