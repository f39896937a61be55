#include "Apps/Player/Keys.h"

#include <gtest/gtest.h>

#include <string>

namespace {

KeyPress character(char32_t character) {
    KeyPress press;
    press.character = character;
    return press;
}

KeyPress special(KeyPress::Key key) {
    KeyPress press;
    press.key = key;
    return press;
}

KeyPress held(KeyPress press) {
    press.isRepeat = true;
    return press;
}

} // namespace

TEST(Keys, StandForActions) {
    EXPECT_EQ(keyActionOf(character(U'1')), KeyAction::ShowPlane);
    EXPECT_EQ(keyActionOf(character(U'2')), KeyAction::ShowSphere);
    EXPECT_EQ(keyActionOf(character(U'3')), KeyAction::ShowLittlePlanet);
    EXPECT_EQ(keyActionOf(character(U'4')), KeyAction::ShowSideBySide);
    EXPECT_EQ(keyActionOf(character(U'g')), KeyAction::ToggleDeviceMotion);
    EXPECT_EQ(keyActionOf(character(U'l')), KeyAction::ToggleVerticalLock);
    EXPECT_EQ(keyActionOf(character(U'a')), KeyAction::ToggleAutoPicking);
    EXPECT_EQ(keyActionOf(character(U' ')), KeyAction::TogglePlayback);
    EXPECT_EQ(keyActionOf(character(U'[')), KeyAction::SeekBack);
    EXPECT_EQ(keyActionOf(character(U']')), KeyAction::SeekForward);
    EXPECT_EQ(keyActionOf(character(U'm')), KeyAction::ToggleMute);
    EXPECT_EQ(keyActionOf(character(U'9')), KeyAction::VolumeDown);
    EXPECT_EQ(keyActionOf(character(U'0')), KeyAction::VolumeUp);
    EXPECT_EQ(keyActionOf(character(U'f')), KeyAction::ToggleFullScreen);
    EXPECT_EQ(keyActionOf(character(U's')), KeyAction::TakeScreenshot);
    EXPECT_EQ(keyActionOf(character(U'h')), KeyAction::PrintHelp);
    EXPECT_EQ(keyActionOf(character(U'q')), KeyAction::Quit);
    EXPECT_EQ(keyActionOf(special(KeyPress::Key::Left)), KeyAction::LookLeft);
    EXPECT_EQ(keyActionOf(special(KeyPress::Key::Right)), KeyAction::LookRight);
    EXPECT_EQ(keyActionOf(special(KeyPress::Key::Up)), KeyAction::LookUp);
    EXPECT_EQ(keyActionOf(special(KeyPress::Key::Down)), KeyAction::LookDown);
    EXPECT_EQ(keyActionOf(special(KeyPress::Key::Escape)), KeyAction::Leave);
}

TEST(Keys, WithoutAnActionDoNothing) {
    EXPECT_FALSE(keyActionOf(character(U'x')).has_value());
    EXPECT_FALSE(keyActionOf(special(KeyPress::Key::Home)).has_value());
}

TEST(Keys, ThatAreHeldOrSomebodyElsesDoNothing) {
    for (bool KeyPress::*const flag :
         {&KeyPress::isRepeat, &KeyPress::hasControl, &KeyPress::hasAlt, &KeyPress::hasCommand}) {
        KeyPress press = character(U's');
        press.*flag = true;
        EXPECT_FALSE(keyActionOf(press).has_value());
    }
    KeyPress shifted = character(U's');
    shifted.hasShift = true;
    EXPECT_TRUE(keyActionOf(shifted).has_value());
}

TEST(Keys, ThatAreHeldGoOnLookingSeekingAndChangingTheVolume) {
    EXPECT_EQ(keyActionOf(held(special(KeyPress::Key::Left))), KeyAction::LookLeft);
    EXPECT_EQ(keyActionOf(held(character(U']'))), KeyAction::SeekForward);
    EXPECT_EQ(keyActionOf(held(character(U'9'))), KeyAction::VolumeDown);
    EXPECT_FALSE(keyActionOf(held(character(U' '))).has_value());
    EXPECT_FALSE(keyActionOf(held(special(KeyPress::Key::Escape))).has_value());
}

TEST(Keys, AreAllInTheHelp) {
    const std::string help = "\n" + keyHelp();
    for (const char* key : {"1", "2", "3", "4", "g", "l", "a", "f", "s", "h", "q", "Escape",
                            "Arrows", "Space", "[", "]", "m", "9", "0"})
        EXPECT_NE(help.find("\n" + std::string(key) + " "), std::string::npos) << key;
}
