#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

using platform::fromSeconds;
using platform::Instant;
using testing::ElementsAre;
using tests::ClipCodec;
using tests::ClipOptions;
using tests::ClipPicture;
using tests::ClipRange;
using tests::ClipTimes;
using tests::OpenedPipeline;
using tests::testClip;

namespace {

/// Plays it from the start to the end and reads every frame in the middle of its time.
void expectEveryFrame(const ClipOptions& options) {
    OpenedPipeline opened(testClip(options));
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.notes->media->naturalSize, options.size);
    opened.pipeline->play();
    for (int frame = 0; frame < options.frames; ++frame)
        ASSERT_EQ(opened.frameAtHostTime(tests::frameTime(options, frame) + fromSeconds(0.008)),
                  frame);
}

/// The colours that reach the program are those that went in.
void expectPatches(const ClipOptions& options) {
    OpenedPipeline opened(testClip(options));
    ASSERT_TRUE(opened.open());
    const auto frame = opened.decodedFrame(Instant::zero());
    ASSERT_TRUE(frame);
    for (std::size_t index = 0; index < tests::kPatches.size(); ++index) {
        const tests::YCbCr found = tests::patchIn(*frame->pixels, index);
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_NEAR(found.at(i), tests::kPatches.at(index).at(i), 3)
                << "patch " << index << ", channel " << i;
    }
}

ClipOptions patches() {
    return {.frames = 2, .picture = ClipPicture::Patches};
}

} // namespace

TEST(MediaFormats, H265IsDecoded) {
    expectEveryFrame({.frames = 15, .codec = ClipCodec::H265});
}

TEST(MediaFormats, VP9IsDecoded) {
    expectEveryFrame({.frames = 15, .codec = ClipCodec::VP9, .container = "webm"});
}

TEST(MediaFormats, AV1IsDecoded) {
    expectEveryFrame({.frames = 15, .codec = ClipCodec::AV1, .container = "mkv"});
}

TEST(MediaFormats, FramesThatAreReorderedForCodingComeInTheirOrder) {
    expectEveryFrame({.frames = 25, .more = {"-bf", "3"}});
}

TEST(MediaFormats, UnevenFrameTimesAreKept) {
    expectEveryFrame({.framesPerSecond = 15, .frames = 12, .times = ClipTimes::Uneven});
}

TEST(MediaFormats, AnOddSizeIsKept) {
    expectEveryFrame({.size = {639, 359}, .frames = 3, .pixelFormat = "yuv444p"});
}

TEST(MediaFormats, AnOddSizeOfHalvedColoursIsKept) {
    expectEveryFrame({.size = {127, 63}, .frames = 3, .codec = ClipCodec::VP9, .container = "mkv"});
}

TEST(MediaFormats, ATransportStreamBeginsWithItsFirstFrame) {
    expectEveryFrame({.frames = 15, .container = "ts"});
}

TEST(MediaFormats, ATransportStreamIsSoughtFromItsFirstFrameOn) {
    // Padded: the library finds its way about in larger files only.
    OpenedPipeline opened(testClip({.frames = 90, .container = "ts", .more = {"-muxrate", "2M"}}));
    ASSERT_TRUE(opened.open());
    for (const int frame : {40, 3, 80, 0, 60}) {
        const Instant target = tests::frameTime({}, frame) + fromSeconds(0.01);
        ASSERT_TRUE(opened.seekAndWait(target));
        EXPECT_EQ(opened.frameAtItemTime(target), frame);
    }
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(2)));
    EXPECT_EQ(opened.notes->count("end"), 1);
    EXPECT_NEAR(platform::toSeconds(opened.position()), 3, 0.002);
}

TEST(MediaFormats, ATransportStreamPacedByTheMachineBeginsWithItsFirstFrame) {
    OpenedPipeline opened(
        platform::URL::fileURLWithPath(testClip({.frames = 15, .container = "ts"})),
        platform::MediaPacing::Machine, tests::QueueDriver::Time::Real);
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    int frames = 0;
    ASSERT_TRUE(opened.queue.runUntil([&] {
        opened.queue.lookAgainIn(fromSeconds(0.005));
        const auto frame = opened.pipeline->frameAt(opened.position());
        if (frame) {
            EXPECT_NEAR(platform::toSeconds(frame->time),
                        tests::readFrameNumber(*frame->pixels).value_or(-1) / 30.0, 0.002);
            ++frames;
        }
        return opened.notes->count("end") > 0;
    }));
    EXPECT_GT(frames, 0);
    EXPECT_NEAR(platform::toSeconds(opened.position()), 0.5, 0.04);
}

