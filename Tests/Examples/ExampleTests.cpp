#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/TemporaryFolder.h"

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
