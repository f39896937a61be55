#include "Apps/Player/WindowPlayer.h"

#include "Apps/Player/Message.h"
#include "Apps/Player/PictureOutput.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Interface/Screen.h"

#include <cstdio>
#include <filesystem>
#include <string>

namespace {

void print(const std::string& text) {
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout); // a pipe would hold it back until the program ends
}

std::string freeScreenshotName() {
    for (int number = 1;; ++number) {
        std::string name = "zanto-player-" + std::to_string(number) + ".png";
        std::error_code unknown; // a folder that cannot be read shows when the file is written
        if (!std::filesystem::exists(name, unknown))
            return name;
    }
}

} // namespace

WindowPlayer::WindowPlayer(SDLHost& host, ZNTDisplayViewController& controller)
    : host_(host), controller_(controller) {
    host_.setKeyListener([this](const KeyPress& press) {
        if (const auto action = keyActionOf(press))
            perform(*action);
    });
}

WindowPlayer::~WindowPlayer() {
    host_.setKeyListener({});
}

void WindowPlayer::perform(KeyAction action) {
    switch (action) {
    case KeyAction::ShowPlane:
        return controller_.setDisplayMode(DisplayMode::Plane);
    case KeyAction::ShowSphere:
        return controller_.setDisplayMode(DisplayMode::Sphere);
    case KeyAction::ShowLittlePlanet:
        return controller_.setDisplayMode(DisplayMode::LittlePlanet);
    case KeyAction::ToggleFullScreen:
        return host_.setFullScreen(!host_.isFullScreen());
    case KeyAction::TakeScreenshot:
        return takeScreenshot();
    case KeyAction::PrintHelp:
        return print(keyHelp());
    case KeyAction::Quit:
        return host_.quit();
    case KeyAction::Leave:
        return leave();
    }
}

void WindowPlayer::leave() {
    if (host_.isFullScreen())
        host_.setFullScreen(false);
    else
        host_.quit();
}

void WindowPlayer::takeScreenshot() {
    const auto picture = host_.embedded().snapshot(platform::Screen::mainScreen().scale());
    if (!picture)
        return tell("screenshot: " + picture.error().detail);
    const std::string name = freeScreenshotName();
    if (const auto failure = PictureOutput(name).write(name, *picture.value()))
        return tell("screenshot: " + failure->detail);
    print(name + "\n");
}
