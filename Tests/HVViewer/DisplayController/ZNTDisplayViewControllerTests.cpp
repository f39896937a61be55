#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "Platform/Foundation/Bundle.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using platform::URL;
using ::testing::ElementsAre;

namespace {

const platform::Size kLandscape{320, 180};

platform::ImagePtr grey() {
    return flatPicture(64, 32, 120, 120, 120);
}

/// A host's own player that notes which hooks are called.
class NotingPlayer : public ZNTDisplayViewController {
public:
    using ZNTDisplayViewController::ZNTDisplayViewController;
    void downloadImageStarted() override { hooks.emplace_back("started"); }
    void downloadImageFinished() override { hooks.emplace_back("finished"); }
    void downloadImageFailedWithError(const platform::Error& /*error*/) override {
        hooks.emplace_back("failed");
    }
    std::vector<std::string> hooks;
};

void expectEmpty(const ZNTDisplayViewController& player) {
    EXPECT_FALSE(player.srcImage());
    EXPECT_FALSE(player.srcImageUrl());
    EXPECT_FALSE(player.isLocalResource());
    EXPECT_FALSE(player.isReadyForDisplay());
    EXPECT_EQ(player.contentType(), ContentType::Undefined);
    EXPECT_EQ(player.displayingContentType(), ContentType::Undefined);
    EXPECT_EQ(player.currentMode(), DisplayMode::Sphere);
    EXPECT_EQ(player.currentVO(), player.currentMode());
    EXPECT_FALSE(player.enableTransparentBackground());
    EXPECT_FALSE(player.srcVideoUrl());
    EXPECT_FALSE(player.streamer());
    EXPECT_FALSE(player.imageDownloadTask());
    EXPECT_TRUE(player.hotSpots().empty());
    EXPECT_FALSE(player.hotSpotPickingPoint());
    EXPECT_FALSE(player.enableHotSpotTapDetection());
    EXPECT_FALSE(player.enableHotSpotAutoPicking());
    EXPECT_EQ(player.sphericalOffset(), 0.0F);
    EXPECT_FALSE(player.displayView());
    EXPECT_FALSE(player.virtualDisplayView());
    EXPECT_TRUE(player.singleModeConstraints().empty());
    EXPECT_TRUE(player.virtualModeConstraints().empty());
}

} // namespace

TEST(Controller, HasTheSameDefaultsAfterEveryInitialiser) {
    expectEmpty(*platform::make<ZNTDisplayViewController>());
    expectEmpty(*platform::make<ZNTDisplayViewController>(platform::Coder{}));
    expectEmpty(*platform::make<ZNTDisplayViewController>(std::string("Player"),
                                                          std::shared_ptr<platform::Bundle>()));
}

TEST(Controller, HasNoViewUntilItLoads) {
    const auto host = makeHost(kLandscape);
    const auto player = platform::make<ZNTDisplayViewController>();
    EXPECT_FALSE(player->displayView());
    EXPECT_FALSE(player->isViewLoaded());
    const auto root = player->view();
    ASSERT_TRUE(player->displayView());
    EXPECT_EQ(player->displayView()->superview(), root);
    EXPECT_FALSE(player->displayView()->translatesAutoresizingMaskIntoConstraints());
    EXPECT_EQ(player->displayView()->frame(), root->bounds());
}

TEST(Controller, TakesAPictureWithoutDrawingIt) {
    HeadlessPlayer player(kLandscape);
    const auto picture = grey();
    player.controller().prepareImage(picture);
    EXPECT_EQ(player.controller().contentType(), ContentType::Photo);
    EXPECT_EQ(player.controller().srcImage(), picture);
    EXPECT_TRUE(player.controller().isLocalResource());
    EXPECT_TRUE(player.controller().isReadyForDisplay());
    EXPECT_FALSE(player.view().glDrawer());
    player.embedded().appear();
    EXPECT_TRUE(player.view().glDrawer());
}

TEST(Controller, RefusesANullPicture) {
    const auto player = platform::make<NotingPlayer>();
    const LogRecorder log;
    player->prepareImage(nullptr);
    EXPECT_THAT(log.lines(), ElementsAre("Error in class \"NotingPlayer\" for selector "
                                         "\"prepareImage:\". Image can not be nil"));
    expectEmpty(*player);
}

