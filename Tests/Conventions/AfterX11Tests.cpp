// Applications include X11's headers, whose macros (None, Bool, KeyPress, …) break names of other
// libraries. This file compiles only if no installed header uses one of them.
//
// The order of the includes matters. Google Test does not compile after X11's headers either.
// clang-format off
#include <gtest/gtest.h>
#include <SDL.h>
#include <SDL_syswm.h>
#include <X11/Xlib.h>
#include "InstalledHeaders.h" // generated: includes every installed header
// clang-format on

static_assert(None == 0L && KeyPress == 2, "X11's macros are defined above");

TEST(InstalledHeaders, CompileAfterX11s) {
    EXPECT_EQ(zanto::EmbeddedHostOptions().framesPerSecond, 60);
}
