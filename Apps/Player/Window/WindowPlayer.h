#pragma once

#include "Apps/Player/Controls/WindowAction.h"
#include "Apps/Player/Scripts/Action.h"

#include <functional>
#include <memory>
#include <string>

class SDLHost;
class KeyLook;
class ZNTDisplayViewController;

/// Does what is asked of the window, by its keys or by whoever calls.
///
/// Owner:  the host outlives it, and so does each controller as long as it is the one.
/// Thread: main.
class WindowPlayer {
public:
    /// Told of everything that is done to the scene, once it has been.
    using ActionListener = std::function<void(const decltype(Action::what)&)>;
    /// What the person should know: for a while, or until it is put away.
    enum class Lasting { Briefly, UntilDismissed };
    using NoticeListener = std::function<void(const std::string&, Lasting)>;

    WindowPlayer(SDLHost& host, ZNTDisplayViewController& controller, ActionListener listener = {});
    ~WindowPlayer();
    WindowPlayer(const WindowPlayer&) = delete;
    WindowPlayer& operator=(const WindowPlayer&) = delete;

    /// What is done from now on is done to that one.
    void setController(ZNTDisplayViewController& controller);
    void setNoticeListener(NoticeListener listener) { noticeListener_ = std::move(listener); }
    /// Told of every action, once it is done.
    void setPerformedListener(std::function<void(WindowAction)> listener) {
        performedListener_ = std::move(listener);
    }

    void perform(WindowAction action);
    /// Of the video, if there is one whose length is known; held within it.
    void seekTo(double seconds);
    /// 0 to 1, of the video, if there is one.
    void setVolume(double volume);
    /// Of the video; 0 without one.
    [[nodiscard]] double volume() const;
    [[nodiscard]] bool showsHelp() const { return showsHelp_; }

private:
    void act(WindowAction action);
    void show(DisplayMode mode);
    void toggleDeviceMotion();
    void toggleVerticalLock();
    void toggleAutoPicking();
    [[nodiscard]] bool isStill() const;
    void togglePlayback();
    void seekBy(double seconds);
    void toggleMute();
    void changeVolumeBy(double step);
    void toggleHelp();
    void tellListener(const decltype(Action::what)& what) const;
    void leave();
    /// Writes what the window shows to the first free name in the current folder and prints it.
    void takeScreenshot();
    void notify(const std::string& text, Lasting lasting) const;
    void complain(const std::string& text) const;

    SDLHost& host_;
    ZNTDisplayViewController* controller_; // never null
    ActionListener listener_;
    NoticeListener noticeListener_;
    std::function<void(WindowAction)> performedListener_;
    std::shared_ptr<KeyLook> keyLook_;
    double volumeBeforeMute_ = 1;
    bool showsHelp_ = false;
};
