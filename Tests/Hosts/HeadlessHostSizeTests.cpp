// Windows of less than a pixel, which no framebuffer can hold.

#include "Platform/Foundation/Clock.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr std::array<int, 4> kGreen{0, 200, 0, 255};

platform::ImagePtr green() {
    return flatPicture(8, 4, 0, 200, 0);
}

/// Makes the window large enough for its picture to be seen.
void expectPictureOnceEnlarged(HeadlessPlayer& player) {
    player.embedded().resize({64, 32}, 1);
    player.host().settle();
    const auto picture = player.embedded().snapshot(1);
    EXPECT_EQ(colourAt(*picture.value(), 32, 8), kGreen);
}

} // namespace

TEST(HeadlessHostSize, MayRoundToNoPixelAtTheStart) {
    HeadlessPlayer player({3, 3}, 0.1);
    const LogRecorder log;
    player.show(green());
    player.host().advanceTo(platform::fromSeconds(1));
    EXPECT_EQ(log.count("0 x 0 pixels"), 1) << "one line, however often it would be drawn";
    EXPECT_EQ(player.host().framesPresented(), 0);
    expectPictureOnceEnlarged(player);
}

TEST(HeadlessHostSize, MayBeNothingAtTheStart) {
    HeadlessPlayer player({0, 0});
    player.show(green());
    EXPECT_EQ(player.host().framesPresented(), 0);
    expectPictureOnceEnlarged(player);
}

TEST(HeadlessHostSize, MayBeNothingWhenTheContextIsLost) {
    HeadlessPlayer player({64, 32});
    player.show(green());
    player.embedded().resize({0, 0}, 1);
    player.host().settle();
    const int presented = player.host().framesPresented();
    ASSERT_TRUE(player.host().replaceContext());
    player.host().settle();
    EXPECT_EQ(player.host().framesPresented(), presented);
    expectPictureOnceEnlarged(player);
}
