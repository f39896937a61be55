#include "HVViewer/DisplayController/DisplayView/UploadEnding.h"
#include "HVViewer/Model/ZNTPlaneVO.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/Support/GLObjects.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class UploadEnd : public ::testing::Test {
protected:
    UploadEnd() { mesh_ = platform::uploadMesh(ZNTPlaneVO().model(), 1, GL_STATIC_DRAW); }
    ~UploadEnd() override {
        platform::GLDevice::main().setQuirks({});
        glDeleteBuffers(static_cast<GLsizei>(others_.size()), others_.data());
        platform::deleteMesh(mesh_);
    }

    /// A mesh whose buffer has a name that no attribute has, or one that an attribute has.
    void takeName(GLuint atLeast) {
        while (mesh_.positions < atLeast) {
            others_.push_back(mesh_.positions);
            glGenBuffers(1, &mesh_.positions);
            glBindBuffer(GL_ARRAY_BUFFER, mesh_.positions);
        }
    }
    [[nodiscard]] bool isAttributeOn(GLuint attribute, GLuint vertexArray) const {
        platform::GLDevice::main().bindVertexArray(vertexArray);
        GLint on = 0;
        glGetVertexAttribiv(attribute, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &on);
        platform::GLDevice::main().bindVertexArray(0);
        return on == GL_TRUE;
    }

    std::unique_ptr<zanto::HeadlessHost> host_ = makeHost({16, 16});
    platform::MeshBuffers mesh_;
    std::vector<GLuint> others_;
};

} // namespace

TEST_F(UploadEnd, TurnsTheAttributeOfThatNameOnInTheMeshAlone) {
    takeName(3);
    endUpload(mesh_);
    EXPECT_TRUE(isAttributeOn(mesh_.positions, mesh_.vertexArray));
    EXPECT_FALSE(isAttributeOn(mesh_.positions, 0));
}

TEST_F(UploadEnd, LeavesNoErrorForANameBeyondTheAttributes) {
    takeName(40);
    endUpload(mesh_);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(UploadEnd, BindsTheFramebufferThatWasBoundAndMakesNone) {
    const auto target = platform::OffscreenTarget::create({4, 4});
    glBindFramebuffer(GL_FRAMEBUFFER, target.value()->framebuffer());
    takeName(40);
    const auto before = liveGLObjects();
    endUpload(mesh_);
    GLint bound = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &bound);
    EXPECT_EQ(static_cast<GLuint>(bound), target.value()->framebuffer());
    EXPECT_EQ(liveGLObjects(), before);
}

TEST_F(UploadEnd, LeavesAFramebufferOfThatNameToItsOwner) {
    std::vector<GLuint> framebuffers;
    while (framebuffers.empty() || framebuffers.back() < mesh_.positions) {
        framebuffers.push_back(0);
        glGenFramebuffers(1, &framebuffers.back());
        glBindFramebuffer(GL_FRAMEBUFFER, framebuffers.back());
    }
    takeName(framebuffers.back());
    ASSERT_EQ(mesh_.positions, framebuffers.back());
    endUpload(mesh_);
    EXPECT_TRUE(glIsFramebuffer(mesh_.positions));
    glDeleteFramebuffers(static_cast<GLsizei>(framebuffers.size()), framebuffers.data());
}

TEST_F(UploadEnd, DoesNothingWhereItWouldDoHarm) {
    takeName(3);
    platform::GLDevice::main().setQuirks({.endsUploadsPlainly = true});
    endUpload(mesh_);
    EXPECT_FALSE(isAttributeOn(mesh_.positions, mesh_.vertexArray));
}
