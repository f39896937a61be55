#include "HVViewer/Utilities/Categories/ImageDrawWithFillColor.h"
#include "HVViewer/Utilities/Categories/ImageGLBlend.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <utility>

using platform::Screen;

namespace {

using Pixel = std::array<float, 4>;

Pixel picked(const platform::Image& image, std::uint64_t x, std::uint64_t y) {
    const GLKVector4 colour = pickPixelAtX(image, x, y);
    return {colour.v[0], colour.v[1], colour.v[2], colour.v[3]};
}

constexpr Pixel kOpaqueBlack{0, 0, 0, 1};

/// Every pixel another colour: red counts columns, green rows.
platform::Image counted(int widthPx, int heightPx) {
    platform::PixelStorage pixels(widthPx, heightPx);
    for (int y = 0; y < heightPx; ++y) {
        for (int x = 0; x < widthPx; ++x) {
            std::uint8_t* const pixel = pixels.row(y) + std::ptrdiff_t{4} * x;
            pixel[0] = static_cast<std::uint8_t>(x + 1);
            pixel[1] = static_cast<std::uint8_t>(y + 1);
            pixel[2] = 0;
            pixel[3] = 128;
        }
    }
    return platform::Image(std::move(pixels));
}

Pixel count(int x, int y) {
    return {static_cast<float>(x + 1) / 255.0F, static_cast<float>(y + 1) / 255.0F, 0,
            128.0F / 255.0F};
}

class PixelPick : public testing::Test {
protected:
    ~PixelPick() override { Screen::mainScreen().setSize({}, 1); }
    static void setScale(double scale) { Screen::mainScreen().setSize({100, 100}, scale); }
};

/// A framebuffer with a colour in each quarter, as large as the screen of a host.
class ScreenShot : public testing::Test {
protected:
    explicit ScreenShot(platform::Size screen = {8, 20}) : host_(makeHost(screen)) {
        target_ = platform::OffscreenTarget::create({8, 20}).value();
        target_->clear();
        glEnable(GL_SCISSOR_TEST);
        fill(0, 0, 1, 0, 0);
        fill(4, 0, 0, 1, 0);
        fill(0, 4, 0, 0, 1);
        fill(4, 4, 1, 1, 1);
        glDisable(GL_SCISSOR_TEST);
    }

    static void fill(int x, int y, float red, float green, float blue) {
        glScissor(x, y, 4, 4);
        glClearColor(red, green, blue, 0.5F);
        glClear(GL_COLOR_BUFFER_BIT);
    }

    std::unique_ptr<zanto::HeadlessHost> host_;
    std::unique_ptr<platform::OffscreenTarget> target_;
};

} // namespace

TEST_F(PixelPick, ReadsBytesThatCountBlueFirst) {
    // In the order of the platform's bitmaps: 10 20 30 FF.
    const auto image = flatPicture(1, 1, 0x30, 0x20, 0x10, 0xFF);
    EXPECT_EQ(picked(*image, 0, 0),
              (Pixel{0x30 / 255.0F, 0x20 / 255.0F, 0x10 / 255.0F, 0xFF / 255.0F}));
}

TEST_F(PixelPick, FindsTheColourThatAPictureWasFilledWith) {
    const auto image = imageWithColor(platform::Color{1, 0.6F, 0.2F, 1});
    EXPECT_EQ(picked(*image, 0, 0), (Pixel{1, 153 / 255.0F, 51 / 255.0F, 1}));
}

TEST_F(PixelPick, CountsFromTheTopLeft) {
    const platform::Image image = counted(4, 3);
    EXPECT_EQ(picked(image, 0, 0), count(0, 0));
    EXPECT_EQ(picked(image, 3, 2), count(3, 2));
    EXPECT_EQ(picked(image, 1, 2), count(1, 2));
}

TEST_F(PixelPick, CountsPointsOfTheScreen) {
    setScale(2);
    EXPECT_EQ(picked(counted(4, 3), 1, 1), count(2, 2));
    setScale(1.5);
    EXPECT_EQ(picked(counted(5, 3), 3, 1), count(4, 1)) << "4.5 and 1.5, truncated";
}

