#pragma once

#include "Apps/Player/Terminal/CommandLine.h"
#include "Apps/Player/Terminal/ExitCode.h"

/// Shows the content in a window until the user closes it.
[[nodiscard]] ExitCode play(const PlayCommand& command);
