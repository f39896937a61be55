#include "Platform/Interface/GestureArena.h"
#include "Tests/HVViewer/Model/InterractorScene.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

// Single precision, widened.
constexpr double kHardMaximum = 2.9F;
constexpr double kRestMaximum = 1.9F;

} // namespace

TEST(Zoom, HasTheLimitsOfItsMode) {
    InterractorScene scene;
    ZNTInterractor& camera = scene.camera();
    EXPECT_EQ(camera.minScale(), 0.699999988079071);
    EXPECT_EQ(camera.maxScale(), kRestMaximum);
    EXPECT_EQ(camera.minAnimScale(), 0.5);
    EXPECT_EQ(camera.maxAnimScale(), kHardMaximum);
    camera.setCurrentVO(DisplayMode::LittlePlanet);
    EXPECT_EQ(camera.minScale(), 0.800000011920929);
    EXPECT_EQ(camera.maxScale(), double{0.85F});
    EXPECT_EQ(camera.minAnimScale(), double{0.7F});
    EXPECT_EQ(camera.maxAnimScale(), kHardMaximum);
    for (const DisplayMode mode : {DisplayMode::Plane, DisplayMode::SideBySide}) {
        camera.setCurrentVO(mode);
        EXPECT_EQ(camera.minScale(), 1.0);
        EXPECT_EQ(camera.maxScale(), 3.0);
        EXPECT_EQ(camera.minAnimScale(), 0.8);
        EXPECT_EQ(camera.maxAnimScale(), 4.5);
    }
}

TEST(Zoom, FollowsThePinchAndContinuesWithTheNext) {
    InterractorScene scene;
    scene.pinch(1.2);
    EXPECT_NEAR(scene.camera().scale(), 1.2, 1e-12);
    scene.liftPinch();
    scene.pinch(1.5);
    EXPECT_NEAR(scene.camera().scale(), 1.8, 1e-12);
    scene.liftPinch();
    scene.updates();
    scene.advance(1s);
    EXPECT_EQ(scene.updates(), 0) << "there is nothing to spring back from";
    EXPECT_NEAR(scene.camera().scale(), 1.8, 1e-12);
}

TEST(Zoom, IsHeldAtTheHardLimitsWhileTheFingersAreDown) {
    InterractorScene scene;
    scene.pinch(10);
    EXPECT_EQ(scene.camera().scale(), kHardMaximum);
    scene.advance(1s);
    EXPECT_EQ(scene.camera().scale(), kHardMaximum);
    scene.liftPinch();
    scene.advance(1s);
    scene.pinch(0.01);
    EXPECT_EQ(scene.camera().scale(), 0.5);
}

TEST(Zoom, SpringsBackByATwentiethOfTheBandEveryFiveMilliseconds) {
    InterractorScene scene;
    scene.pinch(10);
    scene.liftPinch();
    scene.updates();
    double expected = kHardMaximum;
    int steps = 0;
    for (; expected > kRestMaximum; ++steps) {
        ASSERT_EQ(scene.camera().scale(), expected);
        scene.advance(5ms - 1ns);
        ASSERT_EQ(scene.updates(), 0);
        scene.advance(1ns);
        ASSERT_EQ(scene.updates(), 1);
        expected -= (kHardMaximum - kRestMaximum) / 20;
    }
    EXPECT_EQ(scene.camera().scale(), expected) << "past the limit, and left there";
    EXPECT_EQ(steps, 21);
    EXPECT_NEAR(scene.camera().scale(), 1.85, 1e-6);
    scene.advance(1s);
    EXPECT_EQ(scene.updates(), 0);
    EXPECT_EQ(scene.camera().scale(), expected);
}

TEST(Zoom, SpringsUpFromBelow) {
    InterractorScene scene;
    scene.pinch(0.01);
    scene.liftPinch();
    scene.advance(5ms);
    EXPECT_EQ(scene.camera().scale(), 0.5 + (double{0.7F} - 0.5) / 20);
    scene.advance(1s);
    EXPECT_GE(scene.camera().scale(), scene.camera().minScale());
    EXPECT_LT(scene.camera().scale(), 0.72);
}

