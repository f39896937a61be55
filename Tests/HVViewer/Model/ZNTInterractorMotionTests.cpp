#include "Platform/Interface/Application.h"
#include "Platform/Motion/AttitudeSource.h"
#include "Tests/HVViewer/Model/InterractorScene.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace std::chrono_literals;
using platform::Attitude;
using platform::AttitudeSource;
using platform::InterfaceOrientation;

namespace {

/// A scene with a sensor that has sent one sample.
struct Sensed : InterractorScene {
    explicit Sensed(const Attitude& attitude = {}) {
        AttitudeSource::shared().publish(attitude);
        camera().turnDeviceMotionOn(true);
        advanceFrames(1);
        updates();
    }
};

GLKMatrix4 aboutZ(float radians) {
    return GLKMatrix4MakeRotation(radians, 0, 0, 1);
}

GLKMatrix4 held(InterractorScene& scene, InterfaceOrientation orientation) {
    scene.host().embedded().setOrientation(orientation);
    return scene.camera().motionMatrix();
}

} // namespace

TEST(DeviceMotion, IsOffUntilASensorArrives) {
    for (const DisplayMode mode : {DisplayMode::Sphere, DisplayMode::SideBySide}) {
        InterractorScene scene;
        EXPECT_FALSE(scene.camera().isDeviceMotionAvailable());
        scene.camera().setCurrentVO(mode);
        if (mode == DisplayMode::Sphere)
            scene.camera().turnDeviceMotionOn(true);
        EXPECT_FALSE(scene.camera().isDeviceMotionOn());
        scene.advanceFrames(1);
        scene.updates();
        AttitudeSource::shared().publish({});
        EXPECT_TRUE(scene.camera().isDeviceMotionAvailable());
        EXPECT_TRUE(scene.camera().isDeviceMotionOn());
        scene.advanceFrames(1);
        EXPECT_EQ(scene.updates(), 1);
    }
}

TEST(DeviceMotion, IsNotSwitchedOnByASensorThatNobodyAskedFor) {
    InterractorScene scene;
    AttitudeSource::shared().publish({});
    EXPECT_FALSE(scene.camera().isDeviceMotionOn());
    AttitudeSource::shared().setAvailable(false);
    scene.camera().turnDeviceMotionOn(true);
    scene.camera().turnDeviceMotionOn(false);
    AttitudeSource::shared().publish({});
    EXPECT_FALSE(scene.camera().isDeviceMotionOn()) << "it was switched off again";
    AttitudeSource::shared().setAvailable(false);
    scene.camera().setCurrentVO(DisplayMode::SideBySide);
    scene.camera().setCurrentVO(DisplayMode::Plane);
    AttitudeSource::shared().publish({});
    EXPECT_FALSE(scene.camera().isDeviceMotionOn()) << "the plane has none";
}

TEST(DeviceMotion, EndsWithItsSensorButSideBySide) {
    Sensed scene;
    AttitudeSource::shared().setAvailable(false);
    scene.advanceFrames(1);
    EXPECT_EQ(scene.updates(), 1) << "the camera is seen without it";
    AttitudeSource::shared().publish({});
    scene.advanceFrames(1);
    EXPECT_FALSE(scene.camera().isDeviceMotionOn());
    scene.camera().setCurrentVO(DisplayMode::SideBySide);
    scene.advanceFrames(1);
    AttitudeSource::shared().setAvailable(false);
    scene.updates();
    scene.advanceFrames(3);
    EXPECT_EQ(scene.updates(), 1);
    AttitudeSource::shared().publish({});
    EXPECT_TRUE(scene.camera().isDeviceMotionOn());
}

TEST(DeviceMotion, StaysOffWhenItIsSwitchedOffAfterItsSensorHasGone) {
    Sensed scene;
    AttitudeSource::shared().setAvailable(false);
    scene.camera().turnDeviceMotionOn(false); // before anybody is told
    AttitudeSource::shared().publish({});
    EXPECT_FALSE(scene.camera().isDeviceMotionOn());
    scene.advanceFrames(1);
    EXPECT_FALSE(scene.camera().isDeviceMotionOn());
}

