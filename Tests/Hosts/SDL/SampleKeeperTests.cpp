#include "Hosts/Embedded/SampleKeeper.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gtest/gtest.h>

#include <memory>

using namespace std::chrono_literals;
using platform::Attitude;
using platform::AttitudeSource;

namespace {

constexpr Attitude kTurned{0, 0, 0.6, 0.8};

/// A source with one sample, and a listener that counts.
struct KeeperScene {
    KeeperScene() {
        source.publish(kTurned);
        advance(100ms);
        samples = 0;
    }
    void advance(platform::Instant span) { host->advanceTo(host->now() + span); }
    /// How many samples come within a time.
    int samplesWithin(platform::Instant span) {
        samples = 0;
        advance(span);
        return samples;
    }
    [[nodiscard]] bool isAtRest() { return !host->embedded().runDueWork().nextDeadline; }

    std::unique_ptr<zanto::HeadlessHost> host = makeHost({16, 9});
    AttitudeSource& source = AttitudeSource::shared();
    int samples = 0;
    std::shared_ptr<AttitudeSource::Subscription> subscription =
        source.subscribe([this] { ++samples; });
    zanto::SampleKeeper keeper;
};

} // namespace

TEST(SampleKeeper, DoesNothingByItself) {
    KeeperScene s;
    EXPECT_EQ(s.samplesWithin(1s), 0);
    EXPECT_TRUE(s.isAtRest());
}

TEST(SampleKeeper, RepeatsTheLastSampleOnceAFrameWhileAFingerIsDown) {
    KeeperScene s;
    s.keeper.noteTouch(true);
    EXPECT_NEAR(s.samplesWithin(1s), 60, 1);
    EXPECT_NEAR(s.samplesWithin(10s), 600, 1) << "however long it rests there";
    EXPECT_EQ(*s.source.latest(), kTurned);
}

TEST(SampleKeeper, GoesOnForThreeSecondsAfterTheLastTouch) {
    KeeperScene s;
    s.keeper.noteTouch(true);
    s.advance(5s);
    s.keeper.noteTouch(false);
    EXPECT_NEAR(s.samplesWithin(10s), 180, 2);
    EXPECT_TRUE(s.isAtRest());
}

TEST(SampleKeeper, GoesOnForThreeSecondsAfterTheLastTurn) {
    KeeperScene s;
    s.keeper.noteTurn();
    s.advance(2s);
    s.keeper.noteTurn();
    EXPECT_NEAR(s.samplesWithin(10s), 180, 2);
    EXPECT_TRUE(s.isAtRest());
}

TEST(SampleKeeper, StartsAgain) {
    KeeperScene s;
    s.keeper.noteTouch(false);
    s.advance(10s);
    s.keeper.noteTouch(true);
    EXPECT_NEAR(s.samplesWithin(1s), 60, 1);
}

TEST(SampleKeeper, BeatsOnceAFrameHoweverOftenItIsTold) {
    KeeperScene s;
    for (int i = 0; i < 100; ++i)
        s.keeper.noteTouch(true);
    EXPECT_NEAR(s.samplesWithin(1s), 60, 1);
}

TEST(SampleKeeper, LeavesASourceAloneThatIsAtWork) {
    KeeperScene s;
    s.keeper.noteTouch(true);
    s.advance(100ms);
    s.samples = 0;
    for (int i = 1; i <= 60; ++i) {
        s.source.publish({0, 0, i / 100.0, 1});
        s.advance(17ms);
    }
    EXPECT_NEAR(s.samples, 60, 4) << "hardly more than it delivers itself";
    EXPECT_NEAR(s.samplesWithin(1s), 60, 1) << "and takes over when it goes quiet";
    EXPECT_EQ(s.source.latest()->z, 0.6);
}

TEST(SampleKeeper, NeedsAListener) {
    KeeperScene s;
    s.subscription.reset();
    s.keeper.noteTouch(true);
    EXPECT_TRUE(s.isAtRest());
}

TEST(SampleKeeper, RestsOnceNobodyListens) {
    KeeperScene s;
    s.keeper.noteTouch(true);
    s.advance(1s);
    s.subscription.reset();
    s.advance(100ms);
    EXPECT_TRUE(s.isAtRest());
}

TEST(SampleKeeper, NeedsASourceThatIsThere) {
    KeeperScene s;
    s.source.setAvailable(false);
    s.advance(50ms); // listeners hear that it has gone
    s.keeper.noteTouch(true);
    EXPECT_EQ(s.samplesWithin(1s), 0);
    EXPECT_FALSE(s.source.isAvailable()) << "and does not bring it back";
}

TEST(SampleKeeper, StopsWithTheSource) {
    KeeperScene s;
    s.keeper.noteTouch(true);
    s.advance(1s);
    s.source.setAvailable(false);
    EXPECT_LE(s.samplesWithin(1s), 1);
    EXPECT_FALSE(s.source.isAvailable());
}

TEST(SampleKeeper, InventsNoSample) {
    const auto host = makeHost({16, 9});
    AttitudeSource::shared().setAvailable(true);
    int samples = 0;
    const auto subscription = AttitudeSource::shared().subscribe([&] { ++samples; });
    zanto::SampleKeeper keeper;
    keeper.noteTouch(true);
    host->advanceTo(1s);
    EXPECT_EQ(samples, 0);
    EXPECT_FALSE(AttitudeSource::shared().latest());
}

TEST(SampleKeeper, MayGoWhileItBeats) {
    KeeperScene s;
    {
        zanto::SampleKeeper passing;
        passing.noteTouch(true);
    }
    EXPECT_EQ(s.samplesWithin(1s), 0);
}
