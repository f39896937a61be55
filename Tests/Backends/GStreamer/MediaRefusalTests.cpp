#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/PictureFiles.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

using platform::ErrorCode;
using platform::MediaPacing;
using platform::URL;
using testing::ElementsAre;
using testing::HasSubstr;
using tests::Bytes;
using tests::OpenedPipeline;
using tests::QueueDriver;
using tests::testClip;

namespace {

Bytes bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

Bytes contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

platform::Error refusalOf(const URL& url, MediaPacing pacing, QueueDriver::Time time) {
    OpenedPipeline opened(url, pacing, time);
    EXPECT_FALSE(opened.open());
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
    EXPECT_THAT(opened.notes->events, ElementsAre("fail"));
    return opened.notes->error.value_or(platform::Error{});
}

/// What both kinds of pacing say about it, which is the same.
platform::Error refusalOf(const URL& url) {
    const auto error = refusalOf(url, MediaPacing::Host, QueueDriver::Time::Virtual);
    const auto again = refusalOf(url, MediaPacing::Machine, QueueDriver::Time::Real);
    EXPECT_EQ(error.code, again.code);
    EXPECT_EQ(error.detail, again.detail);
    return error;
}

platform::Error refusalOf(const std::string& path) {
    return refusalOf(URL::fileURLWithPath(path));
}

class MediaRefusal : public testing::Test {
protected:
    platform::Error refusalOfBytes(const Bytes& bytes, const std::string& name = "a.mp4") {
        return refusalOf(folder.add(name, bytes));
    }
    tests::TemporaryFolder folder;
};

} // namespace

TEST_F(MediaRefusal, OfAFileThatIsNotThere) {
    const auto error = refusalOf(folder.pathOf("nothing.mp4"));
    EXPECT_EQ(error.code, ErrorCode::Missing);
    EXPECT_EQ(error.detail, "there is no such file");
}

TEST_F(MediaRefusal, OfAFolder) {
    const auto error = refusalOf(folder.path());
    EXPECT_EQ(error.code, ErrorCode::Unsupported);
    EXPECT_EQ(error.detail, "it is a folder");
}

TEST_F(MediaRefusal, OfAPipe) {
    const std::string path = folder.pathOf("pipe.mp4");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(refusalOf(path).detail, "it is not an ordinary file");
}

TEST_F(MediaRefusal, OfAnEmptyFile) {
    const auto error = refusalOfBytes({});
    EXPECT_EQ(error.code, ErrorCode::Corrupt);
    EXPECT_EQ(error.detail, "the file is empty");
}

TEST_F(MediaRefusal, OfAText) {
    const auto error = refusalOfBytes(bytesOf("This is not a video, but a text with a few words."));
    EXPECT_EQ(error.code, ErrorCode::Unsupported);
    EXPECT_EQ(error.detail, "it is not a video of a known kind");
}

TEST_F(MediaRefusal, OfAWebPage) {
    const auto error = refusalOfBytes(bytesOf("<!DOCTYPE html><html><body>No.</body></html>"));
    EXPECT_EQ(error.code, ErrorCode::Unsupported);
    EXPECT_EQ(error.detail, "it is not a video of a known kind");
}

TEST_F(MediaRefusal, OfNoise) {
    Bytes noise(4096);
    std::uint32_t state = 1;
    for (auto& byte : noise)
        byte = static_cast<std::uint8_t>((state = state * 1664525 + 1013904223) >> 24);
    EXPECT_EQ(refusalOfBytes(noise).code, ErrorCode::Unsupported);
}

TEST_F(MediaRefusal, OfAStillPicture) {
    const tests::TestPicture picture = tests::quadrants(64, 32);
    for (const auto& [name, bytes] :
         {std::pair{"a.jpg", tests::jpegFile(picture)}, {"a.png", tests::pngFile(picture)}}) {
        const auto error = refusalOfBytes(bytes, name);
        EXPECT_EQ(error.code, ErrorCode::Unsupported);
        EXPECT_EQ(error.detail, "it holds no video, but a still picture");
    }
}

TEST_F(MediaRefusal, OfAVideoWithoutAFrame) {
    const std::string clip =
        tests::remuxedClip({}, {"-f", "hls", "-hls_segment_type", "fmp4", "list.m3u8"});
    const auto error = refusalOf(clip + "/init.mp4");
    EXPECT_EQ(error.code, ErrorCode::Corrupt);
}

TEST_F(MediaRefusal, OfAPlaylistInAFile) {
    const auto error = refusalOfBytes(bytesOf("#EXTM3U\n#EXTINF:1,\nsegment.ts\n"), "list.m3u8");
    EXPECT_EQ(error.code, ErrorCode::Unsupported);
    EXPECT_THAT(error.detail, HasSubstr("from a web server only"));
}

TEST_F(MediaRefusal, OfAnotherScheme) {
    const auto error = refusalOf(*URL::URLWithString("rtsp://127.0.0.1/a"));
    EXPECT_EQ(error.code, ErrorCode::Unsupported);
    EXPECT_EQ(error.detail, "addresses of the kind 'rtsp' are not played");
}

TEST_F(MediaRefusal, OfAFileCutShortBeforeItsIndex) {
    Bytes bytes = contentsOf(testClip());
    bytes.resize(bytes.size() / 2);
    EXPECT_EQ(refusalOfBytes(bytes).code, ErrorCode::Corrupt);
}

TEST_F(MediaRefusal, OfAFormatWithoutADecoder) {
    Bytes bytes = contentsOf(testClip());
    const std::string_view known = "avc1";
    // The last of them: the first one is in the list of brands.
    const auto found = std::find_end(bytes.begin(), bytes.end(), known.begin(), known.end());
    ASSERT_NE(found, bytes.end());
    std::fill_n(found, known.size(), std::uint8_t{'z'});
    const auto error = refusalOfBytes(bytes);
    EXPECT_EQ(error.code, ErrorCode::Unsupported);
    EXPECT_THAT(error.detail, HasSubstr("no decoder for it is installed: "));
}

TEST_F(MediaRefusal, IsSaidInATurnOfItsOwn) {
    OpenedPipeline opened(folder.pathOf("nothing.mp4"));
    EXPECT_THAT(opened.notes->events, ElementsAre());
    ASSERT_FALSE(opened.open());
    opened.pipeline->play();
    opened.pipeline->seek(platform::fromSeconds(1));
    EXPECT_TRUE(opened.pipeline->isDecodedTo(platform::fromSeconds(1)));
    EXPECT_FALSE(opened.pipeline->frameAt(platform::fromSeconds(1)));
    ASSERT_TRUE(opened.queue.advanceTo(platform::fromSeconds(5)));
    EXPECT_THAT(opened.notes->events, ElementsAre("fail"));
}
