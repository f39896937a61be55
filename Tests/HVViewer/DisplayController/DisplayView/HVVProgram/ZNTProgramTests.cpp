#include "HVViewer/DisplayController/DisplayView/HVVProgram/ZNTProgram.h"
#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/Bundle.h"
#include "Platform/Graphics/GLContext.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/ShadowedResource.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::int32_t kUntouched = 4711;

class Program : public ::testing::Test {
protected:
    void SetUp() override { platform::GLContext::setCurrentContext(context_); }

    void build(ContentType type) {
        program_.buildProgramWithUniforms(uniforms_, textureCoordinates_, type);
    }

    std::unique_ptr<zanto::HeadlessHost> host_ = makeHost({64, 64});
    std::shared_ptr<platform::GLContext> context_ = platform::GLContext::create();
    ZNTProgram program_;
    UniformTable uniforms_{kUntouched, kUntouched, kUntouched, kUntouched, kUntouched,
                           kUntouched, kUntouched, kUntouched, kUntouched, kUntouched};
    std::uint32_t textureCoordinates_ = 99;
};

platform::AssertionFailure failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const platform::AssertionFailure& failure) {
        return failure;
    }
    ADD_FAILURE() << "nothing was thrown";
    return {"", 0, ""};
}

/// A fragment shader as the preprocessor leaves it where GL_FRAGMENT_PRECISION_HIGH is undefined.
std::string withoutHighPrecision(const std::string& name) {
    std::istringstream source(
        platform::Bundle::framework().string(name, "fsh").value_or(std::string()));
    std::string text;
    bool isSkipping = false;
    for (std::string line; std::getline(source, line);) {
        if (line == "#ifdef GL_FRAGMENT_PRECISION_HIGH")
            isSkipping = true;
        else if (line == "#else" || line == "#endif")
            isSkipping = false;
        else if (!isSkipping)
            text += line + "\n";
    }
    return text;
}

} // namespace

TEST_F(Program, BindsItsAttributesInOrder) {
    build(ContentType::Photo);
    EXPECT_EQ(program_.attributes(), (std::vector<std::string>{"a_position", "a_textureCoord"}));
    EXPECT_EQ(textureCoordinates_, 1U);
    EXPECT_EQ(glGetAttribLocation(program_.programName(), "a_position"), 0);
    EXPECT_EQ(glGetAttribLocation(program_.programName(), "a_textureCoord"), 1);
    EXPECT_EQ(program_.programAttributeIndex("a_textureCoord"), 1U);
    EXPECT_EQ(program_.programAttributeIndex("unknown"), 0xffffffffU);
}

TEST_F(Program, IgnoresAnAttributeThatItHas) {
    build(ContentType::Photo);
    program_.addAttributeToProgram("a_position");
    EXPECT_EQ(program_.attributes().size(), 2U);
}

TEST_F(Program, LeavesTheVideoSlotsAloneForAPhoto) {
    build(ContentType::Photo);
    for (std::size_t slot = 3; slot <= 7; ++slot)
        EXPECT_EQ(uniforms_[slot], kUntouched) << slot;
    EXPECT_GE(uniforms_[0], 0);
    EXPECT_EQ(uniforms_[1], uniforms_[0]);
    EXPECT_EQ(uniforms_[8], uniforms_[0]);
    EXPECT_EQ(uniforms_[2], program_.programUniformIndex("u_Sampler"));
    EXPECT_GE(uniforms_[2], 0);
    EXPECT_EQ(uniforms_[9], program_.programUniformIndex("u_enableColorPicking"));
    EXPECT_GE(uniforms_[9], 0);
}

TEST_F(Program, FillsEachSamplerTwiceForAVideo) {
    build(ContentType::Video);
    EXPECT_GE(uniforms_[3], 0);
    EXPECT_GE(uniforms_[4], 0);
    EXPECT_NE(uniforms_[3], uniforms_[4]);
    EXPECT_EQ(uniforms_[3], uniforms_[5]);
    EXPECT_EQ(uniforms_[4], uniforms_[6]);
    EXPECT_GE(uniforms_[7], 0);
    EXPECT_EQ(uniforms_[0], uniforms_[1]);
    EXPECT_EQ(uniforms_[0], uniforms_[8]);
    EXPECT_EQ(uniforms_[2], -1) << "a video has no picture sampler";
}

TEST_F(Program, ReadsZeroForItsShadersOnceBuilt) {
    build(ContentType::Photo);
    EXPECT_EQ(program_.vertShader(), 0U);
    EXPECT_EQ(program_.fragShader(), 0U);
    EXPECT_EQ(program_.currentContentType(), ContentType::Photo);
}

TEST_F(Program, LeavesOneProgramWhenBuiltTwice) {
    build(ContentType::Photo);
    const std::uint32_t first = program_.programName();
    build(ContentType::Photo);
    EXPECT_TRUE(glIsProgram(program_.programName()));
    EXPECT_TRUE(first == program_.programName() || !glIsProgram(first));
}

TEST_F(Program, RefusesAnUndefinedTypeAndKeepsTheEarlierProgram) {
    build(ContentType::Photo);
    const std::uint32_t earlier = program_.programName();
    const auto failure = failureOf([this] { build(ContentType::Undefined); });
    EXPECT_EQ(failure.file(), "ZNTProgram");
    EXPECT_EQ(failure.line(), 69);
    EXPECT_EQ(failure.description(), "Content type cant be Undefined");
    EXPECT_EQ(program_.programName(), earlier);
    EXPECT_TRUE(glIsProgram(earlier));
    EXPECT_EQ(program_.currentContentType(), ContentType::Photo);
}

