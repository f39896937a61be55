#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Interface/PanGestureRecognizer.h"
#include "Platform/Interface/PinchGestureRecognizer.h"
#include "Tests/HVViewer/Model/InterractorScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace std::chrono_literals;
using platform::Point;

TEST(Interractor, StartsWhereTheSphereStarts) {
    InterractorScene scene;
    const ZNTInterractor& camera = scene.camera();
    EXPECT_EQ(camera.currentVO(), DisplayMode::Sphere);
    EXPECT_EQ(camera.scale(), 1.0);
    EXPECT_TRUE(camera.animationsEnabled());
    EXPECT_TRUE(camera.isTouchMotionOn());
    EXPECT_TRUE(camera.isScaleOn());
    EXPECT_FALSE(camera.lockVerticalRotation());
    EXPECT_FALSE(camera.isDeviceMotionOn());
    EXPECT_TRUE(areEqual(camera.viewMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(areEqual(camera.rotationMatrix(), GLKMatrix4Identity));
    EXPECT_TRUE(areEqual(camera.translationMatrix(), GLKMatrix4Identity));
    EXPECT_EQ(camera.panLocation(), Point{});
    EXPECT_EQ(camera.panVelocity(), Point{});
    EXPECT_EQ(scene.view().gestureRecognizers().size(), 2U);
}

TEST(Interractor, TurnsAgainstADragToTheRight) {
    InterractorScene scene;
    scene.drag({100, 90}, {136, 90});
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-36)));
    EXPECT_TRUE(areEqual(scene.camera().viewMatrix(), GLKMatrix4Identity));
    EXPECT_EQ(scene.camera().panLocation(), (Point{136, 90}));
}

TEST(Interractor, TiltsAgainstADragDown) {
    InterractorScene scene;
    scene.drag({100, 50}, {100, 68});
    EXPECT_TRUE(areNear(scene.camera().viewMatrix(), pitchOf(-18)));
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), GLKMatrix4Identity));
}

TEST(Interractor, AddsUpTheStepsOfADragAndTurnsOverThePoles) {
    InterractorScene scene;
    scene.down({0, 90});
    scene.move({0, 90});
    for (int y = 1; y <= 400; ++y)
        scene.move({0, 90.0 - y});
    for (float element : scene.camera().viewMatrix().m)
        ASSERT_FALSE(std::isnan(element));
    // 400 points are 155.6 degrees, which no limit cuts off.
    EXPECT_NEAR(scene.camera().viewMatrix().m[5], std::cos(DegToRad(70.0 / 180 * 400)), 1e-4);
}

TEST(Interractor, OnlyTurnsSidewaysWhileTheVerticalIsLocked) {
    InterractorScene scene;
    scene.camera().setLockVerticalRotation(true);
    scene.drag({100, 90}, {118, 140});
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-18)));
    EXPECT_TRUE(areEqual(scene.camera().viewMatrix(), GLKMatrix4Identity));
}

TEST(Interractor, TurnsHalfAsFarAtTwiceTheZoom) {
    InterractorScene scene;
    scene.camera().setScale(2.0);
    scene.drag({100, 90}, {136, 90});
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-18)));
}

TEST(Interractor, TurnsHalfAsFarOnAScreenTwiceAsDense) {
    InterractorScene scene({320, 180}, 2.0);
    scene.drag({100, 90}, {136, 90});
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-18)));
}

TEST(Interractor, TellsItsDelegateOfEveryCallOfAGesture) {
    InterractorScene scene;
    scene.down({100, 90});
    EXPECT_EQ(scene.updates(), 0);
    scene.move({100, 90});
    EXPECT_EQ(scene.updates(), 1) << "began";
    scene.move({110, 90});
    EXPECT_EQ(scene.updates(), 1) << "changed";
    scene.advance(1s);
    scene.up({110, 90});
    EXPECT_EQ(scene.updates(), 1) << "ended";
}

