#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/ZNTHotSpotPlaneVO.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Interface/GLView.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <utility>
#include <vector>

// One pass over the markers, and the GL state during it and after it.

namespace {

GLint valueOf(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

GLint textureOfUnit(int unit) {
    const GLint active = valueOf(GL_ACTIVE_TEXTURE);
    glActiveTexture(static_cast<GLenum>(GL_TEXTURE0 + unit));
    const GLint texture = valueOf(GL_TEXTURE_BINDING_2D);
    glActiveTexture(static_cast<GLenum>(active));
    return texture;
}

/// A uniform of the program that drew last.
GLint integerUniform(const char* name) {
    const auto program = static_cast<GLuint>(valueOf(GL_CURRENT_PROGRAM));
    GLint value = -1;
    glGetUniformiv(program, glGetUniformLocation(program, name), &value);
    return value;
}

std::array<float, 3> colorUniform() {
    const auto program = static_cast<GLuint>(valueOf(GL_CURRENT_PROGRAM));
    std::array<float, 3> value{};
    glGetUniformfv(program, glGetUniformLocation(program, "u_color"), value.data());
    return value;
}

/// A player that shows two hot spots, the second one straight ahead.
struct MarkerPass : HotSpotScene {
    MarkerPass() { showSpots({spotAt(0, 0.3F), spotAt(0, 0)}); }
    void draw() { drawer().performDrawMarkersWithProjection(view().modelViewProjectionMatrix()); }
};

} // namespace

TEST(MarkerPass, SamplesUnit4AndLeavesNothingBoundThere) {
    MarkerPass scene;
    GLuint stranger = 0;
    glGenTextures(1, &stranger);
    for (const int unit : {3, 4, 5}) {
        glActiveTexture(static_cast<GLenum>(GL_TEXTURE0 + unit));
        glBindTexture(GL_TEXTURE_2D, stranger);
    }
    scene.draw();
    EXPECT_EQ(integerUniform("u_texture"), 4);
    EXPECT_EQ(textureOfUnit(3), static_cast<GLint>(stranger));
    EXPECT_EQ(textureOfUnit(4), 0);
    EXPECT_EQ(textureOfUnit(5), static_cast<GLint>(stranger));
    EXPECT_EQ(valueOf(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    glDeleteTextures(1, &stranger);
}

TEST(MarkerPass, BlendsByAlphaAndSwitchesBlendingOffAgain) {
    MarkerPass scene;
    glDisable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ZERO);
    scene.draw();
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(valueOf(GL_BLEND_SRC_RGB), GL_SRC_ALPHA);
    EXPECT_EQ(valueOf(GL_BLEND_SRC_ALPHA), GL_SRC_ALPHA);
    EXPECT_EQ(valueOf(GL_BLEND_DST_RGB), GL_ONE_MINUS_SRC_ALPHA);
    EXPECT_EQ(valueOf(GL_BLEND_DST_ALPHA), GL_ONE_MINUS_SRC_ALPHA);
    EXPECT_EQ(integerUniform("u_enableColorPicking"), 0);
}

TEST(MarkerPass, DrawsALaterHotSpotOverAnEarlierOne) {
    HotSpotScene scene;
    const auto green =
        ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 0, 255, 0), 0.0F, 0.0F);
    scene.showSpots({spotAt(0, 0), green});
    EXPECT_EQ(colourAt(*scene.snapshot(), 160, 90), (std::array{0, 255, 0, 255}));
    scene.drawer().updateHotSpots({green, spotAt(0, 0)});
    scene.view().setNeedsDisplay();
    EXPECT_EQ(colourAt(*scene.snapshot(), 160, 90), (std::array{255, 0, 0, 255}));
}

TEST(MarkerPass, ForAPickDrawsEachInTheRedOfItsIndex) {
    MarkerPass scene;
    std::array<float, 3> last{};
    GLint picking = 0;
    const WhenPosted end(ZNTHotSpotDrawerEnableDrawing, [&] {
        last = colorUniform();
        picking = integerUniform("u_enableColorPicking");
        EXPECT_FALSE(scene.drawer().enableColor()) << "the next pass draws pictures again";
        EXPECT_FALSE(glIsEnabled(GL_BLEND));
    });
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_EQ(picking, 1);
    EXPECT_EQ(last, (std::array{51 / 255.0F, 255.0F, 0.0F})) << "of the second hot spot";
}