TEST(DeviceMotion, NeedsNoDelegate) {
    Sensed scene;
    scene.releaseDelegate();
    AttitudeSource::shared().publish({0, 0, 1, 0});
    scene.advanceFrames(1);
    AttitudeSource::shared().setAvailable(false);
    scene.advanceFrames(1);
    EXPECT_FALSE(scene.camera().isDeviceMotionOn());
}

TEST(DeviceMotion, TellsTheDelegateOnceForEachSampleHoweverOftenItIsTurnedOn) {
    Sensed scene;
    scene.camera().turnDeviceMotionOn(true);
    scene.advanceFrames(1);
    EXPECT_EQ(scene.updates(), 0);
    AttitudeSource::shared().publish({0, 0, 0, 1});
    scene.advanceFrames(1);
    EXPECT_EQ(scene.updates(), 1);
    scene.camera().turnDeviceMotionOn(false);
    scene.camera().turnDeviceMotionOn(false);
    EXPECT_FALSE(scene.camera().isDeviceMotionOn());
    AttitudeSource::shared().publish({0, 0, 0, 1});
    scene.advanceFrames(1);
    EXPECT_EQ(scene.updates(), 0);
}

TEST(DeviceMotion, AsksForTheFramesOfDragsToo) {
    Sensed scene;
    scene.drag({100, 90}, {136, 90});
    EXPECT_EQ(scene.updates(), 0) << "the next sample shows it";
    EXPECT_FALSE(areEqual(scene.camera().rotationMatrix(), GLKMatrix4Identity));
    AttitudeSource::shared().publish({});
    scene.advanceFrames(1);
    EXPECT_EQ(scene.updates(), 1);
}

TEST(DeviceMotion, LeavesTheCameraAsItIs) {
    InterractorScene scene;
    AttitudeSource::shared().setAvailable(true);
    scene.camera().setScale(1.5);
    scene.drag({100, 90}, {136, 99});
    const GLKMatrix4 rotation = scene.camera().rotationMatrix();
    const GLKMatrix4 view = scene.camera().viewMatrix();
    scene.camera().turnDeviceMotionOn(true);
    scene.camera().turnDeviceMotionOn(false);
    EXPECT_EQ(scene.camera().scale(), 1.5);
    EXPECT_TRUE(areEqual(scene.camera().rotationMatrix(), rotation));
    EXPECT_TRUE(areEqual(scene.camera().viewMatrix(), view));
}

TEST(DeviceMotion, FollowsTheModes) {
    Sensed scene;
    for (const DisplayMode mode : {DisplayMode::Plane, DisplayMode::LittlePlanet}) {
        scene.camera().turnDeviceMotionOn(true);
        scene.camera().setCurrentVO(mode);
        EXPECT_FALSE(scene.camera().isDeviceMotionOn());
        scene.camera().setCurrentVO(DisplayMode::Sphere);
        EXPECT_FALSE(scene.camera().isDeviceMotionOn()) << "the sphere leaves it as it is";
    }
    scene.camera().setCurrentVO(DisplayMode::SideBySide);
    EXPECT_TRUE(scene.camera().isDeviceMotionOn());
    scene.camera().setCurrentVO(DisplayMode::Sphere);
    EXPECT_TRUE(scene.camera().isDeviceMotionOn());
}

TEST(DeviceMotion, DoesNotHoldTheInteractor) {
    Sensed scene;
    const auto camera = scene.release();
    EXPECT_TRUE(camera.expired());
    EXPECT_FALSE(AttitudeSource::shared().isWanted());
}

TEST(Attitude, IsTheIdentityForADeviceLyingFlatInPortrait) {
    Sensed scene;
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::Portrait), GLKMatrix4Identity));
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::LandscapeLeft), aboutZ(-kQuarterTurn)));
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::LandscapeRight), aboutZ(kQuarterTurn)));
    EXPECT_TRUE(
        areNear(held(scene, InterfaceOrientation::PortraitUpsideDown), aboutZ(2 * kQuarterTurn)));
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::Unknown), GLKMatrix4Identity));
}

