#include "Apps/Player/Window/PlayWindow.h"

#include "Apps/Player/Contents/Content.h"
#include "Apps/Player/Contents/HotSpotFile.h"
#include "Apps/Player/Controls/ControlsOverlay.h"
#include "Apps/Player/Output/TracedController.h"
#include "Apps/Player/Window/PickFeedback.h"
#include "Apps/Player/Window/Session.h"
#include "Apps/Player/Window/WindowControls.h"
#include "Apps/Player/Window/WindowRecording.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Motion/AttitudeTracePlayer.h"

namespace {

/// Dropped text without surrounding whitespace.
std::string trimmed(const std::string& text) {
    constexpr const char* space = " \t\r\n";
    const auto begin = text.find_first_not_of(space);
    if (begin == std::string::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(space) - begin + 1);
}

/// Whether the action affects the video, so that only the control bar shows its effect.
bool isOfVideo(WindowAction action) {
    switch (action) {
    case WindowAction::TogglePlayback:
    case WindowAction::SeekBack:
    case WindowAction::SeekForward:
    case WindowAction::ToggleMute:
    case WindowAction::VolumeDown:
    case WindowAction::VolumeUp:
        return true;
    default:
        return false;
    }
}

} // namespace

PlayExtras::PlayExtras() = default;
PlayExtras::~PlayExtras() = default;
PlayExtras::PlayExtras(PlayExtras&&) noexcept = default;
PlayExtras& PlayExtras::operator=(PlayExtras&&) noexcept = default;

std::string PlayWindow::titleOf(const std::string& input) {
    return input.empty() ? "zanto-player" : nameOfContent(input) + " – zanto-player";
}

PlayWindow::PlayWindow(zanto::SDLHost& host, Session& session, const PlayExtras& extras,
                       const std::string& input)
    : host_(host), session_(session), extras_(extras), title_(titleOf(input)),
      player_(host, *session.controller(), [this](const auto& what) { note(what); }),
      controls_(platform::make<WindowControls>(host, session, player_)),
      overlay_(platform::make<ControlsOverlay>(host, *controls_)) {
    listenToControls();
    listenToSession();
    giveHotSpots();
}

PlayWindow::~PlayWindow() {
    session_.setListeners({});
    host_.setDropListener({});
    host_.setTouchListener({});
}

void PlayWindow::begin() {
    auto& controller = *session_.controller();
    if (extras_.attitudes) {
        extras_.attitudes->start();
        controller.turnOnDeviceMotionInterraction(true);
    }
    const auto onTouch = [this](const platform::TouchEvent& event) {
        if (feedback_)
            feedback_->touch(event);
    };
    if (extras_.recording) {
        extras_.recording->begin(host_, onTouch);
        if (controller.deviceMotionIsOn())
            extras_.recording->note(SwitchAction{SwitchAction::Switch::DeviceMotion, true});
    } else {
        host_.setTouchListener(onTouch);
    }
    host_.embedded().appear();
}

void PlayWindow::listenToControls() {
    controls_->setChangeListener([this] { overlay_->update(); });
    player_.setNoticeListener([this](const std::string& text, WindowPlayer::Lasting lasting) {
        controls_->say(text, lasting);
    });
    player_.setPerformedListener([this](WindowAction action) {
        if (isOfVideo(action))
            overlay_->show();
        overlay_->update();
    });
}

void PlayWindow::listenToSession() {
    session_.setListeners(
        {.changed = [this] { overlay_->update(); },
         .failed = [this](const std::string& message) { failed(message); },
         .replaced = [this](TracedController& controller,
                            const std::string& input) { replaced(controller, input); }});
    host_.setDropListener([this](const std::string& dropped) { open(trimmed(dropped)); });
}

void PlayWindow::open(const std::string& input) {
    if (input.empty())
        return;
    controls_->dismissMessage();
    session_.open(input);
}

void PlayWindow::failed(const std::string& message) {
    if (session_.hasFailed())
        return host_.quit();
    controls_->say(message, WindowPlayer::Lasting::UntilDismissed);
}

void PlayWindow::replaced(TracedController& controller, const std::string& input) {
    feedback_.reset();
    player_.setController(controller);
    title_ = titleOf(input);
    host_.setTitle(title_);
    if (!input.empty())
        note(ContentAction{kindOf(input), input});
    overlay_->show();
}

/// The hot spots belong to the content on the command line.
void PlayWindow::giveHotSpots() {
    if (!extras_.hotSpots)
        return;
    const auto& controller = session_.controller();
    extras_.hotSpots->applyTo(*controller);
    feedback_ = platform::make<PickFeedback>(host_, *controller, title_);
    controller->setPickListener([feedback = std::weak_ptr(feedback_),
                                 controls = std::weak_ptr(controls_)](const Pick& pick) {
        if (const auto alive = feedback.lock())
            alive->picked(pick);
        if (const auto alive = controls.lock())
            alive->say(pick.title(), WindowPlayer::Lasting::Briefly);
    });
}

void PlayWindow::note(const decltype(Action::what)& what) {
    if (feedback_)
        feedback_->update();
    if (extras_.recording)
        extras_.recording->note(what);
}
