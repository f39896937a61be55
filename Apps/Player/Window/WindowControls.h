#pragma once

#include "Apps/Player/Controls/ControlsClient.h"
#include "Apps/Player/Window/WindowPlayer.h"
#include "Platform/Foundation/Object.h"

#include <functional>
#include <memory>
#include <string>

namespace zanto {
class SDLHost;
} // namespace zanto
class Session;

/// Implements the window's controls for the session's content and the window's player.
///
/// Owner:  the program; the host, the session and the player must outlive it. Made with
///         `platform::make`.
/// Thread: main.
class WindowControls final : public platform::Object, public ControlsClient {
public:
    WindowControls(zanto::SDLHost& host, Session& session, WindowPlayer& player);

    /// Shows a message in the window, replacing the previous one.
    void say(const std::string& text, WindowPlayer::Lasting lasting);

    [[nodiscard]] ControlsState state() const override;
    void perform(WindowAction action) override;
    void seekTo(double seconds) override;
    void setVolume(double volume) override;
    void cancelLoading() override;
    void dismissMessage() override;
    /// The listener is called when the state has changed.
    void setChangeListener(std::function<void()> listener) { changed_ = std::move(listener); }

private:
    [[nodiscard]] std::optional<ControlsState::Video> video() const;
    [[nodiscard]] std::optional<ControlsState::Loading> loading() const;

    zanto::SDLHost& host_;
    Session& session_;
    WindowPlayer& player_;
    std::function<void()> changed_;
    std::string message_;
    std::shared_ptr<int> brief_; // exists while a message is shown that disappears by itself
};
