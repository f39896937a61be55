#include "Apps/Player/Play.h"

#include "Apps/Player/AttitudeTraceFile.h"
#include "Apps/Player/Content.h"
#include "Apps/Player/HotSpotFile.h"
#include "Apps/Player/LogTap.h"
#include "Apps/Player/Message.h"
#include "Apps/Player/PickFeedback.h"
#include "Apps/Player/WindowPlayer.h"
#include "Apps/Player/WindowRecording.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Motion/AttitudeTracePlayer.h"

#include <filesystem>
#include <memory>
#include <utility>

namespace {

std::string titleOf(const std::string& input) {
    if (input.empty())
        return "zanto-player";
    return std::filesystem::path(input).filename().string() + " – zanto-player";
}

/// What the command names beside the content, ready before there is a window.
struct Extras {
    std::unique_ptr<platform::AttitudeTracePlayer> attitudes; // null: none
    std::unique_ptr<WindowRecording> recording;               // null: none
    std::shared_ptr<const HotSpotFile> hotSpots;              // null: none
};

platform::Result<Extras> openExtras(const PlayCommand& command) {
    Extras extras;
    if (!command.attitudeTraceFile.empty()) {
        auto trace = readAttitudeTraceFile(command.attitudeTraceFile);
        if (!trace)
            return trace.error();
        extras.attitudes =
            std::make_unique<platform::AttitudeTracePlayer>(std::move(trace).value());
    }
    auto hotSpots = readHotSpotFile(command.hotSpotsFile);
    if (!hotSpots)
        return hotSpots.error();
    extras.hotSpots = std::move(hotSpots).value();
    if (!command.recordFile.empty()) {
        auto recording = WindowRecording::create(command.recordFile);
        if (!recording)
            return recording.error();
        extras.recording = std::move(recording).value();
    }
    return extras;
}

ExitCode endRecording(WindowRecording& recording, const PlayCommand& command) {
    if (const auto failure = recording.end()) {
        tell(failure->detail);
        return ExitCode::WrongUse;
    }
    const std::string input = command.input.empty() ? "" : command.input + " ";
    const std::string hotSpots =
        command.hotSpotsFile.empty() ? "" : " --hot-spots " + command.hotSpotsFile;
    tell("to play it back: zanto-player render " + input +
         recording.playbackOptions(command.touchSlop) + hotSpots + " --output FOLDER");
    return ExitCode::Done;
}

/// Gives the loaded view its hot spots; null when there are none.
std::shared_ptr<PickFeedback> giveHotSpots(SDLHost& host,
                                           const std::shared_ptr<TracedController>& controller,
                                           const Extras& extras, const std::string& title) {
    if (!extras.hotSpots)
        return nullptr;
    extras.hotSpots->applyTo(*controller);
    auto feedback = platform::make<PickFeedback>(host, *controller, title);
    controller->setPickListener([weak = std::weak_ptr(feedback)](const Pick& pick) {
        if (const auto alive = weak.lock())
            alive->picked(pick);
    });
    return feedback;
}

/// Has the view appear, steered and watched as the command says.
void begin(SDLHost& host, const std::shared_ptr<TracedController>& controller, const Extras& extras,
           const std::shared_ptr<PickFeedback>& feedback) {
    SDLHost::TouchListener onTouch;
    if (feedback)
        onTouch = [weak = std::weak_ptr(feedback)](const platform::TouchEvent& event) {
            if (const auto alive = weak.lock())
                alive->touch(event);
        };
    if (extras.attitudes) {
        extras.attitudes->start();
        controller->turnOnDeviceMotionInterraction(true);
    }
    if (extras.recording) {
        extras.recording->begin(host, onTouch);
        if (controller->deviceMotionIsOn())
            extras.recording->note(SwitchAction{SwitchAction::Switch::DeviceMotion, true});
    } else {
        host.setTouchListener(onTouch);
    }
    host.embedded().appear();
}

} // namespace

ExitCode play(const PlayCommand& command) {
    auto opened = openExtras(command);
    if (!opened) {
        tell(opened.error().detail);
        return ExitCode::WrongUse;
    }
    // A window is traced by nobody.
    const auto trace = Trace::create("");
    const LogTap tap(*trace.value());
    auto created =
        SDLHost::create({.title = titleOf(command.input), .touchSlop = command.touchSlop});
    if (!created) {
        tell("no window: " + created.error().detail);
        return ExitCode::NoGraphics;
    }
    SDLHost& host = *created.value();
    const auto controller = platform::make<TracedController>(*trace.value());
    prepareContent(*controller, command.input);
    // An address that is not read from answers in the next turn; the window is not shown yet.
    host.embedded().runDueWork();
    if (stateOfContent(*controller, command.input) == ContentState::Failed)
        return ExitCode::ContentNotOpened;
    bool hasFailed = false;
    controller->setFailureListener([&](const platform::Error& error) {
        tell(command.input + ": " + error.detail);
        // What has been shown stays on the screen.
        const auto streamer = controller->streamer();
        hasFailed = !streamer || streamer->status() != platform::PlayerStatus::ReadyToPlay;
        if (hasFailed)
            host.quit();
    });
    const Extras extras = std::move(opened).value(); // goes before the host that it watches
    WindowRecording* const recording = extras.recording.get();
    host.embedded().setRootViewController(controller);
    const auto feedback = giveHotSpots(host, controller, extras, titleOf(command.input));
    const WindowPlayer player(host, *controller, [recording, &feedback](const auto& what) {
        if (feedback)
            feedback->update();
        if (recording)
            recording->note(what);
    });
    begin(host, controller, extras, feedback);
    host.run();
    controller->setFailureListener({});
    if (hasFailed)
        return ExitCode::ContentNotOpened;
    return recording ? endRecording(*recording, command) : ExitCode::Done;
}
