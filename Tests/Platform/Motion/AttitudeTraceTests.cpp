#include "Platform/Motion/AttitudeTrace.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

using Sample = AttitudeTrace::Sample;
using Samples = std::vector<Sample>;

Samples samplesOf(std::string_view text) {
    const auto trace = AttitudeTrace::read(text, "walk.csv");
    EXPECT_TRUE(trace.ok()) << (trace.ok() ? "" : trace.error().detail);
    return trace.ok() ? trace.value().samples() : Samples{};
}

/// The message, after checking what is common to all.
std::string errorOf(std::string_view text) {
    const auto trace = AttitudeTrace::read(text, "walk.csv");
    EXPECT_FALSE(trace.ok());
    if (trace.ok())
        return {};
    EXPECT_EQ(trace.error().code, ErrorCode::Corrupt);
    EXPECT_EQ(trace.error().detail.find('\n'), std::string::npos);
    return trace.error().detail;
}

} // namespace

TEST(AttitudeTrace, ReadsASampleALine) {
    EXPECT_EQ(samplesOf("0,0,0,0,1\n0.5,1,0,0,0\n1.25,0,-1,0,0\n"),
              (Samples{{0ms, {0, 0, 0, 1}}, {500ms, {1, 0, 0, 0}}, {1250ms, {0, -1, 0, 0}}}));
}

TEST(AttitudeTrace, ReadsALastLineWithoutItsEnd) {
    EXPECT_EQ(samplesOf("0,0,0,0,1"), (Samples{{0ms, {0, 0, 0, 1}}}));
}

TEST(AttitudeTrace, SkipsAHeadingEmptyLinesAndComments) {
    EXPECT_EQ(samplesOf("# a walk\n\n seconds, x, y, z, w\n  \n# begins\n0,0,0,0,1\n #end\n"),
              (Samples{{0ms, {0, 0, 0, 1}}}));
}

TEST(AttitudeTrace, ReadsSpacesTabsAndCarriageReturns) {
    EXPECT_EQ(samplesOf("seconds,x,y,z,w\r\n 0 ,\t0, 0,0 ,1 \r\n\r\n1,0,0,0,1\r\n"),
              (Samples{{0ms, {0, 0, 0, 1}}, {1s, {0, 0, 0, 1}}}));
}

TEST(AttitudeTrace, MayBeEmpty) {
    EXPECT_TRUE(samplesOf("").empty());
    EXPECT_TRUE(samplesOf("seconds,x,y,z,w\n# nothing\n").empty());
}

TEST(AttitudeTrace, MakesQuaternionsOfUnitLength) {
    const Samples samples = samplesOf("0,0,3,0,4\n1,1e300,0,0,1e300\n2,0,0,1e-300,0\n");
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_DOUBLE_EQ(samples[0].attitude.y, 0.6);
    EXPECT_DOUBLE_EQ(samples[0].attitude.w, 0.8);
    EXPECT_DOUBLE_EQ(samples[1].attitude.x, std::sqrt(0.5));
    EXPECT_DOUBLE_EQ(samples[2].attitude.z, 1);
}

TEST(AttitudeTrace, AllowsSecondsThatStandStillOrBeginBelowZero) {
    const Samples samples = samplesOf("-0.5,0,0,0,1\n-0.5,1,0,0,0\n0,0,0,0,1\n");
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples[1].at, -500ms);
}

TEST(AttitudeTrace, ReadsPointsInEveryLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    // Whichever is installed writes numbers with a comma; without any the test shows nothing more.
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8"})
        if (std::setlocale(LC_ALL, name))
            break;
    EXPECT_EQ(samplesOf("0.5,0,0,0,1\n"), (Samples{{500ms, {0, 0, 0, 1}}}));
    std::setlocale(LC_ALL, before.c_str());
}

TEST(AttitudeTrace, NamesTheFieldThatIsNoNumber) {
    EXPECT_EQ(errorOf("0,0,0,0,1\n\n1,0,left,0,1\n"),
              "walk.csv: line 3: y: \"left\" is not a number");
    EXPECT_EQ(errorOf("0,0,0,0,1x\n"), "walk.csv: line 1: w: \"1x\" is not a number");
    EXPECT_EQ(errorOf("0,,0,0,1\n"), "walk.csv: line 1: x: \"\" is not a number");
}

TEST(AttitudeTrace, NamesTheFieldThatIsNotFinite) {
    EXPECT_EQ(errorOf("0,0,0,nan,1\n"), "walk.csv: line 1: z: \"nan\" is not finite");
    EXPECT_EQ(errorOf("inf,0,0,0,1\n"), "walk.csv: line 1: seconds: \"inf\" is not finite");
    EXPECT_EQ(errorOf("0,1e999,0,0,1\n"), "walk.csv: line 1: x: \"1e999\" is out of range");
}

TEST(AttitudeTrace, SaysHowManyFieldsThereAre) {
    EXPECT_EQ(errorOf("0,0,0,1\n"), "walk.csv: line 1: 4 fields instead of 5: seconds,x,y,z,w");
    EXPECT_EQ(errorOf("0,0,0,0,1,\n"), "walk.csv: line 1: 6 fields instead of 5: seconds,x,y,z,w");
    EXPECT_EQ(errorOf("hello\n"), "walk.csv: line 1: 1 field instead of 5: seconds,x,y,z,w");
}

TEST(AttitudeTrace, RefusesAHeadingThatIsNotAtTheBeginning) {
    EXPECT_EQ(errorOf("0,0,0,0,1\nseconds,x,y,z,w\n"),
              "walk.csv: line 2: seconds: \"seconds\" is not a number");
}

TEST(AttitudeTrace, RefusesAQuaternionOfZeros) {
    EXPECT_EQ(errorOf("0,0,0,-0,0\n"), "walk.csv: line 1: x,y,z,w: all zero, which is no attitude");
}

TEST(AttitudeTrace, RefusesSecondsThatGoBackwards) {
    EXPECT_EQ(errorOf("1,0,0,0,1\n0.9,0,0,0,1\n"), "walk.csv: line 2: seconds: go backwards");
}

TEST(AttitudeTrace, RefusesSecondsThatNoInstantHolds) {
    EXPECT_EQ(errorOf("1e10,0,0,0,1\n"), "walk.csv: line 1: seconds: beyond a thousand million");
}

TEST(AttitudeTrace, ShowsDamagedFieldsShortAndPrintable) {
    EXPECT_EQ(errorOf(std::string("0,a\x1b\x80\0b,0,0,1\n", 14)),
              "walk.csv: line 1: x: \"a???b\" is not a number");
    EXPECT_EQ(errorOf("0," + std::string(1000, 'a') + ",0,0,1\n"),
              "walk.csv: line 1: x: \"" + std::string(40, 'a') + "…\" is not a number");
}
