#include "Platform/Foundation/MainQueue.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/HookRecorder.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

using platform::URL;

namespace {

const platform::Size kLandscape{320, 180};

/// A file that is there while the object lives, in a folder of its own.
class TemporaryFile {
public:
    TemporaryFile(const std::string& name, const std::vector<std::uint8_t>& bytes)
        : path_(folder_.add(name, bytes)) {}
    [[nodiscard]] URL url() const { return URL::fileURLWithPath(path_); }

private:
    tests::TemporaryFolder folder_;
    std::string path_;
};

} // namespace

TEST(Controller, ReadsAFileInTheCallWithoutDownloadHooks) {
    const TemporaryFile file("panorama.png",
                             platform::encodePng(*flatPicture(64, 32, 120, 120, 120)).value());
    const auto player = platform::make<HookRecorder>();
    player->prepareImageWithUrl(file.url());
    EXPECT_TRUE(player->isLocalResource());
    EXPECT_TRUE(player->isReadyForDisplay());
    EXPECT_EQ(player->srcImageUrl(), file.url());
    ASSERT_TRUE(player->srcImage());
    EXPECT_EQ(player->srcImage()->widthPx(), 64);
    platform::MainQueue::main().runDue();
    EXPECT_TRUE(player->hooks.empty());
}

TEST(Controller, ShowsAFileOnAppearing) {
    const TemporaryFile file("green.png",
                             platform::encodePng(*flatPicture(8, 4, 0, 200, 0)).value());
    HeadlessPlayer player(kLandscape);
    player.controller().prepareImageWithUrl(file.url());
    player.embedded().appear();
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), (std::array<int, 4>{0, 200, 0, 255}));
}

TEST(Controller, HasAFileDecodedAgainWhenItsContextIsLost) {
    const TemporaryFile file("green.png",
                             platform::encodePng(*flatPicture(8, 4, 0, 200, 0)).value());
    HeadlessPlayer player(kLandscape);
    player.controller().prepareImageWithUrl(file.url());
    player.embedded().appear();
    const auto before = player.snapshot();
    ASSERT_TRUE(player.host().replaceContext());
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), colourAt(*before, 160, 60));
}

TEST(Controller, NamesAFileThatIsGoneWhenItsContextIsLost) {
    HeadlessPlayer player(kLandscape);
    {
        const TemporaryFile file("green.png",
                                 platform::encodePng(*flatPicture(8, 4, 0, 200, 0)).value());
        player.controller().prepareImageWithUrl(file.url());
        player.embedded().appear();
        (void)player.snapshot();
    }
    const LogRecorder log;
    ASSERT_TRUE(player.host().replaceContext());
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), (std::array<int, 4>{0, 0, 0, 255}));
    EXPECT_EQ(log.count("cannot be had again: it is missing"), 1);
}

TEST(Controller, DecodesAFileOnceHoweverOftenItAppears) {
    HeadlessPlayer player(kLandscape);
    {
        const TemporaryFile file("green.png",
                                 platform::encodePng(*flatPicture(8, 4, 0, 200, 0)).value());
        player.controller().prepareImageWithUrl(file.url());
        player.embedded().appear();
        (void)player.snapshot();
    }
    // The file is gone: only a texture that is kept can show it.
    for (int i = 0; i < 3; ++i) {
        player.embedded().disappear();
        player.embedded().appear();
        EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), (std::array<int, 4>{0, 200, 0, 255}));
    }
}

TEST(Controller, StaysReadyWithoutAPictureForAnUnreadableFile) {
    const TemporaryFile text("text.jpg", {'t', 'e', 'x', 't'});
    for (const URL& url : {text.url(), URL::fileURLWithPath("/no/such/panorama.jpg")}) {
        const auto player = platform::make<HookRecorder>();
        const LogRecorder log;
        player->prepareImageWithUrl(url);
        EXPECT_FALSE(player->srcImage());
        EXPECT_TRUE(player->isReadyForDisplay());
        EXPECT_EQ(player->srcImageUrl(), url);
        EXPECT_EQ(log.count(url.path()), 1) << "one line names the file";
        player->prepareImage(flatPicture(64, 32, 120, 120, 120));
        EXPECT_FALSE(player->srcImage()) << "locked all the same";
        EXPECT_EQ(log.count("Datar is already displaying"), 1);
        EXPECT_TRUE(player->hooks.empty());
    }
}

TEST(Controller, DrawsNothingForAnUnreadableFile) {
    HeadlessPlayer player(kLandscape);
    const LogRecorder log;
    player.controller().prepareImageWithUrl(URL::fileURLWithPath("/no/such/panorama.jpg"));
    player.embedded().appear();
    EXPECT_FALSE(player.view().glDrawer());
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), (std::array<int, 4>{0, 0, 0, 255}));
    EXPECT_EQ(log.count("No data to display"), 0) << "an address is data";
}
