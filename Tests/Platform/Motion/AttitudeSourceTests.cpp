#include "Platform/Motion/AttitudeSource.h"
#include "Tests/Platform/Motion/MotionScene.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

using namespace platform;

namespace {

using Token = std::shared_ptr<AttitudeSource::Subscription>;

} // namespace

TEST(AttitudeSource, IsUnavailableAndWithoutASampleAtFirst) {
    const MotionScene scene;
    EXPECT_FALSE(scene.source.isAvailable());
    EXPECT_FALSE(scene.source.isWanted());
    EXPECT_EQ(scene.source.latest(), std::nullopt);
}

TEST(AttitudeSource, IsAvailableAsTheHostSays) {
    const MotionScene scene;
    scene.source.setAvailable(true);
    EXPECT_TRUE(scene.source.isAvailable());
    scene.source.setAvailable(false);
    EXPECT_FALSE(scene.source.isAvailable());
}

TEST(AttitudeSource, IsAvailableOnceASampleHasCome) {
    const MotionScene scene;
    scene.source.publish(kFirst);
    EXPECT_TRUE(scene.source.isAvailable());
    EXPECT_EQ(scene.source.latest(), kFirst);
}

TEST(AttitudeSource, TellsOfASampleInALaterTurn) {
    const MotionScene scene;
    int calls = 0;
    const Token token = scene.source.subscribe([&] { ++calls; });
    scene.turn();
    EXPECT_EQ(calls, 0);
    scene.source.publish(kFirst);
    EXPECT_EQ(calls, 0);
    scene.turn();
    EXPECT_EQ(calls, 1);
    scene.turn();
    EXPECT_EQ(calls, 1);
}

TEST(AttitudeSource, TellsEachListenerOnceOfAllSamplesBeforeATurn) {
    const MotionScene scene;
    std::vector<Attitude> seen;
    const auto listen = [&] { seen.push_back(*scene.source.latest()); };
    const Token one = scene.source.subscribe(listen);
    const Token other = scene.source.subscribe(listen);
    scene.source.publish(kFirst);
    scene.source.publish(kSecond);
    scene.turn();
    EXPECT_EQ(seen, (std::vector<Attitude>{kSecond, kSecond}));
    scene.source.publish(kThird);
    scene.turn();
    EXPECT_EQ(seen.size(), 4U);
}

TEST(AttitudeSource, TellsAtOnceOfASampleThatIsThereAlready) {
    const MotionScene scene;
    scene.source.publish(kFirst);
    int calls = 0;
    const Token token = scene.source.subscribe([&] { ++calls; });
    EXPECT_EQ(calls, 0);
    scene.turn();
    EXPECT_EQ(calls, 1);
}

TEST(AttitudeSource, TellsNobodyWhoseTokenIsGoneEvenIfACallIsWaiting) {
    const MotionScene scene;
    int calls = 0;
    Token token = scene.source.subscribe([&] { ++calls; });
    scene.source.publish(kFirst);
    token.reset();
    scene.turn();
    scene.source.publish(kSecond);
    scene.turn();
    EXPECT_EQ(calls, 0);
}

