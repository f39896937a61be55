// Two hosts in one process, driven in turns: each must be the host that it is alone.

#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Screen.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/HookRecorder.h"
#include "Tests/Support/TestClips.h"

#include <GLES2/gl2.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using testing::Contains;
using testing::IsEmpty;

namespace {

/// What a host shows and reports at one moment.
struct Look {
    std::vector<std::uint8_t> pixels;
    std::vector<std::string> hooks;
    std::vector<std::string> log;
    double volume = 0;
    friend bool operator==(const Look&, const Look&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Look& look) {
    stream << look.pixels.size() << " bytes, volume " << look.volume;
    for (const std::string& hook : look.hooks)
        stream << "; " << hook;
    for (const std::string& line : look.log)
        stream << "; logged: " << line;
    return stream;
}

/// One host with one player, and what a person does with it, step by step.
class World {
public:
    World(platform::Size size, double scale) {
        zanto::HeadlessHostOptions options;
        options.size = size;
        options.scale = scale;
        options.log = [this](platform::LogLevel level, std::string_view text) {
            if (level != platform::LogLevel::Debug)
                log_.emplace_back(text);
        };
        host_ = std::move(zanto::HeadlessHost::create(options)).value();
        host_->embedded().perform([&] {
            player = platform::make<HookRecorder>();
            spot_ = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
            spot_->setHotSpotName("door");
        });
        host_->embedded().setRootViewController(player);
    }
    ~World() {
        if (host_)
            host_->embedded().setRootViewController(nullptr);
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void showPicture() { player->prepareImage(directionPanorama(512)); }
    void showVideo() {
        player->prepareVideoWithUrl(platform::URL::fileURLWithPath(tests::testClip()));
        player->setPlayerVolume(0.3);
    }
    void placeHotSpot() {
        player->setEnableHotSpotTapDetection(true);
        player->addHotSpots({spot_}, ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
        player->setEnableHotSpotAutoPicking(true);
    }
    void appear() {
        host_->embedded().appear();
        host_->settle();
    }
    void advance(double seconds) {
        host_->advanceTo(host_->now() + platform::fromSeconds(seconds));
    }
    void tapCentre() {
        const platform::Point centre{size().x / 2, size().y / 2};
        touch(platform::TouchPhase::Down, centre);
        touch(platform::TouchPhase::Up, centre);
        host_->settle();
    }
    void drag() {
        touch(platform::TouchPhase::Down, {20, 40});
        for (const double x : {30.0, 45.0, 60.0}) {
            advance(0.02);
            touch(platform::TouchPhase::Move, {x, 50});
        }
        touch(platform::TouchPhase::Up, {60, 50});
        advance(0.1);
    }
    zanto::EmbeddedHost& embedded() { return host_->embedded(); }
    void loseContext() { ASSERT_TRUE(host_->replaceContext()); }
    void resize() {
        host_->embedded().resize({size().y, size().x}, 1);
        host_->settle();
    }
    void endHost() {
        host_->embedded().setRootViewController(nullptr);
        host_.reset();
    }

    Look look() {
        host_->settle();
        const auto picture = host_->embedded().snapshot(1).value();
        const auto bytes = picture->pixels();
        return {{bytes.begin(), bytes.end()},
                player->take(),
                std::exchange(log_, {}),
                player->playerVolume()};
    }

    std::shared_ptr<HookRecorder> player;

private:
    platform::Point size() {
        platform::Size size;
        host_->embedded().perform([&] { size = platform::Screen::mainScreen().bounds().size; });
        return {size.width, size.height};
    }
    void touch(platform::TouchPhase phase, platform::Point at) {
        host_->embedded().touch({phase, 1, at, platform::TouchKind::Finger, host_->now()});
    }

    std::vector<std::string> log_;
    std::unique_ptr<zanto::HeadlessHost> host_;
    std::shared_ptr<ZNTHotSpot> spot_;
};

using Step = void (*)(World&);

std::unique_ptr<World> makePictureWorld() {
    return std::make_unique<World>(platform::Size{256, 128}, 1);
}
std::unique_ptr<World> makeVideoWorld() {
    return std::make_unique<World>(platform::Size{160, 120}, 2);
}

/// A picture that people drag, tap and look at.
const std::vector<Step>& pictureSteps() {
    static const std::vector<Step> steps{
        [](World& w) { w.showPicture(); },
        [](World& w) { w.placeHotSpot(); },
        [](World& w) { w.appear(); },
        [](World& w) { w.tapCentre(); },
        [](World& w) { w.drag(); },
        [](World& w) { w.player->setDisplayMode(DisplayMode::LittlePlanet); },
        [](World& w) { w.loseContext(); },
        [](World& w) { w.player->prepareImage(nullptr); }, // a line in the log
        [](World& w) { w.player->setDisplayMode(DisplayMode::SideBySide); },
        [](World& w) { w.advance(0.5); },
        [](World& w) { w.resize(); },
        [](World& w) { w.advance(0.2); },
    };
    return steps;
}

/// A video, sought and paused.
const std::vector<Step>& videoSteps() {
    static const std::vector<Step> steps{
        [](World& w) { w.showVideo(); },     [](World& w) { w.appear(); },
        [](World& w) { w.advance(0.3); },    [](World& w) { w.placeHotSpot(); },
        [](World& w) { w.advance(0.7); },    [](World& w) { w.player->seekToTime(0.5); },
        [](World& w) { w.player->pause(); }, [](World& w) { w.drag(); },
        [](World& w) { w.loseContext(); },   [](World& w) { w.player->setSphericalOffset(1); },
        [](World& w) { w.player->play(); },  [](World& w) { w.advance(0.1); },
    };
    return steps;
}

std::vector<Look> alone(std::unique_ptr<World> world, const std::vector<Step>& steps) {
    std::vector<Look> looks;
    for (const Step step : steps) {
        step(*world);
        looks.push_back(world->look());
    }
    return looks;
}

/// Both worlds at once, in turns, and what each looked like.
class TwoHosts : public testing::Test {
protected:
    void runInTurns() {
        for (std::size_t i = 0; i < pictureSteps().size(); ++i) {
            pictureSteps()[i](*picture_);
            videoSteps()[i](*video_);
            pictureLooks_.push_back(picture_->look());
            videoLooks_.push_back(video_->look());
        }
    }
    void expectAsAlone() const {
        const auto picture = alone(makePictureWorld(), pictureSteps());
        const auto video = alone(makeVideoWorld(), videoSteps());
        EXPECT_THAT(pictureLooks_[3].hooks, Contains("picked door 0 tap"));
        EXPECT_NE(pictureLooks_[4].pixels, pictureLooks_[3].pixels) << "dragged";
        EXPECT_NE(videoLooks_[4].pixels, videoLooks_[2].pixels) << "played";
        EXPECT_EQ(videoLooks_[4].volume, 0.3);
        ASSERT_EQ(pictureLooks_.size(), picture.size());
        ASSERT_EQ(videoLooks_.size(), video.size());
        for (std::size_t i = 0; i < picture.size(); ++i) {
            EXPECT_EQ(pictureLooks_[i], picture[i]) << "picture, step " << i;
            EXPECT_EQ(videoLooks_[i], video[i]) << "video, step " << i;
        }
    }

    std::unique_ptr<World> picture_;
    std::unique_ptr<World> video_;
    std::vector<Look> pictureLooks_;
    std::vector<Look> videoLooks_;
};

} // namespace

TEST_F(TwoHosts, InTurnsShowAndReportWhatEachDoesAlone) {
    picture_ = makePictureWorld();
    video_ = makeVideoWorld();
    runInTurns();
    picture_.reset();
    video_.reset();
    expectAsAlone();
}

TEST_F(TwoHosts, MadeAndEndedInTheOtherOrderDoSo) {
    video_ = makeVideoWorld();
    picture_ = makePictureWorld();
    runInTurns();
    picture_.reset();
    video_.reset();
    expectAsAlone();
}

TEST_F(TwoHosts, ReportAPickToTheirOwnPlayersOnly) {
    picture_ = makePictureWorld();
    video_ = makeVideoWorld();
    picture_->showPicture();
    picture_->placeHotSpot();
    picture_->appear();
    video_->showPicture();
    video_->appear();
    picture_->tapCentre();
    EXPECT_THAT(picture_->look().hooks, Contains("picked door 0 tap"));
    EXPECT_THAT(video_->look().hooks, IsEmpty());
}

TEST_F(TwoHosts, LogToTheirOwnSinks) {
    picture_ = makePictureWorld();
    video_ = makeVideoWorld();
    video_->player->prepareImage(nullptr);
    EXPECT_THAT(picture_->look().log, IsEmpty());
    EXPECT_THAT(video_->look().log, testing::SizeIs(1));
}

TEST_F(TwoHosts, LeaveTheOtherAsItWasWhenTheyEnd) {
    picture_ = makePictureWorld();
    video_ = makeVideoWorld();
    picture_->showPicture();
    picture_->appear();
    video_->showVideo();
    video_->appear();
    const Look before = picture_->look();
    video_->endHost();
    EXPECT_EQ(picture_->look(), before) << "the second one has ended";
    video_.reset();
    EXPECT_EQ(picture_->look(), before) << "and its player";
}

TEST_F(TwoHosts, LeaveTheOtherAsItWasWhenTheFirstOneEnds) {
    picture_ = makePictureWorld();
    video_ = makeVideoWorld();
    picture_->showPicture();
    picture_->appear();
    video_->showPicture();
    video_->appear();
    const Look before = video_->look();
    picture_->endHost();
    picture_.reset();
    EXPECT_EQ(video_->look(), before);
    picture_ = makePictureWorld(); // in the place of the first
    picture_->showPicture();
    picture_->appear();
    EXPECT_EQ(video_->look(), before);
}

TEST_F(TwoHosts, RefuseAControllerOfTheOther) {
    picture_ = makePictureWorld();
    video_ = makeVideoWorld();
    picture_->showPicture();
    picture_->appear();
    video_->showPicture();
    video_->appear();
    const Look before = video_->look();
    video_->embedded().setRootViewController(picture_->player);
    Look after = video_->look();
    EXPECT_THAT(std::exchange(after.log, {}),
                testing::ElementsAre(testing::HasSubstr("belongs to another host")));
    EXPECT_EQ(after, before);
}

TEST_F(TwoHosts, MakeTheContextOfTheFirstCurrentAgain) {
    picture_ = makePictureWorld();
    video_ = makeVideoWorld();
    constexpr GLuint kOnlyInTheFirst = 4242;
    picture_->embedded().perform([&] { glBindTexture(GL_TEXTURE_2D, kOnlyInTheFirst); });
    video_->showPicture();
    video_->appear();
    EXPECT_TRUE(glIsTexture(kOnlyInTheFirst)) << "after the calls of the second host";
    video_->embedded().perform([&] { EXPECT_FALSE(glIsTexture(kOnlyInTheFirst)); });
    EXPECT_TRUE(glIsTexture(kOnlyInTheFirst)) << "after a block of the application";
    video_.reset();
    EXPECT_TRUE(glIsTexture(kOnlyInTheFirst)) << "after the end of the second host";
}
