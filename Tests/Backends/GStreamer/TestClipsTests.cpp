#include "Tests/Support/TestClips.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using tests::ClipCodec;
using tests::ClipOptions;

TEST(TestClips, AreMadeOnceForTheSameWishes) {
    EXPECT_EQ(tests::testClip({.frames = 2}), tests::testClip({.frames = 2}));
    EXPECT_NE(tests::testClip({.frames = 2}), tests::testClip({.frames = 3}));
}

TEST(TestClips, AFrameShowsItsNumber) {
    for (const int number : {0, 1, 29, 0x8001, 0xffff})
        EXPECT_EQ(tests::readFrameNumber(*tests::counterFrame({128, 64}, number)), number);
}

TEST(TestClips, AFrameOfAnOddSizeShowsItsNumber) {
    EXPECT_EQ(tests::readFrameNumber(*tests::counterFrame({127, 63}, 0x5a5a)), 0x5a5a);
}

TEST(TestClips, UnevenTimesMoveEveryOtherFrameByHalfAnInterval) {
    const ClipOptions options{.framesPerSecond = 10, .times = tests::ClipTimes::Uneven};
    EXPECT_EQ(tests::frameTime(options, 2), platform::fromSeconds(0.2));
    EXPECT_EQ(tests::frameTime(options, 3), platform::fromSeconds(0.35));
}

} // namespace
