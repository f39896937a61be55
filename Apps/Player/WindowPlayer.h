#pragma once

#include "Apps/Player/Action.h"
#include "Apps/Player/Keys.h"

#include <functional>
#include <memory>

class SDLHost;
class KeyLook;
class ZNTDisplayViewController;

/// Gives the window its keys.
///
/// Owner:  host and controller outlive it.
/// Thread: main.
class WindowPlayer {
public:
    /// Told of everything that a key does to the scene, once it has.
    using ActionListener = std::function<void(const decltype(Action::what)&)>;

    WindowPlayer(SDLHost& host, ZNTDisplayViewController& controller, ActionListener listener = {});
    ~WindowPlayer();
    WindowPlayer(const WindowPlayer&) = delete;
    WindowPlayer& operator=(const WindowPlayer&) = delete;

private:
    void perform(KeyAction action);
    void show(DisplayMode mode);
    void toggleDeviceMotion();
    void toggleVerticalLock();
    void toggleAutoPicking();
    void togglePlayback();
    void seekBy(double seconds);
    void toggleMute();
    void changeVolumeBy(double step);
    [[nodiscard]] double volumeNow() const;
    void setVolume(double volume);
    void tellListener(const decltype(Action::what)& what) const;
    void leave();
    /// Writes what the window shows to the first free name in the current folder and prints it.
    void takeScreenshot();

    SDLHost& host_;
    ZNTDisplayViewController& controller_;
    ActionListener listener_;
    std::shared_ptr<KeyLook> keyLook_;
    double volumeBeforeMute_ = 1;
};