TEST(Attitude, IsInvertedAndExpressedInTheAxesOfTheInterface) {
    const Attitude turned{0.1, 0.2, 0.3, std::sqrt(1 - 0.14)};
    Sensed scene(turned);
    const auto x = static_cast<float>(turned.x);
    const auto y = static_cast<float>(turned.y);
    const auto z = static_cast<float>(turned.z);
    const auto w = static_cast<float>(turned.w);
    const auto matrix = [w](float a, float b, float c) {
        return GLKMatrix4MakeWithQuaternion(GLKQuaternionMake(a, b, c, w));
    };
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::Portrait), matrix(-x, -y, -z)));
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::Unknown), matrix(-x, -y, -z)));
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::PortraitUpsideDown),
                        GLKMatrix4Multiply(matrix(x, y, -z), aboutZ(2 * kQuarterTurn))))
        << "of the three only z is negated";
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::LandscapeRight),
                        GLKMatrix4Multiply(matrix(y, -x, -z), aboutZ(kQuarterTurn))));
    EXPECT_TRUE(areNear(held(scene, InterfaceOrientation::LandscapeLeft),
                        GLKMatrix4Multiply(matrix(-y, x, -z), aboutZ(-kQuarterTurn))));
}

TEST(Attitude, IsNoNumberBeforeTheFirstSample) {
    InterractorScene scene;
    AttitudeSource::shared().setAvailable(true);
    scene.camera().turnDeviceMotionOn(true);
    EXPECT_TRUE(std::isnan(scene.camera().motionMatrix().m[0]));
}

TEST(Attitude, CannotBeSet) {
    Sensed scene;
    const GLKMatrix4 before = scene.camera().motionMatrix();
    scene.camera().setMotionMatrix(aboutZ(1));
    EXPECT_TRUE(areEqual(scene.camera().motionMatrix(), before));
}

TEST(TurnedInterface, DrawsTheFlatPictureBackOnceItHasItsFrame) {
    InterractorScene scene;
    scene.camera().setCurrentVO(DisplayMode::Plane);
    scene.camera().setScale(1.25);
    scene.camera().setTranslationMatrix(GLKMatrix4MakeTranslation(0.4F, 0.3F, 0));
    scene.host().embedded().resize({400, 200}, 1);
    scene.advance(150ms - 1ns);
    EXPECT_EQ(scene.camera().translationMatrix().m[12], 0.4F);
    EXPECT_EQ(scene.updates(), 0);
    scene.advance(1ns);
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12], 0.1F);
    EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[13], 0.05F);
    EXPECT_EQ(scene.updates(), 1);
}

TEST(TurnedInterface, DrawsTheOffsetBackInEveryMode) {
    for (const DisplayMode mode :
         {DisplayMode::Sphere, DisplayMode::LittlePlanet, DisplayMode::SideBySide}) {
        InterractorScene scene;
        scene.camera().setCurrentVO(mode);
        scene.camera().setScale(1.25);
        scene.camera().setTranslationMatrix(GLKMatrix4MakeTranslation(0.4F, 0.3F, 0));
        scene.host().embedded().resize({400, 200}, 1);
        scene.advance(150ms);
        EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[12], 0.1F) << static_cast<int>(mode);
        EXPECT_FLOAT_EQ(scene.camera().translationMatrix().m[13], 0.05F);
    }
}

TEST(TurnedInterface, HoldsTheInteractorUntilItHasItsFrame) {
    InterractorScene scene;
    scene.host().embedded().resize({400, 200}, 1);
    const auto camera = scene.release();
    scene.advance(149ms);
    EXPECT_FALSE(camera.expired());
    scene.advance(1ms);
    EXPECT_TRUE(camera.expired());
}

TEST(TurnedInterface, ChangesNothingWhenItsFrameStays) {
    InterractorScene scene;
    scene.camera().setTranslationMatrix(GLKMatrix4MakeTranslation(0.4F, 0.3F, 0));
    scene.host().embedded().setOrientation(InterfaceOrientation::LandscapeLeft);
    scene.advance(1s);
    EXPECT_EQ(scene.camera().translationMatrix().m[12], 0.4F);
    EXPECT_EQ(scene.updates(), 0);
}

TEST(TurnedInterface, TellsNobodyWhileTheDeviceSteers) {
    Sensed scene;
    scene.host().embedded().resize({400, 200}, 1);
    scene.advance(1s);
    EXPECT_EQ(scene.updates(), 0);
}
