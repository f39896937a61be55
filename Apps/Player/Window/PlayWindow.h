#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Apps/Player/Window/WindowPlayer.h"

#include <memory>
#include <string>

class ControlsOverlay;
class PickFeedback;
namespace zanto {
class SDLHost;
} // namespace zanto
class Session;
class TracedController;
class WindowControls;
class WindowRecording;
struct HotSpotFile;

namespace platform {
class AttitudeTracePlayer;
} // namespace platform

/// What the command line names beside the content, opened before there is a window; each may be
/// null.
struct PlayExtras {
    PlayExtras();
    ~PlayExtras();
    PlayExtras(PlayExtras&&) noexcept;
    PlayExtras& operator=(PlayExtras&&) noexcept;

    std::unique_ptr<platform::AttitudeTracePlayer> attitudes;
    std::unique_ptr<WindowRecording> recording;
    std::shared_ptr<const HotSpotFile> hotSpots;
};

/// The window and its input: keys, controls, hot spots and dropped files.
///
/// Owner:  the program; the host, the session and the extras must outlive it. The session's first
///         content is open or loading, and is in the window.
/// Thread: main.
class PlayWindow {
public:
    /// `input` is the first input of the session.
    PlayWindow(zanto::SDLHost& host, Session& session, const PlayExtras& extras,
               const std::string& input);
    ~PlayWindow();
    PlayWindow(const PlayWindow&) = delete;
    PlayWindow& operator=(const PlayWindow&) = delete;

    /// Makes the view appear, and starts the attitude trace and the recording if there are any.
    void begin();

    /// The title of the window while it shows this input.
    [[nodiscard]] static std::string titleOf(const std::string& input);

private:
    void listenToControls();
    void listenToSession();
    void open(const std::string& input);
    void failed(const std::string& message);
    void replaced(TracedController& controller, const std::string& input);
    void giveHotSpots();
    void note(const decltype(Action::what)& what);

    zanto::SDLHost& host_;
    Session& session_;
    const PlayExtras& extras_;
    std::string title_;
    WindowPlayer player_;
    std::shared_ptr<WindowControls> controls_;
    std::shared_ptr<ControlsOverlay> overlay_;
    std::shared_ptr<PickFeedback> feedback_; // null if there are no hot spots
};