TEST(Zoom, OfALittlePlanetBelowOneSpringsBackByTheLowerBand) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::LittlePlanet);
    scene.pinch(0.95 / 0.8);
    const double released = scene.camera().scale();
    EXPECT_NEAR(released, 0.95, 1e-6);
    scene.liftPinch();
    scene.advance(5ms);
    EXPECT_EQ(scene.camera().scale(), released - (double{0.8F} - double{0.7F}) / 20);
    scene.advance(1s);
    EXPECT_LE(scene.camera().scale(), double{0.85F});
    EXPECT_GT(scene.camera().scale(), 0.84);
}

TEST(Zoom, StaysWhereADragStopsTheSpringBack) {
    InterractorScene scene;
    scene.pinch(10);
    scene.liftPinch();
    scene.advance(20ms);
    scene.drag({100, 90}, {101, 90});
    scene.advance(5ms); // the step that was queued
    const double stopped = scene.camera().scale();
    scene.advance(200ms);
    scene.up({101, 90});
    scene.advance(1s);
    EXPECT_EQ(scene.camera().scale(), stopped);
    EXPECT_GT(stopped, 2.5);
}

TEST(Zoom, IsLeftAloneWhilePinchingIsOffOrSideBySide) {
    InterractorScene scene;
    scene.camera().turnScaleOn(false);
    scene.pinch(1.5);
    scene.liftPinch();
    scene.camera().turnScaleOn(true);
    scene.camera().setCurrentVO(DisplayMode::SideBySide);
    EXPECT_FALSE(scene.camera().isScaleOn());
    scene.pinch(1.5);
    scene.liftPinch();
    EXPECT_EQ(scene.camera().scale(), 1.0);
    EXPECT_EQ(scene.updates(), 0);
}

TEST(Zoom, DrawsTheFlatPictureBackInsideItsLimits) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(2.0);
    scene.camera().setTranslationMatrix(GLKMatrix4MakeTranslation(0.25F, 0.15F, 0));
    scene.pinch(0.55);
    EXPECT_NEAR(scene.camera().scale(), 1.1, 1e-12);
    EXPECT_NEAR(scene.camera().translationMatrix().m[12], 0.1 / 1.1 / 2, 1e-6);
    EXPECT_NEAR(scene.camera().translationMatrix().m[13], 0.1 / 1.1 * 0.6 / 2, 1e-6);
}

TEST(Zoom, TellsItsDelegateOfEveryCallOfAPinch) {
    InterractorScene scene;
    scene.down({110, 90}, 1);
    scene.down({210, 90}, 2);
    EXPECT_EQ(scene.updates(), 0);
    scene.move({210, 90}, 2);
    EXPECT_EQ(scene.updates(), 1) << "began";
    scene.move({230, 90}, 2);
    EXPECT_EQ(scene.updates(), 1) << "changed";
    scene.up({230, 90}, 2);
    EXPECT_EQ(scene.updates(), 1) << "ended";
}

TEST(Zoom, StopsAnimationsAtEveryCallOfAPinchUntilItEnds) {
    InterractorScene scene;
    scene.down({110, 90}, 1);
    scene.down({210, 90}, 2);
    EXPECT_TRUE(scene.camera().animationsEnabled());
    scene.move({210, 90}, 2);
    EXPECT_FALSE(scene.camera().animationsEnabled()) << "began";
    scene.camera().setAnimationsEnabled(true);
    scene.move({230, 90}, 2);
    EXPECT_FALSE(scene.camera().animationsEnabled()) << "changed";
    scene.up({230, 90}, 2);
    EXPECT_TRUE(scene.camera().animationsEnabled()) << "ended";
}

TEST(Zoom, StaysWhereACancelledPinchLeftIt) {
    InterractorScene scene;
    scene.pinch(10);
    scene.updates();
    scene.view().gestures().cancelTouches();
    EXPECT_EQ(scene.updates(), 1) << "the cancellation";
    EXPECT_FALSE(scene.camera().animationsEnabled());
    scene.advance(1s);
    EXPECT_EQ(scene.camera().scale(), kHardMaximum);
    EXPECT_EQ(scene.updates(), 0);
}

