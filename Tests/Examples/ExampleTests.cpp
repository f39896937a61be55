#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/ShownFrame.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TestClips.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class Example : public ::testing::TestWithParam<std::string> {
protected:
    int run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), GetParam());
        return tests::ChildProcess(arguments, {tests::kWithoutLeakCheck}).exitCode();
    }

    const tests::TemporaryFolder folder_;
    const std::string panorama_ = std::string(ZANTO_SOURCE_DIR) + "/Resources/panorama.jpg";
};

std::string nameOf(const ::testing::TestParamInfo<std::string>& program) {
    return program.param == EXAMPLE_SDL_WINDOW ? "SDLWindow" : "EmbeddedInSDL";
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Examples, Example,
                         ::testing::Values(EXAMPLE_EMBEDDED_IN_SDL, EXAMPLE_SDL_WINDOW), nameOf);

TEST_P(Example, ShowsAPanorama) {
    const std::string path = folder_.pathOf("shown.png");
    ASSERT_EQ(run({panorama_, "--picture", path}), 0);
    const auto shown = platform::Image::imageWithContentsOfFile(path);
    ASSERT_NE(shown, nullptr);
    HeadlessPlayer player({640, 360});
    player.show(platform::Image::imageWithContentsOfFile(panorama_));
    EXPECT_TRUE(picturesMatch("example", *shown, *player.snapshot()));
}

TEST_P(Example, HasAPanoramaOfItsOwn) {
    EXPECT_EQ(run({"--picture", folder_.pathOf("shown.png")}), 0);
}

TEST_P(Example, LeavesWithTwoForAFileThatIsNone) {
    EXPECT_EQ(run({folder_.pathOf("missing.jpg"), "--picture", folder_.pathOf("shown.png")}), 2);
}

TEST_P(Example, LeavesWithOneWhereItCannotWrite) {
    EXPECT_EQ(run({"--picture", folder_.pathOf("no/such/folder.png")}), 1);
}

TEST(TwoWindows, ShowAPictureAndAVideoSideBySide) {
    const tests::TemporaryFolder folder;
    const std::string panorama = std::string(ZANTO_SOURCE_DIR) + "/Resources/panorama.jpg";
    const std::string one = folder.pathOf("one.png");
    const std::string other = folder.pathOf("other.png");
    const std::vector<std::string> command{
        EXAMPLE_TWO_WINDOWS, panorama, tests::testClip({.frames = 300}), "--pictures", one, other};
    ASSERT_EQ(tests::ChildProcess(command, {tests::kWithoutLeakCheck}).exitCode(), 0);
    const auto picture = platform::Image::imageWithContentsOfFile(one);
    ASSERT_NE(picture, nullptr);
    HeadlessPlayer player({640, 360});
    player.show(platform::Image::imageWithContentsOfFile(panorama));
    EXPECT_TRUE(picturesMatch("two-windows", *picture, *player.snapshot()));
    const auto video = platform::Image::imageWithContentsOfFile(other);
    ASSERT_NE(video, nullptr);
    EXPECT_EQ(video->widthPx(), 480);
    EXPECT_EQ(video->heightPx(), 480);
}

TEST(TwoWindows, RefuseACommandLineWithoutAVideo) {
    EXPECT_EQ(
        tests::ChildProcess({EXAMPLE_TWO_WINDOWS, "a.jpg"}, {tests::kWithoutLeakCheck}).exitCode(),
        3);
}
