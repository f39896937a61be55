// What the content operations change, and what they leave as it was.

#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

using platform::URL;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::uint8_t> greenPng() {
    return platform::encodePng(*flatPicture(8, 4, 0, 200, 0)).value();
}

class ControllerContent : public ::testing::Test {
protected:
    [[nodiscard]] HookRecorder& player() { return *scene_.player; }
    void settle() { scene_.host->settle(); }
    /// A URL whose port has no listener.
    [[nodiscard]] URL refusedAddress() const {
        return URL::URLWithString(refusing_.url("/a.png")).value();
    }

    tests::HttpServer server_;
    tests::RefusingPort refusing_;
    PlaybackScene scene_;
};

} // namespace

TEST_F(ControllerContent, IsLeftAloneByADownloadThatFails) {
    scene_.appear();
    const URL address = refusedAddress();
    player().prepareImageWithUrl(address);
    const auto picture = flatPicture(8, 4, 0, 200, 0);
    player().prepareImage(picture);
    settle();
    EXPECT_THAT(player().take(),
                ElementsAre("downloadImageStarted", "downloadImageFailedWithError"));
    EXPECT_EQ(player().srcImage(), picture);
    EXPECT_TRUE(player().isReadyForDisplay());
    EXPECT_TRUE(player().isLocalResource());
    EXPECT_EQ(player().contentType(), ContentType::Photo);
    EXPECT_EQ(player().srcImageUrl(), address);
    EXPECT_EQ(player().displayView()->glDrawer(), nullptr) << "a failure shows nothing";
}

TEST_F(ControllerContent, KeepsThePicturesAddressWhenAPictureIsGiven) {
    const URL address = refusedAddress();
    player().prepareImageWithUrl(address);
    settle();
    player().prepareImage(flatPicture(8, 4, 0, 200, 0));
    EXPECT_EQ(player().srcImageUrl(), address);
}

TEST_F(ControllerContent, KeepsThePicturesAddressThroughItsDownloadAndAVideo) {
    server_.serve("/a.png", {.body = greenPng()});
    const auto address = URL::URLWithString(server_.url("/a.png"));
    player().prepareImageWithUrl(address);
    settle();
    ASSERT_TRUE(player().srcImage());
    EXPECT_EQ(player().srcImageUrl(), address);
    player().prepareVideoWithUrl(urlOf(tests::testClip()));
    settle();
    EXPECT_EQ(player().srcImageUrl(), address);
    EXPECT_EQ(player().srcVideoUrl(), urlOf(tests::testClip()));
}

TEST_F(ControllerContent, TakesAPictureThatIsCalledLocalFromThePathOfItsAddress) {
    const tests::TemporaryFolder folder;
    const std::string path = folder.add("a.png", greenPng());
    player().prepareImageWithUrl(URL::URLWithString("http://127.0.0.1" + path), true);
    EXPECT_TRUE(player().srcImage());
    EXPECT_TRUE(player().isLocalResource());
    EXPECT_TRUE(player().isReadyForDisplay());
    EXPECT_THAT(player().take(), IsEmpty());
}

TEST_F(ControllerContent, GoesOnPlayingWhenAVideoOfNoAddressIsCalledLocalOrRemote) {
    scene_.play(tests::testClip());
    scene_.advance(0.5);
    player().take();
    const auto streamer = player().streamer();
    for (const bool isLocal : {true, false}) {
        const LogRecorder log;
        player().prepareVideoWithUrl(std::nullopt, isLocal);
        EXPECT_THAT(log.lines(), ElementsAre("Error in class \"HookRecorder\" for selector "
                                             "\"prepareVideoWithUrl:\". Url can not be nil"));
        EXPECT_TRUE(player().isLocalResource());
    }
    EXPECT_EQ(player().srcVideoUrl(), urlOf(tests::testClip()));
    EXPECT_EQ(player().streamer(), streamer);
    scene_.advance(0.2);
    EXPECT_EQ(scene_.shownFrame(), 21);
    EXPECT_THAT(player().take(), IsEmpty());
}

TEST_F(ControllerContent, OfNoAddressThatIsCalledRemoteChangesNothing) {
    const LogRecorder log;
    player().prepareImageWithUrl(std::nullopt, false);
    EXPECT_THAT(log.lines(), ElementsAre("Error in class \"HookRecorder\" for selector "
                                         "\"prepareImageWithUrl:\". Url can not be nil"));
    EXPECT_EQ(player().contentType(), ContentType::Undefined);
    EXPECT_THAT(player().take(), IsEmpty()) << "no download is announced";
}

TEST_F(ControllerContent, MayBeAVideoAfterAFileThatIsNoPicture) {
    player().prepareImageWithUrl(urlOf("/nowhere/a.png"));
    scene_.play(tests::testClip());
    EXPECT_EQ(player().contentType(), ContentType::Video);
    scene_.advance(0.1);
    EXPECT_EQ(scene_.shownFrame(), 3);
}

TEST_F(ControllerContent, LoadsAPictureAgainOnlyWhileThereIsNone) {
    server_.serve("/a.png", {.body = greenPng(), .cutAfter = 3});
    player().prepareImageWithUrl(URL::URLWithString(server_.url("/a.png")));
    settle();
    player().take();
    player().prepareImage(flatPicture(8, 4, 0, 0, 200));
    const LogRecorder log;
    player().reloadContent();
    settle();
    EXPECT_THAT(player().take(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty()) << "nothing is asked for, so nothing is refused";
}
