#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/MarkerProgram.h"
#include "Platform/Graphics/GLContext.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/ShadowedResource.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

constexpr const char* kBroken = "void main() { nothing; }";
constexpr const char* kOtherVarying = "precision highp float; varying vec4 v_notGiven;\n"
                                      "void main() { gl_FragColor = v_notGiven; }";

/// What the shader says, the other way round.
constexpr const char* kCoordinatesFirst =
    "attribute vec2 a_texCoordIn; attribute vec3 a_position;\n"
    "uniform mat4 u_modelViewProjectionMatrix; varying highp vec2 v_texCoord;\n"
    "void main() { v_texCoord = a_texCoordIn;\n"
    "gl_Position = u_modelViewProjectionMatrix * vec4(a_position, 1.0); }";

int countShaders() {
    constexpr GLuint kHighestName = 200;
    int count = 0;
    for (GLuint name = 1; name < kHighestName; ++name)
        count += glIsShader(name);
    return count;
}

class MarkerShaders : public ::testing::Test {
protected:
    void SetUp() override { platform::GLContext::setCurrentContext(context_); }
    void TearDown() override { program_.tearDown(); }

    std::unique_ptr<zanto::HeadlessHost> host_ = makeHost({64, 64});
    std::shared_ptr<platform::GLContext> context_ = platform::GLContext::create();
    LogRecorder log_;
    MarkerProgram program_;
};

} // namespace

TEST_F(MarkerShaders, GiveAProgramThatTheDriverHoldsValid) {
    ASSERT_TRUE(program_.loadShaders());
    EXPECT_EQ(glIsProgram(program_.name()), GL_TRUE);
    EXPECT_GE(program_.uniforms().matrix, 0);
    EXPECT_GE(program_.uniforms().texture, 0);
    EXPECT_GE(program_.uniforms().enableColorPicking, 0);
    EXPECT_GE(program_.uniforms().color, 0);
    EXPECT_NE(program_.textureCoordinates(), 0U) << "positions are attribute 0";
    EXPECT_TRUE(program_.validateProgram());
    EXPECT_TRUE(log_.lines().empty());
}

TEST_F(MarkerShaders, TakePositionsAsAttribute0InWhateverOrderTheyName) {
    const ShadowedResource resource("Shader.vsh", kCoordinatesFirst);
    ASSERT_TRUE(program_.loadShaders());
    EXPECT_EQ(glGetAttribLocation(program_.name(), "a_position"), 0);
    EXPECT_EQ(glGetAttribLocation(program_.name(), "a_texCoordIn"),
              static_cast<GLint>(program_.textureCoordinates()));
}

TEST_F(MarkerShaders, LeaveTheProgramOnceItIsLinked) {
    const int before = countShaders();
    ASSERT_TRUE(program_.loadShaders());
    GLint attached = -1;
    glGetProgramiv(program_.name(), GL_ATTACHED_SHADERS, &attached);
    EXPECT_EQ(attached, 0);
    EXPECT_EQ(countShaders(), before);
}

TEST_F(MarkerShaders, AreDeletedWhenTheyFail) {
    const int before = countShaders();
    for (const char* broken : {"Shader.vsh", "Shader.fsh"}) {
        const ShadowedResource resource(broken, kBroken);
        EXPECT_FALSE(program_.loadShaders());
        EXPECT_EQ(countShaders(), before) << broken;
        program_.tearDown();
    }
    const ShadowedResource resource("Shader.fsh", kOtherVarying);
    EXPECT_FALSE(program_.loadShaders());
    EXPECT_EQ(countShaders(), before) << "which do not link";
}

TEST_F(MarkerShaders, AreNotValidWithoutAProgram) {
    const ShadowedResource resource("Shader.fsh", kOtherVarying);
    ASSERT_FALSE(program_.loadShaders());
    EXPECT_FALSE(program_.validateProgram());
    EXPECT_NE(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "which leaves none behind";
}

TEST_F(MarkerShaders, SayWhichOfThemDoesNotCompile) {
    {
        const ShadowedResource resource("Shader.vsh", kBroken);
        EXPECT_FALSE(program_.loadShaders());
        EXPECT_EQ(log_.count("Shader compile log:\n"), 1);
        EXPECT_EQ(log_.lines().back(), "Failed to compile vertex shader");
        EXPECT_EQ(glIsProgram(program_.name()), GL_TRUE) << "the program is left";
    }
    program_.tearDown();
    const ShadowedResource resource("Shader.fsh", kBroken);
    EXPECT_FALSE(program_.loadShaders());
    EXPECT_EQ(log_.count("Shader compile log:\n"), 2);
    EXPECT_EQ(log_.lines().back(), "Failed to compile fragment shader");
}

TEST_F(MarkerShaders, SayThatOneCannotBeRead) {
    {
        const ShadowedResource resource("Shader.fsh");
        EXPECT_FALSE(program_.loadShaders());
        EXPECT_EQ(log_.lines(), (std::vector<std::string>{"Failed to load vertex shader",
                                                          "Failed to compile fragment shader"}))
            << "one text for either kind";
        EXPECT_EQ(glIsProgram(program_.name()), GL_TRUE) << "the program is left";
        program_.tearDown();
    }
    const ShadowedResource resource("Shader.vsh");
    EXPECT_FALSE(program_.loadShaders());
    ASSERT_EQ(log_.lines().size(), 4U);
    EXPECT_EQ(log_.lines()[2], "Failed to load vertex shader");
    EXPECT_EQ(log_.lines()[3], "Failed to compile vertex shader");
}

TEST_F(MarkerShaders, SayThatTheyDoNotLinkAndLeaveNoProgram) {
    const ShadowedResource resource("Shader.fsh", kOtherVarying);
    constexpr std::string_view kText = "Failed to link program: ";
    std::vector<GLuint> programs;
    const auto previous = platform::setLogSink([&](platform::LogLevel, std::string_view line) {
        if (!line.starts_with(kText))
            return;
        programs.push_back(static_cast<GLuint>(std::stoul(std::string(line.substr(kText.size())))));
        EXPECT_TRUE(glIsProgram(programs.back())) << "the name that the program had";
    });
    EXPECT_FALSE(program_.loadShaders());
    platform::setLogSink(previous);
    ASSERT_EQ(programs.size(), 1U);
    EXPECT_FALSE(glIsProgram(programs[0]));
    EXPECT_EQ(program_.name(), 0U);
}

TEST(BrokenMarkerShaders, LeaveTheContentAsItIsAndPickNothing) {
    HotSpotScene scene;
    const auto before = scene.snapshot();
    const LogRecorder log;
    const ShadowedResource resource("Shader.fsh", kBroken);
    scene.showSpots({spotAt(0, 0)});
    EXPECT_TRUE(picturesAreEqual("broken-marker-shader", *scene.snapshot(), *before));
    SelectionListener selections;
    scene.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_TRUE(selections.take().empty());
    EXPECT_TRUE(picturesAreEqual("after-the-pick", *scene.snapshot(), *before));
}
