#include "Apps/Player/Window/WindowControls.h"

#include "Apps/Player/Output/TracedController.h"
#include "Apps/Player/Window/Session.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Foundation/MainQueue.h"

#include <cmath>
#include <utility>

namespace {

constexpr platform::Instant kBriefly = std::chrono::seconds(4);

} // namespace

WindowControls::WindowControls(zanto::SDLHost& host, Session& session, WindowPlayer& player)
    : host_(host), session_(session), player_(player) {}

void WindowControls::say(const std::string& text, WindowPlayer::Lasting lasting) {
    message_ = text;
    brief_.reset();
    if (lasting == WindowPlayer::Lasting::Briefly) {
        brief_ = std::make_shared<int>();
        platform::MainQueue::main().asyncAfter(kBriefly,
                                               [self = weak(this), own = std::weak_ptr(brief_)] {
                                                   const auto alive = self.lock();
                                                   if (alive && !own.expired())
                                                       alive->dismissMessage();
                                               });
    }
    if (changed_)
        changed_();
}

void WindowControls::dismissMessage() {
    say({}, WindowPlayer::Lasting::UntilDismissed);
}

ControlsState WindowControls::state() const {
    ControlsState state;
    const auto& controller = *session_.controller();
    state.mode = controller.currentMode();
    state.video = video();
    state.followsDevice = controller.deviceMotionIsOn();
    state.isFullScreen = host_.isFullScreen();
    state.showsHelp = player_.showsHelp();
    state.loading = loading();
    state.message = message_;
    return state;
}

std::optional<ControlsState::Video> WindowControls::video() const {
    const auto& controller = *session_.controller();
    const auto player = controller.streamer() ? controller.streamer()->player() : nullptr;
    if (!player || player->status() != platform::PlayerStatus::ReadyToPlay)
        return std::nullopt;
    ControlsState::Video video;
    video.isPlaying = player->timeControlStatus() != platform::TimeControlStatus::Paused;
    video.seconds = player->currentTime().seconds();
    if (const double duration = controller.videoDuration(); std::isfinite(duration))
        video.duration = duration;
    video.volume = player_.volume();
    return video;
}

/// The progress of opening content, or of a video that is buffering.
std::optional<ControlsState::Loading> WindowControls::loading() const {
    if (const auto progress = session_.progress())
        return ControlsState::Loading{"Opening " + progress->name, progress->fraction};
    const auto& controller = *session_.controller();
    const auto player = controller.streamer() ? controller.streamer()->player() : nullptr;
    const bool waits = player && player->timeControlStatus() ==
                                     platform::TimeControlStatus::WaitingToPlayAtSpecifiedRate;
    if (!waits)
        return std::nullopt;
    return ControlsState::Loading{"Waiting for the video", std::nullopt};
}

void WindowControls::perform(WindowAction action) {
    player_.perform(action);
}

void WindowControls::seekTo(double seconds) {
    player_.seekTo(seconds);
}

void WindowControls::setVolume(double volume) {
    player_.setVolume(volume);
}

/// A video that has already played is paused and kept, because the user may want to wait for it
/// later.
void WindowControls::cancelLoading() {
    const auto before = video();
    if (!session_.progress() && before && before->seconds > 0)
        player_.perform(WindowAction::TogglePlayback);
    else
        session_.cancel();
}
