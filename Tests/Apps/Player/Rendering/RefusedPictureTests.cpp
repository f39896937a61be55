// A picture that can be read but not drawn: the graphics driver refuses it.

#include "Apps/Player/Rendering/Render.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/TemporaryFolder.h"

#include <GLES2/gl2.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

/// While above 0, no texture of that width can be made.
int refusedWidth = 0;

class RefusingDriver {
public:
    explicit RefusingDriver(int width) { refusedWidth = width; }
    ~RefusingDriver() { refusedWidth = 0; }
    RefusingDriver(const RefusingDriver&) = delete;
    RefusingDriver& operator=(const RefusingDriver&) = delete;
};

class RefusedPicture : public ::testing::Test {
protected:
    RefusedPicture() {
        const auto png = platform::encodePng(*flatPicture(7, 3, 0, 200, 0)).value();
        command_.input = folder_.add("panorama.png", png);
        command_.output = folder_.pathOf("out.png");
        command_.size = {64, 64};
    }

    tests::TemporaryFolder folder_;
    RenderCommand command_;
};

} // namespace

/// Stands in front of the driver's: a border makes OpenGL ES report an error and make nothing.
void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void* pixels) {
    using Function = decltype(&glTexImage2D);
    static const auto driver = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "glTexImage2D"));
    driver(target, level, internalFormat, width, height, width == refusedWidth ? 1 : border, format,
           type, pixels);
}

TEST_F(RefusedPicture, IsNamedAndLeavesNoPictureBehind) {
    const RefusingDriver driver(7);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(render(command_), ExitCode::ContentNotOpened);
    const std::string said = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("zanto-player: " + command_.input +
                        ": the graphics driver refuses the picture\n"),
              std::string::npos)
        << said;
    EXPECT_FALSE(std::filesystem::exists(command_.output));
}

TEST_F(RefusedPicture, IsWrittenWhereTheDriverTakesIt) {
    EXPECT_EQ(render(command_), ExitCode::Done);
    EXPECT_TRUE(std::filesystem::exists(command_.output));
}
