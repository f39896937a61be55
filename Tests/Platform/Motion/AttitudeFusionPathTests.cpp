// How far the fused attitude is off after a minute on known paths, with the noise and the bias of a
// poor sensor. Each path is run with several seeds.

#include "Tests/Platform/Motion/SensorTrace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iostream>
#include <numbers>
#include <string>

using namespace platform;

namespace {

using Path = SensorTrace::Path;

constexpr double kPi = std::numbers::pi;
constexpr double kDegree = kPi / 180;
constexpr unsigned kSeeds = 5;

/// A device held upright, then turned: to the left, upwards, and about its back.
Attitude held(double yaw, double pitch, double roll) {
    return turnAbout({0, 0, yaw}) * turnAbout({kPi / 2 + pitch, 0, 0}) * turnAbout({0, 0, roll});
}

/// Seconds of movement after a rest, eased in over the first.
double movedFor(double seconds, double rest) {
    const double moved = std::max(seconds - rest, 0.0);
    return moved < 1 ? moved * moved * moved * (1 - moved / 2) : moved - 0.5;
}

Path atRest() {
    return {[](double) { return held(0, -0.3, 0.2); }};
}

Path turningAboutTheVertical(double rest) {
    return {[=](double at) { return held(std::sin(0.3 * movedFor(at, rest)), 0, 0); }};
}

/// Looks around, and stops for three seconds after every turn of seven.
Path turningWithPauses(double rest) {
    return {[=](double at) {
        const double moved = std::max(at - rest, 0.0);
        const double turns = std::floor(moved / 10);
        const double part = std::min((moved - 10 * turns) / 7, 1.0);
        return held(1.2 * (turns + part * part * (3 - 2 * part)), 0, 0);
    }};
}

Path pitchingOverThePoles(double rest, double rate) {
    return {[=](double at) { return held(0, rate * movedFor(at, rest), 0); }};
}

Path wild(double rest) {
    return {[=](double at) {
        const double moved = movedFor(at, rest);
        return held(1.5 * std::sin(1.1 * moved) + 0.4 * moved, 1.2 * std::sin(1.7 * moved),
                    0.9 * std::sin(2.3 * moved));
    }};
}

/// Looks around while the hand shakes for a second in every ten, with 2 m/s² at `hertz`; 0 is a
/// push one way.
Path shaken(double rest, double hertz) {
    return {[=](double at) {
                const double moved = movedFor(at, rest);
                return held(0.8 * std::sin(0.5 * moved), 0.5 * std::sin(0.4 * moved),
                            0.2 * std::sin(0.7 * moved));
            },
            [=](double at) {
                const double part = std::fmod(at, 10);
                const double size = hertz > 0 ? std::sin(2 * kPi * hertz * at) : 1;
                return part < 5 || part > 6 ? Vector3{} : 2 * size * Vector3{0.8, 0.6, 0};
            }};
}

struct Limits {
    double tilt = 1 * kDegree;    // always, after two seconds
    double heading = 1 * kDegree; // with everything else, after sixty
};

void expectFollowed(const Path& path, Limits limits,
                    const std::function<void(SensorTrace&)>& setUp = {}) {
    double tilt = 0;
    double error = 0;
    for (unsigned seed = 1; seed <= kSeeds; ++seed) {
        SensorTrace trace(path, seed);
        if (setUp)
            setUp(trace);
        trace.runTo(2);
        tilt = std::max(tilt, trace.greatestTiltErrorTo(60));
        error = std::max(error, trace.error());
    }
    std::cout << "greatest tilt error " << tilt / kDegree << "°, error after a minute "
              << error / kDegree << "°\n";
    EXPECT_LT(tilt, limits.tilt);
    EXPECT_LT(error, limits.heading);
}

/// Where nothing shows the bias about the vertical, only the tilt is held.
constexpr Limits kTiltAlone{1 * kDegree, kPi};

} // namespace

TEST(AttitudeFusionPath, HoldsStillAtRest) {
    expectFollowed(atRest(), {});
}

// A rest of two seconds shows a bias no better than 0.005 rad/s over the root of 400 samples, which
// is 0.86° a minute: three times that, and nothing later on this path shows it.
TEST(AttitudeFusionPath, FollowsSlowTurnsAboutTheVerticalAsFarAsARestShowsTheBias) {
    expectFollowed(turningAboutTheVertical(2), {1 * kDegree, 3 * 0.86 * kDegree});
    expectFollowed(turningAboutTheVertical(5), {1 * kDegree, 3 * 0.55 * kDegree});
}

TEST(AttitudeFusionPath, FollowsSlowTurnsAboutTheVerticalWithPauses) {
    expectFollowed(turningWithPauses(2), {});
    expectFollowed(turningWithPauses(1), {});
}

TEST(AttitudeFusionPath, FollowsPitchingOverBothPoles) {
    expectFollowed(pitchingOverThePoles(2, 0.5), {});
    expectFollowed(pitchingOverThePoles(2, 3), {});
    expectFollowed(pitchingOverThePoles(0, 0.5), {});
}

TEST(AttitudeFusionPath, FollowsAWildMix) {
    expectFollowed(wild(2), {});
    expectFollowed(wild(1), {});
    expectFollowed(wild(0), {});
}

TEST(AttitudeFusionPath, IsNotMovedByAHandThatShakes) {
    expectFollowed(shaken(2, 4), {});
    expectFollowed(shaken(2, 1), {});
    expectFollowed(shaken(1, 4), {});
}

TEST(AttitudeFusionPath, IsHardlyMovedByAPush) {
    expectFollowed(shaken(2, 0), {});
}

TEST(AttitudeFusionPath, HoldsTheTiltWithoutAnyRest) {
    expectFollowed(turningAboutTheVertical(0), kTiltAlone);
    expectFollowed(turningWithPauses(0), kTiltAlone);
    expectFollowed(shaken(0, 4), kTiltAlone);
}

TEST(AttitudeFusionPath, FollowsUnevenTimesAndOtherRates) {
    expectFollowed(wild(2), {}, [](SensorTrace& trace) {
        trace.jitter = 0.002;
        trace.accelerationPeriod = 1.0 / 60;
    });
    expectFollowed(pitchingOverThePoles(2, 1), {}, [](SensorTrace& trace) {
        trace.ratePeriod = 1.0 / 100;
        trace.accelerationPeriod = 1.0 / 200;
    });
}