TEST(AttitudeSource, LetsAHandlerDropItsOwnToken) {
    const MotionScene scene;
    Token token;
    const auto captured = std::make_shared<int>(0);
    token = scene.source.subscribe([&, captured] {
        token.reset();
        ++*captured; // what the handler captured is still there
    });
    scene.source.publish(kFirst);
    scene.turn();
    EXPECT_FALSE(scene.source.isWanted());
    scene.source.publish(kSecond);
    scene.turn();
    EXPECT_EQ(*captured, 1);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST(AttitudeSource, TellsNobodyWhoseTokenAHandlerDroppedInTheSameTurn) {
    const MotionScene scene;
    int calls = 0;
    Token second;
    const Token first = scene.source.subscribe([&] { second.reset(); });
    second = scene.source.subscribe([&] { ++calls; });
    scene.source.publish(kFirst);
    scene.turn();
    EXPECT_EQ(calls, 0);
}

TEST(AttitudeSource, TellsAHandlerThatPublishesAndDropsItselfNoMore) {
    const MotionScene scene;
    int calls = 0;
    Token token;
    token = scene.source.subscribe([&] {
        ++calls;
        scene.source.publish(kSecond);
        token.reset();
        scene.turn(); // even a turn inside the call
    });
    scene.source.publish(kFirst);
    scene.turn();
    scene.turn();
    EXPECT_EQ(calls, 1);
}

TEST(AttitudeSource, LetsAHandlerSubscribeAnother) {
    const MotionScene scene;
    int calls = 0;
    Token added;
    const Token token = scene.source.subscribe([&] {
        if (!added)
            added = scene.source.subscribe([&] { ++calls; });
    });
    scene.source.publish(kFirst);
    scene.turn();
    EXPECT_EQ(calls, 0);
    scene.turn();
    EXPECT_EQ(calls, 1);
}

TEST(AttitudeSource, TellsOfASampleThatAHandlerPublishesInTheNextTurn) {
    const MotionScene scene;
    std::vector<Attitude> seen;
    const Token token = scene.source.subscribe([&] {
        seen.push_back(*scene.source.latest());
        if (seen.size() == 1)
            scene.source.publish(kSecond);
    });
    scene.source.publish(kFirst);
    scene.turn();
    EXPECT_EQ(seen, std::vector<Attitude>{kFirst});
    scene.turn();
    EXPECT_EQ(seen, (std::vector<Attitude>{kFirst, kSecond}));
}

TEST(AttitudeSource, GoesOnTellingAfterAQueueThatDroppedItsBlocks) {
    const MotionScene scene;
    int calls = 0;
    const Token token = scene.source.subscribe([&] { ++calls; });
    scene.source.publish(kFirst);
    MainQueue::main().reset();
    scene.source.publish(kSecond);
    scene.turn();
    EXPECT_EQ(calls, 1);
}

TEST(AttitudeSource, KeepsItsListenersOverAResetButTellsThemNothingOld) {
    const MotionScene scene;
    int calls = 0;
    const Token token = scene.source.subscribe([&] { ++calls; });
    scene.source.publish(kFirst);
    scene.source.reset();
    EXPECT_FALSE(scene.source.isAvailable());
    EXPECT_EQ(scene.source.latest(), std::nullopt);
    EXPECT_TRUE(scene.source.isWanted());
    scene.turn();
    EXPECT_EQ(calls, 0);
    scene.source.publish(kSecond);
    scene.turn();
    EXPECT_EQ(calls, 1);
}

TEST(AttitudeSource, SaysWhetherAnybodyListensAtOnceAndAtEveryChange) {
    const MotionScene scene;
    std::vector<bool> demands;
    scene.source.setDemandListener([&](bool wanted) { demands.push_back(wanted); });
    EXPECT_EQ(demands, std::vector<bool>{false});
    Token first = scene.source.subscribe([] {});
    Token second = scene.source.subscribe([] {});
    EXPECT_EQ(demands, (std::vector<bool>{false, true}));
    first.reset();
    EXPECT_EQ(demands, (std::vector<bool>{false, true}));
    second.reset();
    EXPECT_EQ(demands, (std::vector<bool>{false, true, false}));
}

TEST(AttitudeSource, SaysThatSomebodyListensAlready) {
    const MotionScene scene;
    std::vector<bool> demands;
    const Token token = scene.source.subscribe([] {});
    scene.source.setDemandListener([&](bool wanted) { demands.push_back(wanted); });
    EXPECT_EQ(demands, std::vector<bool>{true});
}

TEST(AttitudeSource, TellsOfDemandNoLongerAfterAResetOrAnEmptyListener) {
    const MotionScene scene;
    int calls = 0;
    scene.source.setDemandListener([&](bool) { ++calls; });
    scene.source.setDemandListener({});
    Token token = scene.source.subscribe([] {});
    scene.source.setDemandListener([&](bool) { ++calls; });
    EXPECT_EQ(calls, 2);
    scene.source.reset();
    token.reset();
    EXPECT_EQ(calls, 2);
}

TEST(AttitudeSource, RefusesWhatIsNotARotation) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const LogRecorder log;
    MotionScene scene;
    for (const Attitude& refused :
         {Attitude{0, 0, 0, 0}, Attitude{kNaN, 0, 0, 1}, Attitude{0, kNaN, 0, kInfinity},
          Attitude{0, 0, kInfinity, 0}, Attitude{0, 0, 0, 1e200}, Attitude{1e-200, 0, 0, 0}})
        scene.source.publish(refused);
    EXPECT_FALSE(scene.source.isAvailable());
    EXPECT_EQ(scene.source.latest(), std::nullopt);
    scene.source.publish(kFirst);
    scene.source.publish({0, 0, 0, 0});
    EXPECT_EQ(scene.source.latest(), kFirst);
}

TEST(AttitudeSource, LogsARefusedSampleOnceUntilAGoodOneComes) {
    const LogRecorder log;
    MotionScene scene;
    for (int i = 0; i < 100; ++i)
        scene.source.publish({0, 0, 0, 0});
    EXPECT_EQ(log.lines().size(), 1U);
    scene.source.publish(kFirst);
    EXPECT_EQ(log.lines().size(), 1U);
    scene.source.publish({0, 0, 0, 0});
    EXPECT_EQ(log.lines().size(), 2U);
}

TEST(AttitudeSource, TakesARotationWhoseLengthIsNotExactlyOne) {
    MotionScene scene;
    scene.source.publish({0, 0, 0, 0.5});
    EXPECT_EQ(scene.source.latest(), (Attitude{0, 0, 0, 0.5}));
    scene.source.publish({1, 1, 1, 1});
    EXPECT_EQ(scene.source.latest(), (Attitude{1, 1, 1, 1}));
}

TEST(AttitudeSource, TellsNoNewListenerOfTheSampleOfASourceThatHasGone) {
    const MotionScene scene;
    scene.source.publish(kFirst);
    scene.source.setAvailable(false);
    int calls = 0;
    const Token token = scene.source.subscribe([&] { ++calls; });
    scene.turn();
    EXPECT_EQ(calls, 0);
    scene.source.publish(kSecond);
    scene.turn();
    EXPECT_EQ(calls, 1);
}
