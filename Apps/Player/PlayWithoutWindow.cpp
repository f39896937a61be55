#include "Apps/Player/Message.h"
#include "Apps/Player/Play.h"

ExitCode play(const PlayCommand& /*command*/) {
    tell("this build opens no window; `zanto-player render` writes pictures without one");
    return ExitCode::NoGraphics;
}
