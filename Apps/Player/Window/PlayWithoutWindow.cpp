#include "Apps/Player/Terminal/Message.h"
#include "Apps/Player/Window/Play.h"

ExitCode play(const PlayCommand& /*command*/) {
    tell("this build opens no window; `zanto-player render` writes pictures without one");
    return ExitCode::NoGraphics;
}
