#include "Platform/Foundation/Bundle.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/TextureLoader.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/HVViewer/Model/HotSpot/RefusedUploads.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/TemporaryFolder.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <utility>

namespace {

constexpr std::array<int, 4> kRed{255, 0, 0, 255};

int countTextures() {
    constexpr GLuint kHighestName = 5000;
    int count = 0;
    for (GLuint name = 1; name < kHighestName; ++name)
        count += glIsTexture(name);
    return count;
}

std::shared_ptr<ZNTHotSpot> spotWith(const platform::ImagePtr& image, float horizontal = 0) {
    return ZNTHotSpot::hotSpotWithTextureImage(image, 0, horizontal);
}

/// A host, and a context for hot spots that no drawer shows.
class MarkerTexture : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(platform::GLContext::setCurrentContext(context_)); }

    std::unique_ptr<zanto::HeadlessHost> host_ = makeHost({64, 36});
    std::shared_ptr<platform::GLContext> context_ = platform::GLContext::create();
};

/// A second player in the host of the first, which shows one hot spot.
std::shared_ptr<ZNTDisplayViewController> secondPlayer(const std::shared_ptr<ZNTHotSpot>& spot) {
    auto player = platform::make<ZNTDisplayViewController>();
    (void)player->view(); // loads it
    player->prepareImage(flatPicture(64, 32, 1, 2, 3));
    player->addHotSpots({spot}, nullptr);
    player->prepareDisplayView();
    return player;
}

} // namespace

TEST_F(MarkerTexture, IsOneForAllHotSpotsOfAPicture) {
    const auto icon = flatPicture(8, 8, 255, 0, 0);
    const auto first = spotWith(icon);
    const auto second = spotWith(icon);
    const auto other = spotWith(flatPicture(8, 8, 255, 0, 0));
    for (const auto& spot : {first, second, other})
        EXPECT_TRUE(spot->setupTexture());
    EXPECT_EQ(first->textureName(), second->textureName());
    EXPECT_NE(first->textureName(), other->textureName());
    const GLuint name = first->textureName();
    first->removeSpotTexture();
    EXPECT_EQ(first->textureName(), 0U);
    EXPECT_EQ(second->textureName(), name);
    EXPECT_TRUE(glIsTexture(name)) << "the second one has it";
    second->removeSpotTexture();
    EXPECT_FALSE(glIsTexture(name));
}

TEST_F(MarkerTexture, IsOneForAllHotSpotsOfANamedPicture) {
    const tests::TemporaryFolder folder;
    const auto png = platform::encodePng(*flatPicture(4, 4, 255, 255, 255));
    for (const char* file : {"door.png", "lamp.png"})
        (void)folder.add(file, png.value());
    platform::Bundle::application().addFolder(folder.path());
    const auto door = ZNTHotSpot::hotSpotWithTextureNamed("door", 0, 0);
    const auto sameDoor = ZNTHotSpot::hotSpotWithTextureNamed("door", 0, 1);
    const auto lamp = ZNTHotSpot::hotSpotWithTextureNamed("lamp", 0, 0);
    for (const auto& spot : {door, sameDoor, lamp})
        EXPECT_TRUE(spot->setupTexture());
    platform::Bundle::application().removeFolder(folder.path());
    EXPECT_EQ(door->textureName(), sameDoor->textureName());
    EXPECT_NE(door->textureName(), lamp->textureName());
}

TEST_F(MarkerTexture, IsMadeAnewForTheNextContext) {
    const auto icon = flatPicture(8, 8, 255, 0, 0);
    const auto before = spotWith(icon);
    ASSERT_TRUE(before->setupTexture());
    ASSERT_TRUE(host_->replaceContext());
    const auto context = platform::GLContext::create();
    ASSERT_TRUE(platform::GLContext::setCurrentContext(context));
    const auto after = spotWith(icon);
    ASSERT_TRUE(after->setupTexture());
    EXPECT_NE(after->texture(), before->texture());
    EXPECT_TRUE(glIsTexture(after->textureName()));
    before->removeSpotTexture();
    EXPECT_TRUE(glIsTexture(after->textureName())) << "an equal name of the lost context";
}

TEST(MarkerTextures, OfManyHotSpotsWithOnePictureAreOne) {
    HotSpotScene scene;
    scene.showSpots({});
    const int before = countTextures();
    const auto icon = flatPicture(8, 8, 255, 0, 0);
    ZNTHotSpotDrawer::HotSpots spots;
    for (int i = 0; i < 2000; ++i)
        spots.push_back(spotWith(icon, 0.003F * static_cast<float>(i)));
    scene.showSpots(spots);
    EXPECT_EQ(scene.drawer().hotSpots().size(), 2000U);
    EXPECT_EQ(countTextures(), before + 1);
    scene.showSpots({});
    EXPECT_EQ(countTextures(), before);
}

