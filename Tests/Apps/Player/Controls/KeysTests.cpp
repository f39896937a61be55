#include "Apps/Player/Controls/Keys.h"

#include <gtest/gtest.h>

#include <string>

namespace {

zanto::KeyEvent character(char32_t character) {
    zanto::KeyEvent press;
    press.character = character;
    return press;
}

zanto::KeyEvent special(zanto::KeyEvent::Key key) {
    zanto::KeyEvent press;
    press.key = key;
    return press;
}

zanto::KeyEvent held(zanto::KeyEvent press) {
    press.isRepeat = true;
    return press;
}

} // namespace

TEST(Keys, StandForActions) {
    EXPECT_EQ(windowActionOf(character(U'1')), WindowAction::ShowPlane);
    EXPECT_EQ(windowActionOf(character(U'2')), WindowAction::ShowSphere);
    EXPECT_EQ(windowActionOf(character(U'3')), WindowAction::ShowLittlePlanet);
    EXPECT_EQ(windowActionOf(character(U'4')), WindowAction::ShowSideBySide);
    EXPECT_EQ(windowActionOf(character(U'g')), WindowAction::ToggleDeviceMotion);
    EXPECT_EQ(windowActionOf(character(U'l')), WindowAction::ToggleVerticalLock);
    EXPECT_EQ(windowActionOf(character(U'a')), WindowAction::ToggleAutoPicking);
    EXPECT_EQ(windowActionOf(character(U' ')), WindowAction::TogglePlayback);
    EXPECT_EQ(windowActionOf(character(U'[')), WindowAction::SeekBack);
    EXPECT_EQ(windowActionOf(character(U']')), WindowAction::SeekForward);
    EXPECT_EQ(windowActionOf(character(U'm')), WindowAction::ToggleMute);
    EXPECT_EQ(windowActionOf(character(U'9')), WindowAction::VolumeDown);
    EXPECT_EQ(windowActionOf(character(U'0')), WindowAction::VolumeUp);
    EXPECT_EQ(windowActionOf(character(U'f')), WindowAction::ToggleFullScreen);
    EXPECT_EQ(windowActionOf(character(U's')), WindowAction::TakeScreenshot);
    EXPECT_EQ(windowActionOf(character(U'h')), WindowAction::ToggleHelp);
    EXPECT_EQ(windowActionOf(character(U'q')), WindowAction::Quit);
    EXPECT_EQ(windowActionOf(special(zanto::KeyEvent::Key::Left)), WindowAction::LookLeft);
    EXPECT_EQ(windowActionOf(special(zanto::KeyEvent::Key::Right)), WindowAction::LookRight);
    EXPECT_EQ(windowActionOf(special(zanto::KeyEvent::Key::Up)), WindowAction::LookUp);
    EXPECT_EQ(windowActionOf(special(zanto::KeyEvent::Key::Down)), WindowAction::LookDown);
    EXPECT_EQ(windowActionOf(special(zanto::KeyEvent::Key::Escape)), WindowAction::Leave);
}

TEST(Keys, WithoutAnActionDoNothing) {
    EXPECT_FALSE(windowActionOf(character(U'x')).has_value());
    EXPECT_FALSE(windowActionOf(special(zanto::KeyEvent::Key::Home)).has_value());
}

TEST(Keys, ThatAreHeldOrSomebodyElsesDoNothing) {
    for (bool zanto::KeyEvent::*const flag :
         {&zanto::KeyEvent::isRepeat, &zanto::KeyEvent::hasControl, &zanto::KeyEvent::hasAlt,
          &zanto::KeyEvent::hasCommand}) {
        zanto::KeyEvent press = character(U's');
        press.*flag = true;
        EXPECT_FALSE(windowActionOf(press).has_value());
    }
    zanto::KeyEvent shifted = character(U's');
    shifted.hasShift = true;
    EXPECT_TRUE(windowActionOf(shifted).has_value());
}

TEST(Keys, ThatAreHeldGoOnLookingSeekingAndChangingTheVolume) {
    EXPECT_EQ(windowActionOf(held(special(zanto::KeyEvent::Key::Left))), WindowAction::LookLeft);
    EXPECT_EQ(windowActionOf(held(character(U']'))), WindowAction::SeekForward);
    EXPECT_EQ(windowActionOf(held(character(U'9'))), WindowAction::VolumeDown);
    EXPECT_FALSE(windowActionOf(held(character(U' '))).has_value());
    EXPECT_FALSE(windowActionOf(held(special(zanto::KeyEvent::Key::Escape))).has_value());
}

TEST(Keys, AreAllInTheHelp) {
    const std::string help = "\n" + keyHelp();
    for (const char* key : {"1", "2", "3", "4", "g", "l", "a", "f", "s", "h", "q", "Escape",
                            "Arrows", "Space", "[", "]", "m", "9", "0"})
        EXPECT_NE(help.find("\n" + std::string(key) + " "), std::string::npos) << key;
}
