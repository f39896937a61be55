#include "Apps/Player/Play.h"

#include "Apps/Player/Content.h"
#include "Apps/Player/LogTap.h"
#include "Apps/Player/Message.h"
#include "Apps/Player/WindowPlayer.h"
#include "Hosts/SDL/SDLHost.h"

#include <filesystem>
#include <utility>

namespace {

std::string titleOf(const std::string& input) {
    if (input.empty())
        return "zanto-player";
    return std::filesystem::path(input).filename().string() + " – zanto-player";
}

} // namespace

ExitCode play(const PlayCommand& command) {
    // A window is traced by nobody.
    const auto trace = Trace::create("");
    const LogTap tap(*trace.value());
    auto created = SDLHost::create({.title = titleOf(command.input)});
    if (!created) {
        tell("no window: " + created.error().detail);
        return ExitCode::NoGraphics;
    }
    SDLHost& host = *created.value();
    const auto controller = platform::make<TracedController>(*trace.value());
    prepareContent(*controller, command.input);
    // An address that is not read from answers in the next turn; the window is not shown yet.
    host.embedded().runDueWork();
    if (!contentIsOpen(*controller, command.input))
        return ExitCode::ContentNotOpened;
    const WindowPlayer player(host, *controller);
    host.embedded().setRootViewController(controller);
    host.embedded().appear();
    host.run();
    return ExitCode::Done;
}
