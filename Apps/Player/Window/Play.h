#pragma once

#include "Apps/Player/Terminal/CommandLine.h"
#include "Apps/Player/Terminal/ExitCode.h"

/// Shows the content in a window until the person has had enough.
[[nodiscard]] ExitCode play(const PlayCommand& command);