TEST_F(Program, IsEmptyAfterCleanUp) {
    build(ContentType::Photo);
    const std::uint32_t name = program_.programName();
    program_.cleanUp();
    EXPECT_EQ(program_.programName(), 0U);
    EXPECT_TRUE(program_.attributes().empty());
    EXPECT_FALSE(glIsProgram(name));
}

TEST_F(Program, IsUsedByRun) {
    build(ContentType::Photo);
    program_.run();
    GLint current = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    EXPECT_EQ(static_cast<std::uint32_t>(current), program_.programName());
}

TEST_F(Program, ReportsAMissingShaderAndThenTheLink) {
    const ShadowedResource shadow("FragmentPhotoShader.fsh");
    const LogRecorder log;
    const auto failure = failureOf([this] { build(ContentType::Photo); });
    EXPECT_EQ(failure.file(), "ZNTProgram");
    EXPECT_EQ(failure.line(), 125);
    EXPECT_EQ(failure.description(), "Failed during linking process");
    EXPECT_EQ(log.count("Cant find file"), 1);
    EXPECT_EQ(log.count("Cant compile fragment shader"), 1);
    EXPECT_EQ(log.count("Cant compile vertex shader"), 0);
    EXPECT_EQ(log.count("Program link log: "), 1);
    EXPECT_EQ(log.count("Fragment shader compile log: (null)"), 1);
    EXPECT_EQ(log.count("Vertex shader compile log: (null)"), 1);
    EXPECT_EQ(program_.programName(), 0U);
    EXPECT_TRUE(program_.attributes().empty());
}

TEST_F(Program, LogsProgramThenFragmentThenVertexShaderWhenTheLinkFails) {
    const ShadowedResource shadow("FragmentPhotoShader.fsh");
    const LogRecorder log;
    failureOf([this] { build(ContentType::Photo); });
    std::vector<std::string> heads;
    for (const std::string& line : log.lines()) {
        if (const auto colon = line.find(" log: "); colon != std::string::npos)
            heads.push_back(line.substr(0, colon));
    }
    EXPECT_EQ(heads, (std::vector<std::string>{"Program link", "Fragment shader compile",
                                               "Vertex shader compile"}));
}

TEST_F(Program, AsksTheProgramFunctionsForTheShadersLogsWhichGivesNone) {
    const ShadowedResource vertex("VertexPhotoShader.vsh", "this is no shader");
    const ShadowedResource fragment("FragmentPhotoShader.fsh", "neither is this");
    const LogRecorder log;
    failureOf([this] { build(ContentType::Photo); });
    ASSERT_EQ(log.count("Shader compile informations:\n"), 2) << "both have a log of their own";
    EXPECT_EQ(log.count("Fragment shader compile log: (null)"), 1);
    EXPECT_EQ(log.count("Vertex shader compile log: (null)"), 1);
}

TEST_F(Program, TakesTheVideoShaderForAnyTypeBeyondVideo) {
    build(static_cast<ContentType>(3));
    EXPECT_GE(program_.programUniformIndex("SamplerY"), 0);
    EXPECT_EQ(program_.programUniformIndex("u_Sampler"), -1);
    for (std::size_t slot = 3; slot <= 7; ++slot)
        EXPECT_EQ(uniforms_[slot], kUntouched) << slot;
}

TEST_F(Program, ReportsAMissingVertexShader) {
    const ShadowedResource shadow("VertexPhotoShader.vsh");
    const LogRecorder log;
    failureOf([this] { build(ContentType::Video); });
    EXPECT_EQ(log.count("Cant compile vertex shader"), 1);
    EXPECT_EQ(log.count("Cant compile fragment shader"), 0);
}

TEST_F(Program, LogsACompileErrorAndFailsAtTheLink) {
    const ShadowedResource shadow("FragmentPhotoShader.fsh", "this is no shader");
    const LogRecorder log;
    const auto failure = failureOf([this] { build(ContentType::Photo); });
    EXPECT_EQ(failure.description(), "Failed during linking process");
    EXPECT_EQ(log.count("Shader compile informations:\n"), 1);
    EXPECT_EQ(log.count("Cant compile fragment shader"), 0) << "there was a source";
}

TEST_F(Program, BuildsWithoutAPickingUniform) {
    const ShadowedResource shadow(
        "FragmentPhotoShader.fsh",
        "precision highp float; uniform sampler2D u_Sampler;"
        "varying highp vec2 v_textureCoord;"
        "void main() { gl_FragColor = texture2D(u_Sampler, v_textureCoord); }");
    build(ContentType::Photo);
    EXPECT_EQ(uniforms_[9], -1);
    EXPECT_TRUE(glIsProgram(program_.programName()));
}

TEST_F(Program, BuildsOnADeviceWhoseFragmentsHaveNoHighPrecision) {
    for (const auto& [name, type] : {std::pair("FragmentPhotoShader", ContentType::Photo),
                                     std::pair("FragmentVideoShader", ContentType::Video)}) {
        const std::string source = withoutHighPrecision(name);
        EXPECT_EQ(source.find("highp"), std::string::npos) << name;
        const ShadowedResource shadow(std::string(name) + ".fsh", source);
        build(type);
        EXPECT_TRUE(glIsProgram(program_.programName())) << name;
    }
    EXPECT_EQ(withoutHighPrecision("Shader").find("highp"), std::string::npos);
}

TEST_F(Program, HasNothingToSayAboutAShaderAskedAsAProgram) {
    const GLuint shader = glCreateShader(GL_VERTEX_SHADER);
    EXPECT_FALSE(ZNTProgram::logForOpenGLObject(shader, glGetProgramiv, glGetProgramInfoLog));
    glDeleteShader(shader);
}