TEST(Controller, RefusesAMissingAddress) {
    const auto player = platform::make<ZNTDisplayViewController>();
    const LogRecorder log;
    player->prepareImageWithUrl(std::nullopt);
    player->prepareImageWithUrl(std::nullopt, true);
    const std::string text = "Error in class \"ZNTDisplayViewController\" for selector "
                             "\"prepareImageWithUrl:\". Url can not be nil";
    EXPECT_THAT(log.lines(), ElementsAre(text, text));
    expectEmpty(*player);
}

TEST(Controller, RefusesOtherContentWhileOneIsDisplayed) {
    const auto player = platform::make<ZNTDisplayViewController>();
    const auto picture = grey();
    player->prepareImage(picture);
    const LogRecorder log;
    player->prepareImage(grey());
    player->prepareImage(nullptr);
    player->prepareImageWithUrl(URL::fileURLWithPath("/other.jpg"));
    player->prepareImageWithUrl(std::nullopt);
    const std::string datar = "Error in class \"ZNTDisplayViewController\". Datar is already "
                              "displaying. You can not change data";
    const std::string data = "Error in class \"ZNTDisplayViewController\". Data is already "
                             "displaying. You can not change data";
    EXPECT_THAT(log.lines(), ElementsAre(datar, datar, data, data));
    EXPECT_EQ(player->srcImage(), picture);
    EXPECT_FALSE(player->srcImageUrl());
}

TEST(Controller, AnnouncesARemotePictureBeforeReturning) {
    HeadlessPlayer host(kLandscape);
    const auto player = platform::make<NotingPlayer>();
    player->prepareImageWithUrl(URL::URLWithString("https://127.0.0.1/panorama.jpg"));
    EXPECT_THAT(player->hooks, ElementsAre("started"));
    EXPECT_EQ(player->contentType(), ContentType::Photo);
    EXPECT_FALSE(player->isLocalResource());
    EXPECT_FALSE(player->isReadyForDisplay());
    host.host().settle();
    EXPECT_THAT(player->hooks, ElementsAre("started", "failed"));
    EXPECT_FALSE(player->isReadyForDisplay());
}

TEST(Controller, AcceptsAPictureAfterAFailedDownload) {
    HeadlessPlayer host(kLandscape);
    const auto player = platform::make<NotingPlayer>();
    player->prepareImageWithUrl(URL::URLWithString("https://127.0.0.1/panorama.jpg"));
    host.host().settle();
    player->prepareImage(grey());
    EXPECT_TRUE(player->srcImage());
    EXPECT_TRUE(player->isReadyForDisplay());
}

TEST(Controller, HearsNothingOfADownloadOnceReleased) {
    HeadlessPlayer host(kLandscape);
    auto player = platform::make<NotingPlayer>();
    player->prepareImageWithUrl(URL::URLWithString("https://127.0.0.1/panorama.jpg"));
    const std::weak_ptr<NotingPlayer> weak = player;
    player.reset();
    EXPECT_TRUE(weak.expired());
    host.host().settle();
}

TEST(Controller, SaysOnceAnAppearanceThatThereIsNothingToShow) {
    HeadlessPlayer player(kLandscape);
    const LogRecorder log;
    player.embedded().appear();
    const std::string text = "Error in class \"ZNTDisplayViewController\". No data to display. Use "
                             "prepare method for setup.";
    EXPECT_THAT(log.lines(), ElementsAre(text));
    player.embedded().disappear();
    player.embedded().appear();
    EXPECT_THAT(log.lines(), ElementsAre(text, text));
}

TEST(Controller, HandsItsPictureOverAtEveryAppearance) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    const auto drawer = player.view().glDrawer();
    const auto before = player.snapshot();
    player.embedded().disappear();
    player.embedded().appear();
    EXPECT_NE(player.view().glDrawer(), drawer);
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), colourAt(*before, 160, 60));
}

TEST(Controller, TellsItsViewTheSizeToCome) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    player.embedded().resize({180, 320}, 1);
    EXPECT_EQ(player.view().newSize(), (platform::Size{180, 320}));
    EXPECT_EQ(player.view().frame(), (platform::Rect{{}, {180, 320}}));
    (void)player.snapshot();
    EXPECT_EQ(player.view().camera().aspect, 180.0 / 320.0);
}