TEST(Interractor, LeavesTheCameraAloneWhileTouchIsOffOrSideBySide) {
    InterractorScene scene;
    scene.camera().turnTouchMotionOn(false);
    scene.drag({100, 90}, {136, 90});
    scene.up({136, 90});
    scene.camera().turnTouchMotionOn(true);
    scene.camera().setCurrentVO(DisplayMode::SideBySide);
    EXPECT_FALSE(scene.camera().isTouchMotionOn());
    scene.drag({100, 90}, {136, 90});
    scene.up({136, 90});
    scene.advance(1s);
    EXPECT_EQ(scene.updates(), 0);
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), GLKMatrix4Identity));
    EXPECT_EQ(scene.camera().panLocation(), Point{});
}

TEST(Interractor, TiltsHalfAsFarAtTwiceTheZoom) {
    InterractorScene scene;
    scene.camera().setScale(2.0);
    scene.drag({100, 50}, {100, 86});
    EXPECT_TRUE(areNear(scene.camera().viewMatrix(), pitchOf(-18)));
}

TEST(Interractor, TurnsByTheSameAngleInTheLittlePlanet) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::LittlePlanet);
    const GLKMatrix4 start = scene.camera().viewMatrix();
    scene.drag({100, 90}, {136, 108});
    const double zoom = scene.camera().scale();
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-36 / zoom)));
    EXPECT_TRUE(
        areNear(scene.camera().viewMatrix(), GLKMatrix4Multiply(start, pitchOf(-18 / zoom))));
}

TEST(Interractor, StopsAnimationsAtEveryCallOfADragUntilItEnds) {
    InterractorScene scene;
    scene.down({100, 90});
    EXPECT_TRUE(scene.camera().animationsEnabled());
    scene.move({100, 90});
    EXPECT_FALSE(scene.camera().animationsEnabled()) << "began";
    scene.camera().setAnimationsEnabled(true);
    scene.move({110, 90});
    EXPECT_FALSE(scene.camera().animationsEnabled()) << "changed";
    scene.up({110, 90});
    EXPECT_TRUE(scene.camera().animationsEnabled()) << "ended";
}

TEST(Interractor, AddsItsPanBeforeItsPinch) {
    InterractorScene scene;
    const auto& recognizers = scene.view().gestureRecognizers();
    ASSERT_EQ(recognizers.size(), 2U);
    const auto pan = std::dynamic_pointer_cast<platform::PanGestureRecognizer>(recognizers[0]);
    ASSERT_TRUE(pan);
    EXPECT_EQ(pan->maximumNumberOfTouches(), 1U);
    EXPECT_TRUE(std::dynamic_pointer_cast<platform::PinchGestureRecognizer>(recognizers[1]));
}

TEST(Interractor, TurnsAndZoomsWithoutADelegate) {
    InterractorScene scene;
    scene.releaseDelegate();
    scene.drag({100, 90}, {136, 90});
    scene.up({136, 90});
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-36)));
    scene.pinch(1.5);
    scene.liftPinch();
    EXPECT_NEAR(scene.camera().scale(), 1.5, 1e-12);
}

TEST(Interractor, EndsADragThatIsHeldOverAModeSwitch) {
    InterractorScene scene;
    scene.drag({20, 90}, {40, 90});
    scene.camera().setCurrentVO(DisplayMode::SideBySide);
    scene.move({140, 90});
    scene.camera().setCurrentVO(DisplayMode::Sphere);
    scene.updates();
    scene.move({141, 90});
    scene.up({160, 90});
    scene.advance(1s);
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), GLKMatrix4Identity));
    EXPECT_EQ(scene.updates(), 0);
    scene.drag({100, 90}, {136, 90});
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-36))) << "the next one turns";
}

