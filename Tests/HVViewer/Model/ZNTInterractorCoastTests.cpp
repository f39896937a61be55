#include "HVViewer/Utilities/ZNTMath.h"
#include "Tests/HVViewer/Model/InterractorScene.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace std::chrono_literals;
using platform::Point;

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

TEST(Coast, EndsForAVelocityThatIsNaN) {
    InterractorScene scene;
    scene.flick(600);
    scene.camera().setPanVelocity({std::nan(""), std::nan("")});
    const auto gone = scene.release();
    scene.advanceFrames(3);
    EXPECT_TRUE(gone.expired()) << "nothing holds it any longer";
}

TEST(Coast, GoesOnSideBySideAndAfterIt) {
    InterractorScene scene;
    scene.flick(1500);
    scene.advanceFrames(3);
    const double atSwitch = scene.camera().panVelocity().x;
    scene.camera().setCurrentVO(DisplayMode::SideBySide);
    EXPECT_EQ(scene.camera().panVelocity().x, atSwitch);
    scene.advanceFrames(1);
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-atSwitch * VelocityDeltaCoef)));
    scene.advanceFrames(9);
    const double after = scene.camera().panVelocity().x;
    EXPECT_NEAR(after, atSwitch * std::pow(1 - VelocityDeltaCoef, 10), 1e-9);
    scene.camera().setCurrentVO(DisplayMode::Sphere);
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), GLKMatrix4Identity));
    scene.advanceFrames(1);
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), yawOf(-after * VelocityDeltaCoef)));
}

TEST(Coast, TiltsByItsVerticalHalf) {
    InterractorScene scene;
    scene.fling({0, -1500});
    EXPECT_EQ(scene.camera().panVelocity().x, 0);
    EXPECT_NEAR(scene.camera().panVelocity().y, -100, 1e-9);
    const GLKMatrix4 before = scene.camera().viewMatrix();
    scene.advanceFrames(1);
    const GLKMatrix4 step = pitchOf(100 * VelocityDeltaCoef);
    EXPECT_TRUE(areNear(scene.camera().viewMatrix(), GLKMatrix4Multiply(before, step)));
    EXPECT_NEAR(scene.camera().panVelocity().y, -100 * (1 - VelocityDeltaCoef), 1e-9);
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), GLKMatrix4Identity));
}

TEST(Coast, TakesAsManyStepsInEveryDirection) {
    for (const Point velocity : {Point{1500, 0}, {-1500, 0}, {0, 1500}, {0, -1500}, {-1500, -20}}) {
        InterractorScene scene;
        scene.fling(velocity);
        scene.updates();
        scene.advanceFrames(100);
        EXPECT_EQ(scene.updates(), 92) << velocity.x << ' ' << velocity.y;
    }
}

TEST(Coast, TurnsTheLittlePlanetToo) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::LittlePlanet);
    scene.flick(1500);
    EXPECT_NEAR(scene.camera().panVelocity().x, 100, 1e-9);
    const GLKMatrix4 before = scene.camera().rotationMatrix();
    scene.advanceFrames(1);
    const GLKMatrix4 step = yawOf(-100 * VelocityDeltaCoef / double{0.8F});
    EXPECT_TRUE(areNear(scene.camera().rotationMatrix(), GLKMatrix4Multiply(before, step)));
}

TEST(Coast, StopsAtTheLeastVelocityInBothDirections) {
    const auto stepsAt = [](Point velocity) {
        InterractorScene scene;
        scene.flick(1500);
        scene.camera().setPanVelocity(velocity);
        scene.updates();
        scene.advanceFrames(5);
        return scene.updates();
    };
    EXPECT_EQ(stepsAt({0.05, 0.05}), 0) << "exactly there it has stopped";
    EXPECT_EQ(stepsAt({-0.05, -0.05}), 0);
    const double above = std::nextafter(0.05, 1);
    EXPECT_EQ(stepsAt({above, 0}), 1);
    EXPECT_EQ(stepsAt({0, above}), 1);
    EXPECT_EQ(stepsAt({-above, 0}), 1);
    EXPECT_EQ(stepsAt({0, -above}), 1);
}

TEST(Coast, DoesNotBeginWhenTheDragIsCancelled) {
    InterractorScene scene;
    scene.down({100, 90});
    scene.move({100, 90});
    scene.advance(50ms);
    scene.move({160, 90});
    scene.updates();
    scene.down({50, 50}, 2);
    EXPECT_EQ(scene.updates(), 1) << "the cancellation";
    EXPECT_EQ(scene.camera().panVelocity(), Point{});
    EXPECT_FALSE(scene.camera().animationsEnabled());
    scene.advance(1s);
    EXPECT_EQ(scene.updates(), 0);
}

TEST(Coast, RunsOutWithoutADelegate) {
    InterractorScene scene;
    scene.flick(1500);
    scene.releaseDelegate();
    scene.advanceFrames(100);
    EXPECT_LE(scene.camera().panVelocity().x, 0.05);
    EXPECT_GT(scene.camera().panVelocity().x, 0);
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