TEST(MarkerPass, ForAPickIsNotDithered) {
    MarkerPass scene;
    std::vector<bool> dithers;
    const WhenPosted end(ZNTHotSpotDrawerEnableDrawing,
                         [&dithers] { dithers.push_back(glIsEnabled(GL_DITHER) == GL_TRUE); });
    glEnable(GL_DITHER);
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_EQ(dithers, std::vector<bool>{false});
    EXPECT_TRUE(glIsEnabled(GL_DITHER)) << "as it was before";
    glDisable(GL_DITHER);
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_FALSE(glIsEnabled(GL_DITHER));
    glEnable(GL_DITHER);
}

TEST(MarkerPass, DoesNothingWhileTheListIsReplaced) {
    HotSpotScene scene;
    scene.showSpots({});
    bool hasTried = false;
    const auto previous = platform::setLogSink([&](platform::LogLevel, std::string_view) {
        hasTried = true;
        ASSERT_EQ(scene.drawer().hotSpots().size(), 1U);
        glEnable(GL_BLEND);
        scene.drawer().performDrawMarkersWithProjection(GLKMatrix4Identity);
        EXPECT_TRUE(glIsEnabled(GL_BLEND)) << "a pass ends with blending off";
        glDisable(GL_BLEND);
    });
    scene.drawer().updateHotSpots({spotAt(0, 0), nullptr});
    platform::setLogSink(previous);
    EXPECT_TRUE(hasTried);
}

TEST(MarkerPass, PlacesEachHotSpotInTheSceneThatItDraws) {
    MarkerPass scene;
    const auto spot = scene.drawer().hotSpots()[0];
    const GLKMatrix4 camera = scene.view().modelViewProjectionMatrix();
    const GLKMatrix4 moved = GLKMatrix4Rotate(camera, 0.1F, 0, 0, 1);
    scene.drawer().performDrawMarkersWithProjection(moved);
    const GLKMatrix4 drawn = spot->hotSpotModelViewProjectionMatrix();
    spot->updateWithModelViewProjection(moved);
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(drawn.m[i], spot->hotSpotModelViewProjectionMatrix().m[i]) << i;
}

TEST(MarkerPass, LeavesNoVertexArrayBoundForTheHost) {
    const auto host = makeHost({64, 36});
    const auto context = platform::GLContext::create();
    const auto view = platform::make<platform::GLView>(platform::Rect{{}, {64, 36}});
    const auto drawer = platform::make<ZNTHotSpotDrawer>(context, view);
    constexpr GLenum kVertexArrayBinding = 0x85B5;
    EXPECT_EQ(valueOf(kVertexArrayBinding), 0) << "after the set-up";
}

TEST(HotSpotDrawerDefaults, AreAnEmptyListInPicturesAndAutomaticPicking) {
    const auto host = makeHost({64, 36});
    const auto context = platform::GLContext::create();
    const auto view = platform::make<platform::GLView>(platform::Rect{{}, {64, 36}});
    const auto drawer = platform::make<ZNTHotSpotDrawer>(context, view);
    EXPECT_TRUE(drawer->hotSpots().empty());
    EXPECT_FALSE(drawer->enableColor());
    EXPECT_FALSE(drawer->updateInProgress());
    EXPECT_TRUE(drawer->enableAutoPickingTest());
    EXPECT_EQ(drawer->pickingPoint(), nullptr);
    EXPECT_EQ(drawer->pickingHotSpotIndex(), 0U);
    EXPECT_EQ(drawer->pickingOccurency(), 0);
    EXPECT_FALSE(drawer->isPickingAutomatically());
    ASSERT_NE(drawer->hotSpotModel(), nullptr);
    EXPECT_EQ(drawer->hotSpotModel()->model().numberOfVertices, 6);
}

TEST(HotSpotDrawerDefaults, KeepNeitherTheViewNorTheContext) {
    const auto host = makeHost({64, 36});
    auto context = platform::GLContext::create();
    auto view = platform::make<platform::GLView>(platform::Rect{{}, {64, 36}});
    const auto drawer = platform::make<ZNTHotSpotDrawer>(context, view);
    drawer->updateHotSpots({spotAt(0, 0)});
    const std::weak_ptr<platform::GLView> heldView = view;
    const std::weak_ptr<platform::GLContext> heldContext = context;
    int frames = 0;
    const WhenPosted begin(ZNTHotSpotDrawerDisableDrawing, [&frames] { ++frames; });
    view.reset();
    EXPECT_TRUE(heldView.expired());
    drawer->objectPickTestForPixelAtX(32, 18);
    EXPECT_EQ(frames, 0) << "there is nothing to look at";
    drawer->updateHotSpots({});
    context.reset();
    EXPECT_TRUE(heldContext.expired());
    drawer->updateHotSpots({spotAt(0, 0)});
    EXPECT_TRUE(drawer->hotSpots().empty()) << "nothing can be uploaded";
}
