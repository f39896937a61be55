#include "Platform/Motion/AttitudeFusion.h"
#include "Platform/Motion/AttitudeMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace platform;

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kGravity = 9.81;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// What a faultless accelerometer at rest measures.
Vector3 gravityAt(const Attitude& attitude) {
    return rotate(inverse(attitude), {0, 0, kGravity});
}

/// Feeds both kinds at 100 Hz, for a device that keeps turning about its own axes.
class Device {
public:
    explicit Device(const Attitude& attitude) : attitude_(attitude) {}

    void turn(AttitudeFusion& fusion, const Vector3& rate, double seconds) {
        const auto steps = std::lround(seconds / kStep);
        for (long i = 0; i < steps; ++i) {
            fusion.addAcceleration(gravityAt(attitude_), now);
            fusion.addRotationRate(rate, now);
            attitude_ = attitude_ * turnAbout(kStep * rate);
            now += kStep;
        }
    }
    /// Turned without the sensors' notice.
    void jump(const Vector3& radians) { attitude_ = attitude_ * turnAbout(radians); }

    double now = 0;

private:
    static constexpr double kStep = 0.01;
    Attitude attitude_;
};

/// The fused attitude takes these directions of the device into those of the frame.
void expectTakes(const AttitudeFusion& fusion, const Vector3& device, const Vector3& frame,
                 double margin = 1e-3) {
    ASSERT_TRUE(fusion.attitude());
    const Vector3 seen = rotate(*fusion.attitude(), device);
    EXPECT_LT(length(seen - frame), margin)
        << seen.x << ' ' << seen.y << ' ' << seen.z << " instead of " << frame.x << ' ' << frame.y
        << ' ' << frame.z;
}

void begin(AttitudeFusion& fusion, const Vector3& acceleration) {
    fusion.addAcceleration(acceleration, 0);
    fusion.addRotationRate({0, 0, 0}, 0);
}

const Attitude kUpright = turnAbout({kPi / 2, 0, 0});

} // namespace

TEST(AttitudeFusion, HasNoAttitudeUntilBothKindsHaveCome) {
    AttitudeFusion fusion;
    EXPECT_EQ(fusion.attitude(), std::nullopt);
    fusion.addAcceleration({0, 0, kGravity}, 0);
    EXPECT_EQ(fusion.attitude(), std::nullopt);
    fusion.addRotationRate({0, 0, 0}, 0);
    EXPECT_TRUE(fusion.attitude());

    AttitudeFusion other;
    other.addRotationRate({0, 0, 0}, 0);
    other.addRotationRate({0, 0, 0}, 0.01);
    EXPECT_EQ(other.attitude(), std::nullopt);
    other.addAcceleration({0, 0, kGravity}, 0.01);
    EXPECT_TRUE(other.attitude());
}

TEST(AttitudeFusion, BeginsWithItsBackAhead) {
    AttitudeFusion upright;
    begin(upright, {0, kGravity, 0});
    expectTakes(upright, {0, 0, -1}, {0, 1, 0});
    expectTakes(upright, {0, 1, 0}, {0, 0, 1});

    AttitudeFusion landscape;
    begin(landscape, {-kGravity, 0, 0});
    expectTakes(landscape, {0, 0, -1}, {0, 1, 0});
    expectTakes(landscape, {-1, 0, 0}, {0, 0, 1});

    AttitudeFusion leaning;
    begin(leaning, {0, 0.8 * kGravity, 0.6 * kGravity});
    expectTakes(leaning, {0, 0, -1}, {0, 0.8, -0.6});
}

TEST(AttitudeFusion, BeginsWithItsUpperEdgeAheadWithTheScreenUpwards) {
    AttitudeFusion fusion;
    begin(fusion, {0, 0, kGravity});
    expectTakes(fusion, {1, 0, 0}, {1, 0, 0});
    expectTakes(fusion, {0, 1, 0}, {0, 1, 0});
}

TEST(AttitudeFusion, BeginsWithItsLowerEdgeAheadWithTheScreenDownwards) {
    AttitudeFusion fusion;
    begin(fusion, {0, 0, -kGravity});
    expectTakes(fusion, {0, -1, 0}, {0, 1, 0});
    expectTakes(fusion, {0, 0, -1}, {0, 0, 1});
}

TEST(AttitudeFusion, SetsItsTiltAtOnce) {
    AttitudeFusion fusion;
    begin(fusion, {1, -2, 9});
    expectTakes(fusion, (1 / length({1, -2, 9})) * Vector3{1, -2, 9}, {0, 0, 1}, 1e-9);
}

TEST(AttitudeFusion, FollowsTheGyroscope) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.turn(fusion, {0, 0, 0}, 2);
    device.turn(fusion, {0, -kPi / 4, 0}, 2); // about the vertical, to the right
    device.turn(fusion, {0, 0, 0}, 0.01);
    expectTakes(fusion, {0, 0, -1}, {1, 0, 0}, 0.02);
    expectTakes(fusion, {0, 1, 0}, {0, 0, 1}, 0.02);
}

