#include "HVViewer/Utilities/ZNTMath.h"
#include "Tests/HVViewer/Model/InterractorScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace std::chrono_literals;
using platform::Point;

namespace {

// The screen is 320 x 180 at one pixel a point, so its portrait width is 180.
GLKMatrix4 yawOf(double points) {
    return GLKMatrix4MakeRotation(static_cast<float>(DegToRad(70.0 / 180 * points)), 0, 0, 1);
}

GLKMatrix4 pitchOf(double points) {
    return GLKMatrix4MakeRotation(static_cast<float>(DegToRad(70.0 / 180 * points)), 1, 0, 0);
}

} // namespace

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

TEST(Coast, StartsWithAFifteenthOfTheVelocityAndDecaysByAStepAFrame) {
    InterractorScene scene;
    scene.flick(1500);
    EXPECT_NEAR(scene.camera().panVelocity().x, 100, 1e-9);
    EXPECT_EQ(scene.camera().panVelocity().y, 0);
    scene.updates();
    double velocity = scene.camera().panVelocity().x;
    int steps = 0;
    for (; velocity > 0.05; ++steps) {
        scene.advanceFrames(1);
        ASSERT_EQ(scene.updates(), 1);
        velocity *= 1 - VelocityDeltaCoef;
        ASSERT_DOUBLE_EQ(scene.camera().panVelocity().x, velocity);
    }
    EXPECT_EQ(steps, 92);
    scene.advanceFrames(5);
    EXPECT_EQ(scene.updates(), 0);
    EXPECT_EQ(scene.camera().panVelocity().x, velocity) << "what is left stays";
}

TEST(Coast, TurnsByTheShareOfTheVelocityAtEveryStep) {
    InterractorScene scene;
    scene.flick(1500);
    const GLKMatrix4 before = scene.camera().rotationMatrix();
    scene.advanceFrames(1);
    const GLKMatrix4 step = yawOf(-100 * VelocityDeltaCoef);
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), GLKMatrix4Multiply(before, step)));
    EXPECT_EQ(scene.camera().panLocation(), (Point{150, 90})) << "the reference point stays";
}

TEST(Coast, DoesNotBeginWhenTheFingerRestedBeforeItWasLifted) {
    InterractorScene scene;
    scene.drag({100, 90}, {136, 90});
    scene.advance(200ms);
    scene.up({136, 90});
    const GLKMatrix4 rested = scene.camera().rotationMatrix();
    EXPECT_EQ(scene.camera().panVelocity(), Point{});
    scene.updates();
    scene.advance(1s);
    EXPECT_EQ(scene.updates(), 0);
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), rested));
}

TEST(Coast, EndsWithTheNextTouchAfterTheStepThatIsUnderWay) {
    InterractorScene scene;
    scene.flick(1500);
    scene.advanceFrames(10);
    scene.drag({160, 90}, {160, 90});
    EXPECT_FALSE(scene.camera().animationsEnabled());
    scene.updates();
    scene.advanceFrames(1);
    EXPECT_EQ(scene.updates(), 1) << "a step that was queued already runs";
    scene.advanceFrames(30);
    EXPECT_EQ(scene.updates(), 0);
}

TEST(Coast, GoesOnInAnotherModeFromWhereThatStarts) {
    InterractorScene scene;
    scene.flick(1500);
    scene.advanceFrames(3);
    const double velocity = scene.camera().panVelocity().x;
    scene.camera().setCurrentVO(DisplayMode::Sphere);
    EXPECT_EQ(scene.camera().panVelocity().x, velocity);
    EXPECT_EQ(scene.camera().panLocation(), (Point{150, 90}));
    scene.advanceFrames(1);
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-velocity * VelocityDeltaCoef)));
}

TEST(Coast, EndsForAVelocityThatIsNoNumber) {
    InterractorScene scene;
    scene.flick(600);
    scene.camera().setPanVelocity({std::nan(""), std::nan("")});
    const auto gone = scene.release();
    scene.advanceFrames(3);
    EXPECT_TRUE(gone.expired()) << "nothing holds it any longer";
}

TEST(Coast, EndsSideBySide) {
    InterractorScene scene;
    scene.flick(1500);
    scene.advanceFrames(3);
    scene.camera().setCurrentVO(DisplayMode::SideBySide);
    scene.updates();
    scene.advanceFrames(10);
    EXPECT_EQ(scene.updates(), 0);
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), GLKMatrix4Identity));
}

TEST(Coast, HoldsTheInteractorUntilItHasRunOut) {
    InterractorScene scene;
    scene.flick(1500);
    const auto camera = scene.release();
    scene.advanceFrames(50);
    EXPECT_FALSE(camera.expired());
    scene.advanceFrames(50);
    EXPECT_TRUE(camera.expired());
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