TEST(FlatPicture, FollowsTheFingerWithinItsLimits) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(2.0);
    scene.drag({100, 90}, {118, 72});
    // 18 points at twice the zoom over 180 pixels.
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12], 0.05F);
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[13], 0.05F);
    scene.move({10000, -10000});
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12], 0.25F);
    // 180 / 320 taken up to 0.6, times a half, halved.
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[13], 0.15F);
    scene.move({-20000, 20000});
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12], -0.25F);
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[13], -0.15F);
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), GLKMatrix4Identity));
}

TEST(FlatPicture, TellsItsDelegateOfADrag) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(2.0);
    scene.down({100, 90});
    scene.move({100, 90});
    EXPECT_EQ(scene.updates(), 1) << "began";
    scene.move({118, 72});
    EXPECT_EQ(scene.updates(), 1) << "changed";
    scene.up({118, 72});
    EXPECT_EQ(scene.updates(), 1) << "ended";
}

TEST(FlatPicture, DoesNotCoast) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(3.0);
    scene.flick(1500);
    EXPECT_EQ(scene.camera().panVelocity(), Point{});
    scene.updates();
    scene.advance(1s);
    EXPECT_EQ(scene.updates(), 0);
}

TEST(FlatPicture, StaysInTheMiddleInLandscapeWithoutZoom) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.drag({100, 90}, {180, 20});
    EXPECT_EQ(scene.camera().translationMatrix().m[12], 0);
    EXPECT_EQ(scene.camera().translationMatrix().m[13], 0);
}

TEST(FlatPicture, MovesSidewaysInPortraitWithoutZoom) {
    InterractorScene scene({180, 320});
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.drag({10, 90}, {28, 20});
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12], 0.1F);
    EXPECT_EQ(scene.camera().translationMatrix().m[13], 0);
    scene.move({9000, 20});
    const double planeWidth = 320.0 * 320 / 180;
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12],
                    static_cast<float>((planeWidth - 180) / planeWidth / 2));
}

TEST(FlatPicture, HasItsPortraitLimitUpsideDownTooAndTimesTheZoom) {
    InterractorScene scene({180, 320});
    scene.host().embedded().setOrientation(platform::InterfaceOrientation::PortraitUpsideDown);
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(2.0);
    scene.drag({10, 90}, {9000, 90});
    const double planeWidth = 320.0 * 320 / 180 * 2;
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12],
                    static_cast<float>((planeWidth - 180) / planeWidth / 2));
}

TEST(FlatPicture, HasItsLandscapeLimitWhileTheOrientationIsUnknown) {
    InterractorScene scene({180, 320});
    scene.host().embedded().setOrientation(platform::InterfaceOrientation::Unknown);
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(2.0);
    scene.drag({10, 90}, {9000, 90});
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12], 0.25F);
}

TEST(FlatPicture, StaysInTheMiddleOfAWideWindowThatIsReportedAsPortrait) {
    InterractorScene scene;
    scene.host().embedded().setOrientation(platform::InterfaceOrientation::Portrait);
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(1.5);
    for (const double x : {136.0, 20.0}) {
        scene.drag({100, 90}, {x, 90});
        scene.up({x, 90});
        EXPECT_EQ(scene.camera().translationMatrix().m[12], 0);
    }
}

TEST(FlatPicture, IsForcedToTheMiddleBelowItsSize) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(0.9);
    scene.camera().setTranslationMatrix(GLKMatrix4MakeTranslation(0.2F, 0.1F, 0));
    scene.drag({100, 90}, {110, 100});
    EXPECT_EQ(scene.camera().translationMatrix().m[12], 0);
    EXPECT_EQ(scene.camera().translationMatrix().m[13], 0);
}

TEST(FlatPicture, IsNowhereWithoutAView) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(2.0);
    scene.camera().setTranslationMatrix(GLKMatrix4MakeTranslation(0.1F, 0, 0));
    scene.releaseView();
    scene.host().embedded().resize({300, 200}, 1);
    scene.advance(200ms);
    EXPECT_TRUE(std::isnan(scene.camera().translationMatrix().m[12]));
    EXPECT_EQ(scene.camera().translationMatrix().m[13], 0);
}