TEST(MarkerTextures, StayWhileAnotherControllerShowsTheHotSpot) {
    HotSpotScene scene;
    const auto spot = spotAt(0, 0);
    scene.showSpots({spot});
    auto other = secondPlayer(spot);
    scene.host().settle();
    other.reset();
    scene.host().settle();
    EXPECT_EQ(colourAt(*scene.snapshot(), 160, 90), kRed);
    other = secondPlayer(spot);
    scene.host().settle();
    other->addHotSpots({}, nullptr);
    other->prepareDisplayView();
    scene.host().settle();
    EXPECT_EQ(colourAt(*scene.snapshot(), 160, 90), kRed);
    const GLuint name = spot->textureName();
    scene.showSpots({});
    EXPECT_EQ(spot->textureName(), 0U) << "the last one to show it lets go of it";
    EXPECT_FALSE(glIsTexture(name));
}

TEST(MarkerTextures, StayWhileTheListHasTheHotSpotTwice) {
    HotSpotScene scene;
    const auto spot = spotAt(0, 0);
    scene.showSpots({spot, spot});
    EXPECT_EQ(colourAt(*scene.snapshot(), 160, 90), kRed);
    scene.drawer().updateHotSpots({});
    EXPECT_EQ(spot->textureName(), 0U);
}

TEST_F(MarkerTexture, IsScaledDownWhereThePictureIsOverTheLimit) {
    const int limit = platform::GLDevice::main().maxTextureSidePx();
    const auto spot = spotWith(flatPicture(limit + 1, 2, 10, 20, 30));
    const LogRecorder log;
    ASSERT_TRUE(spot->setupTexture());
    EXPECT_EQ(spot->texture()->size().width, limit);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0], "hot spot: its picture is scaled down from " +
                                  std::to_string(limit + 1) + " x 2 to " + std::to_string(limit) +
                                  " x 2 pixels to fit the graphics limit");
}

TEST_F(MarkerTexture, IsNoneWithoutACurrentContext) {
    const auto spot = spotAt(0, 0);
    ASSERT_TRUE(spot->setupTexture());
    context_.reset();
    host_.reset();
    const LogRecorder log;
    EXPECT_FALSE(spot->setupTexture());
    EXPECT_EQ(spot->textureName(), 0U);
    EXPECT_EQ(log.lines(), std::vector<std::string>{
                               "hot spot: its picture cannot be uploaded without a GL context"});
}

TEST_F(MarkerTexture, IsNoneWhereTheDriverMakesNoTexture) {
    bool made = true;
    std::uint32_t name = 1;
    const auto spot = spotAt(0, 0);
    const LogRecorder log;
    // The driver makes names only where a context is current, and none is on a new thread.
    std::thread([&] {
        made = spot->setupTexture();
        name = spot->textureName();
    }).join();
    EXPECT_FALSE(made);
    EXPECT_EQ(name, 0U);
}

TEST_F(MarkerTexture, IsNoneAndNamesTheErrorWhereGLRefusesThePicture) {
    const auto spot = spotAt(0, 0);
    ASSERT_TRUE(spot->setupTexture());
    const GLuint name = spot->textureName();
    spot->setTextureImage(flatPicture(3, 5, 1, 2, 3));
    const LogRecorder log;
    {
        const RefusedUploads refused;
        EXPECT_FALSE(spot->setupTexture());
    }
    EXPECT_EQ(spot->textureName(), 0U);
    EXPECT_FALSE(glIsTexture(name)) << "the earlier one is gone";
    EXPECT_EQ(log.lines(), std::vector<std::string>{"hot spot: its picture of 3 x 5 pixels cannot "
                                                    "be uploaded, GL Error = 1281"});
    EXPECT_TRUE(spot->setupTexture()) << "once there is room";
}

TEST(MarkerTextures, AreNotMadeForADrawerThatHasBeenTornDown) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0)});
    scene.drawer().tearDownGL();
    const auto before = scene.snapshot();
    const auto spot = spotAt(0, 0);
    scene.drawer().updateHotSpots({spot});
    scene.drawer().addHotSpot(spot);
    EXPECT_TRUE(scene.drawer().hotSpots().empty());
    EXPECT_EQ(spot->textureName(), 0U);
    while (glGetError() != GL_NO_ERROR) {
    }
    EXPECT_TRUE(picturesAreEqual("after-the-teardown", *scene.snapshot(), *before));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
