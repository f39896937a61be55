#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/HVViewer/DisplayController/DisplayView/BackgroundHold.h"
#include "Tests/HVViewer/DisplayController/DisplayView/TextureLimit.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

const platform::Size kSize{320, 180};

platform::ImagePtr orange() {
    return flatPicture(64, 32, 250, 120, 10);
}

/// A picture whose pixels were given back and cannot be had again.
platform::ImagePtr withoutPixels() {
    auto image = std::make_shared<const platform::Image>(
        platform::PixelStorage(4, 2), [] { return std::optional<platform::PixelStorage>(); });
    image->giveBackPixels();
    return image;
}

/// Another watermark for as long as it lives.
struct WatermarkText {
    explicit WatermarkText(std::string_view base64) { setWatermarkText(base64); }
    ~WatermarkText() { setWatermarkText({}); }
    WatermarkText(const WatermarkText&) = delete;
    WatermarkText& operator=(const WatermarkText&) = delete;
};

using Lines = std::vector<std::string>;

} // namespace

TEST(PictureLoading, LogsTheErrorOfGLAndKeepsTheEarlierPicture) {
    HeadlessPlayer player(kSize);
    player.show(orange());
    const auto earlier = player.view().glDrawer()->glTextureI();
    const LogRecorder log;
    {
        const TextureLimit limit(4); // below what the context promised
        player.view().glDrawer()->drawImage(flatPicture(8, 4, 0, 200, 0));
        player.host().settle();
    }
    EXPECT_EQ(log.lines(), Lines{"GL Error = 1281"});
    EXPECT_EQ(player.view().glDrawer()->glTextureI(), earlier);
    EXPECT_EQ(middleOf(player), (std::array{250, 120, 10, 255}));
}

TEST(PictureLoading, LogsAFailureForWhichGLHasNoError) {
    HeadlessPlayer player(kSize);
    player.show(orange());
    const LogRecorder log;
    player.view().glDrawer()->drawImage(withoutPixels());
    player.host().settle();
    EXPECT_EQ(log.count("GL Error = 0"), 1);
    EXPECT_EQ(middleOf(player), (std::array{250, 120, 10, 255}));
}

TEST(PictureLoading, LogsNothingForAPictureThatALostContextTookAway) {
    HeadlessPlayer player(kSize);
    player.show(orange());
    const auto drawer = player.view().glDrawer();
    drawer->drawImage(flatPicture(8, 4, 0, 200, 0));
    const LogRecorder log;
    ASSERT_TRUE(player.host().replaceContext());
    player.host().settle();
    EXPECT_EQ(log.lines(), Lines());
}

TEST(PictureLoading, DisplaysThePictureAtOnceWhenItArrives) {
    HeadlessPlayer player(kSize);
    player.show(orange());
    const int presented = player.host().framesPresented();
    player.view().glDrawer()->drawImage(flatPicture(8, 4, 0, 200, 0));
    player.host().settle(); // the instant's pass is over: only `display` brings another
    EXPECT_EQ(player.host().framesPresented(), presented + 1);
}

TEST(PictureLoading, RedrawsWhenTheWatermarkArrives) {
    HeadlessPlayer player({180, 320});
    BackgroundHold hold;
    player.controller().prepareImage(orange());
    player.embedded().appear();
    player.embedded().runDueWork();
    const auto target = platform::OffscreenTarget::create({180, 320});
    player.embedded().draw(target.value()->framebuffer(), {0, 0, 180, 320});
    ASSERT_FALSE(player.view().needsDisplay());
    hold.release();
    player.host().settle();
    ASSERT_TRUE(player.view().glDrawer()->glTextureWatermark());
    EXPECT_TRUE(player.view().needsDisplay());
}

TEST(PictureLoading, ShowsContentAloneWhenTheWatermarkCannotBeDecoded) {
    const WatermarkText broken("bm8gcGljdHVyZQ==");
    HeadlessPlayer player(kSize);
    const LogRecorder log;
    player.show(orange());
    EXPECT_TRUE(picturesAreEqual("picture-without-watermark", *player.snapshot(),
                                 *flatPicture(320, 180, 250, 120, 10)));
    player.view().displayCVPixelBuffer(flatFrame(kFrameSize, kBlack));
    EXPECT_TRUE(picturesAreEqual("video-without-watermark", *player.snapshot(),
                                 *flatPicture(320, 180, 0, 0, 0)));
    EXPECT_EQ(log.lines(), Lines());
}

TEST(PictureLoading, LetsGoOfThePictureOnceItsTextureIsThere) {
    HeadlessPlayer player(kSize);
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, kSize});
    auto picture = orange();
    const std::weak_ptr<const platform::Image> watched = picture;
    view->displayImage(picture);
    picture.reset();
    EXPECT_FALSE(watched.expired()) << "it is on its way";
    player.host().settle();
    ASSERT_TRUE(view->glDrawer()->glTextureI());
    EXPECT_TRUE(watched.expired());
}
