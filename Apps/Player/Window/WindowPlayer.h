#pragma once

#include "Apps/Player/Controls/WindowAction.h"
#include "Apps/Player/Scripts/Action.h"

#include <functional>
#include <memory>
#include <string>

namespace zanto {
class SDLHost;
} // namespace zanto
class KeyLook;
class ZNTDisplayViewController;

/// Performs the window's actions, which come from keys or from callers.
///
/// Owner:  the host must outlive it, and so must each controller while it is set.
/// Thread: main.
class WindowPlayer {
public:
    /// Called after each action that changes the scene.
    using ActionListener = std::function<void(const decltype(Action::what)&)>;
    /// How long a notice for the user is shown.
    enum class Lasting { Briefly, UntilDismissed };
    using NoticeListener = std::function<void(const std::string&, Lasting)>;

    WindowPlayer(zanto::SDLHost& host, ZNTDisplayViewController& controller,
                 ActionListener listener = {});
    ~WindowPlayer();
    WindowPlayer(const WindowPlayer&) = delete;
    WindowPlayer& operator=(const WindowPlayer&) = delete;

    /// Later actions apply to this controller.
    void setController(ZNTDisplayViewController& controller);
    void setNoticeListener(NoticeListener listener) { noticeListener_ = std::move(listener); }
    /// Called after each action.
    void setPerformedListener(std::function<void(WindowAction)> listener) {
        performedListener_ = std::move(listener);
    }

    void perform(WindowAction action);
    /// Seeks in the video, within its duration; a no-op if there is no video or its duration is
    /// unknown.
    void seekTo(double seconds);
    /// From 0 to 1; a no-op if there is no video.
    void setVolume(double volume);
    /// The video's volume; 0 if there is no video.
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
    /// Saves what the window shows under the first unused name in the current folder and prints
    /// that name.
    void takeScreenshot();
    void notify(const std::string& text, Lasting lasting) const;
    void complain(const std::string& text) const;

    zanto::SDLHost& host_;
    ZNTDisplayViewController* controller_; // never null
    ActionListener listener_;
    NoticeListener noticeListener_;
    std::function<void(WindowAction)> performedListener_;
    std::shared_ptr<KeyLook> keyLook_;
    double volumeBeforeMute_ = 1;
    bool showsHelp_ = false;
};
