#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/TextureLoader.h"
#include "Platform/Interface/GLView.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace {

std::string descriptionOf(const auto& call) {
    try {
        call();
    } catch (const platform::AssertionFailure& failure) {
        return failure.description();
    }
    return "";
}

/// Counts the notifications that end a picking pass.
class PassCounter : public platform::Object {
public:
    void init() override {
        platform::NotificationCenter::defaultCenter().addObserver(
            shared(this), ZNTHotSpotDrawerEnableDrawing, [this](const auto&) { ++ended; });
    }
    int ended = 0;
};

bool isRed(const platform::Image& picture, int x, int y) {
    return colourAt(picture, x, y) == std::array{255, 0, 0, 255};
}

} // namespace

TEST(HotSpotDrawer, NeedsAContextAndAView) {
    LogRecorder log;
    const auto host = makeHost({320, 180});
    const auto context = platform::GLContext::create();
    const auto view = platform::make<platform::GLView>(platform::Rect{{}, {320, 180}});
    EXPECT_EQ(descriptionOf([&] { (void)platform::make<ZNTHotSpotDrawer>(nullptr, view); }),
              "context cant be nil");
    EXPECT_EQ(descriptionOf([&] { (void)platform::make<ZNTHotSpotDrawer>(context, nullptr); }),
              "drawing view cnat be nil");
}

TEST(HotSpotDrawer, DrawsMarkersOverTheContentWhereTheyStand) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0), spotAt(0, 0.3F), spotAt(-0.2F, 0)});
    const auto picture = scene.snapshot();
    EXPECT_TRUE(isRed(*picture, 160, 90)) << "straight ahead";
    EXPECT_TRUE(isRed(*picture, 91, 90)) << "to the left";
    EXPECT_TRUE(isRed(*picture, 160, 46)) << "above";
    EXPECT_EQ(colourAt(*picture, 229, 90), (std::array{120, 120, 120, 255})) << "not to the right";
}

TEST(HotSpotDrawer, ShowsAMarkersPictureUpright) {
    HotSpotScene scene;
    platform::PixelStorage pixels(2, 2);
    const std::array<std::uint8_t, 16> colours{255, 0, 0,   255, 0,   255, 0, 255,
                                               0,   0, 255, 255, 255, 255, 0, 255};
    std::copy(colours.begin(), colours.end(), pixels.bytes.get());
    const auto hotSpot = ZNTHotSpot::hotSpotWithTextureImage(
        std::make_shared<platform::Image>(std::move(pixels)), 0, 0);
    hotSpot->setScale(3);
    scene.showSpots({hotSpot});
    const auto picture = scene.snapshot();
    EXPECT_EQ(colourAt(*picture, 110, 40), (std::array{255, 0, 0, 255}));
    EXPECT_EQ(colourAt(*picture, 210, 40), (std::array{0, 255, 0, 255}));
    EXPECT_EQ(colourAt(*picture, 110, 140), (std::array{0, 0, 255, 255}));
    EXPECT_EQ(colourAt(*picture, 210, 140), (std::array{255, 255, 0, 255}));
}

TEST(HotSpotDrawer, HasNoDarkFringeAroundSoftPictures) {
    HotSpotScene scene;
    // White, transparent at the left and right edge, where the hidden colour is black.
    platform::PixelStorage pixels(4, 4);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            const bool inside = x == 1 || x == 2;
            std::fill_n(pixels.row(y) + static_cast<std::ptrdiff_t>(4) * x, 4,
                        static_cast<std::uint8_t>(inside ? 255 : 0));
        }
    }
    const auto hotSpot = ZNTHotSpot::hotSpotWithTextureImage(
        std::make_shared<platform::Image>(std::move(pixels)), 0, 0);
    hotSpot->setScale(4);
    scene.showSpots({hotSpot});
    const auto picture = scene.snapshot();
    bool sawSoftEdge = false;
    for (int x = 60; x < 260; ++x) {
        const auto colour = colourAt(*picture, x, 90);
        ASSERT_GE(colour[0], 120) << "darker than what lies behind at " << x;
        sawSoftEdge = sawSoftEdge || (colour[0] > 130 && colour[0] < 250);
    }
    EXPECT_TRUE(sawSoftEdge);
}

TEST(HotSpotDrawer, DrawsNothingForAnEmptyListAndLeavesBlendingAlone) {
    HotSpotScene scene;
    const auto bare = scene.snapshot();
    scene.showSpots({});
    EXPECT_TRUE(picturesAreEqual("no-hot-spots", *scene.snapshot(), *bare));
    glEnable(GL_BLEND);
    scene.drawer().performDrawMarkersWithProjection(GLKMatrix4Identity);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    glDisable(GL_BLEND);
}

TEST(HotSpotDrawer, NumbersItsListAnewInEveryOrder) {
    HotSpotScene scene;
    const auto first = spotAt(0, 0);
    const auto second = spotAt(0, 1);
    scene.showSpots({first, second});
    EXPECT_EQ(first->indexID(), 0U);
    EXPECT_EQ(second->indexID(), 1U);
    scene.drawer().updateHotSpots({second, first});
    EXPECT_EQ(second->indexID(), 0U);
    EXPECT_EQ(first->indexID(), 1U);
}

TEST(HotSpotDrawer, GivesTheIndexOfOneThatFailedToTheNext) {
    LogRecorder log;
    HotSpotScene scene;
    const auto broken = ZNTHotSpot::hotSpotWithTextureNamed("missing", 0, 0);
    const auto good = spotAt(0, 1);
    scene.showSpots({broken, good});
    EXPECT_EQ(scene.drawer().hotSpots(), ZNTHotSpotDrawer::HotSpots{good});
    EXPECT_EQ(good->indexID(), 0U);
}

