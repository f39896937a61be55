#pragma once

#include "Apps/Player/Keys.h"

class SDLHost;
class ZNTDisplayViewController;

/// Gives the window its keys.
///
/// Owner:  host and controller outlive it.
/// Thread: main.
class WindowPlayer {
public:
    WindowPlayer(SDLHost& host, ZNTDisplayViewController& controller);
    ~WindowPlayer();
    WindowPlayer(const WindowPlayer&) = delete;
    WindowPlayer& operator=(const WindowPlayer&) = delete;

private:
    void perform(KeyAction action);
    void leave();
    /// Writes what the window shows to the first free name in the current folder and prints it.
    void takeScreenshot();

    SDLHost& host_;
    ZNTDisplayViewController& controller_;
};
