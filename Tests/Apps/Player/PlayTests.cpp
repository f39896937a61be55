#include "Tests/Apps/Player/ProgramRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

TEST(Play, NamesContentThatCannotBeOpenedInOneLine) {
    const ProgramRun missing = runPlayer("/no/such/panorama.jpg");
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(missing.standardError, "zanto-player: image \"/no/such/panorama.jpg\" is not shown: "
                                     "it is missing (No such file or directory)\n");
    const ProgramRun remote = runPlayer("http://127.0.0.1/panorama.jpg");
    EXPECT_EQ(remote.exitCode, 2);
    EXPECT_EQ(remote.standardError, "zanto-player: http://127.0.0.1/panorama.jpg: this build reads "
                                    "pictures from files only\n");
}

TEST(Play, NamesTheMissingDisplayInOneLine) {
    unsetenv("SDL_VIDEODRIVER");
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    const ProgramRun run = runPlayer("");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.standardError, "zanto-player: no window: there is no display: neither DISPLAY "
                                 "nor WAYLAND_DISPLAY is set\n");
}

TEST(Play, NamesADriverThatDoesNotExistInOneLine) {
    setenv("SDL_VIDEODRIVER", "nonexistent", 1);
    const ProgramRun run = runPlayer("");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.standardError,
              "zanto-player: no window: SDL: opening the display failed: nonexistent not "
              "available\n");
}
