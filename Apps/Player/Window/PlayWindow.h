#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Apps/Player/Window/WindowPlayer.h"

#include <memory>
#include <string>

class ControlsOverlay;
class PickFeedback;
class SDLHost;
class Session;
class TracedController;
class WindowControls;
class WindowRecording;
struct HotSpotFile;

namespace platform {
class AttitudeTracePlayer;
} // namespace platform

/// What a command names beside the content, ready before there is a window; each may be null.
struct PlayExtras {
    PlayExtras();
    ~PlayExtras();
    PlayExtras(PlayExtras&&) noexcept;
    PlayExtras& operator=(PlayExtras&&) noexcept;

    std::unique_ptr<platform::AttitudeTracePlayer> attitudes;
    std::unique_ptr<WindowRecording> recording;
    std::shared_ptr<const HotSpotFile> hotSpots;
};

/// The window with everything that people do in it: keys, controls, hot spots, things dropped.
///
/// Owner:  the program; host, session and extras outlive it. The session's first content is open or
///         on its way, and in the window.
/// Thread: main.
class PlayWindow {
public:
    /// `input`: what the session was asked for first.
    PlayWindow(SDLHost& host, Session& session, const PlayExtras& extras, const std::string& input);
    ~PlayWindow();
    PlayWindow(const PlayWindow&) = delete;
    PlayWindow& operator=(const PlayWindow&) = delete;

    /// Has the view appear, steered and watched as the command says.
    void begin();

    /// Of the window that shows such content.
    [[nodiscard]] static std::string titleOf(const std::string& input);

private:
    void listenToControls();
    void listenToSession();
    void open(const std::string& input);
    void failed(const std::string& message);
    void replaced(TracedController& controller, const std::string& input);
    void giveHotSpots();
    void note(const decltype(Action::what)& what);

    SDLHost& host_;
    Session& session_;
    const PlayExtras& extras_;
    std::string title_;
    WindowPlayer player_;
    std::shared_ptr<WindowControls> controls_;
    std::shared_ptr<ControlsOverlay> overlay_;
    std::shared_ptr<PickFeedback> feedback_; // null: no hot spots
};
