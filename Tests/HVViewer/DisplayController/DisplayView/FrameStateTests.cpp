#include "HVViewer/DisplayController/DisplayView/HVVProgram/ZNTProgram.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <utility>

namespace {

using Colour = std::array<int, 4>;
const Colour kOrange{250, 120, 10, 255};
const Colour kMagenta{255, 0, 255, 255};

/// A view that draws into a framebuffer with depth when it is told to.
class DrawnFrame : public ::testing::Test {
protected:
    DrawnFrame() {
        player_.show(flatPicture(64, 32, 250, 120, 10));
        auto target = platform::OffscreenTarget::create({320, 180});
        target_ = std::move(target).value();
        glGenRenderbuffers(1, &depth_);
        glBindRenderbuffer(GL_RENDERBUFFER, depth_);
        glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT16, 320, 180);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depth_);
        glViewport(0, 0, 320, 180);
        glScissor(0, 0, 320, 180);
        glEnable(GL_SCISSOR_TEST);
        glClearColor(1, 0, 1, 1);
        glClear(GL_COLOR_BUFFER_BIT);
    }
    ~DrawnFrame() override { glDeleteRenderbuffers(1, &depth_); }

    void draw() { player_.view().drawInRect(player_.view(), player_.view().bounds()); }
    [[nodiscard]] Colour pixelAt(int x, int y) const {
        return colourAt(platform::Image(target_->readPixels()), x, y);
    }

    HeadlessPlayer player_{{320, 180}};
    std::unique_ptr<platform::OffscreenTarget> target_;
    GLuint depth_ = 0;
};

} // namespace

TEST_F(DrawnFrame, ClearsInsideTheScissorBoxAndDrawsWithoutIt) {
    glScissor(0, 0, 1, 1);
    draw();
    EXPECT_EQ(pixelAt(160, 60), kOrange) << "the scissor test is off while content is drawn";
    EXPECT_TRUE(glIsEnabled(GL_SCISSOR_TEST)) << "and on again afterwards";
}

TEST_F(DrawnFrame, LeavesWhatLiesOutsideTheScissorBoxWhereNoContentIs) {
    player_.view().displayImage(nullptr); // a drawer that has nothing to show
    glBindFramebuffer(GL_FRAMEBUFFER, target_->framebuffer());
    glScissor(0, 0, 1, 1);
    draw();
    EXPECT_EQ(pixelAt(0, 179), (Colour{0, 0, 0, 255}));
    EXPECT_EQ(pixelAt(160, 60), kMagenta);
}

TEST_F(DrawnFrame, ClearsTheDepthToo) {
    glDepthMask(GL_TRUE);
    glClearDepthf(0);
    glClear(GL_DEPTH_BUFFER_BIT);
    glClearDepthf(1);
    draw();
    // Everything is nearer than a cleared depth, and nothing is nearer than the one from before.
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    player_.view().glDrawer()->drawImage(flatPicture(8, 4, 0, 200, 0));
    player_.host().settle();
    glBindFramebuffer(GL_FRAMEBUFFER, target_->framebuffer());
    glViewport(0, 0, 320, 180);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_SCISSOR_TEST);
    const ZNTProgram& program = *player_.view().glProgram();
    UniformTable uniforms{};
    uniforms.fill(-1);
    uniforms[kUniformContentMatrix] = program.programUniformIndex("u_modelViewProjectionMatrix");
    player_.view().glDrawer()->performBufferDrawingWithUniforms(
        uniforms, player_.view().modelViewProjectionMatrix(), program.programName());
    glDisable(GL_DEPTH_TEST);
    EXPECT_EQ(pixelAt(160, 60), (Colour{0, 200, 0, 255}));
}

TEST_F(DrawnFrame, DrawsAPictureWhicheverUnitIsActive) {
    glActiveTexture(GL_TEXTURE3);
    draw();
    EXPECT_EQ(pixelAt(160, 60), kOrange);
    glActiveTexture(GL_TEXTURE0);
}
