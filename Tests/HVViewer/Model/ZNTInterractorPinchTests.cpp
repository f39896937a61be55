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

TEST(Mode, StartsItsOwnView) {
    InterractorScene scene;
    ZNTInterractor& camera = scene.camera();
    scene.drag({100, 90}, {136, 99});
    scene.updates();
    camera.setCurrentVO(DisplayMode::LittlePlanet);
    EXPECT_EQ(camera.scale(), 0.800000011920929);
    EXPECT_TRUE(areEqual(camera.viewMatrix(), GLKMatrix4MakeRotation(kQuarterTurn, 1, 0, 0)));
    EXPECT_TRUE(areEqual(camera.rotationMatrix(), GLKMatrix4Identity));
    camera.setCurrentVO(DisplayMode::Sphere);
    EXPECT_EQ(camera.scale(), 1.0);
    EXPECT_TRUE(areEqual(camera.viewMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(areEqual(camera.rotationMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(areEqual(camera.translationMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(camera.animationsEnabled());
    EXPECT_EQ(scene.updates(), 0) << "nobody is told";
}
