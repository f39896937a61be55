#include "Platform/Motion/MotionManager.h"
#include "Tests/Platform/Motion/MotionScene.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// A source that is there, a manager, and the samples its handler was given.
struct ManagerScene : MotionScene {
    ManagerScene() { source.setAvailable(true); }

    void start() {
        manager->startDeviceMotionUpdates([this](const std::optional<DeviceMotion>& motion) {
            if (motion)
                seen.push_back(motion->attitude);
            else
                ++ends;
        });
    }
    void publish(const Attitude& attitude) {
        source.publish(attitude);
        turn();
    }

    std::vector<Attitude> seen;
    int ends = 0; // calls that said that the source has gone
    std::shared_ptr<MotionManager> manager = std::make_shared<MotionManager>();
};

} // namespace

TEST(MotionManager, IsAvailableAsItsSourceIs) {
    ManagerScene scene;
    EXPECT_TRUE(scene.manager->isDeviceMotionAvailable());
    scene.source.setAvailable(false);
    EXPECT_FALSE(scene.manager->isDeviceMotionAvailable());
}

TEST(MotionManager, IsActiveBetweenStartAndStop) {
    ManagerScene scene;
    EXPECT_FALSE(scene.manager->isDeviceMotionActive());
    scene.start();
    EXPECT_TRUE(scene.manager->isDeviceMotionActive());
    EXPECT_TRUE(scene.source.isWanted());
    scene.manager->stopDeviceMotionUpdates();
    EXPECT_FALSE(scene.manager->isDeviceMotionActive());
    EXPECT_FALSE(scene.source.isWanted());
}

TEST(MotionManager, BeginsWhenASourceArrivesAfterTheStart) {
    ManagerScene scene;
    scene.source.setAvailable(false);
    scene.start();
    scene.turn();
    EXPECT_FALSE(scene.manager->isDeviceMotionActive());
    EXPECT_EQ(scene.ends, 0);
    scene.publish(kFirst);
    EXPECT_TRUE(scene.manager->isDeviceMotionActive());
    EXPECT_EQ(scene.seen, std::vector<Attitude>{kFirst});
}

TEST(MotionManager, DoesNotBeginWhenItWasStoppedBeforeASourceArrived) {
    ManagerScene scene;
    scene.source.setAvailable(false);
    scene.start();
    scene.manager->stopDeviceMotionUpdates();
    scene.publish(kFirst);
    EXPECT_FALSE(scene.manager->isDeviceMotionActive());
    EXPECT_TRUE(scene.seen.empty());
}

TEST(MotionManager, HasNoMotionBeforeTheFirstSample) {
    ManagerScene scene;
    EXPECT_EQ(scene.manager->deviceMotion(), std::nullopt);
    scene.start();
    EXPECT_EQ(scene.manager->deviceMotion(), std::nullopt);
    scene.source.publish(kFirst);
    EXPECT_EQ(scene.manager->deviceMotion(), DeviceMotion{kFirst});
}

TEST(MotionManager, HasNoMotionWhileInactive) {
    ManagerScene scene;
    scene.start();
    scene.publish(kFirst);
    scene.manager->stopDeviceMotionUpdates();
    EXPECT_EQ(scene.manager->deviceMotion(), std::nullopt);
}

TEST(MotionManager, GivesItsHandlerEverySample) {
    ManagerScene scene;
    scene.start();
    scene.publish(kFirst);
    scene.publish(kSecond);
    EXPECT_EQ(scene.seen, (std::vector<Attitude>{kFirst, kSecond}));
}

TEST(MotionManager, GivesTheSampleThatTheSourceKeptToEachThatStartsLater) {
    ManagerScene scene;
    scene.publish(kFirst);
    scene.start();
    EXPECT_EQ(scene.manager->deviceMotion(), DeviceMotion{kFirst});
    EXPECT_TRUE(scene.seen.empty());
    scene.turn();
    EXPECT_EQ(scene.seen, std::vector<Attitude>{kFirst});
    scene.manager->stopDeviceMotionUpdates();
    scene.start();
    scene.turn();
    EXPECT_EQ(scene.seen, (std::vector<Attitude>{kFirst, kFirst}));
}

TEST(MotionManager, KeepsItsHandlerWhenStartedAgain) {
    ManagerScene scene;
    scene.start();
    int calls = 0;
    scene.manager->startDeviceMotionUpdates([&](const auto&) { ++calls; });
    scene.publish(kFirst);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(scene.seen.size(), 1U);
}

TEST(MotionManager, GoesOnWithAnEmptyHandler) {
    ManagerScene scene;
    scene.manager->startDeviceMotionUpdates({});
    scene.publish(kFirst);
    EXPECT_EQ(scene.manager->deviceMotion(), DeviceMotion{kFirst});
}

TEST(MotionManager, EndsWithACallWhenTheSourceGoesAway) {
    ManagerScene scene;
    scene.start();
    scene.publish(kFirst);
    scene.seen.clear();
    scene.source.setAvailable(false);
    EXPECT_FALSE(scene.manager->isDeviceMotionActive());
    EXPECT_FALSE(scene.manager->deviceMotion());
    scene.turn();
    EXPECT_EQ(scene.ends, 1);
    scene.publish(kFirst);
    EXPECT_FALSE(scene.manager->isDeviceMotionActive()) << "it is not switched on again";
    EXPECT_EQ(scene.ends, 1);
    EXPECT_TRUE(scene.seen.empty());
}