TEST(AttitudeFusion, TakesABiasOffThatARestShows) {
    AttitudeFusion fusion;
    for (int i = 0; i < 6000; ++i) {
        fusion.addAcceleration({0, kGravity, 0}, 0.01 * i);
        fusion.addRotationRate({0.03, 0.03, -0.03}, 0.01 * i);
    }
    expectTakes(fusion, {0, 0, -1}, {0, 1, 0}, 0.005);
}

TEST(AttitudeFusion, DoesNotTakeASlowTurnForABiasOnceTheBiasIsKnown) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.turn(fusion, {0, 0, 0}, 2);
    device.turn(fusion, {0, -0.03, 0}, 50); // steady, as on a tripod
    expectTakes(fusion, {0, 0, -1}, {std::sin(1.5), std::cos(1.5), 0}, 0.02);
}

TEST(AttitudeFusion, IgnoresSamplesThatAreNotFinite) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.turn(fusion, {0, 0, 0}, 1);
    const auto before = fusion.attitude();
    for (const double bad : {kNaN, kInfinity, -kInfinity}) {
        fusion.addRotationRate({bad, 0, 0}, device.now);
        fusion.addRotationRate({0, bad, 0}, device.now);
        fusion.addRotationRate({1, 1, 1}, bad);
        fusion.addAcceleration({0, 0, bad}, device.now);
        fusion.addAcceleration({0, 0, kGravity}, bad);
    }
    fusion.addRotationRate({1000, 0, 0}, device.now);
    fusion.addAcceleration({0, 0, 0}, device.now);
    EXPECT_EQ(fusion.attitude(), before);
    device.turn(fusion, {0, 0, 0}, 1);
    expectTakes(fusion, {0, 0, -1}, {0, 1, 0});
}

TEST(AttitudeFusion, IgnoresTimesThatRepeatOrGoBackALittle) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.turn(fusion, {0, 0, 0}, 1);
    const auto before = fusion.attitude();
    for (const double back : {0.01, 0.02, 0.4}) {
        fusion.addRotationRate({1, 2, 3}, device.now - back);
        fusion.addAcceleration({kGravity, 0, 0}, device.now - back);
    }
    EXPECT_EQ(fusion.attitude(), before);
}

TEST(AttitudeFusion, TurnsNothingAcrossAGap) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.turn(fusion, {0, 0, 0}, 2);
    fusion.addRotationRate({0, 1, 0}, device.now + 0.6);
    fusion.addRotationRate({0, 0, 0}, device.now + 2);
    expectTakes(fusion, {0, 0, -1}, {0, 1, 0});
}

TEST(AttitudeFusion, SetsItsTiltAnewAfterAGapAndKeepsItsHeading) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.turn(fusion, {0, 0, 0}, 2);
    device.jump({-kPi / 3, 0, 0});
    device.now += 1;
    device.turn(fusion, {0, 0, 0}, 1);
    expectTakes(fusion, {0, 0, -1}, {0, 0.5, -std::sqrt(0.75)}, 0.02);
}

TEST(AttitudeFusion, GoesOnAfterAClockThatBeganAnew) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.now = 1000;
    device.turn(fusion, {0, 0, 0}, 2);
    device.now = 0;
    device.turn(fusion, {0, 0, 0}, 1);
    device.turn(fusion, {0, -kPi / 4, 0}, 2);
    expectTakes(fusion, {0, 0, -1}, {1, 0, 0}, 0.02);
}

TEST(AttitudeFusion, FindsBackToATiltThatTheGyroscopeMissed) {
    for (const double missed : {0.5, 1.5, 3.1}) {
        AttitudeFusion fusion;
        Device device(kUpright);
        device.turn(fusion, {0, 0, 0}, 10);
        device.jump({missed, 0, 0});
        device.turn(fusion, {0, 0, 0}, 10);
        expectTakes(fusion, gravityAt(kUpright * turnAbout({missed, 0, 0})), {0, 0, kGravity},
                    kGravity * 0.02);
    }
}

TEST(AttitudeFusion, IsNotTiltedByAFallOrABlow) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.turn(fusion, {0, 0, 0}, 2);
    for (int i = 0; i < 100; ++i) {
        fusion.addAcceleration(i % 2 ? Vector3{0.3, 0, 0.3} : Vector3{50, 50, 0}, device.now);
        fusion.addRotationRate({0, 0, 0}, device.now);
        device.now += 0.01;
    }
    expectTakes(fusion, {0, 1, 0}, {0, 0, 1});
}

TEST(AttitudeFusion, ForgetsEverythingAtAReset) {
    AttitudeFusion fusion;
    Device device(kUpright);
    device.turn(fusion, {0, -1, 0}, 1);
    fusion.reset();
    EXPECT_EQ(fusion.attitude(), std::nullopt);
    begin(fusion, {0, 0, kGravity});
    expectTakes(fusion, {0, 1, 0}, {0, 1, 0});
}
