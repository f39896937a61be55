#include "Apps/Player/Window/Play.h"

#include "Apps/Player/Contents/HotSpotFile.h"
#include "Apps/Player/Output/LogTap.h"
#include "Apps/Player/Output/TracedController.h"
#include "Apps/Player/Terminal/Message.h"
#include "Apps/Player/Window/AttitudeTraceFile.h"
#include "Apps/Player/Window/PlayWindow.h"
#include "Apps/Player/Window/Session.h"
#include "Apps/Player/Window/WindowRecording.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Motion/AttitudeTracePlayer.h"

#include <memory>
#include <string>
#include <utility>

namespace {

platform::Result<PlayExtras> openExtras(const PlayCommand& command) {
    PlayExtras extras;
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

} // namespace

ExitCode play(const PlayCommand& command) {
    auto opened = openExtras(command);
    if (!opened) {
        tell(opened.error().detail);
        return ExitCode::WrongUse;
    }
    // A window has no trace file.
    const auto trace = Trace::create("");
    const LogTap tap(*trace.value());
    auto created = zanto::SDLHost::create(
        {.title = PlayWindow::titleOf(command.input), .touchSlop = command.touchSlop});
    if (!created) {
        tell("no window: " + created.error().detail);
        return ExitCode::NoGraphics;
    }
    zanto::SDLHost& host = *created.value();
    const auto session = platform::make<Session>(host, *trace.value());
    session->open(command.input);
    // A refused URL reports its error in the next iteration; the window is not shown before that.
    host.embedded().runDueWork();
    if (session->hasFailed())
        return ExitCode::ContentNotOpened;
    // destroyed before the host that it observes
    const PlayExtras extras = std::move(opened).value();
    host.embedded().setRootViewController(session->controller());
    PlayWindow window(host, *session, extras, command.input);
    window.begin();
    host.run();
    if (session->hasFailed())
        return ExitCode::ContentNotOpened;
    return extras.recording ? endRecording(*extras.recording, command) : ExitCode::Done;
}