TEST(MediaFormats, OneFrameIsAVideo) {
    OpenedPipeline opened(testClip({.frames = 1}));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.1)));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end"));
    EXPECT_EQ(opened.frameAtItemTime(opened.position()), 0);
}

namespace {

/// Half a second of pictures, a second and a half of sound.
ClipOptions longSound() {
    return {.frames = 15, .sound = tests::ClipSound::Tone, .more = {"-af", "apad=pad_dur=1"}};
}

} // namespace

TEST(MediaFormats, SoundThatOutlastsThePicturesIsPlayedToItsEnd) {
    OpenedPipeline opened(testClip(longSound()));
    ASSERT_TRUE(opened.open());
    const Instant end = opened.notes->media->duration.value_or(Instant(0));
    ASSERT_GT(end, fromSeconds(1.4));
    opened.pipeline->play();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(1)), 14);
    EXPECT_EQ(opened.position(), fromSeconds(1));
    ASSERT_TRUE(opened.queue.advanceTo(end - fromSeconds(0.01)));
    EXPECT_EQ(opened.notes->count("end"), 0);
    ASSERT_TRUE(opened.queue.advanceTo(end + fromSeconds(0.01)));
    EXPECT_EQ(opened.notes->count("end"), 1);
    EXPECT_EQ(opened.position(), end);
    EXPECT_EQ(opened.frameAtItemTime(opened.position()), 14);
}

TEST(MediaFormats, SoundThatOutlastsThePicturesEndsAtTheSamePlaceInBothPacings) {
    std::vector<Instant> ends;
    for (const auto& [pacing, time] :
         {std::pair{platform::MediaPacing::Host, tests::QueueDriver::Time::Virtual},
          {platform::MediaPacing::Machine, tests::QueueDriver::Time::Real}}) {
        OpenedPipeline opened(platform::URL::fileURLWithPath(testClip(longSound())), pacing, time);
        ASSERT_TRUE(opened.open());
        opened.pipeline->play();
        if (time == tests::QueueDriver::Time::Virtual) {
            ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(3)));
        }
        ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("end") > 0; }));
        ends.push_back(opened.position());
    }
    EXPECT_EQ(ends.front(), ends.back());
}

TEST(MediaFormats, ASeekIntoSoundWithoutPicturesPlaysToTheSoundsEnd) {
    OpenedPipeline opened(testClip(longSound()));
    ASSERT_TRUE(opened.open());
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(1.2)));
    EXPECT_EQ(opened.position(), fromSeconds(1.2));
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.2)));
    EXPECT_EQ(opened.notes->count("end"), 0);
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(1)));
    EXPECT_EQ(opened.notes->count("end"), 1);
}

TEST(MediaFormats, SquarePixelsAreWhatASizeCounts) {
    OpenedPipeline opened(testClip({.frames = 2, .more = {"-aspect", "4:1"}}));
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.notes->media->naturalSize, (platform::SizePx{256, 64}));
}

TEST(MediaColours, OfVideoRangeAreHandedOn) {
    expectPatches(patches());
}

TEST(MediaColours, OfFullRangeAreBroughtIntoVideoRange) {
    ClipOptions options = patches();
    options.range = ClipRange::Full;
    expectPatches(options);
}

TEST(MediaColours, OfFullRangeInAnotherMatrixKeepTheMatrix) {
    for (const std::string matrix : {"bt709", "smpte170m", "bt2020nc"}) {
        ClipOptions options = patches();
        options.range = ClipRange::Full;
        options.more = {"-colorspace", matrix};
        expectPatches(options);
    }
}

TEST(MediaColours, OfAnyMatrixKeepTheMatrix) {
    for (const std::string matrix : {"bt709", "smpte170m", "bt2020nc"}) {
        ClipOptions options = patches();
        options.more = {"-colorspace", matrix};
        expectPatches(options);
    }
}

TEST(MediaColours, OfTenBitsAreRounded) {
    ClipOptions options = patches();
    options.pixelFormat = "yuv420p10le";
    expectPatches(options);
}

TEST(MediaColours, OfTenBitsInFullRangeAreRoundedToo) {
    ClipOptions options = patches();
    options.pixelFormat = "yuv420p10le";
    options.range = ClipRange::Full;
    expectPatches(options);
}

TEST(MediaColours, OfFinerLayoutsAreHalved) {
    for (const std::string format : {"yuv422p", "yuv444p", "yuv422p10le"}) {
        ClipOptions options = patches();
        options.pixelFormat = format;
        expectPatches(options);
    }
}
