#include "Hosts/SDL/SDLAttitude.h"
#include "Platform/Motion/AttitudeMath.h"
#include "Platform/Motion/EmulatedAttitude.h"
#include "Tests/Hosts/SDL/SDLScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using platform::Attitude;
using platform::AttitudeSource;
using platform::InterfaceOrientation;

// What machines with sensors do is seen on machines with sensors; here there are none.

TEST(SDLAttitude, IsUnavailableWithoutSensors) {
    if (zanto::SDLSensors::exist())
        GTEST_SKIP() << "this machine has sensors";
    const SDLScene scene;
    EXPECT_FALSE(AttitudeSource::shared().isAvailable());
    EXPECT_EQ(zanto::SDLSensors::open(), nullptr);
}

TEST(SDLAttitude, LeavesNothingThatSDLWouldWatchOpen) {
    {
        const SDLScene scene;
        EXPECT_EQ(SDL_WasInit(SDL_INIT_SENSOR | SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER), 0U);
        const auto subscription = AttitudeSource::shared().subscribe([] {});
    }
    EXPECT_EQ(SDL_WasInit(SDL_INIT_SENSOR | SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER), 0U);
}

TEST(SDLAttitude, TakesNoSampleThatNobodyAskedFor) {
    SDLScene scene;
    SDL_Event event{};
    for (const Uint32 type : {SDL_SENSORUPDATE, SDL_CONTROLLERSENSORUPDATE}) {
        event.type = type;
        SDL_PushEvent(&event);
    }
    scene.settle();
    EXPECT_FALSE(AttitudeSource::shared().latest());
}

TEST(SDLAttitude, OfAnUprightThingIsThatOfAnUprightDevice) {
    // Standing up from lying flat: its y axis up, its back looking ahead.
    const Attitude upright = platform::turnAbout({std::numbers::pi / 2, 0, 0});
    for (const auto orientation :
         {InterfaceOrientation::Portrait, InterfaceOrientation::PortraitUpsideDown,
          InterfaceOrientation::LandscapeRight, InterfaceOrientation::LandscapeLeft}) {
        const Attitude device = zanto::SDLAttitude::attitudeOfDevice(upright, orientation);
        const Attitude expected = platform::EmulatedAttitude().attitude(orientation);
        const double cosine = device.x * expected.x + device.y * expected.y +
                              device.z * expected.z + device.w * expected.w;
        EXPECT_NEAR(std::abs(cosine), 1, 1e-12) << static_cast<int>(orientation);
    }
}