TEST_F(PixelPick, IsOpaqueBlackOutside) {
    const platform::Image image = counted(4, 3);
    EXPECT_EQ(picked(image, 5, 0), kOpaqueBlack);
    EXPECT_EQ(picked(image, 0, 4), kOpaqueBlack);
    const auto huge = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(picked(image, huge, 0), kOpaqueBlack);
    EXPECT_EQ(picked(image, 0, huge), kOpaqueBlack);
    setScale(2);
    EXPECT_EQ(picked(image, 4 / 2 + 1, 0), kOpaqueBlack);
}

TEST_F(PixelPick, ReadsTheNextRowJustRightOfThePicture) {
    EXPECT_EQ(picked(counted(4, 3), 4, 0), count(0, 1));
    EXPECT_EQ(picked(counted(4, 3), 4, 1), count(0, 2));
}

TEST_F(PixelPick, ReadsNothingBehindTheLastPixel) {
    EXPECT_EQ(picked(counted(4, 3), 4, 2), kOpaqueBlack);
    EXPECT_EQ(picked(counted(4, 3), 0, 3), kOpaqueBlack);
    EXPECT_EQ(picked(counted(4, 3), 4, 3), kOpaqueBlack);
}

TEST_F(PixelPick, OfPixelsThatAreGoneIsOpaqueBlack) {
    const platform::Image image(platform::PixelStorage(4, 3),
                                platform::PixelSource([] { return std::nullopt; }));
    image.giveBackPixels();
    EXPECT_EQ(picked(image, 0, 0), kOpaqueBlack);
}

TEST_F(ScreenShot, IsASquareAsWideAsTheScreenFromTheBottomLeft) {
    const auto image = screenShotFromGl();
    EXPECT_EQ(image->widthPx(), 8);
    EXPECT_EQ(image->heightPx(), 8);
    EXPECT_EQ(image->scale(), 1);
}

TEST_F(ScreenShot, HasItsTopRowFirst) {
    const auto image = screenShotFromGl();
    const auto at = [&](int x, int y) {
        const auto colour = colourAt(*image, x, y);
        return std::array<int, 3>{colour[0], colour[1], colour[2]};
    };
    EXPECT_EQ(at(0, 0), (std::array<int, 3>{0, 0, 255}));
    EXPECT_EQ(at(7, 3), (std::array<int, 3>{255, 255, 255}));
    EXPECT_EQ(at(3, 4), (std::array<int, 3>{255, 0, 0}));
    EXPECT_EQ(at(4, 7), (std::array<int, 3>{0, 255, 0}));
}

TEST_F(ScreenShot, IsOpaque) {
    EXPECT_EQ(colourAt(*screenShotFromGl(), 0, 0)[3], 255);
}

TEST_F(ScreenShot, OutlivesWhatIsDrawnNext) {
    const auto image = screenShotFromGl();
    target_->clear();
    EXPECT_EQ(colourAt(*image, 0, 0)[2], 255);
}

TEST_F(ScreenShot, LeavesTheApplicationsPackAlignment) {
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    (void)screenShotFromGl();
    GLint alignment = 0;
    glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
    EXPECT_EQ(alignment, 8);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(ScreenShotOfAnOddScreen, HasItsRowsOneAfterTheOther) {
    const auto host = makeHost({7.9, 20});
    const auto target = platform::OffscreenTarget::create({8, 20}).value();
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glClearColor(1, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    const auto image = screenShotFromGl();
    EXPECT_EQ(image->widthPx(), 7);
    for (int y = 0; y < 7; ++y)
        EXPECT_EQ(colourAt(*image, 6, y), (std::array<int, 4>{255, 0, 0, 255})) << y;
}

TEST(ScreenShotWithoutAScreen, IsNone) {
    const LogRecorder log;
    EXPECT_FALSE(screenShotFromGl());
    EXPECT_EQ(log.lines().size(), 1U);
}
