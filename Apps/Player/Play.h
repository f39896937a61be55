#pragma once

#include "Apps/Player/CommandLine.h"
#include "Apps/Player/ExitCode.h"

/// Shows the content in a window until the person has had enough.
[[nodiscard]] ExitCode play(const PlayCommand& command);
