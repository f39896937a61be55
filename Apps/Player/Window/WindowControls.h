#pragma once

#include "Apps/Player/Controls/ControlsClient.h"
#include "Apps/Player/Window/WindowPlayer.h"
#include "Platform/Foundation/Object.h"

#include <functional>
#include <memory>
#include <string>

class SDLHost;
class Session;

/// What the controls of the window show and do: of the session's content, by the window's player.
///
/// Owner:  the program; host, session and player outlive it. Made with `platform::make`.
/// Thread: main.
class WindowControls final : public platform::Object, public ControlsClient {
public:
    WindowControls(SDLHost& host, Session& session, WindowPlayer& player);

    /// Puts words into the window, in place of others.
    void say(const std::string& text, WindowPlayer::Lasting lasting);

    [[nodiscard]] ControlsState state() const override;
    void perform(WindowAction action) override;
    void seekTo(double seconds) override;
    void setVolume(double volume) override;
    void cancelLoading() override;
    void dismissMessage() override;
    /// Told when something else is to be shown.
    void setChangeListener(std::function<void()> listener) { changed_ = std::move(listener); }

private:
    [[nodiscard]] std::optional<ControlsState::Video> video() const;
    [[nodiscard]] std::optional<ControlsState::Loading> loading() const;

    SDLHost& host_;
    Session& session_;
    WindowPlayer& player_;
    std::function<void()> changed_;
    std::string message_;
    std::shared_ptr<int> brief_; // while the message is one that goes by itself
};
