#include "Hosts/SDL/EventTimes.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using platform::Instant;

TEST(EventTimes, AreAsLongAgoAsTheEventIsOld) {
    zanto::EventTimes times;
    EXPECT_EQ(times.instantOf(1000, 1000, 5s), Instant(5s));
    EXPECT_EQ(times.instantOf(1500, 1600, 6s), Instant(5900ms));
}

TEST(EventTimes, AreNeverLaterThanNow) {
    zanto::EventTimes times;
    EXPECT_EQ(times.instantOf(1010, 1000, 5s), Instant(5s));
}

TEST(EventTimes, NeverGoBackwards) {
    zanto::EventTimes times;
    EXPECT_EQ(times.instantOf(1000, 1000, 5s), Instant(5s));
    EXPECT_EQ(times.instantOf(900, 1000, 5s), Instant(5s));
    EXPECT_EQ(times.instantOf(1100, 1200, 5200ms), Instant(5100ms));
}

TEST(EventTimes, AreNotBeforeTheClocksZero) {
    zanto::EventTimes times;
    EXPECT_EQ(times.instantOf(0, 60000, 1s), Instant(0));
}

TEST(EventTimes, GoOnWhenTheCounterComesRound) {
    zanto::EventTimes times;
    EXPECT_EQ(times.instantOf(0xfffffff6U, 90, 5s), Instant(4900ms));
}

TEST(EventTimes, OfOnePumpLessThanAFrameApartAreOneInstant) {
    zanto::EventTimes times;
    EXPECT_EQ(times.instantOf(1000, 1000, 5s), Instant(5s));
    EXPECT_EQ(times.instantOf(1001, 1001, 5001ms), Instant(5s));
    EXPECT_EQ(times.instantOf(1016, 1016, 5016ms), Instant(5s));
    EXPECT_EQ(times.instantOf(1017, 1017, 5017ms), Instant(5017ms)) << "stamped when it happened";
    EXPECT_EQ(times.instantOf(1018, 1018, 5018ms), Instant(5017ms));
}

TEST(EventTimes, OfAnotherPumpAreApart) {
    zanto::EventTimes times;
    EXPECT_EQ(times.instantOf(1000, 1000, 5s), Instant(5s));
    times.endPump();
    EXPECT_EQ(times.instantOf(1001, 1001, 5001ms), Instant(5001ms));
}
