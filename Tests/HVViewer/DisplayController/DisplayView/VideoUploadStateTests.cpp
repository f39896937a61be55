#include "HVViewer/DisplayController/DisplayView/ColorConversion.h"
#include "HVViewer/DisplayController/DisplayView/HVVProgram/ZNTProgram.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLDevice.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"

#include <GLES2/gl2.h>
#include <GLES2/gl2ext.h>
#include <gtest/gtest.h>

#include <array>

namespace {

/// A view whose video has been drawn once, so that its drawer knows the program.
class UploadedFrame : public ::testing::Test {
protected:
    UploadedFrame() {
        platform::GLDevice::main().makeCurrent();
        std::array<GLuint, 4> taken{}; // so that no name of the mesh is also one of its attributes
        glGenBuffers(static_cast<GLsizei>(taken.size()), taken.data());
        scene_.give(flatFrame(kFrameSize, kOrange));
        (void)scene_.snapshot();
        const ZNTProgram& program = *scene_.view().glProgram();
        program_ = program.programName();
        uniforms_[kUniformColorConversion] = program.programUniformIndex("colorConversionMatrix");
        uniforms_[kUniformColorPicking] = program.programUniformIndex("u_enableColorPicking");
    }

    void upload() {
        scene_.view().glDrawer()->drawCVPixelBuffer(flatFrame(kFrameSize, kBlue), uniforms_);
    }

    VideoScene scene_;
    GLuint program_ = 0;
    UniformTable uniforms_{};
};

GLint integer(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

} // namespace

TEST_F(UploadedFrame, HasTheProgramOfTheLastFrameInUse) {
    glUseProgram(0);
    upload();
    EXPECT_EQ(static_cast<GLuint>(integer(GL_CURRENT_PROGRAM)), program_);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(UploadedFrame, SetsTheColourMatrix) {
    glUseProgram(program_);
    const std::array<float, 9> zeros{};
    glUniformMatrix3fv(uniforms_[kUniformColorConversion], 1, GL_FALSE, zeros.data());
    upload();
    std::array<float, 9> matrix{};
    glGetUniformfv(program_, uniforms_[kUniformColorConversion], matrix.data());
    EXPECT_EQ(matrix, ColorConversation709Apple);
}

TEST_F(UploadedFrame, SetsThePickingFlag) {
    auto& center = platform::NotificationCenter::defaultCenter();
    GLint flag = -1;
    center.post(ZNTHotSpotDrawerDisableDrawing);
    upload();
    glGetUniformiv(program_, uniforms_[kUniformColorPicking], &flag);
    EXPECT_EQ(flag, 1);
    center.post(ZNTHotSpotDrawerEnableDrawing);
    upload();
    glGetUniformiv(program_, uniforms_[kUniformColorPicking], &flag);
    EXPECT_EQ(flag, 0);
}

TEST_F(UploadedFrame, TakesTheNameOfThePositionBufferForAnAttribute) {
    const auto& device = platform::GLDevice::main();
    (void)scene_.view().snapshot(); // leaves the mesh bound
    const auto mesh = static_cast<GLuint>(integer(GL_VERTEX_ARRAY_BINDING_OES));
    ASSERT_NE(mesh, 0U);
    GLint positions = 0;
    glGetVertexAttribiv(0, GL_VERTEX_ATTRIB_ARRAY_BUFFER_BINDING, &positions);
    ASSERT_GT(positions, 1) << "attributes 0 and 1 are the mesh's own";
    ASSERT_LT(positions, integer(GL_MAX_VERTEX_ATTRIBS));
    const auto attribute = static_cast<GLuint>(positions);
    glDisableVertexAttribArray(attribute);
    upload();
    device.bindVertexArray(mesh);
    GLint isOn = GL_FALSE;
    glGetVertexAttribiv(attribute, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &isOn);
    device.bindVertexArray(0);
    EXPECT_EQ(isOn, GL_TRUE);
}