TEST(Zoom, OfALittlePlanetChangesItsStrideAtOne) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::LittlePlanet);
    scene.pinch(10);
    scene.liftPinch();
    double expected = kHardMaximum;
    int above = 0;
    int below = 0;
    while (expected > double{0.85F}) {
        ++(expected > 1.0 ? above : below);
        const double band =
            expected > 1.0 ? kHardMaximum - double{0.85F} : double{0.8F} - double{0.7F};
        expected -= band / 20;
        scene.advance(5ms);
        ASSERT_DOUBLE_EQ(scene.camera().scale(), expected);
    }
    EXPECT_GT(above, 1);
    EXPECT_GT(below, 1);
}

TEST(Zoom, OfALittlePlanetAtOneExactlySpringsBackByTheLowerBand) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::LittlePlanet);
    scene.camera().setScale(1.0);
    scene.pinch(1.0);
    ASSERT_EQ(scene.camera().scale(), 1.0);
    scene.liftPinch();
    scene.advance(5ms);
    EXPECT_EQ(scene.camera().scale(), 1.0 - (double{0.8F} - double{0.7F}) / 20);
}

TEST(Zoom, LeavesTheOffsetOfTheFlatPictureAloneWhileItSpringsBack) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.pinch(10);
    scene.camera().setTranslationMatrix(GLKMatrix4MakeTranslation(0.38F, 0.22F, 0));
    scene.liftPinch();
    scene.advance(1s);
    EXPECT_LE(scene.camera().scale(), 3.0);
    EXPECT_EQ(scene.camera().translationMatrix().m[12], 0.38F);
    EXPECT_EQ(scene.camera().translationMatrix().m[13], 0.22F);
}

TEST(Zoom, HoldsTheInteractorUntilItHasSprungBack) {
    InterractorScene scene;
    scene.pinch(10);
    scene.liftPinch();
    const auto camera = scene.release();
    scene.advance(50ms);
    EXPECT_FALSE(camera.expired());
    scene.advance(1s);
    EXPECT_TRUE(camera.expired());
}

TEST(Zoom, EndsAPinchThatIsHeldOverAModeSwitch) {
    InterractorScene scene;
    scene.pinch(1.5);
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.move({10, 90}, 1);
    scene.liftPinch();
    scene.advance(1s);
    EXPECT_EQ(scene.camera().scale(), 1.0);
    scene.pinch(1.5);
    EXPECT_NEAR(scene.camera().scale(), 1.5, 1e-12) << "the next one zooms";
}

TEST(Mode, StartsItsOwnView) {
    InterractorScene scene;
    ZNTInterractor& camera = scene.camera();
    scene.drag({100, 90}, {136, 99});
    scene.advance(1s);
    scene.up({136, 99});
    camera.setTranslationMatrix(GLKMatrix4MakeTranslation(0.1F, 0.1F, 0));
    camera.setAnimationsEnabled(false);
    scene.updates();
    camera.setCurrentVO(DisplayMode::LittlePlanet);
    EXPECT_TRUE(areEqual(camera.translationMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(camera.animationsEnabled());
    EXPECT_EQ(camera.scale(), 0.800000011920929);
    EXPECT_TRUE(areEqual(camera.viewMatrix(), GLKMatrix4MakeRotation(kQuarterTurn, 1, 0, 0)));
    EXPECT_TRUE(areEqual(camera.rotationMatrix(), GLKMatrix4Identity));
    camera.setCurrentVO(DisplayMode::Sphere);
    EXPECT_EQ(camera.scale(), 1.0);
    EXPECT_TRUE(areEqual(camera.viewMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(areEqual(camera.rotationMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(areEqual(camera.translationMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(camera.animationsEnabled());
    EXPECT_EQ(scene.updates(), 0) << "the delegate is not notified";
}