TEST(HotSpotDrawer, LeavesOutWhatIsNoHotSpot) {
    HotSpotScene scene;
    const LogRecorder log;
    scene.showSpots({nullptr, spotAt(0, 0, "door"), nullptr});
    ASSERT_EQ(scene.drawer().hotSpots().size(), 1U);
    EXPECT_EQ(scene.drawer().hotSpots()[0]->indexID(), 0U);
    EXPECT_EQ(log.count("hot spots: one of the list is null; it is left out"), 2);
}

TEST(HotSpotDrawer, KeepsTheListThatIsBeingMadeFromAnother) {
    HotSpotScene scene;
    scene.showSpots({});
    const auto intruder = spotAt(0, 1, "intruder");
    bool hasTried = false;
    const auto previous = platform::setLogSink([&](platform::LogLevel, std::string_view) {
        if (std::exchange(hasTried, true))
            return;
        EXPECT_TRUE(scene.drawer().updateInProgress());
        scene.drawer().updateHotSpots({intruder});
    });
    scene.drawer().updateHotSpots({nullptr, spotAt(0, 0, "door")});
    platform::setLogSink(previous);
    EXPECT_TRUE(hasTried);
    ASSERT_EQ(scene.drawer().hotSpots().size(), 1U);
    EXPECT_EQ(scene.drawer().hotSpots()[0]->hotSpotName(), "door");
}

TEST(HotSpotDrawer, EndsAPickingPassOnce) {
    HotSpotScene scene;
    const auto counter = platform::make<PassCounter>();
    scene.showSpots({spotAt(0, 0), spotAt(0, 1)});
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_EQ(counter->ended, 1);
    EXPECT_EQ(scene.view().glDrawer()->enableColoring(), 0);
    scene.showSpots({});
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_EQ(counter->ended, 2) << "without markers too";
    EXPECT_EQ(scene.view().glDrawer()->enableColoring(), 0);
    scene.view().objectPickTestForPixelAtX(-1, 9999);
    EXPECT_EQ(counter->ended, 3) << "and for a point outside";
    EXPECT_EQ(scene.view().glDrawer()->enableColoring(), 0);
}

TEST(HotSpotDrawer, NeverShowsAPickingFrame) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0)});
    const auto before = scene.snapshot();
    const int frames = scene.host().framesPresented();
    scene.view().objectPickTestForPixelAtX(160, 90);
    scene.advance(1);
    EXPECT_EQ(scene.host().framesPresented(), frames);
    EXPECT_TRUE(picturesAreEqual("after-a-pick", *scene.snapshot(), *before));
}

TEST(HotSpotDrawer, LeavesTheHostsViewportAfterAPick) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0)});
    glViewport(1, 2, 3, 4);
    scene.view().objectPickTestForPixelAtX(160, 90);
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    EXPECT_EQ(viewport, (std::array<GLint, 4>{1, 2, 3, 4}));
}

TEST(HotSpotDrawer, LeavesTheMarkersOfTheSecondViewInPlaceAfterSideBySide) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0)});
    scene.controller().setDisplayMode(DisplayMode::SideBySide);
    scene.advance(1);
    EXPECT_TRUE(isRed(*scene.snapshot(), 79, 90));
    EXPECT_TRUE(isRed(*scene.snapshot(), 240, 90));
    scene.controller().setDisplayMode(DisplayMode::Sphere);
    scene.controller().prepareDisplayView();
    scene.advance(1);
    EXPECT_TRUE(isRed(*scene.snapshot(), 160, 90));
}

TEST(HotSpotDrawer, ShowsItsMarkersAfterALostContext) {
    HotSpotScene scene;
    scene.showSpots({spotAt(0, 0.3F)});
    const auto before = scene.snapshot();
    ASSERT_TRUE(scene.host().replaceContext());
    scene.host().settle();
    EXPECT_TRUE(picturesAreEqual("hot-spots-anew", *scene.snapshot(), *before));
}

TEST(HotSpotDrawer, GivesItsTexturesBack) {
    HotSpotScene scene;
    const auto hotSpot = spotAt(0, 0);
    scene.showSpots({hotSpot});
    const GLuint name = hotSpot->textureName();
    EXPECT_TRUE(glIsTexture(name));
    scene.releaseController();
    scene.host().settle();
    EXPECT_EQ(hotSpot->textureName(), 0U);
    EXPECT_FALSE(glIsTexture(name));
}

TEST(HotSpotDrawer, FollowsTheShapeOfTheScreen) {
    HotSpotScene scene({320, 180});
    scene.showSpots({spotAt(0, 0)});
    scene.embedded().resize({200, 200}, 1);
    scene.advance(1);
    const auto resized = scene.snapshot();
    int rows = 0;
    for (int y = 0; y < 200; ++y)
        rows += isRed(*resized, 100, y) ? 1 : 0;
    int columns = 0;
    for (int x = 0; x < 200; ++x)
        columns += isRed(*resized, x, 100) ? 1 : 0;
    EXPECT_NEAR(rows, 2 * columns, 2) << "twice as high as wide on a square screen";
}

TEST(HotSpotDrawer, SurvivesAnglesThatAreNoNumbers) {
    HotSpotScene scene;
    const auto before = scene.snapshot();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const LogRecorder log;
    scene.showSpots({spotAt(0, 2, "fine"), spotAt(nan, 0, "door"), spotAt(0, nan)});
    EXPECT_EQ(
        log.lines(),
        (std::vector<std::string>{
            "hot spots: \"door\", index 1, has an angle that is not a number; it is not drawn",
            "hot spots: \"\", index 2, has an angle that is not a number; it is not drawn"}));
    EXPECT_TRUE(picturesAreEqual("nan-hot-spots", *scene.snapshot(), *before));
    const SelectionListener selections;
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