TEST(DisplayModeSwitch, DoesNothingForTheCurrentMode) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    const auto mesh = player.view().glDrawer()->voProvider();
    const int presented = player.host().framesPresented();
    player.controller().setDisplayMode(DisplayMode::Sphere);
    player.host().advanceTo(platform::fromSeconds(1));
    EXPECT_EQ(player.view().glDrawer()->voProvider(), mesh);
    EXPECT_EQ(player.host().framesPresented(), presented);
}

TEST(DisplayModeSwitch, ReachesTheViewBeforeAndAfterItAppears) {
    HeadlessPlayer player(kLandscape);
    player.controller().setDisplayMode(DisplayMode::Plane);
    EXPECT_EQ(player.view().displayVO(), DisplayMode::Plane);
    player.show(grey());
    EXPECT_EQ(player.view().glDrawer()->renderingVO(), DisplayMode::Plane);
    player.controller().setDisplayMode(DisplayMode::LittlePlanet);
    EXPECT_EQ(player.view().glDrawer()->renderingVO(), DisplayMode::LittlePlanet);
    EXPECT_EQ(player.controller().currentVO(), DisplayMode::LittlePlanet);
}

TEST(DisplayModeSwitch, LeadsElsewhereFromAModeThatWasOnlyNoted) {
    HeadlessPlayer player(kLandscape);
    const auto noted = platform::make<ZNTDisplayViewController>();
    noted->setDisplayMode(DisplayMode::SideBySide);
    noted->prepareImage(grey());
    player.embedded().setRootViewController(noted);
    player.embedded().appear();
    noted->setDisplayMode(DisplayMode::Sphere);
    player.host().settle();
    EXPECT_TRUE(noted->virtualDisplayView()->isHidden());
    EXPECT_EQ(noted->displayView()->frame(), (platform::Rect{{}, kLandscape}));
    player.embedded().setRootViewController(nullptr);
}

TEST(DisplayModeSwitch, IsOnlyNotedBeforeTheViewLoads) {
    const auto host = makeHost(kLandscape);
    const auto player = platform::make<ZNTDisplayViewController>();
    player->setDisplayMode(DisplayMode::Plane);
    EXPECT_EQ(player->currentMode(), DisplayMode::Plane);
    (void)player->view();
    EXPECT_EQ(player->displayView()->displayVO(), DisplayMode::Sphere);
}

TEST(TransparentBackground, MakesEveryViewClearAndBlackAgain) {
    // So wide that the plane leaves bars above and below.
    HeadlessPlayer player({400, 160});
    player.controller().setDisplayMode(DisplayMode::Plane);
    player.show(grey());
    player.controller().setEnableTransparentBackground(true);
    EXPECT_EQ(player.controller().view()->backgroundColor(), platform::kClearColor);
    EXPECT_EQ(player.view().backgroundColor(), platform::kClearColor);
    EXPECT_EQ(colourAt(*player.snapshot(), 0, 0)[3], 0);
    player.controller().setEnableTransparentBackground(false);
    EXPECT_EQ(player.controller().view()->backgroundColor(), platform::kBlackColor);
    EXPECT_EQ(player.view().backgroundColor(), platform::kBlackColor);
    EXPECT_EQ(colourAt(*player.snapshot(), 0, 0), (std::array<int, 4>{0, 0, 0, 255}));
}

TEST(TransparentBackground, MayBeAskedForBeforeThereAreViews) {
    class Eager final : public ZNTDisplayViewController {
    public:
        void viewDidLoad() override {
            setEnableTransparentBackground(true);
            ZNTDisplayViewController::viewDidLoad();
        }
    };
    const auto host = makeHost(kLandscape);
    const auto player = platform::make<Eager>();
    (void)player->view();
    EXPECT_TRUE(player->enableTransparentBackground());
    EXPECT_FALSE(player->displayView()->makeTransparent()) << "stored, and given to no view";
}

TEST(Picture, LargerThanTheContextIsShownScaledDownWithOneLine) {
    HeadlessPlayer player(kLandscape);
    const LogRecorder log;
    player.show(flatPicture(20000, 2, 0, 0, 200));
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), (std::array<int, 4>{0, 0, 200, 255}));
    EXPECT_EQ(log.count("20000 x 2"), 1);
    EXPECT_EQ(log.count("16384 x 2"), 1);
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST(Picture, OfOnePixelIsShown) {
    HeadlessPlayer player(kLandscape);
    player.show(flatPicture(1, 1, 10, 20, 30));
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), (std::array<int, 4>{10, 20, 30, 255}));
}
