#include "Hosts/SDL/SDLKeys.h"

#include <gtest/gtest.h>

namespace {

std::optional<zanto::KeyEvent> pressOf(SDL_Keycode key, int modifiers = KMOD_NONE) {
    SDL_KeyboardEvent event{};
    event.keysym.sym = key;
    event.keysym.mod = static_cast<Uint16>(modifiers);
    return zanto::keyEventOf(event);
}

} // namespace

TEST(SDLKeys, NameCharacters) {
    EXPECT_EQ(pressOf(SDLK_1)->character, U'1');
    EXPECT_EQ(pressOf(SDLK_f, KMOD_LSHIFT)->character, U'f');
    EXPECT_EQ(pressOf(SDLK_SPACE)->character, U' ');
    EXPECT_EQ(pressOf(0xe9)->character, U'\u00e9');
    EXPECT_EQ(pressOf(SDLK_f)->key, zanto::KeyEvent::Key::Character);
}

TEST(SDLKeys, TakeTheNumberPadForDigits) {
    EXPECT_EQ(pressOf(SDLK_KP_0)->character, U'0');
    EXPECT_EQ(pressOf(SDLK_KP_1)->character, U'1');
    EXPECT_EQ(pressOf(SDLK_KP_9)->character, U'9');
}

TEST(SDLKeys, NameKeysWithoutACharacter) {
    EXPECT_EQ(pressOf(SDLK_ESCAPE)->key, zanto::KeyEvent::Key::Escape);
    EXPECT_EQ(pressOf(SDLK_KP_ENTER)->key, zanto::KeyEvent::Key::Return);
    EXPECT_EQ(pressOf(SDLK_DELETE)->key, zanto::KeyEvent::Key::Delete);
    EXPECT_EQ(pressOf(SDLK_PAGEDOWN)->key, zanto::KeyEvent::Key::PageDown);
    EXPECT_EQ(pressOf(SDLK_LEFT)->character, U'\0');
}

TEST(SDLKeys, KnowModifiers) {
    const auto press = pressOf(SDLK_a, KMOD_RSHIFT | KMOD_LCTRL | KMOD_LALT | KMOD_RGUI);
    EXPECT_TRUE(press->hasShift && press->hasControl && press->hasAlt && press->hasCommand);
    const auto plain = pressOf(SDLK_a, KMOD_CAPS | KMOD_NUM);
    EXPECT_FALSE(plain->hasShift || plain->hasControl || plain->hasAlt || plain->hasCommand);
}

TEST(SDLKeys, LeaveOutWhatHasNoName) {
    EXPECT_FALSE(pressOf(SDLK_LSHIFT).has_value());
    EXPECT_FALSE(pressOf(SDLK_F5).has_value());
    EXPECT_FALSE(pressOf(SDLK_UNKNOWN).has_value());
}
