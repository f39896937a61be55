#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "Platform/Graphics/GLDevice.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/Support/GLObjects.h"
#include "Tests/Support/GLPrograms.h"

#include <GLES2/gl2.h>
#include <GLES2/gl2ext.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <utility>

using platform::GLDevice;

namespace {

constexpr int kUnits = 5;

/// The GL state that an application sets and then relies on, by name.
std::map<std::string, GLint> stateNow() {
    const auto integer = [](GLenum name) {
        GLint value = -1;
        glGetIntegerv(name, &value);
        return value;
    };
    std::map<std::string, GLint> state{{"program", integer(GL_CURRENT_PROGRAM)},
                                       {"vertex array", integer(GL_VERTEX_ARRAY_BINDING_OES)},
                                       {"array buffer", integer(GL_ARRAY_BUFFER_BINDING)},
                                       {"framebuffer", integer(GL_FRAMEBUFFER_BINDING)},
                                       {"active unit", integer(GL_ACTIVE_TEXTURE)},
                                       {"unpack alignment", integer(GL_UNPACK_ALIGNMENT)},
                                       {"depth test", glIsEnabled(GL_DEPTH_TEST)},
                                       {"depth mask", integer(GL_DEPTH_WRITEMASK)},
                                       {"culling", glIsEnabled(GL_CULL_FACE)},
                                       {"blending", glIsEnabled(GL_BLEND)},
                                       {"scissor test", glIsEnabled(GL_SCISSOR_TEST)}};
    for (int unit = 0; unit < kUnits; ++unit) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
        state["unit " + std::to_string(unit)] = integer(GL_TEXTURE_BINDING_2D);
    }
    glActiveTexture(static_cast<GLenum>(state["active unit"]));
    return state;
}

/// An application in the middle of drawing its own scene.
class DrawingApplication {
public:
    DrawingApplication() {
        GLDevice::main().makeCurrent();
        glUseProgram(program_ = tests::makeWhiteProgram());
        GLDevice::main().genVertexArrays(1, &vertexArray_);
        GLDevice::main().bindVertexArray(vertexArray_);
        glGenBuffers(1, &buffer_);
        glBindBuffer(GL_ARRAY_BUFFER, buffer_);
        glGenTextures(kUnits, textures_.data());
        for (GLenum unit = 0; unit < kUnits; ++unit) {
            glActiveTexture(GL_TEXTURE0 + unit);
            glBindTexture(GL_TEXTURE_2D, textures_[unit]);
        }
        glActiveTexture(GL_TEXTURE2);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
        glEnable(GL_DEPTH_TEST);
        glDepthMask(GL_TRUE);
        glEnable(GL_CULL_FACE);
    }

    /// Makes a call of the player's and compares the state before and after.
    template <class Call>
    static void expectNoChange(const char* name, const Call& call) {
        const auto before = stateNow();
        call();
        EXPECT_EQ(stateNow(), before) << name;
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << name;
    }

private:
    GLuint program_ = 0;
    GLuint vertexArray_ = 0;
    GLuint buffer_ = 0;
    std::array<GLuint, kUnits> textures_{};
};

} // namespace

TEST(ApplicationState, SurvivesAChangeOfTheDisplayMode) {
    HeadlessPlayer player({320, 180});
    player.show(flatPicture(8, 4, 0, 200, 0));
    const DrawingApplication application;
    for (const DisplayMode mode : {DisplayMode::Plane, DisplayMode::LittlePlanet,
                                   DisplayMode::SideBySide, DisplayMode::Sphere})
        application.expectNoChange("setDisplayMode",
                                   [&] { player.controller().setDisplayMode(mode); });
}

TEST(ApplicationState, SurvivesAPictureThatIsShown) {
    HeadlessPlayer player({320, 180});
    player.show(flatPicture(8, 4, 0, 200, 0));
    player.controller().addHotSpots({spotAt(0, 0)}, nullptr);
    const DrawingApplication application;
    application.expectNoChange("prepareDisplayView",
                               [&] { player.controller().prepareDisplayView(); });
}

TEST(ApplicationState, SurvivesHotSpotsOnAVideo) {
    VideoScene scene;
    scene.give(flatFrame(kFrameSize, kOrange));
    (void)scene.snapshot();
    const DrawingApplication application;
    application.expectNoChange("the first list", [&] {
        scene.view().displayCVPixelBuffer(flatFrame(kFrameSize, kOrange), nullptr, {spotAt(0, 0)});
    });
    application.expectNoChange("another list", [&] {
        scene.view().displayCVPixelBuffer(flatFrame(kFrameSize, kBlue), nullptr,
                                          {spotAt(0, 0), spotAt(0, 1)});
    });
    application.expectNoChange("a frame", [&] { scene.give(flatFrame(kFrameSize, kGrey)); });
}

TEST(ApplicationState, SurvivesAVideoAfterAPicture) {
    HeadlessPlayer player({320, 180});
    player.show(flatPicture(8, 4, 0, 200, 0));
    const DrawingApplication application;
    application.expectNoChange("the first frame", [&] {
        player.view().displayCVPixelBuffer(flatFrame(kFrameSize, kOrange));
    });
}

TEST(ApplicationState, HasNoNamesOfObjectsThatWereDeletedMeanwhile) {
    HeadlessPlayer player({320, 180});
    player.show(flatPicture(8, 4, 0, 200, 0));
    (void)player.view().snapshot(); // leaves the player's own objects bound
    const auto boundBefore = stateNow();
    ASSERT_NE(boundBefore.at("vertex array"), 0);
    player.view().displayCVPixelBuffer(flatFrame(kFrameSize, kOrange));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    player.host().settle(); // the watermark of the video
    const auto objects = liveGLObjects();
    for (int i = 0; i < 5; ++i) {
        (void)player.view().snapshot();
        player.view().startRenderVO(DisplayMode::Plane);
        player.view().startRenderVO(DisplayMode::Sphere);
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_EQ(liveGLObjects(), objects);
}