TEST(MotionManager, EndsWithACallWhenTheSourceGoesAwayBeforeItsFirstSample) {
    ManagerScene scene;
    scene.start();
    EXPECT_TRUE(scene.manager->isDeviceMotionActive());
    scene.source.setAvailable(false);
    scene.turn();
    EXPECT_EQ(scene.ends, 1);
    scene.publish(kFirst);
    EXPECT_FALSE(scene.manager->isDeviceMotionActive()) << "it is not switched on again";
    EXPECT_TRUE(scene.seen.empty());
}

TEST(MotionManager, MayBeStartedAgainByItsLastCall) {
    ManagerScene scene;
    int ends = 0;
    int samples = 0;
    std::function<void()> start = [&] {
        scene.manager->startDeviceMotionUpdates([&](const std::optional<DeviceMotion>& motion) {
            ++(motion ? samples : ends);
            if (!motion)
                start();
        });
    };
    start();
    scene.publish(kFirst);
    scene.source.setAvailable(false);
    for (int i = 0; i < 10; ++i)
        scene.turn();
    EXPECT_EQ(ends, 1) << "the sample that is kept starts nothing";
    EXPECT_EQ(samples, 1);
    scene.publish(kSecond);
    EXPECT_TRUE(scene.manager->isDeviceMotionActive());
    EXPECT_EQ(samples, 2);
}

TEST(MotionManager, CallsNobodyAfterItWasStopped) {
    ManagerScene scene;
    scene.start();
    scene.source.publish(kFirst);
    scene.manager->stopDeviceMotionUpdates();
    scene.turn();
    EXPECT_TRUE(scene.seen.empty());
}

TEST(MotionManager, StopsWithItsLastHolder) {
    ManagerScene scene;
    scene.start();
    scene.source.publish(kFirst);
    scene.manager.reset();
    EXPECT_FALSE(scene.source.isWanted());
    scene.turn();
    EXPECT_TRUE(scene.seen.empty());
}

TEST(MotionManager, MayBeStoppedByItsHandler) {
    ManagerScene scene;
    int calls = 0;
    const auto captured = std::make_shared<int>(0);
    scene.manager->startDeviceMotionUpdates([&, captured](const auto&) {
        scene.manager->stopDeviceMotionUpdates();
        calls = ++*captured;
    });
    scene.publish(kFirst);
    scene.publish(kSecond);
    EXPECT_EQ(calls, 1);
}

TEST(MotionManager, MayLoseItsLastHolderInItsHandler) {
    ManagerScene scene;
    const auto captured = std::make_shared<int>(0);
    scene.manager->startDeviceMotionUpdates([&scene, captured](const auto&) {
        scene.manager.reset();
        ++*captured;
    });
    scene.publish(kFirst);
    EXPECT_EQ(*captured, 1);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST(MotionManager, DropsSamplesThatComeSoonerThanItsInterval) {
    ManagerScene scene;
    scene.manager->setDeviceMotionUpdateInterval(0.010);
    scene.start();
    scene.publish(kFirst);
    scene.time.jumpTo(9ms);
    scene.publish(kSecond);
    EXPECT_EQ(scene.seen, std::vector<Attitude>{kFirst});
    EXPECT_EQ(scene.manager->deviceMotion(), DeviceMotion{kSecond});
    scene.time.jumpTo(10ms);
    scene.publish(kThird);
    scene.time.jumpTo(19ms);
    scene.publish(kFirst);
    EXPECT_EQ(scene.seen, (std::vector<Attitude>{kFirst, kThird}));
}

TEST(MotionManager, CountsItsIntervalAnewWhenStartedAgain) {
    ManagerScene scene;
    scene.manager->setDeviceMotionUpdateInterval(10);
    scene.start();
    scene.publish(kFirst);
    scene.manager->stopDeviceMotionUpdates();
    scene.start();
    scene.publish(kSecond);
    EXPECT_EQ(scene.seen, (std::vector<Attitude>{kFirst, kSecond}));
}

TEST(MotionManager, DropsNothingWithoutAPositiveInterval) {
    for (const double interval : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        ManagerScene scene;
        scene.manager->setDeviceMotionUpdateInterval(interval);
        scene.start();
        scene.publish(kFirst);
        scene.publish(kSecond);
        EXPECT_EQ(scene.seen.size(), 2U) << interval;
    }
}

TEST(MotionManager, GivesOneSampleForAnIntervalWithoutEnd) {
    ManagerScene scene;
    scene.manager->setDeviceMotionUpdateInterval(std::numeric_limits<double>::infinity());
    scene.start();
    scene.publish(kFirst);
    scene.time.jumpTo(1h);
    scene.publish(kSecond);
    EXPECT_EQ(scene.seen, std::vector<Attitude>{kFirst});
}

TEST(MotionManager, KeepsSeveralManagersApart) {
    ManagerScene scene;
    MotionManager other;
    int calls = 0;
    other.startDeviceMotionUpdates([&](const auto&) { ++calls; });
    scene.start();
    scene.publish(kFirst);
    scene.manager->stopDeviceMotionUpdates();
    scene.publish(kSecond);
    EXPECT_EQ(scene.seen.size(), 1U);
    EXPECT_EQ(calls, 2);
}
